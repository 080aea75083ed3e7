// tests/host/app/frame_use_test.cpp: frames of the shipped pages in use, beside pictures that are painted at
// once.

#include <cmath>
#include <random>
#include <string>

#include "host/graphics/image_file.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen {
namespace {

// Small pixels are quick to compare; what is forgotten is forgotten at every scale.
constexpr double kScale = 0.5;
// What the drawing library rounds otherwise where only a part is painted.
constexpr int kRounding = 20;

class FrameUseTest : public testing::HostTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    load_shipped_bundle();
    ASSERT_EQ(wispen_host_offer_bundle(WISPEN_TEST_BUNDLE), 1) << wispen_host_last_error();
    ASSERT_EQ(wispen_host_set_frame_scale(kScale), 1);
  }

  /// Where the frame shows something else than the screen has; nothing where it does not.
  std::string difference() const {
    wispen_host_frame_pixels frame{};
    if (wispen_host_frame(&frame) == 0) return wispen_host_last_error();
    const std::string file = folder_ / "whole.png";
    if (wispen_host_snapshot(file.c_str(), kScale, 0) == 0) return wispen_host_last_error();
    const auto whole = graphics::load_image(file);
    if (!whole) return whole.error().message;
    for (int y = 0; y < frame.height; ++y) {
      const unsigned char* kept = frame.pixels + static_cast<std::size_t>(y) * frame.stride;
      const auto* wanted = reinterpret_cast<const unsigned char*>(whole->pixels()->view().row(y));
      for (int i = 0; i < frame.width * 4; ++i) {
        if (std::abs(int{kept[i]} - int{wanted[i]}) <= kRounding) continue;
        return "at " + std::to_string(i / 4) + ", " + std::to_string(y) + " of " + wispen_host_shown_page();
      }
    }
    return "";
  }
};

TEST_P(FrameUseTest, ShowsWhatAWholePictureShows) {
  constexpr int kSteps = 120;
  std::mt19937 random(GetParam());
  const auto number = [&](double least, double most) {
    return std::uniform_real_distribution<>(least, most)(random);
  };
  ASSERT_EQ(wispen_host_show_page(GetParam() % 2 == 0 ? "root" : ""), 1);
  for (int step = 0; step < kSteps; ++step) {
    const double x = number(0, 390);
    const double y = number(40, 844);
    switch (std::uniform_int_distribution<>(0, 9)(random)) {
      case 0:
        wispen_host_wheel(x, y, number(-300, 300));
        break;
      case 1:
        wispen_host_key("tab");
        break;
      case 2:
        wispen_host_key("space");
        break;
      case 3: {
        wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, x, y);
        for (int i = 1; i <= 4; ++i) {
          wispen_host_advance(0.016);
          wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, x + i * number(-20, 20), y + i * number(-30, 30));
          ASSERT_EQ(difference(), "") << "step " << step << ", dragged";
        }
        wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, x, y);
        break;
      }
      default:
        wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, x, y);
        wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, x, y);
        break;
    }
    ASSERT_EQ(difference(), "") << "step " << step;
    wispen_host_advance(number(0, 0.4));
    ASSERT_EQ(difference(), "") << "step " << step << ", later";
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, FrameUseTest, ::testing::Range(0U, 4U));

}  // namespace
}  // namespace wispen
