// platform/Preferences.hpp: the Preferences framework: rows (specifiers) and the pages that list them.
#pragma once

#include "platform/Foundation.hpp"
#include "platform/UIKit.hpp"

/// One row, or the head of a group of rows: what a dictionary of a specifier list says.
class PSSpecifier : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"PSSpecifier"};
  using NSObject::NSObject;

  NSString name() const { return objc::send<"name", NSString>(*this); }
  void setName(const NSString& name) const { objc::send<"setName:">(*this, name); }
  /// "id", else "key", else the untranslated label.
  NSString identifier() const { return objc::send<"identifier", NSString>(*this); }
  /// The page; the getter, the setter and the action are sent to it.
  NSObject target() const { return objc::send<"target", NSObject>(*this); }
  void setTarget(const objc::Object& target) const { objc::send<"setTarget:">(*this, target); }
  /// Everything that the list says of the row, by key.
  NSMutableDictionary properties() const { return objc::send<"properties", NSMutableDictionary>(*this); }
  void setProperties(const NSDictionary& properties) const {
    objc::send<"setProperties:">(*this, properties);
  }
  NSInteger cellType() const { return objc::send<"cellType", NSInteger>(*this); }
  void setCellType(NSInteger type) const { objc::send<"setCellType:">(*this, type); }
  /// Null where the list names none, or one that nobody has registered.
  objc::ClassRef cellClass() const { return objc::send<"cellClass", objc::ClassRef>(*this); }
  objc::ClassRef detailControllerClass() const {
    return objc::send<"detailControllerClass", objc::ClassRef>(*this);
  }
  objc::Selector action() const { return objc::send<"action", objc::Selector>(*this); }
  void setAction(objc::Selector action) const { objc::send<"setAction:">(*this, action); }

  template <class T = NSObject>
  T propertyForKey(const NSString& key) const {
    return objc::send<"propertyForKey:", T>(*this, key);
  }
  /// A nil value removes the property.
  void setProperty(const objc::Object& value, const NSString& key) const {
    objc::send<"setProperty:forKey:">(*this, value, key);
  }
  /// The row's value, by the getter on the target.
  template <class T = NSObject>
  T performGetter() const {
    return objc::send<"performGetter", T>(*this);
  }
  void performSetterWithValue(const objc::Object& value) const {
    objc::send<"performSetterWithValue:">(*this, value);
  }
  NSArray values() const { return objc::send<"values", NSArray>(*this); }
  NSDictionary titleDictionary() const { return objc::send<"titleDictionary", NSDictionary>(*this); }
  NSDictionary shortTitleDictionary() const {
    return objc::send<"shortTitleDictionary", NSDictionary>(*this);
  }
  void setValues(const NSArray& values, const NSArray& titles) const {
    objc::send<"setValues:titles:">(*this, values, titles);
  }
  void setValues(const NSArray& values, const NSArray& titles, const NSArray& short_titles) const {
    objc::send<"setValues:titles:shortTitles:">(*this, values, titles, short_titles);
  }
};

/// A page of Settings, whatever it shows.
class PSViewController : public UIViewController {
 public:
  using Base = UIViewController;
  static constexpr objc::FixedString kClass{"PSViewController"};
  using UIViewController::UIViewController;

  /// The row that opened the page; nil for the first page.
  PSSpecifier specifier() const { return objc::send<"specifier", PSSpecifier>(*this); }
  void setSpecifier(const PSSpecifier& specifier) const { objc::send<"setSpecifier:">(*this, specifier); }
  void setParentController(const UIViewController& page) const {
    objc::send<"setParentController:">(*this, page);
  }
  void setRootController(const UIViewController& controller) const {
    objc::send<"setRootController:">(*this, controller);
  }
  /// Opens another page on top of this one.
  void pushController(const UIViewController& page, bool animated) const {
    objc::send<"pushController:animate:">(*this, page, animated);
  }
};

/// A page that lists specifiers.
class PSListController : public PSViewController {
 public:
  using Base = PSViewController;
  static constexpr objc::FixedString kClass{"PSListController"};
  using PSViewController::PSViewController;

  /// Nil before the view is loaded.
  UITableView table() const { return objc::send<"table", UITableView>(*this); }

  /// The rows that the page shows; a subclass fills the framework's variable in its override.
  NSMutableArray specifiers() const { return objc::send<"specifiers", NSMutableArray>(*this); }
  /// The specifiers of a list in the page's bundle, by file name without extension, in file order.
  NSMutableArray loadSpecifiersFromPlistName(const NSString& name, const objc::Object& target) const {
    return objc::send<"loadSpecifiersFromPlistName:target:", NSMutableArray>(*this, name, target);
  }
  void insertSpecifierAfterSpecifier(const PSSpecifier& specifier, const PSSpecifier& anchor,
                                     bool animated) const {
    objc::send<"insertSpecifier:afterSpecifier:animated:">(*this, specifier, anchor, animated);
  }
  void removeSpecifier(const PSSpecifier& specifier, bool animated) const {
    objc::send<"removeSpecifier:animated:">(*this, specifier, animated);
  }
  /// Nil where no row of that identifier is shown.
  PSSpecifier specifierForID(const NSString& identifier) const {
    return objc::send<"specifierForID:", PSSpecifier>(*this, identifier);
  }
  /// The page that the row opens, set up for the row; nil where it opens none.
  UIViewController controllerForSpecifier(const PSSpecifier& specifier) const {
    return objc::send<"controllerForSpecifier:", UIViewController>(*this, specifier);
  }
  UITableViewStyle tableStyle() const { return objc::send<"tableStyle", UITableViewStyle>(*this); }
  NSInteger numberOfGroups() const { return objc::send<"numberOfGroups", NSInteger>(*this); }
  NSInteger rowsForGroup(NSInteger group) const {
    return objc::send<"rowsForGroup:", NSInteger>(*this, group);
  }
  void reloadSpecifiers() const { objc::send<"reloadSpecifiers">(*this); }
  NSBundle bundle() const { return objc::send<"bundle", NSBundle>(*this); }

 protected:
  static constexpr objc::InstanceVariable<"_specifiers", NSMutableArray> kSpecifiers{};
  /// The framework's own variable: the list that is shown, nil until it is built.
  NSMutableArray& specifiers_variable() const {
    return objc::variable_of<PSListController>(*this, kSpecifiers);
  }
};

/// A row of a page, in the table.
class PSTableCell : public UITableViewCell {
 public:
  using Base = UITableViewCell;
  static constexpr objc::FixedString kClass{"PSTableCell"};
  using UITableViewCell::UITableViewCell;

  PSSpecifier specifier() const { return objc::send<"specifier", PSSpecifier>(*this); }
  void setSpecifier(const PSSpecifier& specifier) const { objc::send<"setSpecifier:">(*this, specifier); }
  NSString title() const { return objc::send<"title", NSString>(*this); }
  void setTitle(const NSString& title) const { objc::send<"setTitle:">(*this, title); }
  UILabel titleLabel() const { return objc::send<"titleLabel", UILabel>(*this); }
  NSObject value() const { return objc::send<"value", NSObject>(*this); }
  void setValue(const objc::Object& value) const { objc::send<"setValue:">(*this, value); }
  void setIcon(const UIImage& icon) const { objc::send<"setIcon:">(*this, icon); }
  bool cellEnabled() const { return objc::send<"cellEnabled", bool>(*this); }
  void setCellEnabled(bool enabled) const { objc::send<"setCellEnabled:">(*this, enabled); }
  bool isChecked() const { return objc::send<"isChecked", bool>(*this); }
  void setChecked(bool checked) const { objc::send<"setChecked:">(*this, checked); }
  void refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const {
    objc::send<"refreshCellContentsWithSpecifier:">(*this, specifier);
  }
};

/// A row with a control, through which its value is set.
class PSControlTableCell : public PSTableCell {
 public:
  using Base = PSTableCell;
  static constexpr objc::FixedString kClass{"PSControlTableCell"};
  using PSTableCell::PSTableCell;

  template <class T = UIControl>
  T control() const {
    return objc::send<"control", T>(*this);
  }
  void setControl(const UIControl& control) const { objc::send<"setControl:">(*this, control); }
  /// What the control shows, as it is stored.
  NSObject controlValue() const { return objc::send<"controlValue", NSObject>(*this); }
};

class PSSwitchTableCell : public PSControlTableCell {
 public:
  using Base = PSControlTableCell;
  static constexpr objc::FixedString kClass{"PSSwitchTableCell"};
  using PSControlTableCell::PSControlTableCell;
};

class PSSliderTableCell : public PSControlTableCell {
 public:
  using Base = PSControlTableCell;
  static constexpr objc::FixedString kClass{"PSSliderTableCell"};
  using PSControlTableCell::PSControlTableCell;
};

class PSSegmentTableCell : public PSControlTableCell {
 public:
  using Base = PSControlTableCell;
  static constexpr objc::FixedString kClass{"PSSegmentTableCell"};
  using PSControlTableCell::PSControlTableCell;
};

/// A row to write in.
class PSEditableTableCell : public PSTableCell {
 public:
  using Base = PSTableCell;
  static constexpr objc::FixedString kClass{"PSEditableTableCell"};
  using PSTableCell::PSTableCell;

  UITextField textField() const { return objc::send<"textField", UITextField>(*this); }
};

class PSSpinnerTableCell : public PSTableCell {
 public:
  using Base = PSTableCell;
  static constexpr objc::FixedString kClass{"PSSpinnerTableCell"};
  using PSTableCell::PSTableCell;
};

/// The page on which one of a row's values is chosen.
class PSListItemsController : public PSListController {
 public:
  using Base = PSListController;
  static constexpr objc::FixedString kClass{"PSListItemsController"};
  using PSListController::PSListController;
};
