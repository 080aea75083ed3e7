#include "host/uikit/tables/table_cell_layout.hpp"

#include <algorithm>

#include "host/graphics/text_style.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/views/view_state.hpp"

namespace wispen::uikit {

namespace {

constexpr double kLabelGap = 8;
constexpr double kAccessoryGap = 8;
constexpr double kVerticalPadding = 11;

/// At the accessibility sizes words wrap, and a value stands below its title.
bool wraps() { return graphics::is_accessibility_size(display_settings().content_size); }
void let_wrap(const Label& label) {
  if (wraps() && label && label.label().lines != 0) label.setNumberOfLines(0);
}

bool is_stacked(const TableCell& cell) {
  const CellStyle style = cell.cell().style;
  return style == CellStyle::Subtitle || (style == CellStyle::Value1 && wraps());
}
bool has_detail(const TableCellState& state) {
  return state.detail_label && state.detail_label.text() && state.detail_label.text().length() > 0;
}
double half(double spare) { return round_to_pixel(spare / 2, display_settings().scale); }

}  // namespace

double accessory_room(const TableCell& cell) {
  const TableCellState& state = cell.cell();
  if (state.accessory_view) return state.accessory_view.bounds().width() + kCellAccessoryMargin;
  switch (state.accessory) {
    case CellAccessory::None:
      return 0;
    case CellAccessory::Disclosure:
      return kCellAccessoryWidth + kCellAccessoryMargin;
    case CellAccessory::Checkmark:
      return 14 + kCellAccessoryMargin;
    default:
      return 22 + kCellAccessoryMargin;
  }
}

void place_cell_content(const TableCell& cell) {
  TableCellState& state = cell.cell();
  const Rect content = state.content.bounds();
  const bool turned = cell.is_right_to_left();
  const auto place = [&](const View& view, double leading, double y, Size size) {
    const double x = turned ? content.width() - leading - size.width : leading;
    view.setFrame({{x, y}, size});
  };
  double leading = kCellMargin;
  if (state.image_view && state.image_view.image()) {
    Size size = image_of(state.image_view.image())->size();
    size = {std::min(size.width, kCellImageSize), std::min(size.height, kCellImageSize)};
    place(state.image_view, leading, half(content.height() - size.height), size);
    leading += size.width + kCellImageGap;
  }
  const double trailing = accessory_room(cell) > 0 ? kAccessoryGap : kCellMargin;
  const double room = std::max(0.0, content.width() - leading - trailing);
  if (!state.text_label) return;
  // Set here as well, since a page may have made the labels its own.
  let_wrap(state.text_label);
  const Size text = state.text_label.sizeThatFits({room, 0});
  if (is_stacked(cell) && has_detail(state)) {
    const Size detail = state.detail_label.sizeThatFits({room, 0});
    const double all = text.height + 2 + detail.height;
    const double y = half(content.height() - all);
    place(state.text_label, leading, y, {std::min(text.width, room), text.height});
    place(state.detail_label, leading, y + text.height + 2, {std::min(detail.width, room), detail.height});
    return;
  }
  if (!has_detail(state)) {
    // Over the whole height, so that a page that aligns the text itself finds all the room.
    place(state.text_label, leading, 0, {room, content.height()});
    if (state.detail_label) state.detail_label.setFrame({});
    return;
  }
  Size detail = state.detail_label.sizeThatFits({room, 0});
  // The title keeps its room as long as the value keeps some too, as on the platform.
  const double title_width = std::min(text.width, std::max(room - kLabelGap - detail.width, room * 0.6));
  detail.width = std::min(detail.width, room - kLabelGap - std::min(title_width, text.width));
  place(state.text_label, leading, half(content.height() - text.height), {title_width, text.height});
  place(state.detail_label, leading + room - detail.width, half(content.height() - detail.height), detail);
}

Size fitting_cell_size(const TableCell& cell, const Size& size) {
  const TableCellState& state = cell.cell();
  double height = kDefaultRowHeight;
  double leading = kCellMargin;
  if (state.image_view && state.image_view.image()) leading += kCellImageSize + kCellImageGap;
  const double trailing = accessory_room(cell) > 0 ? kAccessoryGap : kCellMargin;
  const double room = std::max(0.0, size.width - leading - trailing - accessory_room(cell));
  let_wrap(state.text_label);
  double text = 0;
  if (state.text_label) text += state.text_label.sizeThatFits({room, 0}).height;
  if (has_detail(state) && is_stacked(cell)) {
    text += 2 + state.detail_label.sizeThatFits({room, 0}).height;
  }
  height = std::max(height, ceil_to_pixel(text, display_settings().scale) + 2 * kVerticalPadding);
  if (!state.content.parts().constraints.empty()) {
    const Size fitting = state.content.systemLayoutSizeFitting({size.width, 0}, 1000, 50);
    height = std::max(height, fitting.height);
  }
  return {size.width, height};
}

}  // namespace wispen::uikit
