// wispen/tour_command.cpp: wispen run, without a display: a short tour, in text and pictures.

#include <cstdio>
#include <filesystem>

#include "host/plist/document.hpp"
#include "host/plist/tree.hpp"
#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/home_screen.hpp"
#include "wispen/line_diff.hpp"
#include "wispen/output.hpp"
#include "wispen/watching_process.hpp"

namespace wispen::program {

namespace {

constexpr double kListenerTimeout = 20;  // seconds; reached only where something is wrong

constexpr char kDomainFile[] = "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist";

/// The values that a file holds, as XML whatever its own format is; none of what cannot be read.
std::string values_of(const std::string& path) {
  const auto document = plist::Document::read(path);
  if (!document) return {};
  const plist::Tree tree = plist::Tree::of(document->root());
  plist::Dictionary shown_values;
  for (plist::Member member :
       tree.as<plist::Dictionary>() ? *tree.as<plist::Dictionary>() : plist::Dictionary()) {
    // A binary list may hold what XML cannot.
    const auto alone = plist::encode(plist::Tree(plist::Dictionary{member}), plist::Format::Xml);
    if (!alone) member = {shown(member.key), "(not shown: " + alone.error().message + ")"};
    shown_values.push_back(std::move(member));
  }
  const auto xml = plist::encode(plist::Tree(std::move(shown_values)), plist::Format::Xml);
  return xml ? *xml : std::string();
}

/// Another value that a user could choose; nil for a row without one.
NSObject other_value(const PSSpecifier& specifier) {
  const NSObject current = specifier.performGetter();
  const auto number = objc::cast_or_nil<NSNumber>(current);
  const std::string cell = objc::cast_or_nil<NSString>(specifier.propertyForKey("cell"_ns)).utf8();
  if (cell == "PSSwitchCell") return NSNumber::numberWithBool(!number.boolValue());
  if (cell == "PSSliderCell") {
    const auto bound = [&](const NSString& key, float fallback) {
      const auto given = objc::cast_or_nil<NSNumber>(specifier.propertyForKey(key));
      return given ? given.floatValue() : fallback;
    };
    const float least = bound("min"_ns, 0);
    const float most = bound("max"_ns, 1);
    const float quarter = least + (most - least) / 4;
    return NSNumber::numberWithFloat(number.floatValue() == quarter ? most : quarter);
  }
  const NSArray values = specifier.values();
  if (values.count() < 2) return NSObject();
  const NSUInteger at = values.indexOfObject(current);
  return values.objectAtIndex(at == NSNotFound ? 0 : (at + 1) % values.count());
}

struct Step {
  Page page;
  PSSpecifier specifier;
};

/// The first row of each page that a user could change.
std::vector<Step> steps_of(const std::vector<Page>& pages) {
  std::vector<Step> steps;
  for (const Page& page : pages) {
    const NSArray shown = page.controller.specifiers();
    for (NSUInteger i = 0; i < shown.count(); ++i) {
      const auto specifier = shown.objectAtIndex<PSSpecifier>(i);
      if (!specifier.propertyForKey("key"_ns) || !specifier.propertyForKey("PostNotification"_ns)) continue;
      if (!other_value(specifier)) continue;
      steps.push_back({page, specifier});
      break;
    }
  }
  return steps;
}

/// The notification that all of the rows post, so that what else is posted meanwhile is not counted; "" where
/// they differ.
std::string common_name(const std::vector<Step>& steps) {
  std::string name;
  for (const Step& step : steps) {
    const std::string own =
        objc::cast_or_nil<NSString>(step.specifier.propertyForKey("PostNotification"_ns)).utf8();
    if (!name.empty() && own != name) return {};
    name = own;
  }
  return name;
}

/// Starts the home screen with a picture in the folder, and keeps how it looks before anything is set.
Result<void> show_home_screen(const CommonOptions& options, const LookOptions& look,
                              const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return Error{"the folder " + folder.string() + " cannot be made: " + error.message()};
  const auto picture = folder / "home-screen.png";
  if (auto started = start_home_screen(options, look, picture); !started) return started;
  const auto before = folder / "home-screen-before.png";
  std::filesystem::copy_file(picture, before, std::filesystem::copy_options::overwrite_existing, error);
  if (error) return Error{"the picture " + before.string() + " cannot be written: " + error.message()};
  std::printf("\nThe home screen (process %d), as it was before: %s\n", wispen_host_process("SpringBoard"),
              before.c_str());
  return {};
}

int set_values(const CommonOptions& options, const RunOptions& what, const std::filesystem::path& folder) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_bundle(options);
  if (!session) return kFailed;
  const std::string root = wispen_host_root();
  std::printf("The phone's file system is played by %s.\n\n", root.c_str());

  const std::vector<Page> pages = session->pages();
  std::printf("The bundle has %zu pages:\n", pages.size());
  for (const Page& page : pages) {
    std::printf("  %s %3lu rows, %lu shown   %s\n", padded(page.title, 30).c_str(),
                page.all_specifiers().count(), page.controller.specifiers().count(), page.cls.c_str());
  }

  bool with_home_screen = !what.without_home_screen;
  if (with_home_screen) {
    const auto shown = show_home_screen(options, what.look, folder);
    if (!shown) tell_without_home_screen(shown.error().message);
    with_home_screen = shown.ok();
  }
  const std::vector<Step> steps = steps_of(pages);
  auto listener = WatchingProcess::start(root, common_name(steps), steps.size(), kListenerTimeout);
  if (!listener) return fail("the listening process could not be started");
  std::printf(
      "\nAnother process (%d) listens for notifications. Setting a value on each page, as a user would:\n",
      static_cast<int>(listener->pid()));

  const char* const domain = wispen_host_jailbreak_path(kDomainFile);
  if (domain == nullptr) return fail(wispen_host_last_error());
  const std::string file = domain;
  const std::string before = values_of(file);
  for (const Step& step : steps) {
    const std::string old_value = text_of(step.specifier.performGetter());
    step.specifier.performSetterWithValue(other_value(step.specifier));
    std::printf("  %s %s: %s -> %s\n",
                padded(shown(step.page.title + " / " + step.specifier.name().utf8()), 52).c_str(),
                step.specifier.propertyForKey("key"_ns).description().utf8().c_str(), old_value.c_str(),
                text_of(step.specifier.performGetter()).c_str());
  }

  std::printf("\nWhat changed in %s:\n", file.c_str());
  for (const std::string& line : line_diff(before, values_of(file)))
    std::printf("  %s\n", shown(line).c_str());

  std::printf("\nWhat the other process heard:\n");
  std::fflush(stdout);
  const std::vector<std::string> heard = listener->finish();
  for (const std::string& line : heard) std::printf("  %s\n", shown(line).c_str());
  if (with_home_screen) {
    if (const auto painted = await_home_screen_picture(); !painted) return fail(painted.error().message);
    std::printf("\nThe home screen, which heard it too: %s\n", (folder / "home-screen.png").c_str());
  }
  print_problems();
  if (heard.empty()) return fail("the other process heard nothing");
  return kDone;
}

}  // namespace

int tour(const CommonOptions& options, const RunOptions& what) {
  const std::string folder = what.pictures.empty() ? "wispen-pictures" : what.pictures;
  if (const int status = set_values(options, what, folder); status != kDone) return status;
  std::printf("\nPictures of every page, as it is now, light and dark:\n");
  std::fflush(stdout);
  for (const char* const appearance : {"light", "dark"}) {
    SnapshotOptions pictures;
    pictures.look = what.look;
    pictures.look.appearance = appearance;
    pictures.output = folder + "/" + appearance;
    pictures.all = true;
    if (const int status = snapshot(options, pictures); status != kDone) return status;
  }
  return kDone;
}

}  // namespace wispen::program
