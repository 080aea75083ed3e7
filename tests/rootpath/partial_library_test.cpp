// tests/rootpath/partial_library_test.cpp: root paths with a library that has one function only.

#include <gtest/gtest.h>

#include "rootpath/rootpath.h"
#include "tests/rootpath/search_path.hpp"

namespace wispen::testing {
namespace {

TEST(RootPathWithAPartialLibrary, UsesItsPrefixInTheFallbackAlgorithms) {
  const HostWithLibraryIn host(TEST_LIBRARIES "/only_prefix");
  ASSERT_TRUE(host.started());
  char buffer[LIBROOT_PATH_MAX];
  EXPECT_STREQ(libroot_dyn_get_jbroot_prefix(), "/private/preboot/jb-X");
  EXPECT_STREQ(libroot_dyn_jbrootpath("/var/mobile/x", buffer), "/private/preboot/jb-X/var/mobile/x");
  EXPECT_STREQ(libroot_dyn_rootfspath("/private/preboot/jb-X/usr/bin", buffer), "/usr/bin");
  EXPECT_STREQ(libroot_dyn_get_root_prefix(), "");
  EXPECT_STREQ(libroot_dyn_get_boot_uuid(), "00000000-0000-0000-0000-000000000000");
}

}  // namespace
}  // namespace wispen::testing
