// tests/rootpath/load_race_test.cpp: the first call, from sixteen threads at once.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "platform/System.h"
#include "rootpath/rootpath.h"
#include "tests/rootpath/search_path.hpp"

namespace wispen::testing {
namespace {

TEST(RootPathLoad, RunsOnceAndEveryThreadSeesItsResult) {
  const HostWithLibraryIn host(TEST_LIBRARIES "/counting");
  ASSERT_TRUE(host.started());
  constexpr int kThreads = 16;
  std::atomic<int> waiting = 0;
  std::atomic<int> right = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      ++waiting;
      while (waiting.load() < kThreads) std::this_thread::yield();
      char buffer[LIBROOT_PATH_MAX];
      bool all_right = true;
      switch (i % 4) {
        case 0:
          libroot_load();
          [[fallthrough]];
        case 1:
          all_right = std::string(libroot_dyn_jbrootpath("/x", buffer)) == "jb:/x";
          break;
        case 2:
          all_right = std::string(libroot_dyn_get_boot_uuid()) == "boot id of the library";
          break;
        default:
          all_right = std::string(libroot_dyn_rootfspath("/x", buffer)) == "fs:/x";
      }
      right += all_right ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right.load(), kThreads);

  void* const library = platform_dlopen("@rpath/libroot.dylib", PLATFORM_RTLD_NOW);
  ASSERT_NE(library, nullptr);
  const auto loads = reinterpret_cast<int (*)()>(platform_dlsym(library, "counting_libroot_loads"));
  ASSERT_NE(loads, nullptr);
  EXPECT_EQ(loads(), 1);
}

}  // namespace
}  // namespace wispen::testing
