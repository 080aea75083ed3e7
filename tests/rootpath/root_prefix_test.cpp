// tests/rootpath/root_prefix_test.cpp: the way back, where the root file system has a prefix of its own.

#include <gtest/gtest.h>

#include <string>

#include "platform/System.h"
#include "rootpath/rootpath.h"
#include "tests/rootpath/search_path.hpp"

namespace wispen::testing {
namespace {

class RootPathWithTwoPrefixes : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(host_.started()); }

  static std::string rootfspath(const char* path) {
    char buffer[LIBROOT_PATH_MAX];
    return libroot_dyn_rootfspath(path, buffer);
  }

  const HostWithLibraryIn host_{TEST_LIBRARIES "/two_prefixes"};
};

TEST_F(RootPathWithTwoPrefixes, PutsTheRootsBeforeAPathOutsideTheJailbreaksAlone) {
  EXPECT_EQ(rootfspath("/usr/bin/x"), "/rootfs/usr/bin/x");
  EXPECT_EQ(rootfspath("/j"), "/rootfs/j");
  EXPECT_EQ(rootfspath("/jb/usr/bin/x"), "/usr/bin/x");
  EXPECT_EQ(rootfspath("relative"), "relative");
  EXPECT_EQ(rootfspath("/rootfs/x"), "/rootfs/rootfs/x");
}

TEST_F(RootPathWithTwoPrefixes, AsksForThePrefixesBeforeItLooksAtThePath) {
  char buffer[LIBROOT_PATH_MAX];
  libroot_load();
  void* const library = platform_dlopen("@rpath/libroot.dylib", PLATFORM_RTLD_NOW);
  ASSERT_NE(library, nullptr);
  const auto asked =
      reinterpret_cast<const char* (*)()>(platform_dlsym(library, "two_prefixes_libroot_asked"));
  ASSERT_NE(asked, nullptr);
  const std::string before = asked();
  libroot_dyn_rootfspath("relative", buffer);
  libroot_dyn_jbrootpath("relative", buffer);
  libroot_dyn_rootfspath(nullptr, buffer);
  libroot_dyn_jbrootpath(nullptr, buffer);
  EXPECT_EQ(asked(), before + "rjj");
}

TEST_F(RootPathWithTwoPrefixes, CutsWhatBecomesTooLong) {
  const std::string path = "/" + std::string(1020, 'n');
  EXPECT_EQ(rootfspath(path.c_str()), ("/rootfs" + path).substr(0, 1023));
}

}  // namespace
}  // namespace wispen::testing
