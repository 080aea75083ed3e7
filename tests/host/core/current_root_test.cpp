// tests/host/core/current_root_test.cpp: the device root that this process stands on.

#include "host/core/current_root.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/temporary_folder.hpp"

namespace wispen {
namespace {

using testing::TemporaryFolder;

std::shared_ptr<const DeviceRoot> made(const std::string& path, Layout layout) {
  return std::make_shared<const DeviceRoot>(*DeviceRoot::open(path, layout));
}

TEST(CurrentRoot, NamesThePrefixesOfTheRootSetLast) {
  TemporaryFolder folder;
  set_current_root(made(folder / "a", Layout::Rootless));
  EXPECT_EQ(wispen_host_root_prefix(), folder / "a");
  EXPECT_EQ(wispen_host_jbroot_prefix(), folder / "a/var/jb");
  set_current_root(made(folder / "b", Layout::Rootful));
  EXPECT_EQ(wispen_host_root_prefix(), folder / "b");
  EXPECT_EQ(wispen_host_jbroot_prefix(), folder / "b");
  set_current_root(nullptr);
}

TEST(CurrentRoot, KeepsAPrefixReadableAfterAnotherRootWasSet) {
  TemporaryFolder folder;
  set_current_root(made(folder / "a", Layout::Rootless));
  const char* earlier = wispen_host_jbroot_prefix();
  set_current_root(made(folder / "b", Layout::Rootless));
  set_current_root(nullptr);
  EXPECT_EQ(std::string(earlier), folder / "a/var/jb");
}

TEST(CurrentRoot, LeadsNowhereWhenThereIsNone) {
  set_current_root(nullptr);
  EXPECT_EQ(current_root(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(wispen_host_root_prefix()));
  EXPECT_STREQ(wispen_host_root_prefix(), wispen_host_jbroot_prefix());
}

}  // namespace
}  // namespace wispen
