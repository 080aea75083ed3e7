// tests/host/uikit/controllers/navigation_controller_test.cpp: the order in which pages come and go.

#include "host/uikit/controllers/navigation_controller.hpp"

#include "host/uikit/controllers/alert_controller.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/views/window.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::uikit {
namespace {

std::vector<std::string>& journal() {
  static std::vector<std::string> lines;
  return lines;
}

class Page : public objc::Authored<Page, ViewController> {
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
    objc::send<"setTitle:">(page, NSString(title));
    return page;
  }
};

class NavigationControllerTest : public wispen::testing::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    Page::define();
    root_ = Page::named("A");
    navigation_ = NavigationController::with_root(root_);
    window_ = Window::make();
    window_.setRootViewController(navigation_);
    window_.makeKeyAndVisible();
    journal().clear();
  }
  void TearDown() override {
    window_ = Window();
    navigation_ = NavigationController();
    root_ = Page();
    HostTest::TearDown();
  }
  static void settle() { ASSERT_TRUE(Session::current()->loop().advance(std::chrono::seconds(2))); }

  Page root_;
  NavigationController navigation_;
  Window window_;
};

TEST_F(NavigationControllerTest, PushesInThePlatformsOrder) {
  navigation_.push(Page::named("B"), true);
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
    navigation_.push(page, false);
    journal().clear();
    navigation_.pop(true);
    settle();
  }
  EXPECT_THAT(journal(), ::testing::ElementsAre("B willDisappear of 1", "A willAppear", "B didDisappear",
                                                "A didAppear"));
  EXPECT_FALSE(weak.lock());
}

TEST_F(NavigationControllerTest, GoesBackUnderAFingerAndStaysWhereItLetsGoEarly) {
  const Page page = Page::named("B");
  navigation_.push(page, false);
  settle();
  journal().clear();
  auto& touches = Session::current()->touches();
  touches.began({5, 400});
  touches.moved({30, 400});
  touches.moved({60, 400});
  ASSERT_TRUE(Session::current()->loop().advance(std::chrono::seconds(1)));
  touches.ended({60, 400});
  settle();
  EXPECT_EQ(navigation_.top(), page);
  EXPECT_THAT(journal(),
              ::testing::ElementsAre("B willDisappear of 1", "A willAppear", "A willDisappear of 2",
                                     "B willAppear", "A didDisappear", "B didAppear"));
}

TEST_F(NavigationControllerTest, AnswersAnAlertByKeyAfterItIsGone) {
  bool chosen = false;
  const AlertController alert =
      objc::send<"alertControllerWithTitle:message:preferredStyle:", AlertController>(
          objc::class_for<AlertController>(), "Sure?"_ns, NSString(), NSInteger{1});
  const objc::Block<void(AlertAction)> handler = [&](const AlertAction&) { chosen = !root_.presented(); };
  const auto action = objc::send<"actionWithTitle:style:handler:", AlertAction>(
      objc::class_for<AlertAction>(), "Set"_ns, NSInteger{0}, handler);
  objc::send<"addAction:">(alert, action);
  root_.present(alert, true, {});
  settle();
  EXPECT_EQ(root_.presented(), alert);
  EXPECT_EQ(alert.view().bounds().width(), 270);
  KeyState enter;
  enter.code = KeyCode::Return;
  EXPECT_TRUE(press_key(enter) || (objc::send<"_handleKey:", bool>(alert, Key::make(enter))));
  settle();
  EXPECT_TRUE(chosen);
  EXPECT_FALSE(root_.presented());
}

}  // namespace
}  // namespace wispen::uikit
