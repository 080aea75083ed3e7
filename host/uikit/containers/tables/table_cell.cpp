// host/uikit/containers/tables/table_cell.cpp: UITableViewCell: one row of a table.

#include "host/uikit/containers/tables/table_cell.hpp"

#include <utility>

#include "host/graphics/symbol.hpp"
#include "host/uikit/containers/tables/table_view.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/events/touch.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

graphics::Font body_font() {
  return graphics::text_style_font(graphics::TextStyle::Body, display_settings().content_size);
}
graphics::Font detail_font(UITableViewCellStyle style) {
  const auto text_style =
      style == UITableViewCellStyle::Subtitle ? graphics::TextStyle::Caption1 : graphics::TextStyle::Body;
  return graphics::text_style_font(text_style, display_settings().content_size);
}

}  // namespace

UITableViewCell TableCell::initWithStyle(objc::Allocated<UITableViewCell> self, UITableViewCellStyle style,
                                         const NSString& identifier) {
  UITableViewCell cell =
      super_init<"initWithFrame:">(std::move(self), Rect{{0, 0}, {320, kDefaultRowHeight}});
  if (!cell) return cell;
  of(cell).style_ = style;
  of(cell).reuse_identifier_ = identifier;
  of(cell).content_ = UIView::alloc().initWithFrame(cell.bounds());
  cell.addSubview(of(cell).content_);
  cell.setBackgroundColor(UIColor::secondarySystemGroupedBackgroundColor());
  return cell;
}

UITableViewCell TableCell::initWithFrame(objc::Allocated<UITableViewCell> self, const Rect&) {
  return std::move(self).initialize<"initWithStyle:reuseIdentifier:">(UITableViewCellStyle::Default,
                                                                      NSString());
}

void TableCell::layoutSubviews() {
  super<"layoutSubviews">();
  const Rect bounds = self().bounds();
  const bool turned = is_right_to_left(self());
  const double room = accessory_room();
  content_.setFrame(Rect{{turned ? room : 0, 0}, {bounds.width() - room, bounds.height()}});
  if (accessory_view_) {
    const Size size = accessory_view_.bounds().size;
    const double x = turned ? kCellAccessoryMargin : bounds.width() - kCellAccessoryMargin - size.width;
    accessory_view_.setFrame(
        {{x, round_to_pixel((bounds.height() - size.height) / 2, display_settings().scale)}, size});
  }
  for (const UIView& back : {background_view_, selected_background_view_}) {
    if (back) back.setFrame(bounds);
  }
  place_content();
}

void TableCell::paint(graphics::Canvas& canvas, const Rect& bounds) {
  if ((highlighted_ || selected_) && selection_style_ != UITableViewCellSelectionStyle::None &&
      !selected_background_view_) {
    canvas.fill(bounds, colour_of(UIColor::systemGray4Color()));
  }
  paint_accessory(canvas, bounds);
}

void TableCell::paint_accessory(graphics::Canvas& canvas, const Rect& bounds) {
  if (accessory_view_ || accessory_ == UITableViewCellAccessoryType::None) return;
  const bool turned = is_right_to_left(self());
  const auto box = [&](double from_edge, double width) {
    const double x = turned ? bounds.min_x() + from_edge : bounds.max_x() - from_edge - width;
    return Rect{{x, bounds.min_y()}, {width, bounds.height()}};
  };
  const auto draw = [&](const char* name, double size, double weight, const Rect& where,
                        const UIColor& tint) {
    graphics::SymbolConfiguration configuration;
    configuration.point_size = size;
    configuration.weight = weight;
    configuration.display_scale = canvas.scale();
    configuration.right_to_left = turned;
    const auto symbol = graphics::symbol_image(name, configuration);
    if (symbol) canvas.draw(symbol->image, where, ContentMode::Centre, colour_of(tint));
  };
  double edge = kCellAccessoryMargin;
  if (accessory_ == UITableViewCellAccessoryType::DisclosureIndicator ||
      accessory_ == UITableViewCellAccessoryType::DetailDisclosureButton) {
    draw("chevron.forward", 13.5, graphics::font_weight::kSemibold, box(edge, kCellAccessoryWidth),
         UIColor::tertiaryLabelColor());
    edge += kCellAccessoryWidth + 6;
  }
  if (accessory_ == UITableViewCellAccessoryType::Checkmark) {
    draw("checkmark", 15, graphics::font_weight::kSemibold, box(edge, 14), self().tintColor());
  }
  if (accessory_ == UITableViewCellAccessoryType::DetailButton ||
      accessory_ == UITableViewCellAccessoryType::DetailDisclosureButton) {
    draw("info.circle", 20, graphics::font_weight::kRegular, box(edge, 22), self().tintColor());
  }
}

void TableCell::paint_separator(graphics::Canvas& canvas, const Rect& bounds) {
  if (last_in_section_) return;
  const double line = 1 / canvas.scale();
  const double start = separator_start();
  const double x = is_right_to_left(self()) ? bounds.min_x() : bounds.min_x() + start;
  canvas.fill(Rect{{x, bounds.max_y() - line}, {bounds.width() - start, line}},
              colour_of(UIColor::separatorColor()));
}

// Touches that nothing inside takes are the row's.
void TableCell::touchesBegan(const NSObject&, const NSObject&) {
  const UITableView table = table_.get();
  if (table && TableView::of(table).may_highlight(self())) self().setHighlighted(true, false);
}

void TableCell::touchesMoved(const NSObject& touches, const NSObject&) {
  if (!highlighted_) return;
  if (!Rect(self().bounds()).contains(touch_of(touches).locationInView(self()))) {
    self().setHighlighted(false, false);
  }
}

void TableCell::touchesEnded(const NSObject&, const NSObject&) {
  if (!highlighted_) return;
  const UITableView table = table_.get();
  self().setHighlighted(false, false);
  if (table) TableView::of(table).select(self());
}

void TableCell::touchesCancelled(const NSObject&, const NSObject&) { self().setHighlighted(false, false); }

bool TableCell::canBecomeFocused() {
  const UITableView table = table_.get();
  return table && TableView::of(table).may_highlight(self());
}

bool TableCell::handleKey(const UIKey& key) {
  if (focused_view() != self()) return false;
  const bool turned = is_right_to_left(self());
  const bool opens = key.press().code == (turned ? KeyCode::Left : KeyCode::Right) &&
                     accessory_ == UITableViewCellAccessoryType::DisclosureIndicator;
  if (!key.press().is_space() && key.press().code != KeyCode::Return && !opens) return false;
  const UITableView table = table_.get();
  if (table) TableView::of(table).select(self());
  return true;
}

void TableCell::prepareForReuse() {
  self().setHighlighted(false, false);
  self().setSelected(false, false);
}

void TableCell::setAccessoryType(UITableViewCellAccessoryType type) {
  accessory_ = type;
  self().setNeedsLayout();
  self().setNeedsDisplay();
}

void TableCell::setAccessoryView(const UIView& view) {
  if (accessory_view_ == view) return;
  accessory_view_.removeFromSuperview();
  accessory_view_ = view;
  if (view) self().addSubview(view);
  self().setNeedsLayout();
}

void TableCell::setBackgroundView(const UIView& view) {
  background_view_.removeFromSuperview();
  background_view_ = view;
  if (view) self().insertSubview(view, 0);
  self().setNeedsLayout();
}

void TableCell::setSelectedBackgroundView(const UIView& view) {
  selected_background_view_.removeFromSuperview();
  selected_background_view_ = view;
  if (!view) return;
  view.setHidden(true);
  self().insertSubview(view, background_view_ ? 1 : 0);
}

void TableCell::show_back() {
  const bool marked = highlighted_ || selected_;
  if (selected_background_view_) selected_background_view_.setHidden(!marked);
  for (const UILabel& label : {text_label_, detail_label_}) {
    if (label) label.setHighlighted(marked);
  }
  self().setNeedsDisplay();
}

void TableCell::setSeparatorInset(const EdgeInsets& inset) {
  separator_inset_ = inset.left;
  self().setNeedsDisplay();
}

void TableCell::traitCollectionDidChange(const NSObject&) {
  // The user's text size is followed by labels that have the cell's own fonts.
  if (text_label_) text_label_.setFont(font_from(font_of(text_label_.font()).with_size(body_font().size())));
  if (detail_label_) {
    detail_label_.setFont(font_from(font_of(detail_label_.font()).with_size(detail_font(style_).size())));
  }
  self().setNeedsLayout();
}

NSString TableCell::accessibilityLabel() {
  const NSString own = super<"accessibilityLabel", NSString>();
  if (own) return own;
  return text_label_ ? text_label_.text() : own;
}

UILabel TableCell::textLabel() {
  if (!text_label_) {
    text_label_ = objc::make<UILabel>();
    text_label_.setFont(font_from(body_font()));
    content_.addSubview(text_label_);
  }
  return text_label_;
}

UILabel TableCell::detailTextLabel() {
  UILabel& label = detail_label_;
  if (!label && style_ != UITableViewCellStyle::Default) {
    label = objc::make<UILabel>();
    label.setFont(font_from(detail_font(style_)));
    label.setTextColor(style_ == UITableViewCellStyle::Subtitle ? UIColor::labelColor()
                                                                : UIColor::secondaryLabelColor());
    content_.addSubview(label);
  }
  return label;
}

UIImageView TableCell::imageView() {
  if (!image_view_) {
    image_view_ = objc::make<UIImageView>();
    content_.addSubview(image_view_);
  }
  return image_view_;
}

double TableCell::separator_start() {
  if (separator_inset_ >= 0) return separator_inset_;
  const bool has_image = image_view_ && image_view_.image();
  return has_image ? kCellMargin + kCellImageSize + kCellImageGap : kCellMargin;
}

void TableCell::set_last_in_section(bool last) {
  if (std::exchange(last_in_section_, last) != last) self().setNeedsDisplay();
}

void TableCell::set_highlighted(bool highlighted, bool) {
  if (highlighted_ == highlighted) return;
  highlighted_ = highlighted;
  show_back();
}

void TableCell::set_selected(bool selected, bool) {
  if (selected_ == selected) return;
  selected_ = selected;
  show_back();
}

void define_table_cell() {
  auto cell = objc::Class<UITableViewCell>::implemented_by<TableCell>();
  cell.initializer<"initWithStyle:reuseIdentifier:", &TableCell::initWithStyle>()
      .initializer<"initWithFrame:", &TableCell::initWithFrame>()
      .getter<"reuseIdentifier", &TableCell::reuse_identifier_>()
      .method<"prepareForReuse", &TableCell::prepareForReuse>()
      .getter<"contentView", &TableCell::content_>()
      .method<"textLabel", &TableCell::textLabel>()
      .method<"detailTextLabel", &TableCell::detailTextLabel>()
      .method<"imageView", &TableCell::imageView>()
      .getter<"accessoryType", &TableCell::accessory_>()
      .method<"setAccessoryType:", &TableCell::setAccessoryType>()
      .getter<"accessoryView", &TableCell::accessory_view_>()
      .method<"setAccessoryView:", &TableCell::setAccessoryView>()
      .getter<"backgroundView", &TableCell::background_view_>()
      .method<"setBackgroundView:", &TableCell::setBackgroundView>()
      .getter<"selectedBackgroundView", &TableCell::selected_background_view_>()
      .method<"setSelectedBackgroundView:", &TableCell::setSelectedBackgroundView>()
      .property<"selectionStyle", "setSelectionStyle:", &TableCell::selection_style_>()
      .getter<"isSelected", &TableCell::selected_>()
      .method<"setSelected:", &TableCell::set_selected_at_once>()
      .method<"setSelected:animated:", &TableCell::set_selected>()
      .getter<"isHighlighted", &TableCell::highlighted_>()
      .method<"setHighlighted:", &TableCell::set_highlighted_at_once>()
      .method<"setHighlighted:animated:", &TableCell::set_highlighted>()
      .method<"separatorInset", &TableCell::separatorInset>()
      .method<"setSeparatorInset:", &TableCell::setSeparatorInset>()
      .method<"layoutSubviews", &TableCell::layoutSubviews>()
      .method<"sizeThatFits:", &TableCell::sizeThatFits>()
      .method<"touchesBegan:withEvent:", &TableCell::touchesBegan>()
      .method<"touchesMoved:withEvent:", &TableCell::touchesMoved>()
      .method<"touchesEnded:withEvent:", &TableCell::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &TableCell::touchesCancelled>()
      .method<"canBecomeFocused", &TableCell::canBecomeFocused>()
      .method<hooks::kShowsFocusInside, &TableCell::showsFocusInside>()
      .method<"traitCollectionDidChange:", &TableCell::traitCollectionDidChange>()
      .method<"accessibilityLabel", &TableCell::accessibilityLabel>()
      .method<hooks::kHandleKey, &TableCell::handleKey>()
      .register_class();
  set_painter<&TableCell::paint>();
  set_overlay_painter<&TableCell::paint_separator>();
}

}  // namespace wispen::uikit
