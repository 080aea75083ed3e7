// host/uikit/containers/tables/table_items.cpp: a table's items, what lies below each other, and their
// heights.

#include <algorithm>
#include <utility>

#include "host/uikit/containers/tables/header_footer_view.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/containers/tables/table_view.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

namespace {

// The platform's inset-grouped metrics, in points.
constexpr double kFirstHeader = 35;
constexpr double kGap = 17.5;

}  // namespace

void TableView::count_items() {
  items_.clear();
  section_starts_.clear();
  const NSObject source = data_source_.lock();
  const NSInteger sections = !source ? 0
                             : objc::responds_to(source, objc::selector<"numberOfSectionsInTableView:">())
                                 ? objc::send<"numberOfSectionsInTableView:", NSInteger>(source, self())
                                 : 1;
  for (NSInteger section = 0; section < sections; ++section) {
    section_starts_.push_back(items_.size());
    items_.push_back({section, TableItem::kHeader});
    const NSInteger rows = objc::send<"tableView:numberOfRowsInSection:", NSInteger>(source, self(), section);
    for (NSInteger row = 0; row < rows; ++row) items_.push_back({section, row});
    items_.push_back({section, TableItem::kFooter});
  }
  measured_.assign(items_.size(), false);
  std::vector<double> estimates;
  estimates.reserve(items_.size());
  for (const TableItem& item : items_) {
    estimates.push_back(item.row >= 0 ? (row_height_ > 0 ? row_height_ : kDefaultRowHeight) : kGap);
  }
  heights_.assign(std::move(estimates));
  loaded_ = true;
}

std::size_t TableView::item_of(RowPath path) {
  const auto section = static_cast<std::size_t>(path.section);
  if (path.section < 0 || section >= section_starts_.size()) return items_.size();
  const std::size_t first = section_starts_[section];
  if (path.row == TableItem::kHeader) return first;
  const std::size_t next =
      section + 1 < section_starts_.size() ? section_starts_[section + 1] : items_.size();
  if (path.row == TableItem::kFooter) return next - 1;
  const std::size_t item = first + 1 + static_cast<std::size_t>(path.row);
  return path.row >= 0 && item < next - 1 ? item : items_.size();
}

double TableView::measure(const TableItem& item) {
  const NSObject delegate = self().delegate();
  if (item.row >= 0) {
    double height = row_height_;
    if (objc::responds_to(delegate, objc::selector<"tableView:heightForRowAtIndexPath:">())) {
      height = objc::send<"tableView:heightForRowAtIndexPath:", double>(delegate, self(),
                                                                        index_path({item.section, item.row}));
    }
    if (height >= 0) return height;
    const UITableViewCell cell = cell_at({item.section, item.row});
    const double width = self().bounds().size.width - 2 * side_margin();
    return cell ? cell.sizeThatFits(CGSize{width, 0}).height : kDefaultRowHeight;
  }
  const bool header = item.row == TableItem::kHeader;
  double height = UITableViewAutomaticDimension;
  if (header && objc::responds_to(delegate, objc::selector<"tableView:heightForHeaderInSection:">())) {
    height = objc::send<"tableView:heightForHeaderInSection:", double>(delegate, self(), item.section);
  } else if (!header &&
             objc::responds_to(delegate, objc::selector<"tableView:heightForFooterInSection:">())) {
    height = objc::send<"tableView:heightForFooterInSection:", double>(delegate, self(), item.section);
  }
  if (height >= 0) return height;
  const NSString title = title_of(item);
  if (!title || title.length() == 0) {
    if (style_ == UITableViewStyle::Plain) return 0;
    return header && item.section == 0 && !header_ ? kFirstHeader : kGap;
  }
  const double room = self().bounds().size.width - 2 * (side_margin() + kCellMargin);
  const double text = section_label(title, header).sizeThatFits(CGSize{room, 0}).height;
  if (!header) return kFooterTextTop + text + kSectionTextPadding + kGap - kSectionTextPadding;
  return (item.section == 0 && !header_ ? kFirstHeader - kGap : 0) + kGap + text + kSectionTextPadding - 2;
}

NSString TableView::title_of(const TableItem& item) {
  const NSObject source = data_source_.lock();
  if (item.row == TableItem::kHeader &&
      objc::responds_to(source, objc::selector<"tableView:titleForHeaderInSection:">())) {
    return objc::send<"tableView:titleForHeaderInSection:", NSString>(source, self(), item.section);
  }
  if (item.row == TableItem::kFooter &&
      objc::responds_to(source, objc::selector<"tableView:titleForFooterInSection:">())) {
    return objc::send<"tableView:titleForFooterInSection:", NSString>(source, self(), item.section);
  }
  return NSString();
}

NSString TableView::shown_title(const NSString& title, bool header) {
  return header ? objc::send<"uppercaseString", NSString>(title) : title;
}

UILabel TableView::section_label(const NSString& title, bool header) {
  const UILabel label = objc::make<UILabel>();
  label.setNumberOfLines(0);
  label.setFont(
      font_from(graphics::text_style_font(graphics::TextStyle::Footnote, display_settings().content_size)));
  label.setTextColor(UIColor::secondaryLabelColor());
  label.setText(shown_title(title, header));
  return label;
}

Rect TableView::item_rect(std::size_t item) {
  const double above = header_ ? header_.bounds().size.height : 0;
  const double margin = items_[item].row >= 0 ? side_margin() : 0;
  const EdgeInsets safe = self().safeAreaInsets();
  const double left = margin + (margin > 0 ? safe.left : 0);
  const double right = margin + (margin > 0 ? safe.right : 0);
  return {{left, above + heights_.offset(item)},
          {self().bounds().size.width - left - right, heights_.height(item)}};
}

void TableView::update_content_size() {
  double height = heights_.total();
  if (header_) height += header_.bounds().size.height;
  if (footer_) height += footer_.bounds().size.height;
  self().setContentSize(CGSize{self().bounds().size.width, height});
}

void TableView::measure_item(std::size_t item) {
  if (measured_[item]) return;
  const double height = measure(items_[item]);
  measured_[item] = true;
  heights_.set_height(item, height);
}

}  // namespace wispen::uikit
