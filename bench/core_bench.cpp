// bench/core_bench.cpp: notifications against the kernel's own limits, once-only calls, the main loop.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <linux/futex.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/latency.hpp"
#include "host/core/main_loop.hpp"
#include "host/core/notification_listener.hpp"
#include "host/core/notification_poster.hpp"
#include "host/core/once.hpp"
#include "host/core/queues.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen::bench {
namespace {

class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "wispen-bench-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

struct Mechanism {
  const char* name;
  std::unique_ptr<Listeners> listeners;
  std::function<void()> post;
  std::vector<double> posts, listener, last;

  void sample() {
    const auto result = listeners->measure(post);
    posts.push_back(result.post);
    listener.push_back(result.listener);
    last.push_back(result.last);
  }
  void print() {
    const Spread a = spread(posts);
    const Spread b = spread(listener);
    const Spread c = spread(last);
    std::printf("  %-26s post %7.1f / %7.1f   listener %7.1f / %7.1f   last %7.1f / %7.1f\n", name, a.median,
                a.p99, b.median, b.p99, c.median, c.p99);
  }
};

Mechanism notification(const std::string& folder, int count) {
  auto poster = std::make_shared<NotificationPoster>(folder);
  const auto make = [&folder](int) -> Listeners::Waiter {
    auto listener = std::make_shared<NotificationListener>(*NotificationListener::open(folder, {"bench"}));
    return [listener] { listener->wait(); };
  };
  return {"notification",
          std::make_unique<Listeners>(count, make),
          [poster] { (void)poster->post("bench").ok(); },
          {},
          {},
          {}};
}

/// What the notification's mechanism costs by itself: a bare append and a bare read of the event.
Mechanism bare_append(const std::string& folder, int count) {
  const std::string file = folder + "/bare";
  auto fd = std::make_shared<UniqueFd>(open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
  const auto make = [&folder](int) -> Listeners::Waiter {
    auto events = std::make_shared<UniqueFd>(inotify_init1(IN_CLOEXEC));
    if (inotify_add_watch(events->get(), folder.c_str(), IN_MODIFY) < 0) _exit(1);
    return [events] {
      char buffer[16384];
      if (read(events->get(), buffer, sizeof buffer) < 0) _exit(1);
    };
  };
  const auto post = [fd] {
    if (write(fd->get(), "!", 1) < 0) std::abort();
  };
  return {"bare append and event", std::make_unique<Listeners>(count, make), post, {}, {}, {}};
}

Mechanism event_descriptors(int count) {
  auto fds = std::make_shared<std::vector<UniqueFd>>();
  for (int i = 0; i < count; ++i) fds->emplace_back(eventfd(0, EFD_CLOEXEC));
  const auto make = [fds](int number) -> Listeners::Waiter {
    return [fds, number] {
      std::uint64_t value = 0;
      if (read((*fds)[static_cast<std::size_t>(number)].get(), &value, sizeof value) < 0) _exit(1);
    };
  };
  const auto post = [fds] {
    const std::uint64_t one = 1;
    for (const UniqueFd& fd : *fds) {
      if (write(fd.get(), &one, sizeof one) < 0) std::abort();
    }
  };
  return {"eventfd for each", std::make_unique<Listeners>(count, make), post, {}, {}, {}};
}

Mechanism futex(int count) {
  auto* counter = &new_board().counter;
  const auto make = [counter](int) -> Listeners::Waiter {
    return [counter, seen = std::uint32_t{0}]() mutable {
      while (counter->load() == seen) syscall(SYS_futex, counter, FUTEX_WAIT, seen, nullptr, nullptr, 0);
      seen = counter->load();
    };
  };
  const auto post = [counter] {
    counter->fetch_add(1);
    syscall(SYS_futex, counter, FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0);
  };
  return {"counter and futex wake-all", std::make_unique<Listeners>(count, make), post, {}, {}, {}};
}

/// The mechanisms take turns, so that the machine's drift hits all alike.
void compare(int count, int samples) {
  const Folder folder;
  const Folder bare;
  std::vector<Mechanism> mechanisms;
  mechanisms.push_back(notification(folder.path(), count));
  mechanisms.push_back(event_descriptors(count));
  mechanisms.push_back(futex(count));
  mechanisms.push_back(bare_append(bare.path(), count));
  for (int i = 0; i < samples; ++i) {
    for (Mechanism& each : mechanisms) each.sample();
  }
  std::printf("%d listener%s, %d posts, us, median / p99\n", count, count == 1 ? "" : "s", samples);
  for (Mechanism& each : mechanisms) each.print();
  for (std::size_t i = 1; i < mechanisms.size(); ++i) {
    std::printf("  notification to %-26s %.2f (listener), %.2f (last)\n", mechanisms[i].name,
                spread(mechanisms[0].listener).median / spread(mechanisms[i].listener).median,
                spread(mechanisms[0].last).median / spread(mechanisms[i].last).median);
  }
}

void post_alone(benchmark::State& state) {
  const Folder folder;
  NotificationPoster poster(folder.path());
  for (auto _ : state) benchmark::DoNotOptimize(poster.post("com.example/changed").ok());
}
BENCHMARK(post_alone);

void once_done(benchmark::State& state) {
  std::intptr_t token = 0;
  for (auto _ : state) {
    once(&token, nullptr, [](void*) {});
    benchmark::ClobberMemory();
  }
}
BENCHMARK(once_done);

void call_empty_function(benchmark::State& state) {
  void (*function)(void*) = [](void*) {};
  benchmark::DoNotOptimize(function);
  for (auto _ : state) {
    function(nullptr);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(call_empty_function);

void loop_idle(benchmark::State& state) {
  MainLoop loop(ClockKind::Driven);
  for (auto _ : state) benchmark::DoNotOptimize(loop.run_until_idle().ok());
}
BENCHMARK(loop_idle);

void loop_runs_a_posted_job(benchmark::State& state) {
  MainLoop loop(ClockKind::Driven);
  int ran = 0;
  for (auto _ : state) {
    for (int i = 0; i < 100; ++i) loop.post([&ran] { ++ran; });
    benchmark::DoNotOptimize(loop.run_until_idle().ok());
  }
  state.SetItemsProcessed(state.iterations() * 100);
}
BENCHMARK(loop_runs_a_posted_job);

void loop_fires_a_timer(benchmark::State& state) {
  MainLoop loop(ClockKind::Driven);
  int fired = 0;
  loop.add_timer(
      Nanoseconds(1), [&fired] { ++fired; }, Nanoseconds(1));
  for (auto _ : state) benchmark::DoNotOptimize(loop.advance(Nanoseconds(100)).ok());
  state.SetItemsProcessed(state.iterations() * 100);
}
BENCHMARK(loop_fires_a_timer);

void background_and_back(benchmark::State& state) {
  MainLoop loop(ClockKind::Driven);
  Queues::shared().attach(loop);
  int ran = 0;
  for (auto _ : state) {
    Queues::shared().add(Queues::Target::Background,
                         [&ran] { Queues::shared().add(Queues::Target::Main, [&ran] { ++ran; }); });
    benchmark::DoNotOptimize(loop.run_until_idle().ok());
  }
  Queues::shared().stop();
}
BENCHMARK(background_and_back);

}  // namespace
}  // namespace wispen::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  // Before the benchmarks that start threads: the listeners are forked.
  wispen::bench::compare(1, 2000);
  wispen::bench::compare(20, 500);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
