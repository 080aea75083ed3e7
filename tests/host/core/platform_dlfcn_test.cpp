// tests/host/core/platform_dlfcn_test.cpp: dynamic loading with the phone's names and numbers.

#include "host/core/platform_dlfcn.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/host/core/device_fixture.hpp"

namespace wispen {
namespace {

class Dlopen : public testing::OnADevice {
 protected:
  Dlopen() : kept_(library_search_path()) {}
  ~Dlopen() override { set_library_search_path(kept_); }

  void install_library(const std::string& file) const {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::filesystem::copy_file(TEST_LIBRARY, file);
  }
  static bool answers(void* handle) {
    const auto answer = reinterpret_cast<int (*)()>(wispen_platform_dlsym(handle, "test_library_answer"));
    return answer && answer() == 42;
  }

 private:
  std::vector<std::string> kept_;
};

TEST_F(Dlopen, SearchesTheFoldersOfTheRunPathInOrder) {
  install_library(folder_ / "second/libfound.dylib");
  set_library_search_path({folder_ / "first", folder_ / "second"});
  void* handle = wispen_platform_dlopen("@rpath/libfound.dylib", 2);
  ASSERT_NE(handle, nullptr);
  EXPECT_TRUE(answers(handle));
  EXPECT_EQ(wispen_platform_dlsym(handle, "no_such_symbol"), nullptr);
  dlclose(handle);
}

TEST_F(Dlopen, FindsNothingOutsideTheRunPath) {
  install_library(folder_ / "elsewhere/libelsewhere.dylib");
  set_library_search_path({folder_ / "first"});
  EXPECT_EQ(wispen_platform_dlopen("@rpath/libelsewhere.dylib", 2), nullptr);
  set_library_search_path({});
  EXPECT_EQ(wispen_platform_dlopen("@rpath/libelsewhere.dylib", 2), nullptr);
}

TEST_F(Dlopen, LooksAbsolutePathsUpBelowTheDeviceRoot) {
  install_library(root().path() + "/var/jb/usr/lib/libdevice.dylib");
  void* handle = wispen_platform_dlopen("/var/jb/usr/lib/libdevice.dylib", 1);
  ASSERT_NE(handle, nullptr);
  EXPECT_TRUE(answers(handle));
  dlclose(handle);
  EXPECT_EQ(wispen_platform_dlopen(TEST_LIBRARY, 2), nullptr) << "a library of the machine was opened";
  set_current_root(nullptr);
  EXPECT_EQ(wispen_platform_dlopen("/var/jb/usr/lib/libdevice.dylib", 1), nullptr);
}

TEST_F(Dlopen, DoesNotSearchTheMachineForABareName) {
  EXPECT_EQ(wispen_platform_dlopen("libc.so.6", 2), nullptr);
}

TEST_F(Dlopen, KnowsTheProcessItselfAndThePhonesSpecialHandles) {
  void* self = wispen_platform_dlopen(nullptr, 2);
  ASSERT_NE(self, nullptr);
  EXPECT_NE(wispen_platform_dlsym(self, "malloc"), nullptr);
  EXPECT_NE(wispen_platform_dlsym(reinterpret_cast<void*>(-2), "malloc"), nullptr);
  EXPECT_EQ(wispen_platform_dlsym(nullptr, "malloc"), nullptr);
  EXPECT_EQ(wispen_platform_dlsym(self, nullptr), nullptr);
}

TEST_F(Dlopen, StartsWithTheFolderOfTheHostItself) {
  EXPECT_EQ(library_search_path(), std::vector{host_library_folder()});
  EXPECT_TRUE(std::filesystem::is_directory(host_library_folder()));
}

}  // namespace
}  // namespace wispen
