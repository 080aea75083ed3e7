// host/preferences/cells/table_cell.hpp: PSTableCell: a row that shows a specifier.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/preferences/cell_types.hpp"
#include "platform/Preferences.hpp"

namespace wispen::preferences {

/// A cell for the row, of the class that the row names or that its kind has. The reuse identifier is for rows
/// that can take over each other's cells: those of a row's own class are that row's alone, because such cells
/// may keep what they read when they were made.
PSTableCell make_cell(const PSSpecifier& specifier);
objc::ClassRef cell_class_for(const PSSpecifier& specifier);
NSString reuse_identifier(const PSSpecifier& specifier);

/// The host's PSTableCell: title, icon, value at the right, accessory and colours by the kind of row. What a
/// subclass changes it changes by overriding `newControl`, `refreshCellContentsWithSpecifier:` and the like.
class Cell : public objc::Implementation<Cell, PSTableCell> {
 public:
  static PSTableCell initWithStyle(objc::Allocated<PSTableCell> self, UITableViewCellStyle style,
                                   const NSString& identifier, const PSSpecifier& specifier);
  static PSTableCell initPlain(objc::Allocated<PSTableCell> self, UITableViewCellStyle style,
                               const NSString& identifier);
  static NSInteger cell_type_from_string(objc::ClassRef, const NSString& name);
  static objc::ClassRef cell_class(objc::ClassRef, const PSSpecifier& row) { return cell_class_for(row); }
  static NSString identifier_for(objc::ClassRef, const PSSpecifier& row) { return reuse_identifier(row); }
  NSInteger type() { return static_cast<NSInteger>(type_); }
  void setType(NSInteger type);
  NSObject target() { return target_.lock(); }
  void setTarget(const NSObject& target) { target_ = target; }
  NSString title() { return self().textLabel().text(); }
  void setIcon(const UIImage& icon);
  Size sizeThatFits(const Size& size);
  void tintColorDidChange();
  void reload(const PSSpecifier& specifier, bool animated);
  bool canReload() { return true; }
  void setSpecifier(const PSSpecifier& specifier);
  void setTitle(const NSString& title);
  void setValue(const NSObject& value);
  void setCellEnabled(bool enabled);
  void setChecked(bool checked);
  void apply_colours();
  void refresh(const PSSpecifier& specifier);

  CellType kind() const { return type_; }
  /// What the row shows, and no more: nothing is drawn anew.
  void keep_value(const NSObject& value) { value_ = value; }
  UILabel titleLabel() { return self().textLabel(); }
  UILabel valueLabel() { return self().detailTextLabel(); }
  UIImageView iconImageView() { return self().imageView(); }

 private:
  friend void define_table_cell();

  PSSpecifier specifier_;
  CellType type_ = CellType::StaticText;
  objc::Weak<NSObject> target_;
  objc::Selector action_;
  UIImage icon_;
  NSObject value_;
  bool enabled_ = true;
  bool checked_ = false;
};

void define_table_cell();

/// Whether a property is there and true.
bool is_set(const PSSpecifier& specifier, const NSString& key);
/// The text that a row shows for a value: its short title, its title, or the value itself in words.
NSString displayed_value(const PSSpecifier& specifier, const NSObject& value);
/// The picture that a row names, in the bundle of its page; nil where there is none.
UIImage icon_of(const PSSpecifier& specifier);
/// An image of the page's bundle by a property's file name, with or without extension.
UIImage image_named_by(const PSSpecifier& specifier, const NSString& key);
/// The bundle of the row's page.
NSBundle bundle_of(const PSSpecifier& specifier);

}  // namespace wispen::preferences
