// tests/host/app/frame_test.cpp: the screen's pixels for a program that shows them itself.

#include "tests/support/host_fixture.hpp"

namespace wispen {
namespace {

class FrameTest : public testing::HostTest {
 protected:
  static wispen_host_frame_pixels frame() {
    wispen_host_frame_pixels pixels{};
    EXPECT_EQ(wispen_host_frame(&pixels), 1) << wispen_host_last_error();
    return pixels;
  }
};

TEST_F(FrameTest, SaysWhatChangedAndRestsThen) {
  const wispen_host_frame_pixels first = frame();
  EXPECT_EQ(first.width, 1170);
  EXPECT_EQ(first.changed_width, 1170);
  EXPECT_EQ(first.changed_height, 2532);
  EXPECT_EQ(frame().changed_width, 0);
  EXPECT_EQ(wispen_host_frame_stale(), 0);
}

TEST_F(FrameTest, HasTheScaleThatIsAskedFor) {
  frame();
  ASSERT_EQ(wispen_host_set_frame_scale(2), 1);
  EXPECT_EQ(wispen_host_frame_stale(), 1);
  const wispen_host_frame_pixels smaller = frame();
  EXPECT_EQ(smaller.width, 780);
  EXPECT_EQ(smaller.height, 1688);
  EXPECT_EQ(smaller.changed_height, 1688);
  EXPECT_EQ(wispen_host_set_frame_scale(9), 0);
  EXPECT_EQ(frame().width, 780);
  ASSERT_EQ(wispen_host_set_frame_scale(0), 1);
  EXPECT_EQ(frame().width, 1170);
}

}  // namespace
}  // namespace wispen
