// tests/host/core/notification_process_test.cpp: between processes, some of them in a bad way.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <vector>

#include "host/core/notification_listener.hpp"
#include "host/core/notification_poster.hpp"
#include "tests/host/core/child.hpp"
#include "tests/host/core/device_fixture.hpp"

namespace wispen {
namespace {

using testing::Child;
using testing::say;
using Clock = std::chrono::steady_clock;

constexpr int kBurst = 100'000;

class BetweenProcesses : public testing::OnADevice {
 protected:
  const std::string folder = root().notifications_folder();
  NotificationPoster poster{folder};

  /// Listens for "state" in another process until `body` returns; it has begun when this returns.
  std::unique_ptr<Child> listener(const std::function<void(NotificationListener&, int)>& body) const {
    auto child = std::make_unique<Child>([&](int output) {
      auto listening = NotificationListener::open(folder, {"state"});
      if (!listening) _exit(1);
      say(output, "ready");
      body(*listening, output);
    });
    EXPECT_EQ(child->line(), "ready");
    return child;
  }

  /// Says how many posts it has heard once they are `expected`.
  std::unique_ptr<Child> counter(std::uint64_t expected) const {
    return listener([expected](NotificationListener& listening, int output) {
      rusage before{};
      getrusage(RUSAGE_SELF, &before);
      std::uint64_t heard = 0;
      while (heard < expected) {
        for (const Notice& notice : listening.wait()) heard += notice.posts;
      }
      rusage usage{};
      getrusage(RUSAGE_SELF, &usage);
      say(output, std::to_string(heard));
      say(output, std::to_string(usage.ru_maxrss - before.ru_maxrss));
    });
  }

  void burst(const char* what) {
    const auto start = Clock::now();
    Clock::duration longest{};
    for (int i = 0; i < kBurst; ++i) {
      const auto before = Clock::now();
      ASSERT_TRUE(poster.post("state"));
      longest = std::max(longest, Clock::now() - before);
    }
    const std::chrono::duration<double, std::micro> took = Clock::now() - start;
    std::printf("[   FIGURE ] %s: %d posts, %.2f us each, the longest %.0f us\n", what, kBurst,
                took.count() / kBurst, std::chrono::duration<double, std::micro>(longest).count());
    EXPECT_LT(longest, std::chrono::seconds(2)) << "a post waited for somebody";
  }
};

TEST_F(BetweenProcesses, APostWakesAListener) {
  const auto child = listener([](NotificationListener& listening, int output) {
    for (const Notice& notice : listening.wait()) say(output, notice.name);
  });
  ASSERT_TRUE(poster.post("state"));
  EXPECT_EQ(child->line(), "state");
}

TEST_F(BetweenProcesses, ABurstWithoutAListenerHarmsNobody) { burst("no listener"); }

TEST_F(BetweenProcesses, ABurstIsHeardToTheLastPost) {
  const auto child = counter(kBurst);
  burst("a listener that keeps up");
  EXPECT_EQ(child->line(), std::to_string(kBurst));
  const long growth = std::stol(child->line());
  std::printf("[   FIGURE ] the listener's memory grew by %ld KB\n", growth);
  EXPECT_LT(growth, 16 * 1024);
}

TEST_F(BetweenProcesses, ABurstDoesNotWaitForADeadListener) {
  const auto child = counter(kBurst);
  child->end(SIGKILL);
  burst("a dead listener");
}

TEST_F(BetweenProcesses, AStoppedListenerHearsOfTheWholeBurstWhenItGoesOn) {
  const auto child = counter(kBurst);
  child->stop();
  burst("a stopped listener");
  child->go_on();
  EXPECT_EQ(child->line(), std::to_string(kBurst));
}

TEST_F(BetweenProcesses, ASlowListenerSeesTheLastState) {
  const std::string state = folder_ / "state";
  const auto child = listener([&state](NotificationListener& listening, int output) {
    int seen = 0;
    int rounds = 0;
    while (seen < 2000) {
      if (listening.wait().empty()) continue;
      std::ifstream(state) >> seen;
      ++rounds;
      // Slow by work and not by the clock: many posts come meanwhile.
      std::vector<unsigned> work(200'000);
      for (std::size_t i = 1; i < work.size(); ++i) work[i] = work[i - 1] * 3 + 1;
      if (work.back() == 7) say(output, "never");
    }
    say(output, std::to_string(seen));
    say(output, std::to_string(rounds));
  });
  for (int i = 1; i <= 2000; ++i) {
    std::ofstream(state + ".new") << i;
    ASSERT_EQ(std::rename((state + ".new").c_str(), state.c_str()), 0);
    ASSERT_TRUE(poster.post("state"));
  }
  EXPECT_EQ(child->line(), "2000");
  std::printf("[   FIGURE ] 2000 states, seen in %s looks\n", child->line().c_str());
}

TEST_F(BetweenProcesses, PostsOfManyProcessesAreAllCounted) {
  const auto child = counter(4 * 2500);
  std::vector<std::unique_ptr<Child>> posters;
  for (int p = 0; p < 4; ++p) {
    posters.push_back(std::make_unique<Child>([this](int) {
      NotificationPoster own(folder);
      for (int i = 0; i < 2500; ++i) {
        if (!own.post("state")) _exit(1);
      }
    }));
  }
  for (const auto& each : posters) EXPECT_EQ(each->wait(), 0);
  EXPECT_EQ(child->line(), std::to_string(4 * 2500));
}

TEST_F(BetweenProcesses, ManyListenersHearEveryPost) {
  std::vector<std::unique_ptr<Child>> listeners;
  for (int i = 0; i < 20; ++i) listeners.push_back(counter(500));
  for (int i = 0; i < 500; ++i) ASSERT_TRUE(poster.post("state"));
  for (const auto& each : listeners) EXPECT_EQ(each->line(), "500");
}

}  // namespace
}  // namespace wispen
