// tests/host/uikit/containers/tables/table_messages_test.cpp: UITableView's further methods.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using wispen::testing::expect_kept;

/// Three rows, made as the platform's documentation shows it.
class ThreeRows : public objc::Authored<ThreeRows, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestThreeRows"};
  using Authored::Authored;
  NSInteger rows(const UITableView&, NSInteger) const { return 3; }
  UITableViewCell cell(const UITableView& table, const NSIndexPath& path) const {
    return objc::send<"dequeueReusableCellWithIdentifier:forIndexPath:", UITableViewCell>(table, "Row"_ns,
                                                                                          path);
  }
  NSString header(const UITableView&, NSInteger) const { return "Header"_ns; }
  static void define() {
    objc::Class<ThreeRows>()
        .method<"tableView:numberOfRowsInSection:", &ThreeRows::rows>()
        .method<"tableView:cellForRowAtIndexPath:", &ThreeRows::cell>()
        .method<"tableView:titleForHeaderInSection:", &ThreeRows::header>()
        .register_class();
  }
};

class TableMessagesTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    ThreeRows::define();
    source_ = objc::make<ThreeRows>();
    table_ = objc::allocate<UITableView>().initialize<"initWithFrame:style:">(CGRectMake(0, 0, 320, 480),
                                                                              NSInteger{0});
    objc::send<"registerClass:forCellReuseIdentifier:">(table_, objc::class_for<UITableViewCell>(), "Row"_ns);
    table_.setDataSource(source_);
    show(table_, {{0, 0}, {320, 480}});
  }
  void TearDown() override {
    table_ = UITableView();
    source_ = ThreeRows();
    ScreenTest::TearDown();
  }
  CGRect row_rect(NSInteger row) const {
    return objc::send<"rectForRowAtIndexPath:", CGRect>(table_, path(row));
  }
  static NSIndexPath path(NSInteger row) { return NSIndexPath::indexPathForRow(row, 0); }

  UITableView table_;
  ThreeRows source_;
};

TEST_F(TableMessagesTest, MakesCellsOfARegisteredClass) {
  EXPECT_EQ(table_.visibleCells().count(), 3U);
  EXPECT_EQ(table_.visibleCells().objectAtIndex<UITableViewCell>(0).reuseIdentifier().utf8(), "Row");
  EXPECT_EQ((objc::send<"indexPathsForVisibleRows", NSArray>(table_)).count(), 3U);
}

TEST_F(TableMessagesTest, RowsAreAsHighAsItSays) {
  expect_kept<"rowHeight", "setRowHeight:">(table_, 60.0);
  window_.layoutIfNeeded();
  EXPECT_EQ(row_rect(1).size.height, 60);
  const auto header = objc::send<"rectForHeaderInSection:", CGRect>(table_, NSInteger{0});
  EXPECT_EQ(header.origin.y + header.size.height, row_rect(0).origin.y);
}

TEST_F(TableMessagesTest, KeepsHowItSeparatesRows) {
  const UIColor red = UIColor::redColor();
  expect_kept<"separatorStyle", "setSeparatorStyle:">(table_, NSInteger{0});
  expect_kept<"separatorColor", "setSeparatorColor:">(table_, red);
}

TEST_F(TableMessagesTest, SelectsByMessageAndNotByFingerWhereThatIsOff) {
  objc::send<"selectRowAtIndexPath:animated:scrollPosition:">(table_, path(2), false, NSInteger{0});
  EXPECT_EQ(table_.indexPathForSelectedRow().row(), 2);
  objc::send<"deselectRowAtIndexPath:animated:">(table_, path(2), false);
  expect_kept<"allowsSelection", "setAllowsSelection:">(table_, false);
  tap(middle(objc::send<"cellForRowAtIndexPath:", UITableViewCell>(table_, path(1))));
  EXPECT_FALSE(table_.indexPathForSelectedRow());
}

TEST_F(TableMessagesTest, TellsWhenABatchIsDone) {
  bool done = false;
  objc::send<"performBatchUpdates:completion:">(table_, objc::Block<void()>([] {}),
                                                objc::Block<void(bool)>([&](bool whole) { done = whole; }));
  wait(1000);
  EXPECT_TRUE(done);
}

TEST_F(TableMessagesTest, CellsAndHeadersHaveBackgroundsOfTheirOwn) {
  const UITableViewCell cell = objc::send<"cellForRowAtIndexPath:", UITableViewCell>(table_, path(0));
  const UIView back = objc::make<UIView>();
  const UIView chosen = objc::make<UIView>();
  expect_kept<"backgroundView", "setBackgroundView:">(cell, back);
  expect_kept<"selectedBackgroundView", "setSelectedBackgroundView:">(cell, chosen);
  window_.layoutIfNeeded();
  EXPECT_EQ(back.frame().size, cell.bounds().size);
  EXPECT_FALSE((objc::send<"separatorInset", UIEdgeInsets>(cell) == UIEdgeInsets{0, 40, 0, 0}));
  objc::send<"setSeparatorInset:">(cell, UIEdgeInsets{0, 40, 0, 0});
  EXPECT_EQ((objc::send<"separatorInset", UIEdgeInsets>(cell)), (UIEdgeInsets{0, 40, 0, 0}));
  const auto header = objc::make<UITableViewHeaderFooterView>();
  const UIView behind = objc::make<UIView>();
  expect_kept<"backgroundView", "setBackgroundView:">(header, behind);
}

}  // namespace
}  // namespace wispen::uikit
