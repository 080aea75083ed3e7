// host/uikit/containers/tables/table_cell.hpp: UITableViewCell: one row of a table.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/graphics/canvas.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

inline constexpr double kCellMargin = 16;
inline constexpr double kDefaultRowHeight = 44;
inline constexpr double kCellImageSize = 29;  // of an icon, whatever its own size
inline constexpr double kCellImageGap = 15;
inline constexpr double kCellAccessoryWidth = 8;
inline constexpr double kCellAccessoryMargin = 16;

class TableCell : public objc::Implementation<TableCell, UITableViewCell> {
 public:
  static UITableViewCell initWithStyle(objc::Allocated<UITableViewCell> self, UITableViewCellStyle style,
                                       const NSString& identifier);
  static UITableViewCell initWithFrame(objc::Allocated<UITableViewCell> self, const Rect&);
  void layoutSubviews();
  void paint(graphics::Canvas& canvas, const Rect& bounds);
  void paint_accessory(graphics::Canvas& canvas, const Rect& bounds);
  void paint_separator(graphics::Canvas& canvas, const Rect& bounds);
  void touchesBegan(const NSObject&, const NSObject&);
  void touchesMoved(const NSObject& touches, const NSObject&);
  void touchesEnded(const NSObject&, const NSObject&);
  void touchesCancelled(const NSObject&, const NSObject&);
  bool canBecomeFocused();
  bool showsFocusInside() { return true; }
  bool handleKey(const UIKey& key);
  void prepareForReuse();
  void setAccessoryType(UITableViewCellAccessoryType type);
  void setAccessoryView(const UIView& view);
  void setBackgroundView(const UIView& view);
  void setSelectedBackgroundView(const UIView& view);
  void set_selected_at_once(bool selected) { self().setSelected(selected, false); }
  void set_highlighted_at_once(bool highlighted) { self().setHighlighted(highlighted, false); }
  void show_back();
  EdgeInsets separatorInset() { return {0, separator_start(), 0, 0}; }
  void setSeparatorInset(const EdgeInsets& inset);
  void traitCollectionDidChange(const NSObject&);
  NSString accessibilityLabel();
  /// Made when first asked for.
  UILabel textLabel();
  UILabel detailTextLabel();
  UIImageView imageView();
  /// Where the separator below it begins, from the leading edge.
  double separator_start();
  void set_highlighted(bool highlighted, bool);
  void set_selected(bool selected, bool);

  const UIView& accessory_view() const { return accessory_view_; }
  UITableViewCellAccessoryType accessory() const { return accessory_; }
  UITableViewCellStyle style() const { return style_; }
  // Nil where nobody has asked for them.
  const UILabel& text_label_if_made() const { return text_label_; }
  const UILabel& detail_label_if_made() const { return detail_label_; }
  const UIImageView& image_view_if_made() const { return image_view_; }
  const UIView& content_view() const { return content_; }
  const UIView& background_view() const { return background_view_; }
  const NSString& reuse_identifier() const { return reuse_identifier_; }
  /// By the table that shows it.
  void set_table(const UITableView& table) { table_ = objc::Unowned<UITableView>(table); }
  void set_last_in_section(bool last);
  /// The size that its content, or the constraints in it, need in that width.
  Size sizeThatFits(const Size& size);

 private:
  friend void define_table_cell();

  /// Room on the trailing side that is not the content's.
  double accessory_room() const;
  bool is_stacked() const;
  bool has_detail() const;
  /// Lays out what the cell made of its content view, whose frame is set.
  void place_content();

  UITableViewCellStyle style_ = UITableViewCellStyle::Default;
  NSString reuse_identifier_;
  UIView content_;
  UILabel text_label_;
  UILabel detail_label_;
  UIImageView image_view_;
  UITableViewCellAccessoryType accessory_ = UITableViewCellAccessoryType::None;
  UIView accessory_view_;  // in place of the accessory
  UIView background_view_;
  UIView selected_background_view_;
  UITableViewCellSelectionStyle selection_style_ = UITableViewCellSelectionStyle::Default;
  bool selected_ = false;
  bool highlighted_ = false;
  bool last_in_section_ = false;
  double separator_inset_ = -1;  // none of its own
  objc::Unowned<UITableView> table_;
};

void define_table_cell();

}  // namespace wispen::uikit
