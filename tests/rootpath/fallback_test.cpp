// tests/rootpath/fallback_test.cpp: root paths where there is no optional library.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "rootpath/rootpath.h"
#include "tests/rootpath/search_path.hpp"

namespace wispen::testing {
namespace {

class RootPathWithoutLibrary : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(host_.started()); }

  static std::string jbrootpath(const char* path) {
    char buffer[LIBROOT_PATH_MAX];
    char* const result = libroot_dyn_jbrootpath(path, buffer);
    EXPECT_EQ(result, buffer);
    return result;
  }
  static std::string rootfspath(const char* path) {
    char buffer[LIBROOT_PATH_MAX];
    char* const result = libroot_dyn_rootfspath(path, buffer);
    EXPECT_EQ(result, buffer);
    return result;
  }

  const HostWithLibraryIn host_{"/nonexistent"};
};

TEST_F(RootPathWithoutLibrary, KnowsTheUsualPrefixes) {
  EXPECT_STREQ(libroot_dyn_get_root_prefix(), "");
  EXPECT_STREQ(libroot_dyn_get_jbroot_prefix(), "/var/jb");
  EXPECT_STREQ(libroot_dyn_get_boot_uuid(), "00000000-0000-0000-0000-000000000000");
}

TEST_F(RootPathWithoutLibrary, PrefixesAbsolutePathsAndLeavesRelativeOnesAlone) {
  EXPECT_EQ(jbrootpath("/var/mobile/Library/Preferences/x.plist"),
            "/var/jb/var/mobile/Library/Preferences/x.plist");
  EXPECT_EQ(jbrootpath("relative/file"), "relative/file");
  EXPECT_EQ(jbrootpath(""), "");
  EXPECT_EQ(jbrootpath("/"), "/var/jb/");
}

TEST_F(RootPathWithoutLibrary, PrefixesAPathThatHasThePrefixAgainOnPurpose) {
  EXPECT_EQ(jbrootpath("/var/jb/Library/a.png"), "/var/jb/var/jb/Library/a.png");
}

TEST_F(RootPathWithoutLibrary, TakesThePrefixOffByBytesAloneOnPurpose) {
  EXPECT_EQ(rootfspath("/var/jb/usr/bin/x"), "/usr/bin/x");
  EXPECT_EQ(rootfspath("/var/jb"), "");
  EXPECT_EQ(rootfspath("/var/jbx/y"), "x/y");
  EXPECT_EQ(rootfspath("/usr/bin/x"), "/usr/bin/x");
  EXPECT_EQ(rootfspath("relative"), "relative");
  EXPECT_EQ(rootfspath(""), "");
}

TEST_F(RootPathWithoutLibrary, GivesNullForANullPathWithOrWithoutABuffer) {
  char buffer[LIBROOT_PATH_MAX] = "untouched";
  EXPECT_EQ(libroot_dyn_jbrootpath(nullptr, buffer), nullptr);
  EXPECT_EQ(libroot_dyn_rootfspath(nullptr, buffer), nullptr);
  EXPECT_STREQ(buffer, "untouched");
  EXPECT_EQ(libroot_dyn_jbrootpath(nullptr, nullptr), nullptr);
  EXPECT_EQ(libroot_dyn_rootfspath(nullptr, nullptr), nullptr);
}

TEST_F(RootPathWithoutLibrary, AllocatesABufferWhereNoneIsGiven) {
  char* const made = libroot_dyn_jbrootpath("/x", nullptr);
  ASSERT_NE(made, nullptr);
  EXPECT_STREQ(made, "/var/jb/x");
  std::memset(made, 'a', LIBROOT_PATH_MAX);  // all of it is the caller's
  std::free(made);
  char* const back = libroot_dyn_rootfspath("/var/jb/x", nullptr);
  EXPECT_STREQ(back, "/x");
  std::free(back);
}

TEST_F(RootPathWithoutLibrary, CutsALongResultAt1023BytesAndTerminatesIt) {
  const std::string name(1200, 'n');
  const std::string path = "/" + name;
  const std::string whole = "/var/jb" + path;
  EXPECT_EQ(jbrootpath(path.c_str()), whole.substr(0, 1023));
  EXPECT_EQ(jbrootpath(name.c_str()), name.substr(0, 1023));
  EXPECT_EQ(rootfspath(path.c_str()), path.substr(0, 1023));
  EXPECT_EQ(rootfspath(("/var/jb" + path).c_str()), path.substr(0, 1023));
  const std::string exactly = "/" + std::string(1023 - std::strlen("/var/jb/"), 'e');
  EXPECT_EQ(jbrootpath(exactly.c_str()), "/var/jb" + exactly);
}

TEST(RootPathChoice, IsNotRevisitedWhenTheLibraryAppearsLater) {
  {
    const HostWithLibraryIn host("/nonexistent");
    ASSERT_TRUE(host.started());
    libroot_load();
  }
  const HostWithLibraryIn host(TEST_LIBRARIES "/counting");
  ASSERT_TRUE(host.started());
  EXPECT_STREQ(libroot_dyn_get_jbroot_prefix(), "/var/jb");
}

TEST_F(RootPathWithoutLibrary, TheFallbacksAnswerDirectlyToo) {
  char buffer[LIBROOT_PATH_MAX];
  EXPECT_STREQ(libroot_jbrootpath_fallback("/x", buffer), "/var/jb/x");
  EXPECT_STREQ(libroot_rootfspath_fallback("/var/jb/x", buffer), "/x");
  EXPECT_STREQ(libroot_get_root_prefix_fallback(), "");
}

}  // namespace
}  // namespace wispen::testing
