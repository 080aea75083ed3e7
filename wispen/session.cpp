// wispen/session.cpp: a host with the bundle loaded, for the length of one command.

#include "wispen/session.hpp"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "host/wispen_host.h"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

PSListController open(const char* class_name) {
  return objc::adopt<PSListController>(reinterpret_cast<objc::abi::id>(wispen_host_open_page(class_name)));
}

NSString list_of(const PSSpecifier& specifier) {
  return specifier.propertyForKey<NSString>("localizationTable"_ns);
}

Page page_of(PSListController controller, std::string title) {
  Page page{std::move(controller), {}, {}, std::move(title)};
  page.cls = objc::class_of(page.controller).name();
  const NSArray specifiers = page.all_specifiers();
  if (specifiers.count() > 0) page.list = list_of(specifiers.objectAtIndex<PSSpecifier>(0)).utf8();
  if (page.title.empty()) page.title = page.controller.title().utf8();
  return page;
}

}  // namespace

std::string program_folder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string bundle_folder(const CommonOptions& options) {
  return options.bundle.empty() ? program_folder() + "/3dvitrelleprefs.bundle" : options.bundle;
}

NSArray Page::all_specifiers() const {
  const NSArray shown = controller.specifiers();  // builds the list, where that is still to be done
  if (objc::responds_to(controller, objc::selector<"savedSpecifiers">())) {
    if (const auto saved = objc::send<"savedSpecifiers", NSArray>(controller)) return saved;
  }
  return shown;
}

bool Page::shows(const PSSpecifier& specifier) const {
  return controller.specifiers().containsObject(specifier);
}

std::optional<Session> Session::start(const CommonOptions& options) { return start_on_clock(options, true); }

std::optional<Session> Session::start_on_clock(const CommonOptions& options, bool wall_clock) {
  wispen_host_options host{};
  host.size = sizeof host;
  const std::string root = options.root.empty() ? wispen_host_default_root() : options.root;
  host.root = root.c_str();
  if (!options.layout.empty()) host.layout = options.layout.c_str();
  host.languages = options.languages.c_str();
  host.wall_clock = wall_clock ? 1 : 0;
  host.lists_as_data = options.lists_as_data ? 1 : 0;
  if (wispen_host_start(&host) == 0) {
    fail(wispen_host_last_error());
    return std::nullopt;
  }
  Session session;
  session.wall_clock_ = wall_clock;
  return session;
}

std::optional<Session> Session::start_with_bundle(const CommonOptions& options) {
  auto session = start(options);
  if (!session) return session;
  if (wispen_host_load_bundle(bundle_folder(options).c_str()) == nullptr) {
    fail(wispen_host_last_error());
    return std::nullopt;
  }
  return session;
}

std::optional<Session> Session::start_with_screen(const CommonOptions& options, const LookOptions& look,
                                                  bool wall_clock) {
  auto session = start_on_clock(options, wall_clock);
  if (!session) return session;
  const std::pair<const char*, const std::string*> looks[] = {{"device", &look.device},
                                                              {"orientation", &look.orientation},
                                                              {"appearance", &look.appearance},
                                                              {"text-size", &look.text_size},
                                                              {"direction", &look.direction}};
  for (const auto& [name, value] : looks) {
    if (value->empty() || wispen_host_set_look(name, value->c_str()) != 0) continue;
    fail(wispen_host_last_error());
    return std::nullopt;
  }
  if (wispen_host_offer_bundle(bundle_folder(options).c_str()) == 0) {
    fail(wispen_host_last_error());
    return std::nullopt;
  }
  return session;
}

Session::~Session() {
  if (running_) wispen_host_stop();
}

std::vector<Page> Session::pages() const {
  std::vector<Page> pages;
  pages.push_back(page_of(open(nullptr), {}));
  for (std::size_t at = 0; at < pages.size(); ++at) {
    const NSArray specifiers = pages[at].all_specifiers();
    for (NSUInteger i = 0; i < specifiers.count(); ++i) {
      const auto specifier = specifiers.objectAtIndex<PSSpecifier>(i);
      const auto detail = objc::cast_or_nil<NSString>(specifier.propertyForKey("detail"_ns)).utf8();
      const objc::ClassRef cls = objc::ClassRef::named(detail.c_str());
      // A row without a key leads to a page; one with a key to its choices.
      if (!cls || specifier.propertyForKey("key"_ns)) continue;
      if (!cls.is_subclass_of(objc::class_for<PSListController>())) continue;
      if (std::ranges::find(pages, detail, &Page::cls) != pages.end()) continue;
      pages.push_back(page_of(open(detail.c_str()), specifier.name().utf8()));
    }
  }
  return pages;
}

std::optional<Page> Session::page(const std::string& name) const {
  std::string known;
  for (Page& page : pages()) {
    if (page.cls == name || page.list == name) return std::move(page);
    known += (known.empty() ? "" : ", ") + page.cls + " (" + page.list + ")";
  }
  fail("there is no page " + name + "; the pages are " + known);
  return std::nullopt;
}

}  // namespace wispen::program
