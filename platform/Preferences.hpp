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
  NSString identifier() const { return objc::send<"identifier", NSString>(*this); }
  /// The page; the getter, the setter and the action are sent to it.
  NSObject target() const { return objc::send<"target", NSObject>(*this); }
  /// Everything that the list says of the row, by key.
  NSMutableDictionary properties() const { return objc::send<"properties", NSMutableDictionary>(*this); }
  NSInteger cellType() const { return objc::send<"cellType", NSInteger>(*this); }

  template <class T = NSObject>
  T propertyForKey(const NSString& key) const {
    return objc::send<"propertyForKey:", T>(*this, key);
  }
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
};

/// A page that lists specifiers.
class PSListController : public UIViewController {
 public:
  using Base = UIViewController;
  static constexpr objc::FixedString kClass{"PSListController"};
  using UIViewController::UIViewController;

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
  NSString title() const { return objc::send<"title", NSString>(*this); }
  void setTitle(const NSString& title) const { objc::send<"setTitle:">(*this, title); }
  UILabel titleLabel() const { return objc::send<"titleLabel", UILabel>(*this); }
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
