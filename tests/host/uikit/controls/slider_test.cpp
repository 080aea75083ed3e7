// tests/host/uikit/controls/slider_test.cpp: sliders, by finger and by key.

#include <cmath>

#include "host/uikit/containers/tables/table_view.hpp"
#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SliderTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    slider_ = objc::make<UISlider>();
    hear_all(slider_);
    show(slider_, {{50, 100}, {200, 31}});
  }
  void TearDown() override {
    slider_ = UISlider();
    ScreenTest::TearDown();
  }
  Rect thumb_rect() const {
    const CGRect bounds = slider_.bounds();
    return slider_.thumbRectForBounds(bounds, slider_.trackRectForBounds(bounds), slider_.value());
  }
  Point thumb() const {
    const Rect rect = slider_.convertRectToView(thumb_rect(), UIView());
    return {rect.mid_x(), rect.mid_y()};
  }
  static long count(const std::vector<std::string>& names, const std::string& name) {
    return std::count(names.begin(), names.end(), name);
  }
  UISlider slider_;
};

TEST_F(SliderTest, StartsAtNothingBetweenNothingAndOne) {
  EXPECT_EQ(slider_.value(), 0);
  EXPECT_EQ(slider_.minimumValue(), 0);
  EXPECT_EQ(slider_.maximumValue(), 1);
  EXPECT_TRUE(slider_.isContinuous());
  EXPECT_LT(slider_.intrinsicContentSize().width, 0);
  EXPECT_EQ(slider_.intrinsicContentSize().height, 31);
}

TEST_F(SliderTest, KeepsItsValueInsideTheRange) {
  slider_.setValue(7, false);
  EXPECT_EQ(slider_.value(), 1);
  slider_.setValue(-7, false);
  EXPECT_EQ(slider_.value(), 0);
  slider_.setValue(std::nanf(""), false);
  EXPECT_EQ(slider_.value(), 0);
  slider_.setMaximumValue(10);
  slider_.setMinimumValue(5);
  EXPECT_EQ(slider_.value(), 5);
  slider_.setMinimumValue(20);
  EXPECT_EQ(slider_.maximumValue(), 20);
  EXPECT_EQ(slider_.value(), 20);
  slider_.setMaximumValue(3);
  EXPECT_EQ(slider_.minimumValue(), 3);
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(SliderTest, FollowsItsThumbAndTellsEachChange) {
  const Point start = thumb();
  press(start);
  drag(start, {start.x + 86, start.y});
  EXPECT_NEAR(slider_.value(), 0.5, 1e-6);  // the thumb's way is the width without the thumb
  EXPECT_EQ(count(listener_.heard(), "changed"), 10);
  lift({start.x + 86, start.y});
  const std::vector<std::string> heard = listener_.take();
  EXPECT_EQ(heard.front(), "down");
  EXPECT_THAT(std::vector(heard.end() - 2, heard.end()), ElementsAre("changed", "up"));
  EXPECT_EQ(count(heard, "changed"), 11);
}

TEST_F(SliderTest, TellsOnlyTheEndWhenItIsNotContinuous) {
  slider_.setContinuous(false);
  const Point start = thumb();
  press(start);
  drag(start, {start.x + 400, start.y});
  EXPECT_EQ(slider_.value(), 1);
  EXPECT_THAT(listener_.take(), ElementsAre("down"));
  lift({start.x + 400, start.y});
  EXPECT_THAT(listener_.take(), ElementsAre("changed", "outside"));
}

class ValueReader : public objc::Authored<ValueReader, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestSliderReader"};
  using Authored::Authored;
  static inline std::vector<float> seen;
  void dragged(const UISlider& slider) const { seen.push_back(slider.value()); }
  static void define() {
    objc::Class<ValueReader>().method<"dragged:", &ValueReader::dragged>().register_class();
  }
};

TEST_F(SliderTest, HasMovedBeforeTheDragIsTold) {
  ValueReader::define();
  ValueReader::seen.clear();
  const ValueReader reader = objc::make<ValueReader>();
  slider_.addTarget(reader, objc::selector<"dragged:">(), UIControlEventTouchDragInside);
  const Point start = thumb();
  press(start);
  session().touches().moved({start.x + 86, start.y});
  ASSERT_EQ(ValueReader::seen.size(), 1U);
  EXPECT_NEAR(ValueReader::seen.front(), 0.5, 1e-6);
  lift({start.x + 86, start.y});
}

TEST_F(SliderTest, TakesAFingerOnlyAtItsThumb) {
  tap({200, 115});
  EXPECT_EQ(slider_.value(), 0);
  EXPECT_THAT(listener_.take(), IsEmpty());
  press({thumb().x + 18, thumb().y});  // near is enough, and the thumb does not jump
  session().touches().moved({thumb().x + 18 + 1, thumb().y});
  EXPECT_NEAR(slider_.value(), 1 / 172.0, 1e-3);
  lift(thumb());
}

TEST_F(SliderTest, StepsByArrowsToTheEndsAndFinelyWithShift) {
  key(KeyCode::Tab);
  EXPECT_TRUE(key(KeyCode::Right));
  EXPECT_NEAR(slider_.value(), 0.05, 1e-6);
  key(KeyCode::Right, true);
  EXPECT_NEAR(slider_.value(), 0.06, 1e-6);
  key(KeyCode::End);
  EXPECT_EQ(slider_.value(), 1);
  key(KeyCode::Left);
  EXPECT_NEAR(slider_.value(), 0.95, 1e-6);
  key(KeyCode::Home);
  EXPECT_EQ(slider_.value(), 0);
  EXPECT_EQ(listener_.take().size(), 5U);
  key(KeyCode::Left);
  EXPECT_THAT(listener_.take(), IsEmpty());  // it cannot go further
}

TEST_F(SliderTest, RunsTheOtherWayFromRightToLeft) {
  const double left = thumb().x;
  set_right_to_left(true);
  EXPECT_GT(thumb().x, left + 100);
  const Point start = thumb();
  press(start);
  drag(start, {start.x - 86, start.y});
  lift({start.x - 86, start.y});
  EXPECT_NEAR(slider_.value(), 0.5, 1e-6);
  key(KeyCode::Tab);
  key(KeyCode::Left);
  EXPECT_NEAR(slider_.value(), 0.55, 1e-6);
}

TEST_F(SliderTest, MakesRoomForImagesAtItsEnds) {
  const double before = thumb_rect().min_x();
  slider_.setMinimumValueImage(UIImage::systemImageNamed("sun.max"_ns));
  window_.layoutIfNeeded();
  EXPECT_GT(thumb_rect().min_x(), before + 15);
}

TEST_F(SliderTest, ShowsItsColours) {
  slider_.setMinimumTrackTintColor(UIColor::redColor());
  slider_.setValue(0.5F, false);
  EXPECT_EQ(pixel({70, 115}), 0xFFFF0000U);
  EXPECT_EQ(pixel(thumb()), 0xFFFFFFFFU);
  EXPECT_NE(pixel({240, 115}), 0xFFFF0000U);
}

class SliderSource : public objc::Authored<SliderSource, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestSliderSource"};
  using Authored::Authored;
  static inline UISlider slider;
  NSInteger rows(const UITableView&, const NSInteger&) const { return 60; }
  UITableViewCell cell(const UITableView&, const NSObject& path) const {
    const UITableViewCell cell =
        UITableViewCell::alloc().initWithStyle(UITableViewCellStyle::Default, NSString());
    if (row_path(path).row == 0) cell.contentView().addSubview(slider);
    return cell;
  }
  static void define() {
    objc::Class<SliderSource>()
        .method<"tableView:numberOfRowsInSection:", &SliderSource::rows>()
        .method<"tableView:cellForRowAtIndexPath:", &SliderSource::cell>()
        .register_class();
  }
};

TEST_F(SliderTest, KeepsADragThatItsTableWouldScrollBy) {
  SliderSource::define();
  const SliderSource source = objc::make<SliderSource>();
  SliderSource::slider = slider_;
  {
    const UITableView table =
        UITableView::alloc().initWithFrame(window_.bounds(), UITableViewStyle::InsetGrouped);
    table.setDataSource(source);
    window_.addSubview(table);
    slider_.setFrame(Rect{{20, 6}, {200, 31}});
    window_.layoutIfNeeded();
    const double resting = table.contentOffset().y;
    const Point start = thumb();
    press(start);
    drag(start, {start.x + 86, start.y - 60});
    EXPECT_EQ(table.contentOffset().y, resting);
    EXPECT_NEAR(slider_.value(), 0.5, 1e-6);
    lift({start.x + 86, start.y - 60});
    const Point track{start.x + 30, start.y};
    press(track);
    drag(track, {track.x, track.y - 100});
    lift({track.x, track.y - 100});
    EXPECT_GT(table.contentOffset().y, resting + 50);  // beside the thumb the page scrolls
    table.removeFromSuperview();
  }
  SliderSource::slider = UISlider();
}

}  // namespace
}  // namespace wispen::uikit
