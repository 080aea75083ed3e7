// tests/home_screen/screen_fixture.hpp: the whole home screen, and pictures of it.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

#include "home_screen/screen.hpp"
#include "tests/home_screen/parts_fixture.hpp"

namespace wispen::testing {

class ScreenTest : public PartsTest {
 protected:
  void SetUp() override {
    PartsTest::SetUp();
    // Once in a process: classes stay.
    static const bool defined = [] {
      home_screen::Screen::define();
      return true;
    }();
    ASSERT_TRUE(defined);
    screen = home_screen::Screen::make();
    window = UIWindow::alloc().initWithFrame(UIScreen::mainScreen().bounds());
    window.setRootViewController(screen);
    window.makeKeyAndVisible();
  }
  void TearDown() override {
    window.setHidden(true);
    window.setRootViewController(UIViewController());
    window = UIWindow();
    screen = home_screen::Screen();
    PartsTest::TearDown();
  }
  std::string picture_file() const { return folder_ / "home.png"; }
  /// The file's bytes: two pictures are the same where these are.
  std::string picture() const {
    EXPECT_EQ(wispen_host_snapshot(picture_file().c_str(), 1, 0), 1) << wispen_host_last_error();
    std::ifstream file(picture_file(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  std::string picture_of(const NSDictionary& values) const {
    const objc::AutoreleasePool pool;
    screen.show(home_screen::read_settings(values), false);
    return picture();
  }
  std::string picture_of(const Values& values) const { return picture_of(dictionary(values)); }

  home_screen::Screen screen;
  UIWindow window;
};

}  // namespace wispen::testing
