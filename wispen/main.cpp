// wispen/main.cpp: the wispen program: its commands and their options.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "host/plist/utf.hpp"
#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/drive/script.hpp"
#include "wispen/output.hpp"
#include "wispen/process_room.hpp"

namespace {

using namespace wispen::program;

std::string not_empty(const std::string& folder) {
  return folder.empty() ? "the folder's name is empty" : "";
}

void add_common(CLI::App& command, CommonOptions& options, bool with_bundle = true) {
  command
      .add_option("--root", options.root, "The folder that plays the phone's file system (made on first use)")
      ->type_name("DIR")
      ->check(not_empty);
  command.add_option("--layout", options.layout, "Where a new root keeps the jailbreak's files")
      ->check(CLI::IsMember({"rootless", "rootful"}))
      ->type_name("rootless|rootful");
  if (with_bundle) {
    command.add_option("--bundle", options.bundle, "The settings bundle (the one beside this program)")
        ->type_name("DIR")
        ->check(not_empty);
    command.add_option("--language", options.languages, "The user's languages, most wanted first")
        ->type_name("de,en");
  }
}

void add_json(CLI::App& command, CommonOptions& options) {
  command.add_flag("--json", options.json, "Answer in JSON");
}

std::string replaced(std::string text, char from, const char* to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += std::strlen(to)) {
    text.replace(at, 1, to);
  }
  return text;
}

void add_traits(CLI::App& command, Traits& traits) {
  constexpr std::size_t kShort = 20;
  for (std::size_t i = 0; i < wispen_host_trait_count(); ++i) {
    const wispen_host_trait trait = wispen_host_trait_at(i);
    const std::string name = trait.name;
    if (name == "language") continue;  // every command with a bundle takes it
    const std::string values = trait.values;
    const std::string description = trait.description;
    auto* const option = command.add_option("--" + name, traits[name]);
    if (values.size() <= kShort) {
      option->description(description)->type_name(replaced(values, ',', "|"));
    } else {
      option->description(description + ": " + replaced(values, ',', ", "))->type_name("NAME");
    }
  }
}

constexpr const char* kPageHelp = R"(A class, a list, "root" (default) or "settings")";

}  // namespace

int main(int argc, char** argv) {  // NOLINT(bugprone-exception-escape): only memory can run out
  CLI::App app{"Runs, shows and checks the settings bundle on the desktop.", "wispen"};
  app.require_subcommand(1);
  app.footer("Exit status: 0 done, 1 failed, 2 wrong use.");

  CommonOptions options;
  std::function<int()> command;
  const auto on = [&command](CLI::App* subcommand, std::function<int()> body) {
    subcommand->callback([&command, body = std::move(body)] { command = body; });
  };

  RunOptions run_options;
  auto* running = app.add_subcommand("run",
                                     "The main job: the pages in a window that follows their files; without "
                                     "a display, a tour in text and pictures");
  running->add_option("PAGE", run_options.page, kPageHelp);
  running->add_flag("--no-window", run_options.without_window, "The tour, also where there is a display");
  running
      ->add_option("--pictures", run_options.pictures, "Where the tour leaves its pictures (wispen-pictures)")
      ->type_name("DIR");
  running->add_flag("--no-home-screen", run_options.without_home_screen,
                    "Without the home screen that shows what the settings do");
  running->footer(
      "In the window: F2 appearance, F3 language, F4 direction, F5 text size, F6 device, F7 orientation,\n"
      "with shift backwards; control with A, C, X and V as everywhere; control and Q closes.");
  add_traits(*running, run_options.traits);
  add_common(*running, options);
  on(running, [&] { return run(options, run_options); });

  PagesOptions pages_options;
  auto* pages = app.add_subcommand("pages", "List every page's rows: key, type, value, shown or hidden");
  pages->add_option("PAGE", pages_options.page, "One page only, by its class or list");
  pages->add_flag("--why", pages_options.why,
                  "For each hidden row: which rule hides it, and what would show it");
  add_common(*pages, options);
  add_json(*pages, options);
  on(pages, [&] { return list_pages(options, pages_options); });

  SnapshotOptions snapshot_options;
  auto* pictures = app.add_subcommand("snapshot", "Write a picture of a page, or of all pages, as PNG");
  pictures->add_option("PAGE", snapshot_options.page, kPageHelp);
  pictures
      ->add_option("-o,--output", snapshot_options.output, "The file (page.png), or the folder with --all")
      ->type_name("PATH");
  pictures->add_flag("--all", snapshot_options.all, "Every page, each into a file of its own");
  pictures->add_flag("--home", snapshot_options.home, "The home screen as the stored settings make it");
  pictures->add_flag("--full-length", snapshot_options.whole_page, "As high as the page is long");
  pictures->add_option("--scale", snapshot_options.scale, "Pixels a point, 0.5 to 4 (the device's)")
      ->type_name("SCALE");
  add_traits(*pictures, snapshot_options.traits);
  add_common(*pictures, options);
  add_json(*pictures, options);
  on(pictures, [&] { return snapshot(options, snapshot_options); });

  InspectOptions inspect_options;
  auto* look_at = app.add_subcommand("inspect", "Print a page's tree of views, and the row beside each cell");
  look_at->add_option("PAGE", inspect_options.page, kPageHelp);
  add_traits(*look_at, inspect_options.traits);
  add_common(*look_at, options);
  add_json(*look_at, options);
  on(look_at, [&] { return inspect(options, inspect_options); });

  DriveOptions drive_options;
  auto* driving =
      app.add_subcommand("drive", "Use the pages as a script says: tap, drag, type, expect, snapshot");
  driving->add_option("SCRIPT", drive_options.script, "The script's file, or - for standard input")
      ->required();
  driving
      ->add_option("--failure-picture", drive_options.failure_picture, "Where the moment of a failure goes")
      ->type_name("FILE.png");
  driving->add_flag("--follow", drive_options.follow,
                    "Do each step as it comes, and let the pages follow the bundle's files meanwhile");
  driving->footer("\n" + script_help() +
                  "Each step answers one line of JSON. Exit status: 0 all done, 1 a step "
                  "failed, 2 the script has an error.");
  add_traits(*driving, drive_options.traits);
  add_common(*driving, options);
  on(driving, [&] { return drive(options, drive_options); });

  DefaultsOptions defaults_options;
  auto* defaults =
      app.add_subcommand("defaults", "Read and write values through a page's own getter and setter");
  defaults->require_subcommand(1);
  auto* read = defaults->add_subcommand("read", "Print one value, or all of them");
  read->add_option("KEY", defaults_options.key, "The row's key");
  auto* write = defaults->add_subcommand("write", "Store a value, and post the row's notification");
  write->add_option("KEY", defaults_options.key, "The row's key")->required();
  write->add_option("VALUE", defaults_options.value, "The new value")->required();
  write->add_option("--type", defaults_options.type, "The value's type (what the row takes)")
      ->check(CLI::IsMember({"bool", "int", "real", "string"}))
      ->type_name("bool|int|real|string");
  for (CLI::App* subcommand : {read, write}) {
    subcommand->add_option("--page", defaults_options.page, "The page, by its class or list")
        ->type_name("PAGE");
    add_common(*subcommand, options);
    add_json(*subcommand, options);
  }
  on(read, [&] { return read_defaults(options, defaults_options); });
  on(write, [&] { return write_defaults(options, defaults_options); });

  WatchOptions watch_options;
  std::string name;
  auto* notify = app.add_subcommand("notify", "Watch and post named notifications");
  notify->require_subcommand(1);
  auto* watch = notify->add_subcommand("watch", "Print each notification as it arrives");
  watch->add_option("NAME", watch_options.name, "This name only");
  watch->add_option("--count", watch_options.count, "End after so many posts")->type_name("N");
  watch->add_option("--timeout", watch_options.timeout, "End after so many seconds")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber);
  add_common(*watch, options, false);
  add_json(*watch, options);
  on(watch, [&] { return watch_notifications(options, watch_options); });
  auto* post = notify->add_subcommand("post", "Post a notification");
  post->add_option("NAME", name, "Its name")->required();
  add_common(*post, options, false);
  on(post, [&] { return post_notification(options, name); });

  auto* check = app.add_subcommand("lint", "Check the bundle's specifier lists");
  add_common(*check, options);
  add_json(*check, options);
  on(check, [&] { return lint(options); });

  ColourOptions colour_options;
  auto* colours = app.add_subcommand("colour", "The bundle's colour operations on texts, images and folders");
  colours->require_subcommand(1);
  const std::pair<const char*, const char*> operations[] = {
      {"hex", "Read texts like #RRGGBB:ALPHA (or an image's dominant colour) and write them as #RRGGBB"},
      {"dark", "Say whether a colour is dark: of a text, or the dominant one of an image"},
      {"dominant", "The colour that dominates an image"},
      {"second", "The colour beside it: the largest group's, or the runner-up's where that one covers 60 %"}};
  for (const auto& [operation, help] : operations) {
    auto* subcommand = colours->add_subcommand(operation, help);
    const std::string name_of_operation = operation;
    const bool of_images = name_of_operation == "dominant" || name_of_operation == "second";
    subcommand
        ->add_option(of_images ? "FILE" : "TEXT", colour_options.inputs,
                     of_images ? "PNG, JPEG or WebP files, and folders" : "Texts, image files and folders")
        ->required();
    if (of_images) {
      subcommand
          ->add_option("--sheet", colour_options.sheet, "Write a picture of the images beside both colours")
          ->type_name("OUT.png");
    }
    add_common(*subcommand, options);
    add_json(*subcommand, options);
    on(subcommand, [&, name_of_operation] {
      colour_options.operation = name_of_operation;
      return colour(options, colour_options);
    });
  }

  PackageOptions package_options;
  auto* packages =
      app.add_subcommand("package", "Check the bundle's packages, and install them into device roots");
  packages->require_subcommand(1);
  const std::pair<const char*, const char*> package_operations[] = {
      {"verify", "Say whether a package would install, load and work, check by check"},
      {"install", "Install a package (the desktop's own) into the device root, or upgrade it"},
      {"remove", "Remove the installed package from the device root"},
      {"status", "Print the version that is installed in the device root"}};
  for (const auto& [operation, help] : package_operations) {
    const std::string name_of_operation = operation;
    auto* subcommand = packages->add_subcommand(operation, help);
    if (name_of_operation == "verify") {
      subcommand->add_option("FILE", package_options.file, "The .deb file")->required();
    } else {
      if (name_of_operation == "install")
        subcommand->add_option("FILE", package_options.file, "The .deb file");
      add_common(*subcommand, options, false);
    }
    add_json(*subcommand, options);
    on(subcommand, [&, name_of_operation] {
      package_options.operation = name_of_operation;
      return package(options, package_options);
    });
  }

  for (int i = 1; i < argc; ++i) {
    if (wispen::plist::is_utf8(argv[i])) continue;
    fail("the argument \"" + std::string(argv[i]) + "\" is not UTF-8");
    return kWrongUse;
  }
  // A file that may not grow any further is an error of the write, which is told like any other.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = app.exit(error) == 0 ? kDone : kWrongUse;
    return output_is_written() ? status : kFailed;
  }
  if (const auto missing = wispen::program::missing_room()) return fail(*missing);
  try {
    const int status = command();
    return output_is_written() ? status : kFailed;
  } catch (const std::exception& error) {
    return fail(error.what());
  } catch (...) {  // the platform's exceptions do not tell C++ what they are
    return fail("the bundle raised an exception");
  }
}
