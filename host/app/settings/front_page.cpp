// host/app/settings/front_page.cpp: the list of Settings itself, with a row for every installed bundle.

#include "host/app/settings/front_page.hpp"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "host/foundation/arrays.hpp"
#include "host/foundation/system_texts.hpp"
#include "host/preferences/list_controller.hpp"
#include "host/preferences/specifier.hpp"

namespace wispen {

namespace {

namespace fs = std::filesystem;

std::string folder_of(const PSSpecifier& row) {
  const auto folder = objc::cast_or_nil<NSString>(row.propertyForKey("bundleFolder"_ns));
  return folder ? folder.utf8() : std::string();
}

}  // namespace

class FrontPage : public objc::Implementation<FrontPage, SettingsFrontPage> {
 public:
  NSMutableArray specifiers() {
    self().setTitle(system_text("Settings"));  // as often as the page is made anew, in another language too
    NSMutableArray& shown = preferences::ListController::of(self()).list();
    if (shown) return shown;
    NSMutableArray rows = NSMutableArray::array();
    rows.addObject(preferences::make_specifier(NSString(), preferences::CellType::Group));
    for (const BundleEntry& entry : entries_) rows.addObject(row_for(entry));
    shown = rows;
    return shown;
  }
  void viewDidLoad() {
    super<"viewDidLoad">();
    self().navigationItem().setLargeTitleDisplayMode(UINavigationItemLargeTitleDisplayMode::Always);
  }
  UIViewController controllerForSpecifier(const PSSpecifier& row) {
    const std::string folder = folder_of(row);
    const objc::ClassRef cls = folder.empty() ? objc::ClassRef() : load_(folder);
    if (!cls || !cls.is_subclass_of(objc::class_for<UIViewController>())) return UIViewController();
    const UIViewController page = objc::allocate<UIViewController>(cls).init();
    if (objc::responds_to(page, objc::selector<"setSpecifier:">())) {
      page.as<PSViewController>().setSpecifier(row);
    }
    return page;
  }

  void set_up(std::vector<BundleEntry> entries, BundleLoader load) {
    entries_ = std::move(entries);
    load_ = std::move(load);
  }
  std::vector<BundleEntry>& entries() { return entries_; }

  static void define() {
    objc::Class<SettingsFrontPage>::implemented_by<FrontPage>()
        .method<"specifiers", &FrontPage::specifiers>()
        .method<"viewDidLoad", &FrontPage::viewDidLoad>()
        .method<"controllerForSpecifier:", &FrontPage::controllerForSpecifier>()
        .register_class();
  }

 private:
  PSSpecifier row_for(const BundleEntry& entry) {
    const PSSpecifier row = preferences::make_specifier(entry.label.c_str(), preferences::CellType::Link);
    row.setTarget(self());
    row.setProperty(NSString(entry.label.c_str()), "label"_ns);
    row.setProperty(NSString(entry.folder.c_str()), "bundleFolder"_ns);
    const std::string icon_file = entry.folder + "/icon.png";
    if (::access(icon_file.c_str(), R_OK) == 0) {
      // The variant for the display is found by the file's name.
      row.setProperty(UIImage::imageWithContentsOfFile(icon_file.c_str()), "iconImage"_ns);
    }
    return row;
  }

  std::vector<BundleEntry> entries_;
  BundleLoader load_;
};

SettingsFrontPage SettingsFrontPage::make(std::vector<BundleEntry> entries, BundleLoader load) {
  FrontPage::define();
  const auto page = objc::make<SettingsFrontPage>();
  FrontPage::of(page).set_up(std::move(entries), std::move(load));
  return page;
}

const std::vector<BundleEntry>& SettingsFrontPage::entries() const { return FrontPage::of(*this).entries(); }

void SettingsFrontPage::add(const BundleEntry& entry) const {
  auto& entries = FrontPage::of(*this).entries();
  // A bundle that is being written takes the place of the installed one of its name.
  const auto same_name = [&](const BundleEntry& other) {
    return fs::path(other.folder).filename() == fs::path(entry.folder).filename();
  };
  const auto found = std::ranges::find_if(entries, same_name);
  if (found == entries.end()) {
    entries.push_back(entry);
  } else if (found->folder != entry.folder) {
    found->folder = entry.folder;
  } else {
    return;
  }
  reloadSpecifiers();
}

PSSpecifier SettingsFrontPage::row_of(const std::string& folder) const {
  for (const PSSpecifier& row : objects_of<PSSpecifier>(specifiers())) {
    if (folder_of(row) == folder) return row;
  }
  return PSSpecifier();
}

}  // namespace wispen
