// tests/host/uikit/containers/controllers/navigation_controller_test.cpp: the order in which pages come and
// go.

#include "host/uikit/containers/controllers/navigation_controller.hpp"

#include "host/uikit/containers/controllers/alert_controller.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/window.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::uikit {
namespace {

std::vector<std::string>& journal() {
  static std::vector<std::string> lines;
  return lines;
}

class Page : public objc::Authored<Page, UIViewController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestPage"};
  using Authored::Authored;

  void note(const char* what) const { journal().push_back(title().utf8() + " " + what); }
  void loadView() const {
    note("loadView");
    super<"loadView">();
  }
  void willAppear(bool) const { note("willAppear"); }
  void didAppear(bool) const { note("didAppear"); }
  void willDisappear(bool) const {
    const NSArray stack = objc::send<"viewControllers", NSArray>(navigationController());
    note(("willDisappear of " + std::to_string(stack.count())).c_str());
  }
  void didDisappear(bool) const { note("didDisappear"); }
  static void define() {
    objc::Class<Page>()
        .method<"loadView", &Page::loadView>()
        .method<"viewWillAppear:", &Page::willAppear>()
        .method<"viewDidAppear:", &Page::didAppear>()
        .method<"viewWillDisappear:", &Page::willDisappear>()
        .method<"viewDidDisappear:", &Page::didDisappear>()
        .register_class();
  }
  static Page named(const char* title) {
    Page page = objc::make<Page>();
    page.setTitle(NSString(title));
    return page;
  }
};

class NavigationControllerTest : public wispen::testing::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    Page::define();
    root_ = Page::named("A");
    navigation_ = UINavigationController::alloc().initWithRootViewController(root_);
    window_ = objc::make<UIWindow>();
    window_.setRootViewController(navigation_);
    window_.makeKeyAndVisible();
    journal().clear();
  }
  void TearDown() override {
    window_ = UIWindow();
    navigation_ = UINavigationController();
    root_ = Page();
    HostTest::TearDown();
  }
  static void settle() { ASSERT_TRUE(Session::current()->loop().advance(std::chrono::seconds(2))); }

  Page root_;
  UINavigationController navigation_;
  UIWindow window_;
};

TEST_F(NavigationControllerTest, PushesInThePlatformsOrder) {
  navigation_.pushViewController(Page::named("B"), true);
  settle();
  EXPECT_THAT(journal(), ::testing::ElementsAre("B loadView", "A willDisappear of 2", "B willAppear",
                                                "A didDisappear", "B didAppear"));
}

TEST_F(NavigationControllerTest, PopsWithThePageOffTheStackAlreadyAndFreesIt) {
  objc::Weak<Page> weak;
  {
    const objc::AutoreleasePool pool;
    const Page page = Page::named("B");
    weak = page;
    navigation_.pushViewController(page, false);
    journal().clear();
    navigation_.popViewController(true);
    settle();
  }
  EXPECT_THAT(journal(), ::testing::ElementsAre("B willDisappear of 1", "A willAppear", "B didDisappear",
                                                "A didAppear"));
  EXPECT_FALSE(weak.lock());
}

TEST_F(NavigationControllerTest, GoesBackUnderAFingerAndStaysWhereItLetsGoEarly) {
  const Page page = Page::named("B");
  navigation_.pushViewController(page, false);
  settle();
  journal().clear();
  auto& touches = Session::current()->touches();
  touches.began({5, 400});
  touches.moved({30, 400});
  touches.moved({60, 400});
  ASSERT_TRUE(Session::current()->loop().advance(std::chrono::seconds(1)));
  touches.ended({60, 400});
  settle();
  EXPECT_EQ(navigation_.topViewController(), page);
  EXPECT_THAT(journal(),
              ::testing::ElementsAre("B willDisappear of 1", "A willAppear", "A willDisappear of 2",
                                     "B willAppear", "A didDisappear", "B didAppear"));
}

TEST_F(NavigationControllerTest, AnswersAnAlertByKeyAfterItIsGone) {
  bool chosen = false;
  const UIAlertController alert =
      UIAlertController::alertController("Sure?"_ns, NSString(), UIAlertControllerStyle::Alert);
  alert.addAction(UIAlertAction::actionWithTitle(
      "Set"_ns, UIAlertActionStyle::Default,
      [&](const UIAlertAction&) { chosen = !root_.presentedViewController(); }));
  root_.presentViewController(alert, true);
  settle();
  EXPECT_EQ(root_.presentedViewController(), alert);
  EXPECT_EQ(alert.view().bounds().size.width, 270);
  KeyPress enter;
  enter.code = KeyCode::Return;
  EXPECT_TRUE(press_key(enter));
  settle();
  EXPECT_TRUE(chosen);
  EXPECT_FALSE(root_.presentedViewController());
}

}  // namespace
}  // namespace wispen::uikit
