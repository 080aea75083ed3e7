// tests/rootpath/whole_library_test.cpp: root paths with a library that has everything.

#include <gtest/gtest.h>

#include <cstdlib>

#include "rootpath/rootpath.h"
#include "tests/rootpath/search_path.hpp"

namespace wispen::testing {
namespace {

TEST(RootPathWithAWholeLibrary, PassesEveryCallAndResultThroughUnchanged) {
  const HostWithLibraryIn host(TEST_LIBRARIES "/counting");
  ASSERT_TRUE(host.started());
  char buffer[LIBROOT_PATH_MAX];
  EXPECT_STREQ(libroot_dyn_get_root_prefix(), "root prefix of the library");
  EXPECT_STREQ(libroot_dyn_get_jbroot_prefix(), "jailbreak prefix of the library");
  EXPECT_STREQ(libroot_dyn_get_boot_uuid(), "boot id of the library");
  EXPECT_EQ(libroot_dyn_jbrootpath("relative", buffer), buffer);
  EXPECT_STREQ(buffer, "jb:relative");
  EXPECT_STREQ(libroot_dyn_rootfspath("/var/jb/x", buffer), "fs:/var/jb/x");
  char* const made = libroot_dyn_jbrootpath("/x", nullptr);
  EXPECT_STREQ(made, "jb:/x");
  std::free(made);
  EXPECT_EQ(libroot_dyn_jbrootpath(nullptr, buffer), nullptr);
}

TEST(RootPathWithAWholeLibrary, KeepsItsChoiceWhenTheLibraryIsNotFoundAnyMore) {
  {
    const HostWithLibraryIn host(TEST_LIBRARIES "/counting");
    ASSERT_TRUE(host.started());
    libroot_load();
  }
  const HostWithLibraryIn host("/nonexistent");
  ASSERT_TRUE(host.started());
  EXPECT_STREQ(libroot_dyn_get_root_prefix(), "root prefix of the library");
}

}  // namespace
}  // namespace wispen::testing
