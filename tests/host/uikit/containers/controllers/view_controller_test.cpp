// tests/host/uikit/containers/controllers/view_controller_test.cpp: one screenful, its children, and when it
// is told.

#include "tests/host/uikit/screen_fixture.hpp"
#include "tests/support/kept.hpp"

namespace wispen::uikit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using wispen::testing::expect_kept;

struct Told {
  std::vector<std::string> what;
};

/// Notes what it is told.
class ToldPage : public objc::Authored<ToldPage, UIViewController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestToldPage"};
  using Authored::Authored;
  std::vector<std::string> take() const { return std::exchange(state<Told>().what, {}); }
  template <objc::FixedString Word>
  void hear(bool) const {
    state<Told>().what.emplace_back(Word.value);
  }
  static void define() {
    objc::Class<ToldPage>()
        .state<Told>()
        .method<"viewWillAppear:", &ToldPage::hear<"will appear">>()
        .method<"viewDidAppear:", &ToldPage::hear<"did appear">>()
        .method<"viewWillDisappear:", &ToldPage::hear<"will disappear">>()
        .method<"viewDidDisappear:", &ToldPage::hear<"did disappear">>()
        .register_class();
  }
};

class ViewControllerTest : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    ToldPage::define();
    page_ = objc::make<ToldPage>();
  }
  void TearDown() override {
    page_ = ToldPage();
    ScreenTest::TearDown();
  }
  ToldPage page_;
};

TEST_F(ViewControllerTest, LoadsItsViewWhenItIsAskedFor) {
  EXPECT_FALSE((objc::send<"isViewLoaded", bool>(page_)));
  objc::send<"loadViewIfNeeded">(page_);
  EXPECT_TRUE((objc::send<"isViewLoaded", bool>(page_)));
  const UIViewController nibless =
      objc::allocate<UIViewController>().initialize<"initWithNibName:bundle:">(NSString(), NSBundle());
  EXPECT_TRUE(nibless.view());
}

TEST_F(ViewControllerTest, HasChildrenThatKnowIt) {
  const UIViewController child = objc::make<UIViewController>();
  objc::send<"addChildViewController:">(page_, child);
  EXPECT_EQ((objc::send<"childViewControllers", NSArray>(page_)).count(), 1U);
  EXPECT_EQ(child.parentViewController(), page_);
  EXPECT_FALSE((objc::send<"isMovingToParentViewController", bool>(child)));
  objc::send<"removeFromParentViewController">(child);
  EXPECT_EQ((objc::send<"childViewControllers", NSArray>(page_)).count(), 0U);
  EXPECT_FALSE(child.parentViewController());
}

TEST_F(ViewControllerTest, ATransitionTellsItInTurnAndOnce) {
  page_.beginAppearanceTransition(true, false);
  page_.beginAppearanceTransition(true, false);
  EXPECT_THAT(page_.take(), ElementsAre("will appear"));
  page_.endAppearanceTransition();
  page_.endAppearanceTransition();
  EXPECT_THAT(page_.take(), ElementsAre("did appear"));
  page_.beginAppearanceTransition(false, false);
  page_.beginAppearanceTransition(true, false);  // it turns round
  page_.endAppearanceTransition();
  EXPECT_THAT(page_.take(), ElementsAre("will disappear", "will appear", "did appear"));
}

TEST_F(ViewControllerTest, AWindowTellsItsPageWhenItComesAndGoes) {
  window_.setRootViewController(page_);
  EXPECT_THAT(page_.take(), ElementsAre("will appear", "did appear"));
  window_.setRootViewController(page_);
  EXPECT_THAT(page_.take(), IsEmpty());
  window_.setRootViewController(objc::make<UIViewController>());
  EXPECT_THAT(page_.take(), ElementsAre("will disappear", "did disappear"));
}

TEST_F(ViewControllerTest, IsToldWhileItIsPresentedAndDismissed) {
  window_.setRootViewController(page_);
  const UIViewController sheet = objc::make<UIViewController>();
  page_.presentViewController(sheet, true);
  EXPECT_TRUE((objc::send<"isBeingPresented", bool>(sheet)));
  wait(1000);
  EXPECT_FALSE((objc::send<"isBeingPresented", bool>(sheet)));
  sheet.dismissViewController(true);
  EXPECT_TRUE((objc::send<"isBeingDismissed", bool>(sheet)));
  wait(1000);
  EXPECT_FALSE(page_.presentedViewController());
}

TEST_F(ViewControllerTest, KeepsWhatItIsTold) {
  expect_kept<"preferredContentSize", "setPreferredContentSize:">(page_, CGSize{320, 200});
  expect_kept<"modalTransitionStyle", "setModalTransitionStyle:">(page_, NSInteger{2});
  expect_kept<"additionalSafeAreaInsets", "setAdditionalSafeAreaInsets:">(page_, UIEdgeInsets{1, 2, 3, 4});
  EXPECT_TRUE((objc::send<"traitCollection", NSObject>(page_)));
  // Hooks that a page may override, and a base that does nothing.
  objc::send<"didReceiveMemoryWarning">(page_);
  objc::send<"viewSafeAreaInsetsDidChange">(page_);
  objc::send<"setNeedsStatusBarAppearanceUpdate">(page_);
}

}  // namespace
}  // namespace wispen::uikit
