// tests/host/uikit/view/events/gestures_test.cpp: what a finger's way is taken for.

#include "host/uikit/controls/label.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class GestureTest : public ScreenTest {
 protected:
  template <class T>
  T recognise(const UIView& view, objc::Selector action = objc::selector<"first:">()) {
    const T recognizer = T::alloc().template initialize<"initWithTarget:action:">(listener_, action);
    view.addGestureRecognizer(recognizer);
    return recognizer;
  }
};

TEST_F(GestureTest, TapsALabelThatTakesTouches) {
  const UILabel label = objc::make<UILabel>();
  show(label, {{50, 50}, {60, 20}});
  recognise<UITapGestureRecognizer>(label);
  tap(middle(label));
  EXPECT_THAT(listener_.take(), IsEmpty());  // labels take none by themselves
  label.setUserInteractionEnabled(true);
  tap(middle(label));
  EXPECT_THAT(listener_.take(), ElementsAre("first"));
  tap({200, 300});
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(GestureTest, TellsTheFewestTapsThatAreRequired) {
  const UIView view = objc::make<UIView>();
  show(view, {{50, 50}, {60, 60}});
  const auto recognizer = recognise<UITapGestureRecognizer>(view);
  recognizer.setNumberOfTapsRequired(NSUInteger{2});
  tap(middle(view));
  EXPECT_THAT(listener_.take(), IsEmpty());
  tap(middle(view));
  EXPECT_THAT(listener_.take(), ElementsAre("first"));
}

TEST_F(GestureTest, DoesNotTakeADragForATap) {
  const UIView view = objc::make<UIView>();
  show(view, {{50, 50}, {200, 200}});
  recognise<UITapGestureRecognizer>(view);
  press({100, 100});
  drag({100, 100}, {200, 200});
  lift({200, 200});
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(GestureTest, TakesTheTouchFromTheControlBelow) {
  const UIView view = objc::make<UIView>();
  show(view, {{50, 50}, {100, 100}});
  const UIControl control = UIControl::alloc().initWithFrame(Rect{{0, 0}, {100, 100}});
  view.addSubview(control);
  hear_all(control);
  recognise<UIPanGestureRecognizer>(view);
  press({60, 60});
  drag({60, 60}, {120, 60});
  lift({120, 60});
  const std::vector<std::string> heard = listener_.take();
  EXPECT_EQ(heard.front(), "down");
  EXPECT_EQ(std::count(heard.begin(), heard.end(), "cancel"), 1);
  EXPECT_EQ(std::count(heard.begin(), heard.end(), "up"), 0);
}

TEST_F(GestureTest, WaitsForALongPress) {
  const UIView view = objc::make<UIView>();
  show(view, {{50, 50}, {100, 100}});
  recognise<UILongPressGestureRecognizer>(view);
  press({60, 60});
  wait(400);
  EXPECT_THAT(listener_.heard(), IsEmpty());
  wait(200);
  EXPECT_THAT(listener_.take(), ElementsAre("first"));
  lift({60, 60});
  EXPECT_THAT(listener_.take(), ElementsAre("first"));  // it ended
}

TEST_F(GestureTest, IsDeafWhileDisabledAndOnceItIsRemoved) {
  const UIView view = objc::make<UIView>();
  show(view, {{50, 50}, {100, 100}});
  const auto recognizer = recognise<UITapGestureRecognizer>(view);
  recognizer.setEnabled(false);
  tap(middle(view));
  recognizer.setEnabled(true);
  view.removeGestureRecognizer(recognizer);
  tap(middle(view));
  EXPECT_THAT(listener_.take(), IsEmpty());
}

TEST_F(GestureTest, TellsItsTargetsInTheOrderOfRegistration) {
  const UIView view = objc::make<UIView>();
  show(view, {{50, 50}, {100, 100}});
  const auto recognizer = recognise<UITapGestureRecognizer>(view, objc::selector<"second:">());
  recognizer.addTarget(listener_, objc::selector<"first:">());
  tap(middle(view));
  EXPECT_THAT(listener_.take(), ElementsAre("second", "first"));
}

}  // namespace
}  // namespace wispen::uikit
