// host/uikit/containers/tables/table_cell_layout.cpp: where a row's picture and words stand, and how high it
// wants to be.

#include <algorithm>

#include "host/graphics/text_style.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/view/metrics.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

using namespace metrics::cell;
constexpr UILayoutPriority kFittingSizeLevel = 50;

/// At the accessibility sizes words wrap, and a value stands below its title.
bool wraps() { return graphics::is_accessibility_size(display_settings().content_size); }
void let_wrap(const UILabel& label) {
  if (wraps() && label && label.numberOfLines() != 0) label.setNumberOfLines(0);
}

double half(double spare) { return round_to_pixel(spare / 2, display_settings().scale); }

}  // namespace

bool TableCell::is_stacked() const {
  return style_ == UITableViewCellStyle::Subtitle || (style_ == UITableViewCellStyle::Value1 && wraps());
}

bool TableCell::has_detail() const {
  return detail_label_ && detail_label_.text() && detail_label_.text().length() > 0;
}

double TableCell::accessory_room() const {
  if (accessory_view_) return accessory_view_.bounds().size.width + metrics::kCellAccessoryMargin;
  switch (accessory_) {
    case UITableViewCellAccessoryType::None:
      return 0;
    case UITableViewCellAccessoryType::DisclosureIndicator:
      return metrics::kCellAccessoryWidth + metrics::kCellAccessoryMargin;
    case UITableViewCellAccessoryType::Checkmark:
      return 14 + metrics::kCellAccessoryMargin;
    default:
      return 22 + metrics::kCellAccessoryMargin;
  }
}

void TableCell::place_content() {
  const Rect content = content_.bounds();
  const bool turned = is_right_to_left(self());
  const auto place = [&](const UIView& view, double leading, double y, Size size) {
    const double x = turned ? content.width() - leading - size.width : leading;
    view.setFrame(Rect{{x, y}, size});
  };
  double leading = metrics::kCellMargin;
  if (image_view_ && image_view_.image()) {
    Size size = image_of(image_view_.image())->size();
    size = {std::min(size.width, metrics::kCellImageSize), std::min(size.height, metrics::kCellImageSize)};
    place(image_view_, leading, half(content.height() - size.height), size);
    leading += size.width + metrics::kCellImageGap;
  }
  const double trailing = accessory_room() > 0 ? kAccessoryGap : metrics::kCellMargin;
  const double room = std::max(0.0, content.width() - leading - trailing);
  if (!text_label_) return;
  // Set here as well, since a page may have made the labels its own.
  let_wrap(text_label_);
  const Size text = text_label_.sizeThatFits(CGSize{room, 0});
  if (is_stacked() && has_detail()) {
    const Size detail = detail_label_.sizeThatFits(CGSize{room, 0});
    const double all = text.height + 2 + detail.height;
    const double y = half(content.height() - all);
    place(text_label_, leading, y, {std::min(text.width, room), text.height});
    place(detail_label_, leading, y + text.height + 2, {std::min(detail.width, room), detail.height});
    return;
  }
  if (!has_detail()) {
    // Over the whole height, so that a page that aligns the text itself finds all the room.
    place(text_label_, leading, 0, {room, content.height()});
    detail_label_.setFrame(CGRectZero);
    return;
  }
  Size detail = detail_label_.sizeThatFits(CGSize{room, 0});
  // The title keeps its room as long as the value keeps some too, as on the platform.
  const double title_width = std::min(text.width, std::max(room - kLabelGap - detail.width, room * 0.6));
  detail.width = std::min(detail.width, room - kLabelGap - std::min(title_width, text.width));
  place(text_label_, leading, half(content.height() - text.height), {title_width, text.height});
  place(detail_label_, leading + room - detail.width, half(content.height() - detail.height), detail);
}

Size TableCell::sizeThatFits(const Size& size) {
  double height = metrics::kDefaultRowHeight;
  double leading = metrics::kCellMargin;
  if (image_view_ && image_view_.image()) leading += metrics::kCellImageSize + metrics::kCellImageGap;
  const double trailing = accessory_room() > 0 ? kAccessoryGap : metrics::kCellMargin;
  const double room = std::max(0.0, size.width - leading - trailing - accessory_room());
  let_wrap(text_label_);
  double text = 0;
  if (text_label_) text += text_label_.sizeThatFits(CGSize{room, 0}).height;
  if (has_detail() && is_stacked()) {
    text += 2 + detail_label_.sizeThatFits(CGSize{room, 0}).height;
  }
  height =
      std::max(height, ceil_to_pixel(text, display_settings().scale) + 2 * metrics::kCellVerticalPadding);
  if (!View::of(content_).constraints().empty()) {
    const Size fitting = content_.systemLayoutSizeFittingSize(CGSize{size.width, 0}, UILayoutPriorityRequired,
                                                              kFittingSizeLevel);
    height = std::max(height, fitting.height);
  }
  return {size.width, height};
}

}  // namespace wispen::uikit
