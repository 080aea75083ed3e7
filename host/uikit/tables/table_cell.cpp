// host/uikit/tables/table_cell.cpp: UITableViewCell: one row of a table.

#include "host/uikit/tables/table_cell.hpp"

#include <algorithm>

#include "host/graphics/canvas.hpp"
#include "host/graphics/symbol.hpp"
#include "host/uikit/events/focus.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/events/touch.hpp"
#include "host/uikit/painting/painter.hpp"
#include "host/uikit/tables/table_cell_layout.hpp"
#include "host/uikit/tables/table_view.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

graphics::Font body_font() {
  return graphics::text_style_font(graphics::TextStyle::Body, display_settings().content_size);
}
graphics::Font detail_font(CellStyle style) {
  const auto text_style =
      style == CellStyle::Subtitle ? graphics::TextStyle::Caption1 : graphics::TextStyle::Body;
  return graphics::text_style_font(text_style, display_settings().content_size);
}

}  // namespace

Label TableCell::textLabel() const {
  Label& label = cell().text_label;
  if (!label) {
    label = Label::make();
    label.setFont(font_from(body_font()));
    cell().content.addSubview(label);
  }
  return label;
}

Label TableCell::detailTextLabel() const {
  Label& label = cell().detail_label;
  if (!label && cell().style != CellStyle::Default) {
    label = Label::make();
    label.setFont(font_from(detail_font(cell().style)));
    label.setTextColor(cell().style == CellStyle::Subtitle ? UIColor::labelColor()
                                                           : UIColor::secondaryLabelColor());
    cell().content.addSubview(label);
  }
  return label;
}

ImageView TableCell::imageView() const {
  ImageView& view = cell().image_view;
  if (!view) {
    view = ImageView::make(UIImage());
    cell().content.addSubview(view);
  }
  return view;
}

struct TableCellMethods {
  using Self = TableCell;

  static Self initWithStyle(objc::Allocated<Self> self, NSInteger style, const NSString& identifier) {
    Self cell = std::move(self).initialize_super<"initWithFrame:">(Rect{{0, 0}, {320, kDefaultRowHeight}});
    if (!cell) return cell;
    TableCellState& state = cell.cell();
    state.style = static_cast<CellStyle>(style);
    state.reuse_identifier = identifier;
    state.content = View::make(cell.bounds());
    cell.addSubview(state.content);
    cell.setBackgroundColor(UIColor::secondarySystemGroupedBackgroundColor());
    return cell;
  }
  static Self initWithFrame(objc::Allocated<Self> self, const Rect&) {
    return std::move(self).initialize<"initWithStyle:reuseIdentifier:">(NSInteger{0}, NSString());
  }

  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<View>());
    TableCellState& state = self.cell();
    const Rect bounds = self.bounds();
    const bool turned = self.is_right_to_left();
    const double room = accessory_room(self);
    state.content.setFrame({{turned ? room : 0, 0}, {bounds.width() - room, bounds.height()}});
    if (state.accessory_view) {
      const Size size = state.accessory_view.bounds().size;
      const double x = turned ? kCellAccessoryMargin : bounds.width() - kCellAccessoryMargin - size.width;
      state.accessory_view.setFrame(
          {{x, round_to_pixel((bounds.height() - size.height) / 2, display_settings().scale)}, size});
    }
    for (const View& back : {state.background_view, state.selected_background_view}) {
      if (back) back.setFrame(bounds);
    }
    place_cell_content(self);
  }
  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    const TableCellState& state = self.cell();
    if ((state.highlighted || state.selected) && state.selection_style != 0 &&
        !state.selected_background_view) {
      canvas.fill(bounds, colour_of(UIColor::systemGray4Color()));
    }
    paint_accessory(self, canvas, bounds);
  }

  static void paint_accessory(const Self& self, graphics::Canvas& canvas, const Rect& bounds) {
    const TableCellState& state = self.cell();
    if (state.accessory_view || state.accessory == CellAccessory::None) return;
    const bool turned = self.is_right_to_left();
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
    if (state.accessory == CellAccessory::Disclosure || state.accessory == CellAccessory::DetailDisclosure) {
      draw("chevron.forward", 13.5, graphics::font_weight::kSemibold, box(edge, kCellAccessoryWidth),
           UIColor::tertiaryLabelColor());
      edge += kCellAccessoryWidth + 6;
    }
    if (state.accessory == CellAccessory::Checkmark) {
      draw("checkmark", 15, graphics::font_weight::kSemibold, box(edge, 14), self.tintColor());
    }
    if (state.accessory == CellAccessory::Detail || state.accessory == CellAccessory::DetailDisclosure) {
      draw("info.circle", 20, graphics::font_weight::kRegular, box(edge, 22), self.tintColor());
    }
  }

  static void paint_separator(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    if (!self.cell().last_in_section) {
      const double line = 1 / canvas.scale();
      const double start = self.separator_start();
      const double x = self.is_right_to_left() ? bounds.min_x() : bounds.min_x() + start;
      canvas.fill(Rect{{x, bounds.max_y() - line}, {bounds.width() - start, line}},
                  colour_of(UIColor::separatorColor()));
    }
  }

  // Touches that nothing inside takes are the row's.
  static void touchesBegan(const Self& self, const NSObject&, const NSObject&) {
    const TableView table = self.cell().table.get().as<TableView>();
    if (table && table.may_highlight(self)) objc::send<"setHighlighted:animated:">(self, true, false);
  }
  static void touchesMoved(const Self& self, const NSObject& touches, const NSObject&) {
    if (!self.cell().highlighted) return;
    if (!self.bounds().contains(touch_of(touches).locationInView(self))) {
      objc::send<"setHighlighted:animated:">(self, false, false);
    }
  }
  static void touchesEnded(const Self& self, const NSObject&, const NSObject&) {
    if (!self.cell().highlighted) return;
    const TableView table = self.cell().table.get().as<TableView>();
    objc::send<"setHighlighted:animated:">(self, false, false);
    if (table) table.select(self);
  }
  static void touchesCancelled(const Self& self, const NSObject&, const NSObject&) {
    objc::send<"setHighlighted:animated:">(self, false, false);
  }
  static bool canBecomeFocused(const Self& self) {
    const TableView table = self.cell().table.get().as<TableView>();
    return table && table.may_highlight(self);
  }
  static bool showsFocusInside(const Self&) { return true; }
  static bool handleKey(const Self& self, const Key& key) {
    if (focused_view() != self) return false;
    const bool turned = self.is_right_to_left();
    const bool opens = key.code() == (turned ? KeyCode::Left : KeyCode::Right) &&
                       self.cell().accessory == CellAccessory::Disclosure;
    if (!key.is_space() && key.code() != KeyCode::Return && !opens) return false;
    const TableView table = self.cell().table.get().as<TableView>();
    if (table) table.select(self);
    return true;
  }

  static NSString reuseIdentifier(const Self& self) { return self.cell().reuse_identifier; }
  static void prepareForReuse(const Self& self) {
    objc::send<"setHighlighted:animated:">(self, false, false);
    objc::send<"setSelected:animated:">(self, false, false);
  }
  static NSInteger accessoryType(const Self& self) { return static_cast<NSInteger>(self.cell().accessory); }
  static void setAccessoryType(const Self& self, NSInteger type) {
    self.cell().accessory = static_cast<CellAccessory>(type);
    self.setNeedsLayout();
    self.setNeedsDisplay();
  }
  static View accessoryView(const Self& self) { return self.cell().accessory_view; }
  static void setAccessoryView(const Self& self, const View& view) {
    View& slot = self.cell().accessory_view;
    if (slot == view) return;
    if (slot) slot.removeFromSuperview();
    slot = view;
    if (view) self.addSubview(view);
    self.setNeedsLayout();
  }
  static View backgroundView(const Self& self) { return self.cell().background_view; }
  static void setBackgroundView(const Self& self, const View& view) {
    View& slot = self.cell().background_view;
    if (slot) slot.removeFromSuperview();
    slot = view;
    if (view) self.insertSubviewAtIndex(view, 0);
    self.setNeedsLayout();
  }
  static View selectedBackgroundView(const Self& self) { return self.cell().selected_background_view; }
  static void setSelectedBackgroundView(const Self& self, const View& view) {
    View& slot = self.cell().selected_background_view;
    if (slot) slot.removeFromSuperview();
    slot = view;
    if (!view) return;
    view.setHidden(true);
    self.insertSubviewAtIndex(view, self.cell().background_view ? 1 : 0);
  }
  static NSInteger selectionStyle(const Self& self) { return self.cell().selection_style; }
  static void setSelectionStyle(const Self& self, NSInteger style) { self.cell().selection_style = style; }
  static bool isSelected(const Self& self) { return self.cell().selected; }
  static bool isHighlighted(const Self& self) { return self.cell().highlighted; }
  static void setSelected(const Self& self, bool selected) {
    objc::send<"setSelected:animated:">(self, selected, false);
  }
  static void setHighlighted(const Self& self, bool highlighted) {
    objc::send<"setHighlighted:animated:">(self, highlighted, false);
  }
  static void show_back(const Self& self) {
    TableCellState& state = self.cell();
    const bool marked = state.highlighted || state.selected;
    if (state.selected_background_view) state.selected_background_view.setHidden(!marked);
    for (const Label& label : {state.text_label, state.detail_label}) {
      if (label) label.setHighlighted(marked);
    }
    self.setNeedsDisplay();
  }
  static EdgeInsets separatorInset(const Self& self) { return {0, self.separator_start(), 0, 0}; }
  static void setSeparatorInset(const Self& self, const EdgeInsets& inset) {
    self.cell().separator_inset = inset.left;
    self.setNeedsDisplay();
  }
  static void traitCollectionDidChange(const Self& self, const NSObject&) {
    TableCellState& state = self.cell();
    // The user's text size is followed by labels that have the cell's own fonts.
    if (state.text_label)
      state.text_label.setFont(font_from(font_of(state.text_label.font()).with_size(body_font().size())));
    if (state.detail_label) {
      state.detail_label.setFont(
          font_from(font_of(state.detail_label.font()).with_size(detail_font(state.style).size())));
    }
    self.setNeedsLayout();
  }
  static NSString accessibilityLabel(const Self& self) {
    const NSString own = objc::send_super<"accessibilityLabel", NSString>(self, objc::class_for<View>());
    if (own) return own;
    return self.cell().text_label ? self.cell().text_label.text() : own;
  }
};

double TableCell::separator_start() const {
  const TableCellState& state = cell();
  if (state.separator_inset >= 0) return state.separator_inset;
  const bool has_image = state.image_view && state.image_view.image();
  return has_image ? kCellMargin + kCellImageSize + kCellImageGap : kCellMargin;
}

void TableCell::set_highlighted(bool highlighted, bool) const {
  if (cell().highlighted == highlighted) return;
  cell().highlighted = highlighted;
  TableCellMethods::show_back(*this);
}

void TableCell::set_selected(bool selected, bool) const {
  if (cell().selected == selected) return;
  cell().selected = selected;
  TableCellMethods::show_back(*this);
}

void TableCell::define() {
  using M = TableCellMethods;
  objc::Class<TableCell> cell;
  cell.state<TableCellState>()
      .initializer<"initWithStyle:reuseIdentifier:", &M::initWithStyle>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"reuseIdentifier", &M::reuseIdentifier>()
      .method<"prepareForReuse", &M::prepareForReuse>()
      .method<"contentView", &TableCell::contentView>()
      .method<"textLabel", &TableCell::textLabel>()
      .method<"detailTextLabel", &TableCell::detailTextLabel>()
      .method<"imageView", &TableCell::imageView>()
      .method<"accessoryType", &M::accessoryType>()
      .method<"setAccessoryType:", &M::setAccessoryType>()
      .method<"accessoryView", &M::accessoryView>()
      .method<"setAccessoryView:", &M::setAccessoryView>()
      .method<"backgroundView", &M::backgroundView>()
      .method<"setBackgroundView:", &M::setBackgroundView>()
      .method<"selectedBackgroundView", &M::selectedBackgroundView>()
      .method<"setSelectedBackgroundView:", &M::setSelectedBackgroundView>()
      .method<"selectionStyle", &M::selectionStyle>()
      .method<"setSelectionStyle:", &M::setSelectionStyle>()
      .method<"isSelected", &M::isSelected>()
      .method<"setSelected:", &M::setSelected>()
      .method<"setSelected:animated:", &TableCell::set_selected>()
      .method<"isHighlighted", &M::isHighlighted>()
      .method<"setHighlighted:", &M::setHighlighted>()
      .method<"setHighlighted:animated:", &TableCell::set_highlighted>()
      .method<"separatorInset", &M::separatorInset>()
      .method<"setSeparatorInset:", &M::setSeparatorInset>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"sizeThatFits:", &fitting_cell_size>()
      .method<"touchesBegan:withEvent:", &M::touchesBegan>()
      .method<"touchesMoved:withEvent:", &M::touchesMoved>()
      .method<"touchesEnded:withEvent:", &M::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &M::touchesCancelled>()
      .method<"canBecomeFocused", &M::canBecomeFocused>()
      .method<"_showsFocusInside", &M::showsFocusInside>()
      .method<"traitCollectionDidChange:", &M::traitCollectionDidChange>()
      .method<"accessibilityLabel", &M::accessibilityLabel>()
      .method<"_handleKey:", &M::handleKey>()
      .register_class();
  set_painter(objc::class_for<TableCell>(), &M::paint);
  set_overlay_painter(objc::class_for<TableCell>(), &M::paint_separator);
}

}  // namespace wispen::uikit
