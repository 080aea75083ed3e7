// host/uikit/tables/table_items.cpp: a table's items, what lies below each other, and their heights.

#include <algorithm>
#include <utility>

#include "host/uikit/tables/table_methods.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

namespace {

// The platform's inset-grouped metrics, in points.
constexpr double kFirstHeader = 35;
constexpr double kGap = 17.5;

}  // namespace

void TableMethods::count_items(const Self& self) {
  TableState& state = self.table();
  state.items.clear();
  state.section_starts.clear();
  const NSObject source = state.data_source.lock();
  const NSInteger sections = !source ? 0
                             : objc::responds_to(source, objc::selector<"numberOfSectionsInTableView:">())
                                 ? objc::send<"numberOfSectionsInTableView:", NSInteger>(source, self)
                                 : 1;
  for (NSInteger section = 0; section < sections; ++section) {
    state.section_starts.push_back(state.items.size());
    state.items.push_back({section, TableItem::kHeader});
    const NSInteger rows = objc::send<"tableView:numberOfRowsInSection:", NSInteger>(source, self, section);
    for (NSInteger row = 0; row < rows; ++row) state.items.push_back({section, row});
    state.items.push_back({section, TableItem::kFooter});
  }
  state.measured.assign(state.items.size(), false);
  std::vector<double> estimates;
  estimates.reserve(state.items.size());
  for (const TableItem& item : state.items) {
    estimates.push_back(item.row >= 0 ? (state.row_height > 0 ? state.row_height : kDefaultRowHeight) : kGap);
  }
  state.heights.assign(std::move(estimates));
  state.loaded = true;
}

std::size_t TableMethods::item_of(const Self& self, RowPath path) {
  const TableState& state = self.table();
  const auto section = static_cast<std::size_t>(path.section);
  if (path.section < 0 || section >= state.section_starts.size()) return state.items.size();
  const std::size_t first = state.section_starts[section];
  if (path.row == TableItem::kHeader) return first;
  const std::size_t next =
      section + 1 < state.section_starts.size() ? state.section_starts[section + 1] : state.items.size();
  if (path.row == TableItem::kFooter) return next - 1;
  const std::size_t item = first + 1 + static_cast<std::size_t>(path.row);
  return path.row >= 0 && item < next - 1 ? item : state.items.size();
}

double TableMethods::measure(const Self& self, const TableItem& item) {
  TableState& state = self.table();
  const NSObject delegate = objc::send<"delegate", NSObject>(self);
  if (item.row >= 0) {
    double height = state.row_height;
    if (objc::responds_to(delegate, objc::selector<"tableView:heightForRowAtIndexPath:">())) {
      height = objc::send<"tableView:heightForRowAtIndexPath:", double>(delegate, self,
                                                                        index_path({item.section, item.row}));
    }
    if (height >= 0) return height;
    const TableCell cell = cell_at(self, {item.section, item.row});
    const double width = self.bounds().width() - 2 * self.side_margin();
    return cell ? cell.sizeThatFits({width, 0}).height : kDefaultRowHeight;
  }
  const bool header = item.row == TableItem::kHeader;
  double height = TableView::kAutomaticHeight;
  if (header && objc::responds_to(delegate, objc::selector<"tableView:heightForHeaderInSection:">())) {
    height = objc::send<"tableView:heightForHeaderInSection:", double>(delegate, self, item.section);
  } else if (!header &&
             objc::responds_to(delegate, objc::selector<"tableView:heightForFooterInSection:">())) {
    height = objc::send<"tableView:heightForFooterInSection:", double>(delegate, self, item.section);
  }
  if (height >= 0) return height;
  const NSString title = title_of(self, item);
  if (!title || title.length() == 0) {
    if (state.style == TableStyle::Plain) return 0;
    return header && item.section == 0 && !state.header ? kFirstHeader : kGap;
  }
  const double room = self.bounds().width() - 2 * (self.side_margin() + kCellMargin);
  const double text = section_label(title, header).sizeThatFits({room, 0}).height;
  if (!header) return kFooterTextTop + text + kSectionTextPadding + kGap - kSectionTextPadding;
  return (item.section == 0 && !state.header ? kFirstHeader - kGap : 0) + kGap + text + kSectionTextPadding -
         2;
}

NSString TableMethods::title_of(const Self& self, const TableItem& item) {
  const NSObject source = self.table().data_source.lock();
  if (item.row == TableItem::kHeader &&
      objc::responds_to(source, objc::selector<"tableView:titleForHeaderInSection:">())) {
    return objc::send<"tableView:titleForHeaderInSection:", NSString>(source, self, item.section);
  }
  if (item.row == TableItem::kFooter &&
      objc::responds_to(source, objc::selector<"tableView:titleForFooterInSection:">())) {
    return objc::send<"tableView:titleForFooterInSection:", NSString>(source, self, item.section);
  }
  return NSString();
}

NSString TableMethods::shown_title(const NSString& title, bool header) {
  return header ? objc::send<"uppercaseString", NSString>(title) : title;
}

Label TableMethods::section_label(const NSString& title, bool header) {
  const Label label = Label::make();
  label.setNumberOfLines(0);
  label.setFont(
      font_from(graphics::text_style_font(graphics::TextStyle::Footnote, display_settings().content_size)));
  label.setTextColor(UIColor::secondaryLabelColor());
  label.setText(shown_title(title, header));
  return label;
}

Rect TableMethods::item_rect(const Self& self, std::size_t item) {
  const TableState& state = self.table();
  const double above = state.header ? state.header.bounds().height() : 0;
  const double margin = state.items[item].row >= 0 ? self.side_margin() : 0;
  const EdgeInsets safe = self.safeAreaInsets();
  const double left = margin + (margin > 0 ? safe.left : 0);
  const double right = margin + (margin > 0 ? safe.right : 0);
  return {{left, above + state.heights.offset(item)},
          {self.bounds().width() - left - right, state.heights.height(item)}};
}

void TableMethods::update_content_size(const Self& self) {
  const TableState& state = self.table();
  double height = state.heights.total();
  if (state.header) height += state.header.bounds().height();
  if (state.footer) height += state.footer.bounds().height();
  self.setContentSize({self.bounds().width(), height});
}

void TableMethods::measure_item(const Self& self, std::size_t item) {
  TableState& state = self.table();
  if (state.measured[item]) return;
  const double height = measure(self, state.items[item]);
  state.measured[item] = true;
  state.heights.set_height(item, height);
}

}  // namespace wispen::uikit
