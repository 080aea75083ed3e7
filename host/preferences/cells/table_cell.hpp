// host/preferences/cells/table_cell.hpp: PSTableCell: a row that shows a specifier.
#pragma once

#include "host/preferences/specifier.hpp"
#include "host/uikit/tables/table_cell.hpp"

namespace wispen::preferences {

struct CellState {
  PSSpecifier specifier;
  CellType type = CellType::StaticText;
  objc::Weak<NSObject> target;
  objc::Selector action;
  UIImage icon;
  NSObject value;
  bool enabled = true;
  bool checked = false;
};

/// The host's PSTableCell: title, icon, value at the right, accessory and colours by the kind of row. What a
/// subclass changes it changes by overriding `newControl`, `refreshCellContentsWithSpecifier:` and the like.
class Cell : public objc::Authored<Cell, uikit::TableCell> {
 public:
  static constexpr objc::FixedString kClass{"PSTableCell"};
  using Authored::Authored;

  static void define();
  CellState& parts() const { return state<CellState>(); }

  /// A cell for the row, of the class that the row names or that its kind has. The reuse identifier is for
  /// rows that can take over each other's cells: those of a row's own class are that row's alone, because
  /// such cells may keep what they read when they were made.
  static Cell make(const PSSpecifier& specifier);
  static objc::ClassRef class_for(const PSSpecifier& specifier);
  static NSString reuse_identifier(const PSSpecifier& specifier);

  PSSpecifier specifier() const { return parts().specifier; }
  void setSpecifier(const PSSpecifier& specifier) const;
  void refresh(const PSSpecifier& specifier) const;
  void setTitle(const NSString& title) const;
  void setValue(const NSObject& value) const;
  bool is_enabled() const { return parts().enabled; }
  void setCellEnabled(bool enabled) const;
  void setChecked(bool checked) const;
  void apply_colours() const;
};

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
