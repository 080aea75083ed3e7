// bench/screen_bench.cpp: what painting costs: a page, a row, nothing, a page that moves.
//
// Each benchmark has its peer in the same run and its goal in the label. The screen has 780 by 1688 pixels.

#include <sys/resource.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/bare_page.hpp"
#include "bench/settings_screen.hpp"
#include "bench/side_by_side.hpp"

namespace {

using namespace wispen::bench;

constexpr double kFrame = 1.0 / 60;

/// Switches and titles, as many as the screen holds.
void show_plain_page(SettingsScreen& screen) {
  screen.offer("switches", list_of_rows(30, "PSSwitchCell"), true);
  SettingsScreen::show("root");
  SettingsScreen::settle();
  SettingsScreen::frame();
}

UISwitch switch_of(NSInteger row) { return objc::send<"control", UISwitch>(SettingsScreen::cell(row)); }

void flip(const UISwitch& control) {
  objc::send<"setOn:animated:">(control, !objc::send<"isOn", bool>(control), false);
}

void whole_page(benchmark::State& state) {
  SettingsScreen screen;
  show_plain_page(screen);
  const BarePage bare(SettingsScreen::window());
  state.counters["shapes"] = static_cast<double>(bare.shapes());
  state.counters["texts"] = static_cast<double>(bare.texts());
  side_by_side(state,
               {.run = [] { SettingsScreen::frame(); }, .prepare = [] { SettingsScreen::damage_all(); }},
               {.run = [&] { bare.paint(); }}, 1.5, "of bare drawing");
}

void one_changed_row(benchmark::State& state) {
  SettingsScreen screen;
  show_plain_page(screen);
  const UISwitch control = switch_of(4);
  side_by_side(state, {.run = [] { SettingsScreen::frame(); }, .prepare = [&] { flip(control); }},
               {.run = [] { SettingsScreen::frame(); }, .prepare = [] { SettingsScreen::damage_all(); }}, 0.1,
               "of the whole page");
}

/// The switch's thumb on its way: every frame of a slide.
void one_sliding_switch(benchmark::State& state) {
  SettingsScreen screen;
  show_plain_page(screen);
  const UISwitch control = switch_of(4);
  side_by_side(state,
               {.run = [] { SettingsScreen::frame(); },
                .prepare =
                    [&] {
                      SettingsScreen::settle();
                      SettingsScreen::frame();
                      SettingsScreen::tap(SettingsScreen::middle_of(control));
                      SettingsScreen::frame();
                      SettingsScreen::advance(3 * kFrame);
                    }},
               {.run = [] { SettingsScreen::frame(); }, .prepare = [] { SettingsScreen::damage_all(); }}, 0.1,
               "of the whole page");
}

double processor_seconds(long& switches) {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  switches = usage.ru_nvcsw + usage.ru_nivcsw;
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// A second of the wall's clock with the root page shown and nobody near.
void idle(benchmark::State& state) {
  SettingsScreen screen(true);
  screen.offer_shipped();
  SettingsScreen::show("root");
  wispen_host_run_for(3);  // all fades are over
  SettingsScreen::frame();
  long before = 0;
  long after = 0;
  double used = 0;
  long painted = 0;
  for (auto _ : state) {
    used -= processor_seconds(before);
    wispen_host_run_for(1);
    used += processor_seconds(after);
    painted += wispen_host_frame_stale();
    state.SetIterationTime(1);
  }
  state.counters["wakes"] = static_cast<double>(after - before);
  state.counters["repaints"] = static_cast<double>(painted);
  judge(state, used / static_cast<double>(state.iterations()), Goal::AtMost, 0.001, "of one core's time");
}

struct Frames {
  std::vector<double> seconds;
  double most() const { return *std::ranges::max_element(seconds); }
  double mean() const {
    double all = 0;
    for (const double each : seconds) all += each;
    return all / static_cast<double>(seconds.size());
  }
};

/// To the end of the page and back, each frame with all that leads to it: time, layout, painting.
void scroll_through(Frames& frames) {
  constexpr double kStep = 25;
  const double end = SettingsScreen::end_of_page();
  const auto one = [&](double y) {
    const objc::AutoreleasePool pool;
    frames.seconds.push_back(timed([&] {
      SettingsScreen::advance(kFrame);
      SettingsScreen::scroll_to(y);
      SettingsScreen::frame();
    }));
  };
  for (double y = 0; y < end; y += kStep) one(y);
  for (double y = end; y > 0; y -= kStep) one(y);
}

/// Through the root page, every row fading in, and through a plain page with as many rows.
void scroll_with_fades(benchmark::State& state) {
  Frames ours;
  Frames plain;
  for (auto _ : state) {
    for (Frames* frames : {&plain, &ours}) {
      SettingsScreen screen;
      if (frames == &plain) {
        screen.offer("plain", shipped_list_without_classes(), true);
      } else {
        screen.offer_shipped();
      }
      SettingsScreen::show("root");
      SettingsScreen::settle();
      SettingsScreen::frame();
      scroll_through(*frames);
    }
    state.SetIterationTime(ours.mean());
  }
  state.counters["mean_ms"] = ours.mean() * 1e3;
  state.counters["max_ms"] = ours.most() * 1e3;
  state.counters["plain_mean_ms"] = plain.mean() * 1e3;
  state.counters["plain_max_ms"] = plain.most() * 1e3;
  state.counters["to_plain"] = ours.mean() / plain.mean();
  judge(state, ours.most() / kFrame, Goal::AtMost, 1, "of a frame at 60 a second, the worst");
}

/// A finger on the slider of a row: the pixels painted are the row's.
void slider_drag(benchmark::State& state) {
  SettingsScreen screen;
  screen.offer("sliders", list_of_rows(20, "PSSliderCell", "XXXLabeledSliderCell"), true);
  SettingsScreen::show("root");
  SettingsScreen::settle();
  SettingsScreen::frame();
  const UITableViewCell cell = SettingsScreen::cell(5);
  const auto slider = objc::send<"control", UISlider>(cell);
  objc::send<"setValue:animated:">(slider, 5.0F, false);
  SettingsScreen::frame();
  const CGPoint middle = SettingsScreen::middle_of(slider);
  const CGSize size = cell.bounds().size;
  wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, middle.x, middle.y);
  double x = 0;
  long most = 0;
  side_by_side(state,
               {.run = [&] { most = std::max(most, SettingsScreen::frame()); },
                .prepare =
                    [&] {
                      x = x > 60 ? 0 : x + 7;
                      wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, middle.x + x, middle.y);
                    }},
               {.run = [] { SettingsScreen::frame(); }, .prepare = [] { SettingsScreen::damage_all(); }}, 0.1,
               "of the whole page");
  state.counters["to_page"] = state.counters["ratio"];
  judge(state, static_cast<double>(most) / (size.width * size.height * 4), Goal::AtMost, 1,
        "of its row's pixels");
  wispen_host_touch(WISPEN_HOST_TOUCH_CANCELLED, middle.x, middle.y);
}

BENCHMARK(whole_page)->UseManualTime()->Iterations(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(one_changed_row)->UseManualTime()->Iterations(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(one_sliding_switch)->UseManualTime()->Iterations(50)->Unit(benchmark::kMicrosecond);
BENCHMARK(slider_drag)->UseManualTime()->Iterations(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(scroll_with_fades)->UseManualTime()->Iterations(3)->Unit(benchmark::kMicrosecond);
BENCHMARK(idle)->UseManualTime()->Iterations(2)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
