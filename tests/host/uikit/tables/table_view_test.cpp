// tests/host/uikit/tables/table_view_test.cpp: tables: only what is in sight exists.

#include "host/uikit/tables/table_view.hpp"

#include "host/uikit/session.hpp"
#include "host/uikit/views/window.hpp"
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

  NSInteger rows(const TableView&, const NSInteger&) const { return parts().rows; }
  TableCell cell(const TableView& table, const NSObject&) const {
    auto reused = objc::send<"dequeueReusableCellWithIdentifier:", TableCell>(table, "row"_ns);
    if (reused) return reused;
    ++parts().made;
    return TableCell::alloc().initialize<"initWithStyle:reuseIdentifier:">(NSInteger{0}, "row"_ns);
  }
  void displays(const TableView&, const TableCell&, const NSObject&) const { ++parts().displayed; }
  void selects(const TableView&, const NSObject& path) const { parts().selected.push_back(row_path(path)); }
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
    window_ = Window::make();
    table_ = TableView::make(window_.bounds(), TableStyle::InsetGrouped);
    table_.set_data_source(source_);
    table_.set_delegate(source_);
    window_.addSubview(table_);
    window_.makeKeyAndVisible();
    window_.layoutIfNeeded();
  }
  void TearDown() override {
    table_ = TableView();
    window_ = Window();
    source_ = Source();
    HostTest::TearDown();
  }
  Source source_;
  Window window_;
  TableView table_;
};

TEST_F(TableViewTest, InsetsRowsAndRoundsTheOuterCorners) {
  show(3);
  const TableCell first = table_.cell_for_row({0, 0});
  ASSERT_TRUE(first);
  EXPECT_EQ(first.frame(), (Rect{{16, 35}, {358, 44}}));
  EXPECT_EQ(first.layer().cornerRadius(), 10);
  EXPECT_EQ(table_.cell_for_row({0, 1}).layer().cornerRadius(), 0);
  EXPECT_EQ(table_.cell_for_row({0, 2}).layer().cornerRadius(), 10);
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
  EXPECT_LT(table_.visible_cells().size(), 40U);
  EXPECT_GT(source_.parts().displayed, 400);
}

TEST_F(TableViewTest, SelectsARowByARealTouch) {
  show(3);
  const Rect row =
      table_.cell_for_row({0, 1}).convertRectToView(table_.cell_for_row({0, 1}).bounds(), View());
  const Point place{row.mid_x(), row.mid_y()};
  Session::current()->touches().began(place);
  EXPECT_TRUE(table_.cell_for_row({0, 1}).cell().highlighted);
  Session::current()->touches().ended(place);
  EXPECT_EQ(source_.parts().selected, (std::vector<RowPath>{{0, 1}}));
}

TEST_F(TableViewTest, InsertsAndDeletesRowsInPlace) {
  show(3);
  const TableCell second = table_.cell_for_row({0, 1});
  source_.parts().rows = 4;
  table_.insert_rows({{0, 1}}, true);
  EXPECT_EQ(table_.cell_for_row({0, 2}), second);
  EXPECT_EQ(second.frame().min_y(), 35 + 2 * 44);
  ASSERT_TRUE(Session::current()->loop().advance(std::chrono::seconds(1)));
  source_.parts().rows = 3;
  table_.delete_rows({{0, 1}}, false);
  EXPECT_EQ(table_.cell_for_row({0, 1}), second);
  EXPECT_EQ(second.frame().min_y(), 35 + 44);
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
  EXPECT_TRUE(table_.is_moving());
  ASSERT_TRUE(loop.advance(std::chrono::seconds(10)));
  EXPECT_FALSE(table_.is_moving());
  EXPECT_GT(table_.contentOffset().y, lifted + 100);
  EXPECT_TRUE(source_.parts().selected.empty());
}

}  // namespace
}  // namespace wispen::uikit
