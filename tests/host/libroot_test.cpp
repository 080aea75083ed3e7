// tests/host/libroot_test.cpp: the two libraries as they are built, loaded as a package would load them.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

namespace {

template <class Function>
Function* symbol(void* library, const char* name) {
  return reinterpret_cast<Function*>(dlsym(library, name));
}

class LibRoot : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(library_, nullptr) << dlerror();
    ASSERT_NE(root_prefix, nullptr);
    ASSERT_NE(jbroot_prefix, nullptr);
    ASSERT_NE(boot_uuid, nullptr);
    ASSERT_NE(jbrootpath, nullptr);
    ASSERT_NE(rootfspath, nullptr);
  }

 private:
  void* library_ = dlopen(LIBROOT_PATH, RTLD_NOW);

 protected:
  const char* (*root_prefix)() = symbol<const char*()>(library_, "libroot_get_root_prefix");
  const char* (*jbroot_prefix)() = symbol<const char*()>(library_, "libroot_get_jbroot_prefix");
  const char* (*boot_uuid)() = symbol<const char*()>(library_, "libroot_get_boot_uuid");
  char* (*jbrootpath)(const char*, char*) = symbol<char*(const char*, char*)>(library_, "libroot_jbrootpath");
  char* (*rootfspath)(const char*, char*) = symbol<char*(const char*, char*)>(library_, "libroot_rootfspath");
};

TEST_F(LibRoot, AnswersWithAPlaceWhereNothingCanExistBeforeAStart) {
  const std::string prefix = jbroot_prefix();
  EXPECT_EQ(prefix, root_prefix());
  EXPECT_FALSE(std::ofstream(prefix + "x").is_open());
}

TEST_F(LibRoot, GivesThePrefixToAbsolutePathsAndCopiesRelativeOnes) {
  std::array<char, 1024> buffer;
  EXPECT_EQ(jbrootpath("/a/b", buffer.data()), buffer.data());
  EXPECT_EQ(std::string(buffer.data()), std::string(jbroot_prefix()) + "/a/b");
  EXPECT_STREQ(jbrootpath("a/b", buffer.data()), "a/b");
  EXPECT_STREQ(jbrootpath("", buffer.data()), "");
  EXPECT_STREQ(rootfspath("a/b", buffer.data()), "a/b");
}

TEST_F(LibRoot, TurnsAPathOfTheJailbreaksTreeIntoThePhonesOwn) {
  std::array<char, 1024> buffer;
  const std::string jbroot = jbroot_prefix();
  EXPECT_EQ(rootfspath((jbroot + "/usr/bin/x").c_str(), buffer.data()),
            std::string(root_prefix()) + "/usr/bin/x");
  EXPECT_EQ(rootfspath((jbroot + "x").c_str(), buffer.data()), root_prefix() + jbroot + "x");
}

TEST_F(LibRoot, HandsOverABufferThatTheCallerFrees) {
  const std::unique_ptr<char, decltype(&std::free)> path(jbrootpath("/x", nullptr), std::free);
  EXPECT_EQ(std::string(path.get()), std::string(jbroot_prefix()) + "/x");
}

TEST_F(LibRoot, GivesNullForANullPath) {
  std::array<char, 1024> buffer;
  EXPECT_EQ(jbrootpath(nullptr, buffer.data()), nullptr);
  EXPECT_EQ(rootfspath(nullptr, nullptr), nullptr);
}

TEST_F(LibRoot, CutsAtTheEndOfThePlatformsBuffer) {
  std::array<char, 1026> buffer;
  buffer.fill('#');
  jbrootpath(("/" + std::string(3000, 'x')).c_str(), buffer.data());
  EXPECT_EQ(std::string(buffer.data()).size(), 1023u);
  EXPECT_EQ(buffer[1024], '#');
}

TEST_F(LibRoot, ConvertsAPathInPlace) {
  std::array<char, 1024> buffer{"/in/place"};
  jbrootpath(buffer.data(), buffer.data());
  EXPECT_EQ(std::string(buffer.data()), std::string(jbroot_prefix()) + "/in/place");
}

TEST_F(LibRoot, NamesThisBootInUpperCase) {
  const std::string uuid = boot_uuid();
  EXPECT_EQ(uuid.size(), 36u);
  EXPECT_EQ(uuid.find_first_not_of("0123456789ABCDEF-"), std::string::npos);
  EXPECT_NE(uuid, "00000000-0000-0000-0000-000000000000");
  EXPECT_EQ(boot_uuid(), boot_uuid());
}

}  // namespace
