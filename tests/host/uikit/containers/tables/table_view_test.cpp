// tests/host/uikit/containers/tables/table_view_test.cpp: tables: only what is in sight exists.

#include "host/uikit/containers/tables/table_view.hpp"

#include "host/uikit/containers/tables/header_footer_view.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/window.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::uikit {
namespace {

struct SourceState {
  NSInteger rows = 3;
  int made = 0;
  int displayed = 0;
  std::vector<RowPath> selected;
};

class Source : public objc::Authored<Source, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestTableSource"};
  using Authored::Authored;
  SourceState& parts() const { return state<SourceState>(); }

  NSInteger rows(const UITableView&, const NSInteger&) const { return parts().rows; }
  UITableViewCell cell(const UITableView& table, const NSObject&) const {
    auto reused = table.dequeueReusableCell("row"_ns);
    if (reused) return reused;
    ++parts().made;
    return UITableViewCell::alloc().initWithStyle(UITableViewCellStyle::Default, "row"_ns);
  }
  void displays(const UITableView&, const UITableViewCell&, const NSObject&) const { ++parts().displayed; }
  void selects(const UITableView&, const NSObject& path) const { parts().selected.push_back(row_path(path)); }
  static void define() {
    objc::Class<Source>()
        .state<SourceState>()
        .method<"tableView:numberOfRowsInSection:", &Source::rows>()
        .method<"tableView:cellForRowAtIndexPath:", &Source::cell>()
        .method<"tableView:willDisplayCell:forRowAtIndexPath:", &Source::displays>()
        .method<"tableView:didSelectRowAtIndexPath:", &Source::selects>()
        .register_class();
  }
};

class TableViewTest : public wispen::testing::HostTest {
 protected:
  void show(NSInteger rows) {
    Source::define();
    source_ = objc::make<Source>();
    source_.parts().rows = rows;
    window_ = objc::make<UIWindow>();
    table_ = UITableView::alloc().initWithFrame(window_.bounds(), UITableViewStyle::InsetGrouped);
    table_.setDataSource(source_);
    table_.setDelegate(source_);
    window_.addSubview(table_);
    window_.makeKeyAndVisible();
    window_.layoutIfNeeded();
  }
  void TearDown() override {
    table_ = UITableView();
    window_ = UIWindow();
    source_ = Source();
    HostTest::TearDown();
  }
  Source source_;
  UIWindow window_;
  UITableView table_;
};

TEST_F(TableViewTest, InsetsRowsAndRoundsTheOuterCorners) {
  show(3);
  const UITableViewCell first = TableView::of(table_).cell_for_row({0, 0});
  ASSERT_TRUE(first);
  EXPECT_EQ(first.frame(), (Rect{{16, 35}, {358, 44}}));
  EXPECT_EQ(first.layer().cornerRadius(), 10);
  EXPECT_EQ(TableView::of(table_).cell_for_row({0, 1}).layer().cornerRadius(), 0);
  EXPECT_EQ(TableView::of(table_).cell_for_row({0, 2}).layer().cornerRadius(), 10);
}

TEST_F(TableViewTest, MakesOnlyTheCellsInSightAndReusesThem) {
  show(10'000);
  EXPECT_LT(source_.parts().made, 40);
  const int made = source_.parts().made;
  for (int page = 0; page < 50; ++page) {
    table_.setContentOffset({0, table_.contentOffset().y + 400});
    window_.layoutIfNeeded();
  }
  EXPECT_LE(source_.parts().made, made + 4);
  EXPECT_LT(TableView::of(table_).visible_cells().size(), 40U);
  EXPECT_GT(source_.parts().displayed, 400);
}

TEST_F(TableViewTest, SelectsARowByARealTouch) {
  show(3);
  const Rect row = TableView::of(table_).cell_for_row({0, 1}).convertRectToView(
      TableView::of(table_).cell_for_row({0, 1}).bounds(), UIView());
  const Point place{row.mid_x(), row.mid_y()};
  Session::current()->touches().began(place);
  EXPECT_TRUE(TableView::of(table_).cell_for_row({0, 1}).isHighlighted());
  Session::current()->touches().ended(place);
  EXPECT_EQ(source_.parts().selected, (std::vector<RowPath>{{0, 1}}));
}

TEST_F(TableViewTest, InsertsAndDeletesRowsInPlace) {
  show(3);
  const UITableViewCell second = TableView::of(table_).cell_for_row({0, 1});
  source_.parts().rows = 4;
  TableView::of(table_).insert_rows({{0, 1}}, true);
  EXPECT_EQ(TableView::of(table_).cell_for_row({0, 2}), second);
  EXPECT_EQ(Rect(second.frame()).min_y(), 35 + 2 * 44);
  ASSERT_TRUE(Session::current()->loop().advance(std::chrono::seconds(1)));
  source_.parts().rows = 3;
  TableView::of(table_).delete_rows({{0, 1}}, false);
  EXPECT_EQ(TableView::of(table_).cell_for_row({0, 1}), second);
  EXPECT_EQ(Rect(second.frame()).min_y(), 35 + 44);
}

TEST_F(TableViewTest, GoesOnWhenItIsThrownAndComesToRest) {
  show(200);
  auto& touches = Session::current()->touches();
  auto& loop = Session::current()->loop();
  const double start = table_.contentOffset().y;
  touches.began({200, 700});
  for (int step = 1; step <= 10; ++step) {
    ASSERT_TRUE(loop.advance(std::chrono::milliseconds(10)));
    touches.moved({200, 700.0 - step * 20});
  }
  touches.ended({200, 500});
  const double lifted = table_.contentOffset().y;
  EXPECT_GT(lifted, start + 100);
  EXPECT_TRUE(ScrollView::of(table_).is_moving());
  ASSERT_TRUE(loop.advance(std::chrono::seconds(10)));
  EXPECT_FALSE(ScrollView::of(table_).is_moving());
  EXPECT_GT(table_.contentOffset().y, lifted + 100);
  EXPECT_TRUE(source_.parts().selected.empty());
}

class TitledSource : public objc::Authored<TitledSource, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestTitledSource"};
  using Authored::Authored;
  NSInteger sections(const UITableView&) const { return 40; }
  NSInteger rows(const UITableView&, const NSInteger&) const { return 3; }
  NSString header(const UITableView&, const NSInteger&) const { return "Head"_ns; }
  NSString footer(const UITableView&, const NSInteger&) const {
    return "A footer that is long enough to need two lines of its small text"_ns;
  }
  UITableViewCell cell(const UITableView&, const NSObject&) const {
    return UITableViewCell::alloc().initWithStyle(UITableViewCellStyle::Default, NSString());
  }
  static void define() {
    objc::Class<TitledSource>()
        .method<"numberOfSectionsInTableView:", &TitledSource::sections>()
        .method<"tableView:numberOfRowsInSection:", &TitledSource::rows>()
        .method<"tableView:titleForHeaderInSection:", &TitledSource::header>()
        .method<"tableView:titleForFooterInSection:", &TitledSource::footer>()
        .method<"tableView:cellForRowAtIndexPath:", &TitledSource::cell>()
        .register_class();
  }
};

TEST_F(TableViewTest, ShowsTitlesInHeaderAndFooterViews) {
  show(0);
  TitledSource::define();
  const TitledSource source = objc::make<TitledSource>();
  table_.setDataSource(source);
  window_.layoutIfNeeded();
  const auto header = objc::send<"headerViewForSection:", UITableViewHeaderFooterView>(table_, NSInteger{0});
  const auto footer = objc::send<"footerViewForSection:", UITableViewHeaderFooterView>(table_, NSInteger{0});
  ASSERT_TRUE(objc::cast_or_nil<UITableViewHeaderFooterView>(header));
  EXPECT_EQ(header.textLabel().text().utf8(), "HEAD");
  EXPECT_EQ(header.textLabel().convertRectToView(header.textLabel().bounds(), UIView()).origin.x, 32);
  EXPECT_NEAR(Rect(header.frame()).max_y(), TableView::of(table_).cell_for_row({0, 0}).frame().origin.y,
              1e-9);
  footer.layoutIfNeeded();
  EXPECT_GT(footer.textLabel().bounds().size.height, 30);
  EXPECT_GE(footer.frame().size.height, Rect(footer.textLabel().frame()).max_y());
  table_.setDataSource(NSObject());
}

TEST_F(TableViewTest, ReusesRegisteredSectionViews) {
  show(0);
  objc::send<"registerClass:forHeaderFooterViewReuseIdentifier:">(
      table_, objc::class_for<UITableViewHeaderFooterView>(), "head"_ns);
  const auto made = objc::send<"dequeueReusableHeaderFooterViewWithIdentifier:", UITableViewHeaderFooterView>(
      table_, "head"_ns);
  EXPECT_EQ(made.reuseIdentifier().utf8(), "head");
  const auto none = objc::send<"dequeueReusableHeaderFooterViewWithIdentifier:", UITableViewHeaderFooterView>(
      table_, "other"_ns);
  EXPECT_FALSE(none);
}

TEST_F(TableViewTest, ChoosesRowsByKeysAndShowsWhichHasTheFocus) {
  show(3);
  press_key({.code = KeyCode::Tab, .text = "", .shift = false, .command = false});
  EXPECT_EQ(focused_view(), TableView::of(table_).cell_for_row({0, 0}));
  press_key({.code = KeyCode::Down, .text = "", .shift = false, .command = false});
  press_key({.code = KeyCode::Return, .text = "", .shift = false, .command = false});
  EXPECT_EQ(source_.parts().selected, (std::vector<RowPath>{{0, 1}}));
  focus(UIView());
}

}  // namespace
}  // namespace wispen::uikit
