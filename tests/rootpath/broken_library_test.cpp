// tests/rootpath/broken_library_test.cpp: root paths with a library that is there but cannot be loaded.

#include <gtest/gtest.h>

#include "rootpath/rootpath.h"
#include "tests/rootpath/search_path.hpp"

namespace wispen::testing {
namespace {

// Loaded lazily it would answer, until its first call of what is missing ended the process.
TEST(RootPathWithABrokenLibrary, FallsBackBecauseAllOfItIsResolvedAtOnce) {
  const HostWithLibraryIn host(TEST_LIBRARIES "/broken");
  ASSERT_TRUE(host.started());
  char buffer[LIBROOT_PATH_MAX];
  EXPECT_STREQ(libroot_dyn_get_jbroot_prefix(), "/var/jb");
  EXPECT_STREQ(libroot_dyn_jbrootpath("/x", buffer), "/var/jb/x");
}

}  // namespace
}  // namespace wispen::testing
