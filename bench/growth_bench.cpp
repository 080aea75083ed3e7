// bench/growth_bench.cpp: ten times as much takes about ten times as long.
//
// Each benchmark has its peer in the same run (a tenth of itself) and its goal in the label.

#include <string>

#include "bench/settings_screen.hpp"
#include "bench/side_by_side.hpp"
#include "host/graphics/text_layout.hpp"
#include "platform/UIKit.hpp"

namespace {

using namespace wispen;
using namespace wispen::bench;

constexpr double kMostForTenfold = 15;

void set_word(std::size_t letters) {
  graphics::TextConstraints constraints;
  constraints.width = 350;
  const graphics::AttributedText text(std::string(letters, 'x'), graphics::TextAttributes{});
  benchmark::DoNotOptimize(graphics::TextLayout::create(text, constraints)->size());
}

void one_word_of_many_lines(benchmark::State& state) {
  side_by_side(state, {.run = [] { set_word(16'000); }}, {.run = [] { set_word(1'600); }}, kMostForTenfold,
               "of a tenth of the letters");
}

void build_segments(int count) {
  const objc::AutoreleasePool pool;
  const auto control = objc::make<UISegmentedControl>();
  for (int i = 0; i < count; ++i) {
    objc::send<"insertSegmentWithTitle:atIndex:animated:">(control, NSString(std::to_string(i).c_str()),
                                                           static_cast<NSUInteger>(i), false);
  }
  control.setFrame(CGRectMake(0, 0, 350, 32));
  control.layoutIfNeeded();
}

void segments(benchmark::State& state) {
  const SettingsScreen screen;
  side_by_side(state, {.run = [] { build_segments(5'000); }}, {.run = [] { build_segments(500); }},
               kMostForTenfold, "of a tenth of the segments");
}

BENCHMARK(one_word_of_many_lines)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK(segments)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
