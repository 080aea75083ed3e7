// host/app/settings/front_page.cpp: the list of Settings itself, with a row for every installed bundle.

#include "host/app/settings/front_page.hpp"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "host/uikit/controllers/navigation_item.hpp"
#include "platform/UIKit.hpp"

namespace wispen {

using preferences::CellType;
using preferences::Specifier;

struct FrontPageMethods {
  using Self = FrontPage;

  static PSSpecifier row_for(const Self& self, const BundleEntry& entry) {
    const Specifier row = Specifier::make(entry.label.c_str(), CellType::Link);
    row.setTarget(self);
    row.setPropertyForKey(NSString(entry.label.c_str()), "label"_ns);
    row.setPropertyForKey(NSString(entry.folder.c_str()), "bundleFolder"_ns);
    const std::string icon_file = entry.folder + "/icon.png";
    if (::access(icon_file.c_str(), R_OK) == 0) {
      // The variant for the display is found by the file's name.
      row.setPropertyForKey(objc::send<"imageWithContentsOfFile:", UIImage>(objc::class_for<UIImage>(),
                                                                            NSString(icon_file.c_str())),
                            "iconImage"_ns);
    }
    return row.as<PSSpecifier>();
  }

  static NSMutableArray specifiers(const Self& self) {
    NSMutableArray& shown = self.specifiers_slot();
    if (shown) return shown;
    NSMutableArray rows = NSMutableArray::array();
    rows.addObject(Specifier::make(NSString(), CellType::Group));
    for (const BundleEntry& entry : self.entries()) rows.addObject(row_for(self, entry));
    shown = rows;
    return shown;
  }
  static void viewDidLoad(const Self& self) {
    objc::send_super<"viewDidLoad">(self, objc::class_for<preferences::ListController>());
    objc::send<"setTitle:">(self, "Settings"_ns);
    objc::send<"setLargeTitleDisplayMode:">(self.navigationItem(), NSInteger{1});
  }
  static uikit::ViewController controllerForSpecifier(const Self& self, const PSSpecifier& row) {
    const auto folder = objc::cast_or_nil<NSString>(row.propertyForKey("bundleFolder"_ns));
    const objc::ClassRef cls = folder ? self.parts().load(folder.utf8()) : objc::ClassRef();
    if (!cls || !cls.is_subclass_of(objc::class_for<uikit::ViewController>())) return uikit::ViewController();
    const auto page = objc::send<"new", uikit::ViewController>(cls);
    if (objc::responds_to(page, objc::selector<"setSpecifier:">())) objc::send<"setSpecifier:">(page, row);
    return page;
  }
};

FrontPage FrontPage::make(std::vector<BundleEntry> entries, BundleLoader load) {
  FrontPage page = alloc().init();
  page.parts() = {std::move(entries), std::move(load)};
  return page;
}

void FrontPage::add(const BundleEntry& entry) const {
  auto& entries = parts().entries;
  if (std::ranges::find(entries, entry.folder, &BundleEntry::folder) != entries.end()) return;
  entries.push_back(entry);
  reloadSpecifiers();
}

PSSpecifier FrontPage::row_of(const std::string& folder) const {
  const NSMutableArray rows = objc::send<"specifiers", NSMutableArray>(*this);
  for (NSUInteger i = 0; i < rows.count(); ++i) {
    const auto row = rows.objectAtIndex<PSSpecifier>(i);
    const auto own = objc::cast_or_nil<NSString>(row.propertyForKey("bundleFolder"_ns));
    if (own && own.utf8() == folder) return row;
  }
  return PSSpecifier();
}

void FrontPage::define() {
  using M = FrontPageMethods;
  objc::Class<FrontPage>()
      .state<FrontPageState>()
      .method<"specifiers", &M::specifiers>()
      .method<"viewDidLoad", &M::viewDidLoad>()
      .method<"controllerForSpecifier:", &M::controllerForSpecifier>()
      .register_class();
}

}  // namespace wispen
