// bench/page_bench.cpp: what it takes until a page is there: lists short and long, visits, a picture from
// nothing.
//
// Each benchmark has its peer in the same run and its goal in the label.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/settings_screen.hpp"
#include "bench/side_by_side.hpp"
#include "host/graphics/image_file.hpp"

extern char** environ;

namespace {

using namespace wispen;
using namespace wispen::bench;

/// Runs a program to its end, without its words; its exit status, and what it wrote into `output` if given.
int run(const std::vector<std::string>& words, const char* output = "/dev/null") {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t child = 0;
  int status = -1;
  if (::posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0) {
    ::waitpid(child, &status, 0);
  }
  posix_spawn_file_actions_destroy(&actions);
  return status;
}

void must_run(const std::vector<std::string>& words) {
  if (run(words) == 0) return;
  std::fprintf(stderr, "%s failed\n", words.front().c_str());
  std::abort();
}

/// From the start of the process to the root page's picture in a file.
void start_to_picture(benchmark::State& state) {
  const testing::TemporaryFolder folder("/dev/shm");
  const std::string picture = folder / "page.png";
  const std::string pixels = folder / "page.pixels";
  const std::vector<std::string> program{
      WISPEN_BENCH_PROGRAM, "snapshot", "root", "-o", picture, "--scale", "2", "--root", folder / "root"};
  must_run(program);
  const auto image = graphics::load_image(picture);
  if (!image) std::abort();
  const graphics::PixelView view = image->pixels()->view();
  std::ofstream file(pixels, std::ios::binary);
  for (int y = 0; y < view.height; ++y) {
    file.write(reinterpret_cast<const char*>(view.row(y)), static_cast<std::streamsize>(view.width) * 4);
  }
  file.close();
  const std::vector<std::string> bare{WISPEN_BENCH_BARE_PICTURE, pixels, std::to_string(view.width),
                                      std::to_string(view.height), folder / "bare.png"};
  side_by_side(state, {.run = [&] { must_run(program); }}, {.run = [&] { must_run(bare); }}, 3,
               "of the text library's start and the file");
}

/// A page of many rows, up to the first frame.
void open_long_list(benchmark::State& state) {
  // A host of its own for each length: what one leaves behind would count for the other.
  std::optional<SettingsScreen> screen;
  const auto way = [&](long rows) {
    return Way{.run =
                   [] {
                     SettingsScreen::show("root");
                     SettingsScreen::frame();
                   },
               .prepare =
                   [&screen, rows] {
                     screen.emplace();
                     screen->offer("list", list_of_rows(rows, "PSSwitchCell"), true);
                     SettingsScreen::show("");
                     SettingsScreen::settle();
                     SettingsScreen::frame();
                   },
               .clean = [&screen] { screen.reset(); }};
  };
  side_by_side(state, way(10000), way(100), 2, "of 100 rows");
}

double scrolling_seconds(long rows) {
  SettingsScreen screen;
  screen.offer("list", list_of_rows(rows, "PSSwitchCell"), true);
  SettingsScreen::show("root");
  SettingsScreen::settle();
  SettingsScreen::frame();
  std::vector<double> frames;
  const double end = std::min(SettingsScreen::end_of_page(), 3000.0);
  for (double y = 0; y < end; y += 25) {
    const objc::AutoreleasePool pool;
    frames.push_back(timed([&] {
      SettingsScreen::scroll_to(y);
      SettingsScreen::frame();
    }));
  }
  return median(frames);
}

void scroll_long_list(benchmark::State& state) {
  std::vector<double> many;
  std::vector<double> few;
  for (auto _ : state) {
    few.push_back(scrolling_seconds(100));
    many.push_back(scrolling_seconds(10000));
    state.SetIterationTime(many.back());
  }
  state.counters["peer_us"] = median(few) * 1e6;
  judge(state, median(many) / median(few), Goal::AtMost, 1.1, "a frame, of 100 rows");
}

/// In a process of its own: the kilobytes that it takes with such a list shown and scrolled through a little.
int tell_memory(long rows) {
  SettingsScreen screen;
  screen.offer("list", list_of_rows(rows, "PSSwitchCell"), true);
  SettingsScreen::show("root");
  SettingsScreen::settle();
  SettingsScreen::frame();
  for (double y = 0; y < std::min(SettingsScreen::end_of_page(), 3000.0); y += 100) {
    const objc::AutoreleasePool pool;
    SettingsScreen::scroll_to(y);
    SettingsScreen::frame();
  }
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) std::printf("%s\n", line.c_str() + 6);
  }
  return 0;
}

double kilobytes(long rows, const std::string& file) {
  if (run({"/proc/self/exe", "--memory-of-rows", std::to_string(rows)}, file.c_str()) != 0) std::abort();
  double value = 0;
  std::ifstream(file) >> value;
  return value;
}

void memory_of_long_list(benchmark::State& state) {
  const testing::TemporaryFolder folder("/dev/shm");
  double many = 0;
  double few = 0;
  for (auto _ : state) {
    few = kilobytes(100, folder / "few");
    many = kilobytes(10000, folder / "many");
    state.SetIterationTime(1);
  }
  state.counters["kilobytes"] = many;
  state.counters["peer_kilobytes"] = few;
  judge(state, many / few, Goal::AtMost, 1.5, "of 100 rows");
}

/// From the tap on a bundle's row on the front page to the first frame with its page.
void visit_root_page(benchmark::State& state) {
  SettingsScreen screen;
  screen.offer("plain", shipped_list_without_classes(), true);
  screen.offer_shipped();
  const auto way = [](NSInteger row) {
    return Way{.run =
                   [row] {
                     SettingsScreen::tap(SettingsScreen::middle_of(SettingsScreen::cell(row)));
                     SettingsScreen::frame();
                   },
               .prepare =
                   [] {
                     SettingsScreen::show("");
                     SettingsScreen::settle();
                     SettingsScreen::frame();
                   },
               .clean =
                   [] {
                     SettingsScreen::settle();
                     SettingsScreen::frame();
                   }};
  };
  side_by_side(state, way(1), way(0), 1.3, "of a plain page with as many rows");
}

void open_labelled_sliders(benchmark::State& state) {
  std::optional<SettingsScreen> screen;
  const auto way = [&](const char* cls) {
    return Way{.run =
                   [] {
                     SettingsScreen::show("root");
                     SettingsScreen::frame();
                   },
               .prepare =
                   [&screen, cls] {
                     screen.emplace();
                     screen->offer("sliders", list_of_rows(50, "PSSliderCell", cls), true);
                     SettingsScreen::show("");
                     SettingsScreen::settle();
                     SettingsScreen::frame();
                   },
               .clean = [&screen] { screen.reset(); }};
  };
  side_by_side(state, way("XXXLabeledSliderCell"), way(nullptr), 2, "of plain sliders");
}

BENCHMARK(start_to_picture)->UseManualTime()->Iterations(11)->Unit(benchmark::kMillisecond);
BENCHMARK(open_long_list)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(scroll_long_list)->UseManualTime()->Iterations(3)->Unit(benchmark::kMicrosecond);
BENCHMARK(memory_of_long_list)->UseManualTime()->Iterations(1);
BENCHMARK(visit_root_page)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK(open_labelled_sliders)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int count, char** words) {
  if (count == 3 && std::string_view(words[1]) == "--memory-of-rows") return tell_memory(std::atol(words[2]));
  benchmark::Initialize(&count, words);
  if (benchmark::ReportUnrecognizedArguments(count, words)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
