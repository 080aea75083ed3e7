// tests/host/core/root_marker_test.cpp: roots that are half made, or made by many at once.

#include "host/core/root_marker.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <vector>

#include "host/core/device_root.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;
using testing::contents_of;
using ::testing::HasSubstr;
using testing::TemporaryFolder;

TEST(RootMarker, AnEmptyMarkerIsARootThatWasBeingMade) {
  const TemporaryFolder folder;
  folder.write("root/.wispen-root", "");
  folder.write("root/var/mobile/kept", "x");
  const auto root = DeviceRoot::open(folder / "root", Layout::Rootful);
  ASSERT_TRUE(root.ok()) << root.error().message;
  EXPECT_EQ(root->layout(), Layout::Rootful);
  EXPECT_EQ(contents_of(folder / "root/.wispen-root"), "rootful\n");
}

TEST(RootMarker, WhatAnInterruptedStartLeftIsSweptAway) {
  const TemporaryFolder folder;
  folder.write("root/.wispen-root.new", "roo");
  ASSERT_TRUE(DeviceRoot::open(folder / "root").ok());
  EXPECT_FALSE(fs::exists(folder / "root/.wispen-root.new"));
}

TEST(RootMarker, OnlyASmallRegularFileIsAMarker) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "fifo");
  ASSERT_EQ(::mkfifo((folder / "fifo/.wispen-root").c_str(), 0644), 0);
  fs::create_directories(folder / "folder/.wispen-root");
  fs::create_directories(folder / "link");
  folder.write("elsewhere", "rootless\n");
  fs::create_symlink(folder / "elsewhere", folder / "link/.wispen-root");
  for (const char* const name : {"fifo", "folder", "link"}) {
    const auto root = DeviceRoot::open(folder / name);
    ASSERT_FALSE(root.ok()) << name;
    EXPECT_THAT(root.error().message, HasSubstr("is not a regular file")) << name;
  }
  folder.write("long/.wispen-root", std::string(1 << 20, 'x'));
  const auto root = DeviceRoot::open(folder / "long");
  ASSERT_FALSE(root.ok());
  EXPECT_LT(root.error().message.size(), 400u);
}

TEST(RootMarker, IsWrittenWholeOrNotAtAll) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "root");
  // A process that may write no byte, as on a full disk.
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_FSIZE, &none);
    _exit(DeviceRoot::open(folder / "root").ok() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(fs::is_empty(folder / "root")) << "a failed start leaves an empty folder";
  EXPECT_TRUE(DeviceRoot::open(folder / "root").ok());
}

TEST(RootMarker, ManyFirstUsesAtOnceAllSucceedOnOneLayout) {
  constexpr int kRounds = 40;
  constexpr int kProcesses = 12;
  const TemporaryFolder folder;
  for (int round = 0; round < kRounds; ++round) {
    const std::string path = folder / ("root" + std::to_string(round));
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i) {
      const pid_t child = fork();
      if (child == 0) _exit(DeviceRoot::open(path).ok() ? 0 : 1);
      children.push_back(child);
    }
    for (const pid_t child : children) {
      int status = 0;
      ASSERT_EQ(waitpid(child, &status, 0), child);
      EXPECT_EQ(status, 0) << "round " << round;
    }
  }
}

TEST(RootMarker, OfTwoLayoutsAtOnceTheFirstDecidesAndTheOtherIsTold) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "root");
  EXPECT_EQ(*remember_layout(folder / "root", Layout::Rootful), Layout::Rootful);
  EXPECT_EQ(*remember_layout(folder / "root", Layout::Rootless), Layout::Rootful);
}

}  // namespace
}  // namespace wispen
