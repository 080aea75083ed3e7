// host/uikit/tables/table_cell.hpp: UITableViewCell: one row of a table.
#pragma once

#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/views/view.hpp"

namespace wispen::uikit {

/// The platform's values.
enum class CellStyle : NSInteger { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
enum class CellAccessory : NSInteger {
  None = 0,
  Disclosure = 1,
  DetailDisclosure = 2,
  Checkmark = 3,
  Detail = 4,
};

struct TableCellState {
  CellStyle style = CellStyle::Default;
  NSString reuse_identifier;
  View content;
  Label text_label;
  Label detail_label;
  ImageView image_view;
  CellAccessory accessory = CellAccessory::None;
  View accessory_view;  // in place of the accessory
  View background_view;
  View selected_background_view;
  NSInteger selection_style = 3;  // 0 none
  bool selected = false;
  bool highlighted = false;
  bool last_in_section = false;
  double separator_inset = -1;  // none of its own
  objc::Unowned<View> table;
};

class TableCell : public objc::Authored<TableCell, View> {
 public:
  static constexpr objc::FixedString kClass{"UITableViewCell"};
  using Authored::Authored;

  static void define();
  TableCellState& cell() const { return state<TableCellState>(); }

  View contentView() const { return cell().content; }
  /// Made when first asked for.
  Label textLabel() const;
  Label detailTextLabel() const;
  ImageView imageView() const;
  void set_highlighted(bool highlighted, bool animated) const;
  void set_selected(bool selected, bool animated) const;
  /// Where the separator below it begins, from the leading edge.
  double separator_start() const;

 private:
  friend struct TableCellMethods;
};

inline constexpr double kCellMargin = 16;
inline constexpr double kDefaultRowHeight = 44;

}  // namespace wispen::uikit
