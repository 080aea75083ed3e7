// tests/host/core/root_path_test.cpp: nothing leads out of the root.

#include "host/core/root_path.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "host/core/current_root.hpp"
#include "host/core/notification_poster.hpp"
#include "host/core/process_record.hpp"
#include "host/core/unique_fd.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;
using testing::contents_of;
using testing::TemporaryFolder;

/// A root with a neighbour that nothing may touch.
class RootPath : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(root_);
    folder_.write("machine/file", "the machine's");
  }
  void TearDown() override { EXPECT_EQ(contents_of(folder_ / "machine/file"), "the machine's"); }

  /// What a write through the path does to the file below the root.
  std::string written(const std::string& path, const char* place) const {
    const UniqueFd file(open_below(root_, path, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    if (!file || ::write(file.get(), "x", 1) != 1) return "";
    return contents_of(root_ + "/" + place);
  }

  const TemporaryFolder folder_;
  const std::string root_ = folder_ / "root";
};

TEST_F(RootPath, ALinkThatLeadsOutStaysBelowTheRoot) {
  fs::create_directories(root_ + folder_.path() + "/machine");
  fs::create_symlink(folder_ / "machine/file", root_ + "/absolute");
  fs::create_symlink("../machine/file", root_ + "/climbing");
  fs::create_directory_symlink(folder_ / "machine", root_ + "/folder");
  fs::create_directories(root_ + "/machine");
  EXPECT_EQ(written("/absolute", (folder_.path() + "/machine/file").c_str()), "x");
  EXPECT_EQ(written("/climbing", "machine/file"), "x");
  EXPECT_EQ(written("/folder/other", (folder_.path() + "/machine/other").c_str()), "x");
  EXPECT_EQ(written(root_ + "/climbing", "machine/file"), "x") << "by the host's own path of it";
  EXPECT_EQ(written(root_ + "/../machine/third", "machine/third"), "x");
  EXPECT_EQ(written("relative", "relative"), "x");
}

TEST_F(RootPath, ALinkToThePlaceBelowTheRootIsFollowedByEitherName) {
  fs::create_directories(root_ + "/there");
  fs::create_directory_symlink("/there", root_ + "/here");
  fs::create_directory_symlink(root_ + "/there", root_ + "/hosted");
  EXPECT_EQ(written("/here/a", "there/a"), "x");
  EXPECT_EQ(written("/hosted/b", "there/b"), "x");
}

TEST_F(RootPath, ALoopOrANulByteOpensNothing) {
  fs::create_symlink("b", root_ + "/a");
  fs::create_symlink("a", root_ + "/b");
  EXPECT_EQ(open_below(root_, "/a", O_RDONLY | O_CLOEXEC), -1);
  EXPECT_EQ(errno, ELOOP);
  EXPECT_EQ(open_below(root_, std::string_view("/x\0y", 4), O_RDONLY | O_CLOEXEC), -1);
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(RootPath, AnOpeningWithoutLinksRefusesThemAnywhereOnTheWay) {
  fs::create_directory_symlink(folder_ / "machine", root_ + "/folder");
  EXPECT_EQ(open_without_links((root_ + "/folder/file").c_str(), O_RDONLY | O_CLOEXEC), -1);
  EXPECT_EQ(errno, ELOOP);
  EXPECT_TRUE(UniqueFd(open_without_links((folder_ / "machine/file").c_str(), O_RDONLY | O_CLOEXEC)));
}

TEST_F(RootPath, ARootlessJailbreakMayBeALinkInsideTheRoot) {
  fs::create_directories(root_ + "/private/preboot/0123/jb");
  fs::create_directories(root_ + "/var");
  fs::create_directory_symlink("/private/preboot/0123/jb", root_ + "/var/jb");
  folder_.write("root/.wispen-root", "rootless\n");
  const auto root = DeviceRoot::open(root_);
  ASSERT_TRUE(root.ok()) << root.error().message;
  EXPECT_TRUE(fs::is_regular_file(root_ + "/private/preboot/0123/jb/var/lib/dpkg/status"));
  EXPECT_EQ(*root->resolve("/var/jb/usr/bin"), root_ + "/private/preboot/0123/jb/usr/bin");
  EXPECT_FALSE(fs::exists("/private/preboot/0123"));
}

TEST_F(RootPath, PostsAndRecordsStayBelowTheRootWhereTheirFoldersAreLinks) {
  fs::create_directories(root_ + "/var");
  fs::create_directory_symlink(folder_ / "machine", root_ + "/var/run");
  folder_.write("root/.wispen-root", "rootful\n");
  const auto root = DeviceRoot::open(root_);
  ASSERT_TRUE(root.ok()) << root.error().message;
  set_current_root(std::make_shared<const DeviceRoot>(*root));
  EXPECT_TRUE(post_notification("a.name").ok());
  EXPECT_TRUE(process_records_folder(*root).starts_with(root_ + folder_.path() + "/machine/"));
  set_current_root(nullptr);
  EXPECT_TRUE(fs::exists(root_ + folder_.path() + "/machine/notifications/a.name"));
}

}  // namespace
}  // namespace wispen
