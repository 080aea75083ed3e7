// host/preferences/choice_page.cpp: PSListItemsController: the page on which one of a row's values is chosen.

#include "host/preferences/choice_page.hpp"

#include "host/preferences/list_controller.hpp"
#include "host/preferences/specifier.hpp"

namespace wispen::preferences {

class ChoicePage : public objc::Implementation<ChoicePage, PSListItemsController> {
 public:
  PSSpecifier head_for(const PSSpecifier& row) {
    const PSSpecifier head = make_specifier(NSString(), CellType::Group);
    head.setTarget(self());
    set_accessors(head, objc::selector<"_choice:">(), objc::selector<"_setChoice:specifier:">());
    head.setProperty(NSNumber::numberWithBool(true), "isRadioGroup"_ns);
    head.setProperty(row.propertyForKey("staticTextMessage"_ns), "footerText"_ns);
    return head;
  }
  PSSpecifier item_for(const PSSpecifier& row, const NSObject& value) {
    const auto title = objc::cast_or_nil<NSString>(row.titleDictionary().objectForKey(value));
    const PSSpecifier item = make_specifier(title ? title : value.description(), CellType::ListItem);
    item.setTarget(self());
    item.setProperty(value, "value"_ns);
    return item;
  }
  NSMutableArray specifiers() {
    NSMutableArray& shown = ListController::of(self()).list();
    const PSSpecifier row = self().specifier();
    if (shown || !row) return shown;
    NSMutableArray items = NSMutableArray::array();
    items.addObject(head_for(row));
    const NSArray values = row.values();
    for (NSUInteger i = 0, count = values.count(); i < count; ++i) {
      items.addObject(item_for(row, values.objectAtIndex(i)));
    }
    shown = items;
    return shown;
  }
  NSObject choice(const PSSpecifier&) { return self().specifier().performGetter(); }
  void setChoice(const NSObject& value, const PSSpecifier&) {
    self().specifier().performSetterWithValue(value);
  }
};

void define_choice_page() {
  objc::Class<PSListItemsController>::implemented_by<ChoicePage>()
      .method<"specifiers", &ChoicePage::specifiers>()
      .method<"_choice:", &ChoicePage::choice>()
      .method<"_setChoice:specifier:", &ChoicePage::setChoice>()
      .register_class();
}

}  // namespace wispen::preferences
