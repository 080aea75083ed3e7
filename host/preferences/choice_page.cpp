// host/preferences/choice_page.cpp: PSListItemsController: the page on which one of a row's values is chosen.

#include "host/preferences/choice_page.hpp"

namespace wispen::preferences {

struct ChoicePageMethods {
  using Self = ChoicePage;

  static PSSpecifier head_for(const Self& self, const PSSpecifier& row) {
    const Specifier head = Specifier::make(NSString(), CellType::Group);
    head.setTarget(self);
    head.setAccessors(objc::selector<"_choice:">(), objc::selector<"_setChoice:specifier:">());
    head.setPropertyForKey(NSNumber::numberWithBool(true), "isRadioGroup"_ns);
    head.setPropertyForKey(row.propertyForKey("staticTextMessage"_ns), "footerText"_ns);
    return head.as<PSSpecifier>();
  }
  static PSSpecifier item_for(const Self& self, const PSSpecifier& row, const NSObject& value) {
    const auto title = objc::cast_or_nil<NSString>(row.titleDictionary().objectForKey(value));
    const Specifier item =
        Specifier::make(title ? title : objc::send<"description", NSString>(value), CellType::ListItem);
    item.setTarget(self);
    item.setPropertyForKey(value, "value"_ns);
    return item.as<PSSpecifier>();
  }

  static NSMutableArray specifiers(const Self& self) {
    NSMutableArray& shown = self.specifiers_slot();
    const PSSpecifier row = self.specifier();
    if (shown || !row) return shown;
    NSMutableArray items = NSMutableArray::array();
    items.addObject(head_for(self, row));
    const NSArray values = row.values();
    for (NSUInteger i = 0, count = values.count(); i < count; ++i) {
      items.addObject(item_for(self, row, values.objectAtIndex(i)));
    }
    shown = items;
    return shown;
  }

  static NSObject choice(const Self& self, const PSSpecifier&) { return self.specifier().performGetter(); }
  static void setChoice(const Self& self, const NSObject& value, const PSSpecifier&) {
    self.specifier().performSetterWithValue(value);
  }
};

void ChoicePage::define() {
  using M = ChoicePageMethods;
  objc::Class<ChoicePage>()
      .method<"specifiers", &M::specifiers>()
      .method<"_choice:", &M::choice>()
      .method<"_setChoice:specifier:", &M::setChoice>()
      .register_class();
}

}  // namespace wispen::preferences
