// tests/host/uikit/controls/segmented_control_test.cpp: segments, by finger and by key.

#include "host/uikit/controls/segmented_control.hpp"

#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SegmentedControlTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    NSMutableArray titles = NSMutableArray::array();
    for (const char* title : {"One", "Two", "Three"}) titles.addObject(NSString(title));
    control_ = UISegmentedControl::alloc().initWithItems(titles);
    hear_all(control_);
    show(control_, {{30, 100}, {300, 32}});
  }
  void TearDown() override {
    control_ = UISegmentedControl();
    ScreenTest::TearDown();
  }
  Point segment(NSUInteger index) const {
    const Rect rect =
        control_.convertRectToView(SegmentedControl::of(control_).segment_rect(index), UIView());
    return {rect.mid_x(), rect.mid_y()};
  }
  /// The upper left of the segment, where only its ground shows.
  std::uint32_t ground(NSUInteger index) const {
    const Rect rect =
        control_.convertRectToView(SegmentedControl::of(control_).segment_rect(index), UIView());
    return pixel({rect.min_x() + 10, rect.min_y() + 6});
  }
  UISegmentedControl control_;
};

TEST_F(SegmentedControlTest, SharesItsWidthEquallyAndKnowsItsOwnSize) {
  EXPECT_EQ(SegmentedControl::of(control_).segment_rect(0), (Rect{{0, 0}, {100, 32}}));
  EXPECT_EQ(SegmentedControl::of(control_).segment_rect(2), (Rect{{200, 0}, {100, 32}}));
  EXPECT_EQ(control_.intrinsicContentSize().height, 32);
  const double narrow = control_.intrinsicContentSize().width;
  control_.setTitle("A good deal more"_ns, 1);
  EXPECT_GT(control_.intrinsicContentSize().width, narrow + 3 * 50);
}

TEST_F(SegmentedControlTest, GivesSegmentsTheirOwnWidths) {
  objc::send<"setWidth:forSegmentAtIndex:">(control_, 60.0, NSUInteger{1});
  EXPECT_EQ(SegmentedControl::of(control_).segment_rect(0).width(), 120);
  EXPECT_EQ(SegmentedControl::of(control_).segment_rect(1), (Rect{{120, 0}, {60, 32}}));
}

TEST_F(SegmentedControlTest, StartsWithNothingChosen) {
  EXPECT_EQ(control_.numberOfSegments(), 3U);
  EXPECT_EQ(control_.selectedSegmentIndex(), UISegmentedControlNoSegment);
  control_.setSelectedSegmentIndex(5);
  EXPECT_EQ(control_.selectedSegmentIndex(), UISegmentedControlNoSegment);
}

TEST_F(SegmentedControlTest, ChoosesWhereTheFingerLifts) {
  tap(segment(1));
  EXPECT_EQ(control_.selectedSegmentIndex(), 1);
  EXPECT_THAT(listener_.take(), ElementsAre("down", "changed", "up"));
  tap(segment(1));
  EXPECT_THAT(listener_.take(), ElementsAre("down", "up"));  // it was chosen already
  press(segment(0));
  drag(segment(0), segment(2));
  EXPECT_EQ(control_.selectedSegmentIndex(), 1);
  lift(segment(2));
  EXPECT_EQ(control_.selectedSegmentIndex(), 2);
}

TEST_F(SegmentedControlTest, ChoosesNothingFarOutside) {
  press(segment(0));
  drag(segment(0), {segment(0).x, 400});
  lift({segment(0).x, 400});
  EXPECT_EQ(control_.selectedSegmentIndex(), UISegmentedControlNoSegment);
}

TEST_F(SegmentedControlTest, TellsNobodyWhenCodeSetsIt) {
  control_.setSelectedSegmentIndex(2);
  control_.setSelectedSegmentIndex(UISegmentedControlNoSegment);
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(SegmentedControlTest, LeavesOutDisabledSegments) {
  control_.setEnabledForSegment(false, 1);
  EXPECT_FALSE(control_.isEnabledForSegmentAtIndex(1));
  tap(segment(1));
  EXPECT_EQ(control_.selectedSegmentIndex(), UISegmentedControlNoSegment);
  key(KeyCode::Tab);
  key(KeyCode::Right);
  EXPECT_EQ(control_.selectedSegmentIndex(), 0);
  key(KeyCode::Right);
  EXPECT_EQ(control_.selectedSegmentIndex(), 2);
  key(KeyCode::Right);
  EXPECT_EQ(control_.selectedSegmentIndex(), 2);
  key(KeyCode::Left);
  EXPECT_EQ(control_.selectedSegmentIndex(), 0);
  EXPECT_THAT(listener_.take(), ElementsAre("changed", "changed", "changed"));
}

class IndexReader : public objc::Authored<IndexReader, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestSegmentReader"};
  using Authored::Authored;
  static inline std::vector<NSInteger> seen;
  void chosen(const UISegmentedControl& control) const { seen.push_back(control.selectedSegmentIndex()); }
  static void define() {
    objc::Class<IndexReader>().method<"chosen:", &IndexReader::chosen>().register_class();
  }
};

TEST_F(SegmentedControlTest, ForgetsAMomentaryChoiceOnceItIsTold) {
  IndexReader::define();
  IndexReader::seen.clear();
  const IndexReader reader = objc::make<IndexReader>();
  control_.addTarget(reader, objc::selector<"chosen:">(), UIControlEventValueChanged);
  objc::send<"setMomentary:">(control_, true);
  tap(segment(2));
  tap(segment(2));
  EXPECT_THAT(IndexReader::seen, ElementsAre(2, 2));
  EXPECT_EQ(control_.selectedSegmentIndex(), UISegmentedControlNoSegment);
}

TEST_F(SegmentedControlTest, ShowsATitleOrAnImageNeverBoth) {
  const UIImage gear = UIImage::systemImageNamed("gear"_ns);
  control_.setImage(gear, 1);
  EXPECT_EQ(control_.imageForSegmentAtIndex(1), gear);
  EXPECT_FALSE(control_.titleForSegmentAtIndex(1));
  control_.setTitle("Word"_ns, 1);
  EXPECT_FALSE(control_.imageForSegmentAtIndex(1));
  control_.setTitle("Last"_ns, 99);
  EXPECT_EQ(control_.titleForSegmentAtIndex(2).utf8(), "Last");
}

TEST_F(SegmentedControlTest, MovesTheChoiceWithItsSegment) {
  control_.setSelectedSegmentIndex(1);
  control_.insertSegment("Zero"_ns, 0, false);
  EXPECT_EQ(control_.selectedSegmentIndex(), 2);
  EXPECT_EQ(control_.titleForSegmentAtIndex(0).utf8(), "Zero");
  control_.removeSegment(0, false);
  EXPECT_EQ(control_.selectedSegmentIndex(), 1);
  control_.removeSegment(1, false);
  EXPECT_EQ(control_.selectedSegmentIndex(), UISegmentedControlNoSegment);
  control_.removeAllSegments();
  EXPECT_EQ(control_.numberOfSegments(), 0U);
  EXPECT_FALSE(control_.titleForSegmentAtIndex(0));
  tap({100, 110});  // nothing is there
}

TEST_F(SegmentedControlTest, MarksTheChosenSegment) {
  const std::uint32_t plain = ground(0);
  control_.setSelectedSegmentIndex(0);
  EXPECT_EQ(ground(0), 0xFFFFFFFFU);
  EXPECT_EQ(ground(2), plain);
  control_.setSelectedSegmentTintColor(UIColor::redColor());
  EXPECT_EQ(ground(0), 0xFFFF0000U);
}

TEST_F(SegmentedControlTest, RestsOnceItIsShown) {
  // A width from constraints is asked for again whenever a label says that it has changed.
  control_.setTranslatesAutoresizingMaskIntoConstraints(false);
  control_.setSelectedSegmentIndex(1);
  FrameBuffer buffer(session());
  ASSERT_TRUE(buffer.update());
  EXPECT_FALSE(buffer.stale());
  const auto again = buffer.update();
  ASSERT_TRUE(again);
  EXPECT_TRUE(again->empty());
}

TEST_F(SegmentedControlTest, LiesTheOtherWayRoundFromRightToLeft) {
  set_right_to_left(true);
  EXPECT_EQ(SegmentedControl::of(control_).segment_rect(0).min_x(), 200);
  tap({segment(2).x, segment(2).y});
  EXPECT_EQ(control_.selectedSegmentIndex(), 2);
  key(KeyCode::Tab);
  key(KeyCode::Right);
  EXPECT_EQ(control_.selectedSegmentIndex(), 1);
}

}  // namespace
}  // namespace wispen::uikit
