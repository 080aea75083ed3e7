// wispen/session.cpp: a host with the bundle loaded, for the length of one command.

#include "wispen/session.hpp"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "host/core/device_root.hpp"
#include "host/wispen_host.h"
#include "wispen/output.hpp"
#include "wispen/package/installer.hpp"

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

Result<BundleFacts> bundle_facts(const CommonOptions& options) {
  return options.bundle.empty() ? only_bundle(program_folder())
                                : facts_of_bundle(options.bundle, program_folder());
}

Result<std::string> bundle_folder(const CommonOptions& options) {
  if (!options.bundle.empty()) return options.bundle;
  const auto facts = bundle_facts(options);
  if (!facts) return facts.error();
  return program_folder() + "/" + facts->bundle + ".bundle";
}

std::string page_of_row(const PSSpecifier& row) {
  const char* const cls = wispen_host_page_of_row(reinterpret_cast<wispen_host_object>(objc::borrow(row)));
  return cls != nullptr ? cls : "";
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

Result<CommonOptions> with_installed_bundle(CommonOptions options) {
  if (!options.bundle.empty()) return options;
  const auto facts = bundle_facts(options);
  if (!facts) return facts.error();
  const std::string folder = options.root.empty() ? wispen_host_default_root() : options.root;
  const auto root = DeviceRoot::open(folder, layout_from_name(options.layout));
  if (!root) return root.error();
  const auto package = package::desktop_package(program_folder() + "/packages", root->layout(), *facts);
  if (!package) return package.error();
  const auto installed = package::install_when_changed(*root, *package, *facts);
  if (!installed) return installed.error();
  options.bundle = root->resolve_or_nowhere(std::string(root->device_jbroot()) + facts->folder());
  return options;
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
  const auto folder = bundle_folder(options);
  if (!folder) {
    fail(folder.error().message);
    return std::nullopt;
  }
  auto session = start(options);
  if (!session) return session;
  session->bundle_ = *folder;
  if (wispen_host_load_bundle(folder->c_str()) == nullptr) {
    fail(wispen_host_last_error());
    return std::nullopt;
  }
  return session;
}

std::optional<Session> Session::start_with_screen(const CommonOptions& options, const Traits& traits,
                                                  bool wall_clock) {
  const auto used = with_installed_bundle(options);
  if (!used) {
    fail(used.error().message);
    return std::nullopt;
  }
  auto session = start_on_clock(options, wall_clock);
  if (!session) return session;
  session->bundle_ = used->bundle;
  for (const auto& [name, value] : traits) {
    if (value.empty() || wispen_host_set_look(name.c_str(), value.c_str()) != 0) continue;
    fail(wispen_host_last_error());
    return std::nullopt;
  }
  if (wispen_host_offer_bundle(used->bundle.c_str()) == 0) {
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
      const std::string cls = page_of_row(specifier);
      if (cls.empty() || std::ranges::find(pages, cls, &Page::cls) != pages.end()) continue;
      if (!objc::ClassRef::named(cls.c_str()).is_subclass_of(objc::class_for<PSListController>())) continue;
      pages.push_back(page_of(open(cls.c_str()), specifier.name().utf8()));
    }
  }
  return pages;
}

std::optional<Page> Session::page(const std::string& name) const {
  std::string known;
  for (Page& page : pages()) {
    const bool root = name == "root" && known.empty();  // as the commands with a screen call the first
    if (root || page.cls == name || page.list == name) return std::move(page);
    known += (known.empty() ? "" : ", ") + page.cls + " (" + page.list + ")";
  }
  fail("there is no page " + name + "; the pages are " + known);
  return std::nullopt;
}

}  // namespace wispen::program
