// host/uikit/containers/tables/table_view.hpp: UITableView: rows in sections, of which only those in sight
// exist.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/geometry/geometry.hpp"
#include "host/uikit/containers/tables/height_index.hpp"
#include "host/uikit/containers/tables/index_path.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// What lies below each other: for every section a header, its rows, and a footer.
struct TableItem {
  static constexpr NSInteger kHeader = -1;
  static constexpr NSInteger kFooter = -2;
  NSInteger section = 0;
  NSInteger row = 0;
};

struct TableUpdates {
  int depth = 0;
  bool animated = false;
  std::vector<RowPath> deleted;   // as they were
  std::vector<RowPath> inserted;  // as they will be
  bool any() const { return !deleted.empty() || !inserted.empty(); }
};

class TableView : public objc::Implementation<TableView, UITableView> {
 public:
  static UITableView initWithStyle(objc::Allocated<UITableView> self, const Rect& frame,
                                   UITableViewStyle style);
  static UITableView initWithFrame(objc::Allocated<UITableView> self, const Rect& frame);
  void layoutSubviews();
  NSObject dataSource() { return data_source_.lock(); }
  void setRowHeight(double height);
  void setHeader(const UIView& view);
  void setFooter(const UIView& view);
  void setSeparatorStyle(UITableViewCellSeparatorStyle style);
  void setSeparatorColor(const UIColor& colour);
  NSInteger numberOfSections();
  NSInteger numberOfRows(NSInteger section);
  void registerClass(objc::ClassRef cls, const NSString& identifier);
  UITableViewCell dequeue(const NSString& identifier);
  UITableViewCell dequeueForPath(const NSString& identifier, const NSIndexPath&);
  void registerSectionClass(objc::ClassRef cls, const NSString& identifier);
  UITableViewHeaderFooterView dequeueSection(const NSString& identifier);
  UITableViewCell cellForRow(const NSIndexPath& path);
  NSIndexPath indexPathForCell(const UITableViewCell& cell);
  NSArray visibleCells();
  NSArray visiblePaths();
  UIView headerView(NSInteger section);
  UIView footerView(NSInteger section);
  Rect rectForRow(const NSIndexPath& path) { return rect_for_row(row_path(path)); }
  Rect rectForHeader(NSInteger section);
  void insertRows(const NSArray& paths, UITableViewRowAnimation animation);
  void deleteRows(const NSArray& paths, UITableViewRowAnimation animation);
  void reloadRows(const NSArray& paths, UITableViewRowAnimation);
  void performUpdates(const objc::Block<void()>& updates, const objc::Block<void(bool)>& completion);
  NSIndexPath indexPathForSelectedRow();
  void selectRow(const NSIndexPath& path, bool animated, UITableViewScrollPosition position);
  void deselectRow(const NSIndexPath& path, bool animated);
  void scrollToRow(const NSIndexPath& path, UITableViewScrollPosition, bool animated);
  void traitCollectionDidChange(const NSObject&);
  bool handleKey(const UIKey& key);
  void set_data_source(const NSObject& source);
  void set_delegate(const NSObject& delegate);
  /// The side margin of an inset table.
  double side_margin();
  void reloadData();
  /// Heights are asked for again; the cells stay.
  void heights_changed();
  /// Nil for a row that is not in sight.
  UITableViewCell cell_for_row(RowPath path);
  std::optional<RowPath> path_of(const UITableViewCell& cell);
  std::vector<UITableViewCell> visible_cells();
  /// In the table's coordinates.
  Rect rect_for_row(RowPath path);
  void scroll_to_row(RowPath path, bool animated);
  // By the cells.
  bool may_highlight(const UITableViewCell& cell);
  void select(const UITableViewCell& cell);
  /// Structure changes between these two are made together; rows there were are named as they were before,
  /// rows there will be as they will be after.
  void begin_updates() { ++updates_.depth; }
  void end_updates();
  void insert_rows(const std::vector<RowPath>& paths, bool animated);
  void delete_rows(const std::vector<RowPath>& paths, bool animated);
  /// Their cells are made anew.
  void reload_rows(const std::vector<RowPath>& paths);

 private:
  friend void define_table_view();

  void count_items();
  /// The number of items for a path that is none.
  std::size_t item_of(RowPath path);
  double measure(const TableItem& item);
  NSString title_of(const TableItem& item);
  static NSString shown_title(const NSString& title, bool header);
  static UILabel section_label(const NSString& title, bool header);
  Rect item_rect(std::size_t item);
  void update_content_size();
  void measure_item(std::size_t item);
  /// Section -1 selects nothing.
  void set_selected(RowPath path, bool animated);
  UITableViewCell cell_at(RowPath path);
  void recycle(const UITableViewCell& cell);
  void recycle_section_view(const UIView& view);
  void place_cell(std::size_t item);
  UIView make_section_view(const TableItem& item);
  void place_section_view(std::size_t item);
  void tile();
  void place_edges();
  void drop_outside(std::size_t first, std::size_t last);
  static bool holds_first_responder(const UITableViewCell& cell);
  void drop_all();
  void apply(TableUpdates updates);

  UITableViewStyle style_ = UITableViewStyle::Plain;
  objc::Weak<NSObject> data_source_;
  double row_height_ = UITableViewAutomaticDimension;
  UITableViewCellSeparatorStyle separator_style_ = UITableViewCellSeparatorStyle::SingleLine;
  UIColor separator_colour_;
  bool allows_selection_ = true;
  UIView header_;
  UIView footer_;

  bool loaded_ = false;
  std::vector<std::size_t> section_starts_;  // of the header's item
  std::vector<TableItem> items_;
  std::vector<bool> measured_;  // by item: its height is no estimate
  HeightIndex heights_;
  double laid_out_width_ = 0;

  std::map<RowPath, UITableViewCell> cells_;  // in sight
  std::map<NSInteger, UIView> headers_;
  std::map<NSInteger, UIView> footers_;
  std::map<std::string, std::vector<UITableViewCell>> reusable_;
  std::map<std::string, std::vector<UITableViewHeaderFooterView>> reusable_sections_;
  std::map<std::string, objc::ClassRef> registered_;
  std::map<std::string, objc::ClassRef> registered_sections_;
  std::optional<RowPath> selected_;
  TableUpdates updates_;
};

void define_table_view();

}  // namespace wispen::uikit
