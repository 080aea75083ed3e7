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

/// Runs a program to its end, its complaints unheard; its exit status, and what it wrote into `output` if
/// given.
int run(const std::vector<std::string>& words, const char* output = "/dev/null") {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
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
               "of the text library's start and the file", Clock::Wall);
}

/// Rows without end, of one class of cell.
struct RowCount {
  long rows = 0;
};
class Rows : public objc::Authored<Rows, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenBenchRows"};
  using Authored::Authored;
  static Rows make(long count) {
    Rows rows = objc::make<Rows>();
    rows.state<RowCount>().rows = count;
    return rows;
  }
  static void define() {
    objc::Class<Rows>()
        .state<RowCount>()
        .method<"tableView:numberOfRowsInSection:", &Rows::count>()
        .method<"tableView:cellForRowAtIndexPath:", &Rows::cell>()
        .register_class();
  }

 private:
  NSInteger count(const UITableView&, NSInteger) const { return state<RowCount>().rows; }
  UITableViewCell cell(const UITableView& table, const NSIndexPath& path) const {
    auto cell = objc::send<"dequeueReusableCellWithIdentifier:", UITableViewCell>(table, "row"_ns);
    if (!cell) {
      cell = objc::allocate<UITableViewCell>().initialize<"initWithStyle:reuseIdentifier:">(
          UITableViewCellStyle::Default, "row"_ns);
    }
    cell.textLabel().setText(NSString(("Row number " + std::to_string(path.row())).c_str()));
    return cell;
  }
};

/// A table over the whole screen, up to its first frame.
class LongTable {
 public:
  void open(long count) {
    rows_ = Rows::make(count);
    const UIWindow window = SettingsScreen::window();
    table_ = UITableView::alloc().initWithFrame(window.bounds(), UITableViewStyle::InsetGrouped);
    table_.setDataSource(rows_);
    window.addSubview(table_);
    SettingsScreen::frame();
  }
  void close() {
    table_.removeFromSuperview();
    table_ = UITableView();
    SettingsScreen::frame();
  }
  void scroll_to(double y) const {
    table_.setContentOffset({0, y}, false);
    SettingsScreen::frame();
  }

 private:
  Rows rows_;
  UITableView table_;
};

void open_long_list(benchmark::State& state) {
  const SettingsScreen screen;
  Rows::define();
  SettingsScreen::frame();
  LongTable table;
  const auto way = [&](long rows) {
    return Way{.run = [&table, rows] { table.open(rows); }, .clean = [&table] { table.close(); }};
  };
  side_by_side(state, way(10000), way(100), 2, "of 100 rows");
}

void scroll_long_list(benchmark::State& state) {
  const SettingsScreen screen;
  Rows::define();
  std::vector<double> many;
  std::vector<double> few;
  const auto scroll = [](long rows, std::vector<double>& seconds) {
    LongTable table;
    table.open(rows);
    for (double y = 0; y < 3000; y += 25) {
      const objc::AutoreleasePool pool;
      seconds.push_back(timed([&] { table.scroll_to(y); }));
    }
    table.close();
  };
  for (auto _ : state) {
    scroll(100, few);
    scroll(10000, many);
    state.SetIterationTime(median(many));
  }
  state.counters["peer_us"] = median(few) * 1e6;
  judge(state, median(many) / median(few), Goal::AtMost, 1.1, "a frame, of 100 rows");
}

/// In a process of its own: the kilobytes that it takes with such a list shown and scrolled through a little.
int tell_memory(long rows) {
  const SettingsScreen screen;
  Rows::define();
  LongTable table;
  table.open(rows);
  for (double y = 0; y < 3000; y += 100) {
    const objc::AutoreleasePool pool;
    table.scroll_to(y);
  }
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) std::printf("%s\n", line.c_str() + 6);
  }
  table.close();
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
BENCHMARK(open_long_list)->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);
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
