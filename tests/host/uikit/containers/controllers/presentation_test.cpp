// tests/host/uikit/containers/controllers/presentation_test.cpp: alerts, cards and boxes over a page.

#include "host/uikit/containers/controllers/presentation.hpp"

#include "host/uikit/containers/controllers/alert_controller.hpp"
#include "host/uikit/controls/text_field.hpp"
#include "platform/UIKit/UIAlertController.hpp"
#include "tests/host/uikit/screen_fixture.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;

class PresentationTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    page_ = objc::make<UIViewController>();
    window_.setRootViewController(page_);
  }
  void TearDown() override {
    page_ = UIViewController();
    ScreenTest::TearDown();
  }
  UIAlertController alert(std::initializer_list<const char*> actions) {
    const auto made =
        UIAlertController::alertController("Title"_ns, "Message"_ns, UIAlertControllerStyle::Alert);
    for (const char* const title : actions) {
      const bool cancels = std::string(title) == "Cancel";
      made.addAction(UIAlertAction::actionWithTitle(
          NSString(title), cancels ? UIAlertActionStyle::Cancel : UIAlertActionStyle::Default,
          [this, title = std::string(title)](const UIAlertAction&) { listener_.heard().push_back(title); }));
    }
    return made;
  }
  void present(const objc::Object& controller, bool animated = true) {
    page_.presentViewController(controller.as<UIViewController>(), animated);
    wait(1500);
  }
  static UIView find_control(const UIView& view, const std::string& text) {
    const auto label = view.accessibilityLabel();
    if (objc::cast_or_nil<UIControl>(view) && label && label.utf8() == text) return view;
    for (const UIView& inside : View::of(view).subviews()) {
      if (UIView found = find_control(inside, text)) return found;
    }
    return UIView();
  }
  Point place_of(const char* text) {
    const UIView control = find_control(window_, text);
    EXPECT_TRUE(control) << text;
    return control ? middle(control) : Point{};
  }
  UIViewController page_;
};

TEST_F(PresentationTest, LaysTwoActionsSideBySideWithCancelAtTheLeft) {
  present(alert({"Set", "Cancel"}));
  EXPECT_EQ(place_of("Set").y, place_of("Cancel").y);
  EXPECT_LT(place_of("Cancel").x, place_of("Set").x);
}

TEST_F(PresentationTest, StacksMoreActionsWithCancelLast) {
  present(alert({"Cancel", "One", "Two"}));
  EXPECT_LT(place_of("One").y, place_of("Two").y);
  EXPECT_LT(place_of("Two").y, place_of("Cancel").y);
  EXPECT_EQ(place_of("One").x, place_of("Cancel").x);
}

TEST_F(PresentationTest, StacksTwoActionsThatAreTooLongForOneLine) {
  present(alert({"Cancel", "A rather long way of saying yes"}));
  EXPECT_LT(place_of("A rather long way of saying yes").y, place_of("Cancel").y);
}

TEST_F(PresentationTest, TellsTheActionOnceTheAlertHasGone) {
  present(alert({"Set", "Cancel"}));
  tap(place_of("Set"));
  wait(1500);
  EXPECT_THAT(listener_.take(), ElementsAre("Set"));
  EXPECT_FALSE(page_.presentedViewController());
}

TEST_F(PresentationTest, CancelsByEscapeEvenFromItsField) {
  const UIAlertController asking = alert({"Set", "Cancel"});
  asking.addTextField([](const UITextField& field) { field.setText("0.50"_ns); });
  page_.presentViewController(objc::Object(asking).as<UIViewController>(), true);
  const auto field = asking.textFields().objectAtIndex<UITextField>(0);
  EXPECT_TRUE(field.isEditing());  // the first field is written in while it still comes up
  type("7");
  wait(1500);
  EXPECT_EQ(field.text().utf8(), "0.507");
  key(KeyCode::Escape);
  wait(1500);
  EXPECT_THAT(listener_.take(), ElementsAre("Cancel"));
  EXPECT_FALSE(page_.presentedViewController());
}

TEST_F(PresentationTest, LetsNothingThroughToThePage) {
  const UIControl below = UIControl::alloc().initWithFrame(Rect{{0, 0}, {390, 844}});
  page_.view().addSubview(below);
  hear_all(below);
  present(alert({"OK"}));
  tap({20, 700});
  key(KeyCode::Tab);
  EXPECT_TRUE(listener_.heard().empty());
  EXPECT_NE(focused_view(), below);
}

TEST_F(PresentationTest, ShowsAFormSheetAsACardOnAPhone) {
  const UIViewController sheet = objc::make<UIViewController>();
  sheet.setModalPresentationStyle(UIModalPresentationStyle::FormSheet);
  present(sheet);
  const Rect frame = sheet.view().convertRectToView(sheet.view().bounds(), UIView());
  EXPECT_EQ(frame.width(), window_.bounds().size.width);
  EXPECT_GT(frame.min_y(), 40);
  EXPECT_EQ(frame.max_y(), Rect(window_.bounds()).max_y());
  // Pulled down it goes.
  const Point grip{195, frame.min_y() + 20};
  press(grip);
  drag(grip, {195, grip.y + 500});
  lift({195, grip.y + 500});
  wait(1500);
  EXPECT_FALSE(page_.presentedViewController());
}

TEST_F(PresentationTest, ShowsAFormSheetAsABoxOnATablet) {
  const std::vector<DeviceModel>& models = device_models();
  const auto pad = std::ranges::find(models, graphics::Idiom::Pad, &DeviceModel::idiom);
  ASSERT_NE(pad, models.end());
  session().set_device(*pad);
  const UIViewController sheet = objc::make<UIViewController>();
  sheet.setModalPresentationStyle(UIModalPresentationStyle::FormSheet);
  present(sheet);
  const Rect frame = sheet.view().convertRectToView(sheet.view().bounds(), UIView());
  EXPECT_EQ(frame.size, (Size{540, 620}));
  EXPECT_NEAR(frame.mid_x(), Rect(window_.bounds()).mid_x(), 1);
}

TEST_F(PresentationTest, LiftsADarkSheetOffThePageByItsGround) {
  DisplaySettings dark = display_settings();
  dark.appearance = graphics::Appearance::Dark;
  set_display_settings(dark);
  const UIViewController sheet = objc::make<UIViewController>();
  sheet.setModalPresentationStyle(UIModalPresentationStyle::FormSheet);
  sheet.view().setBackgroundColor(UIColor::systemBackgroundColor());
  page_.view().setBackgroundColor(UIColor::systemBackgroundColor());
  EXPECT_EQ(pixel({195, 400}), 0xFF000000U);
  present(sheet);
  EXPECT_EQ(pixel({195, 400}), 0xFF1C1C1EU);
}

TEST_F(PresentationTest, TurnsACardIntoABoxWithItsScreen) {
  const UIViewController sheet = objc::make<UIViewController>();
  sheet.setModalPresentationStyle(UIModalPresentationStyle::FormSheet);
  present(sheet);
  EXPECT_FALSE(CGAffineTransformIsIdentity(page_.view().transform()));
  session().set_device(*find_device("pad"));
  window_.layoutIfNeeded();
  EXPECT_EQ(sheet.view().bounds().size, (Size{540, 620}));
  EXPECT_TRUE(CGAffineTransformIsIdentity(page_.view().transform()));
  session().set_device(*find_device("phone"));
  window_.layoutIfNeeded();
  EXPECT_EQ(sheet.view().bounds().size.width, window_.bounds().size.width);
}

TEST_F(PresentationTest, TakesTheFocusFromWhatItCoversAndGivesItBack) {
  const UIControl below = UIControl::alloc().initWithFrame(Rect{{20, 100}, {100, 44}});
  page_.view().addSubview(below);
  key(KeyCode::Tab);
  EXPECT_EQ(focused_view(), below);
  present(alert({"OK"}));
  EXPECT_NE(focused_view(), below);
  key(KeyCode::Escape);
  wait(1500);
  EXPECT_EQ(focused_view(), below);
}

TEST_F(PresentationTest, RefusesASecondPresentation) {
  const UIViewController first = objc::make<UIViewController>();
  present(first);
  const UIViewController second = objc::make<UIViewController>();
  present(second);
  EXPECT_EQ(page_.presentedViewController(), first);
  EXPECT_FALSE(second.presentingViewController());
}

TEST_F(PresentationTest, FreesWhatWasPresented) {
  objc::Weak<UIViewController> weak;
  {
    const objc::AutoreleasePool pool;
    const UIViewController sheet = objc::make<UIViewController>();
    weak = sheet;
    present(sheet);
    page_.dismissViewController(true);
    wait(1500);
  }
  EXPECT_FALSE(weak.lock());
}

}  // namespace
}  // namespace wispen::uikit
