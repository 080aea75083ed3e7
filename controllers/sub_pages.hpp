// controllers/sub_pages.hpp: the five pages below the root page.
#pragma once

#include "controllers/preference_store.hpp"
#include "controllers/specifier_visibility.hpp"
#include "platform/Preferences.hpp"

namespace wispen {

/// A page that shows every row of its list. It derives from the framework's controller, not from the root
/// page's base, and so has the value store and the visibility rules as methods of its own.
template <objc::FixedString Name, objc::FixedString List>
class SubPage : public objc::Authored<SubPage<Name, List>, PSListController> {
 public:
  static constexpr auto kClass = Name;
  using objc::Authored<SubPage, PSListController>::Authored;

  NSMutableArray specifiers() const {
    NSMutableArray& shown = this->specifiers_variable();
    if (!shown) shown = this->loadSpecifiersFromPlistName(operator""_ns<List>(), *this);
    return shown;
  }

  static void define() {
    objc::Class<SubPage> page;
    page.template method<"specifiers", &SubPage::specifiers>();
    SpecifierVisibility<SubPage>::add_to(page);
    PreferenceStore<SubPage>::add_to(page);
    page.register_class();
  }
};

// The lists name these classes, and the files bear these names: both are kept as they are, the classes
// that end in "Cell" and the spelling of "ExpandedAdjusments" included.
using SepSettingsCell = SubPage<"SepSettingsCell", "SepSettingsLS">;
using BackgroundSettingsCell = SubPage<"BackgroundSettingsCell", "BackgroundSettings">;
using ContextMenuLabels = SubPage<"ContextMenuLabels", "ContextMenuSettings">;
using Expanded3DAdjustments = SubPage<"Expanded3DAdjustments", "ExpandedAdjusments">;
using SepSettingsHSCell = SubPage<"SepSettingsHSCell", "SepSettingsHS">;

}  // namespace wispen
