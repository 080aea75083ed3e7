// tests/host/core/device_root_test.cpp: a folder that plays the phone's file system.

#include "host/core/device_root.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/temporary_folder.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using testing::TemporaryFolder;

DeviceRoot opened(const TemporaryFolder& folder, Layout layout = Layout::Rootless) {
  auto root = DeviceRoot::open(folder / "root", layout);
  EXPECT_TRUE(root.ok()) << (root.ok() ? "" : root.error().message);
  return *root;
}

TEST(DeviceRoot, MakesThePhonesFoldersOnFirstUse) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  for (const char* below :
       {"var/mobile/Library/Preferences", "usr/bin", "var/jb/var/mobile/Library/Preferences",
        "var/jb/Library/PreferenceBundles", "var/jb/Library/PreferenceLoader/Preferences", "var/jb/usr/bin",
        "var/jb/var/lib/dpkg/info", "var/run/notifications"}) {
    EXPECT_TRUE(fs::is_directory(root.path() + "/" + below)) << below;
  }
  EXPECT_TRUE(fs::is_regular_file(root.path() + "/var/jb/var/lib/dpkg/status"));
  EXPECT_EQ(root.jbroot_prefix(), root.path() + "/var/jb");
  EXPECT_EQ(root.device_jbroot(), "/var/jb");
}

TEST(DeviceRoot, KnowsVarByItsOtherNameToo) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  EXPECT_EQ(*root.resolve("/private/var/mobile/x.plist"), root.path() + "/var/mobile/x.plist");
  EXPECT_TRUE(fs::equivalent(root.path() + "/private/var/mobile", root.path() + "/var/mobile"));
}

TEST(DeviceRoot, KeepsARootfulJailbreakStraightAtTheRoot) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder, Layout::Rootful);
  EXPECT_TRUE(fs::is_directory(root.path() + "/Library/PreferenceBundles"));
  EXPECT_TRUE(fs::is_directory(root.path() + "/var/lib/dpkg"));
  EXPECT_FALSE(fs::exists(root.path() + "/var/jb"));
  EXPECT_EQ(root.jbroot_prefix(), root.path());
  EXPECT_EQ(root.device_jbroot(), "");
}

TEST(DeviceRoot, RemembersItsLayoutAndRefusesTheOther) {
  TemporaryFolder folder;
  opened(folder, Layout::Rootful);
  const auto same = DeviceRoot::open(folder / "root");
  ASSERT_TRUE(same.ok());
  EXPECT_EQ(same->layout(), Layout::Rootful);
  const auto other = DeviceRoot::open(folder / "root", Layout::Rootless);
  ASSERT_FALSE(other.ok());
  EXPECT_THAT(other.error().message, HasSubstr("of the rootful layout and cannot be used as a rootless one"));
}

TEST(DeviceRoot, IsRootlessWhenNothingElseIsSaid) {
  TemporaryFolder folder;
  const auto root = DeviceRoot::open(folder / "a/b/c");
  ASSERT_TRUE(root.ok());
  EXPECT_EQ(root->layout(), Layout::Rootless);
}

TEST(DeviceRoot, KeepsWhatIsInItWhenOpenedAgain) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  folder.write("root/var/jb/var/lib/dpkg/status", "Package: kept\n");
  opened(folder);
  EXPECT_EQ(fs::file_size(root.jbroot_prefix() + "/var/lib/dpkg/status"), 14u);
}

TEST(DeviceRoot, RefusesAFile) {
  TemporaryFolder folder;
  const auto root = DeviceRoot::open(folder.write("file", "x"));
  ASSERT_FALSE(root.ok());
  EXPECT_THAT(root.error().message, HasSubstr("not a folder"));
}

TEST(DeviceRoot, RefusesAFolderWithSomeoneElsesFiles) {
  TemporaryFolder folder;
  folder.write("home/letter.txt", "x");
  const auto root = DeviceRoot::open(folder / "home");
  ASSERT_FALSE(root.ok());
  EXPECT_THAT(root.error().message, HasSubstr("is not a device root and is not empty"));
  EXPECT_FALSE(fs::exists(folder / "home/var"));
}

TEST(DeviceRoot, RefusesTheMachinesOwnRoot) { EXPECT_FALSE(DeviceRoot::open("/").ok()); }

TEST(DeviceRoot, RefusesAPathThatWouldNotFitThePlatformsBuffers) {
  TemporaryFolder folder;
  std::string path = folder.path();
  while (path.size() < 890) path += "/" + std::string(40, 'x');
  const auto root = DeviceRoot::open(path + "/" + std::string(40, 'y'));
  ASSERT_FALSE(root.ok());
  EXPECT_THAT(root.error().message, HasSubstr("too long"));
}

TEST(DeviceRoot, SaysInOneSentenceThatAFolderCannotBeWritten) {
  TemporaryFolder folder;
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  fs::create_directories(folder / "closed");
  ASSERT_EQ(chmod((folder / "closed").c_str(), 0555), 0);
  // The administrator may write anywhere, so the question is asked as somebody else.
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(2);
    const auto root = DeviceRoot::open(folder / "closed");
    const bool told = !root.ok() && root.error().message.find("cannot be written") != std::string::npos &&
                      root.error().message.find('\n') == std::string::npos;
    _exit(told ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(DeviceRoot, FinishesARootThatWasLeftHalfMade) {
  TemporaryFolder folder;
  folder.write("root/.wispen-root", "rootful\n");
  const DeviceRoot root = opened(folder, Layout::Rootful);
  EXPECT_TRUE(fs::is_directory(root.path() + "/Library/PreferenceBundles"));
}

TEST(DeviceRoot, SaysThatItDoesNotKnowAMarkersLayout) {
  TemporaryFolder folder;
  folder.write("root/.wispen-root", "sideways\n");
  const auto root = DeviceRoot::open(folder / "root");
  ASSERT_FALSE(root.ok());
  EXPECT_THAT(root.error().message, HasSubstr("'sideways'"));
}

TEST(DeviceRootResolve, LooksUpAbsolutePathsBelowTheRoot) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  EXPECT_EQ(*root.resolve("/usr/bin/killall"), root.path() + "/usr/bin/killall");
  EXPECT_EQ(*root.resolve("//usr/./bin//x/"), root.path() + "/usr/bin/x");
  EXPECT_EQ(*root.resolve("/"), root.path());
  EXPECT_EQ(*root.resolve(""), root.path());
  EXPECT_EQ(*root.resolve("tmp/x"), root.path() + "/tmp/x");
}

TEST(DeviceRootResolve, KeepsAPathThatIsBelowTheRootAlready) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  EXPECT_EQ(*root.resolve(root.path() + "/var/jb/x"), root.path() + "/var/jb/x");
  EXPECT_EQ(*root.resolve(root.path()), root.path());
  EXPECT_EQ(*root.resolve(root.path() + "x/y"), root.path() + root.path() + "x/y");
}

TEST(DeviceRootResolve, NeverLeavesTheRootThroughDots) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  EXPECT_EQ(*root.resolve("/../../../etc/passwd"), root.path() + "/etc/passwd");
  EXPECT_EQ(*root.resolve("/usr/../../../x"), root.path() + "/x");
  EXPECT_EQ(*root.resolve(root.path() + "/../../x"), root.path() + "/x");
}

TEST(DeviceRootResolve, FollowsLinksAsThePhoneWould) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  fs::create_symlink("/etc/passwd", root.path() + "/tmp/absolute");
  fs::create_symlink("../../../../etc", root.path() + "/tmp/climbing");
  fs::create_symlink("../usr/bin", root.path() + "/tmp/relative");
  fs::create_symlink(root.path() + "/usr/bin", root.path() + "/tmp/hosted");
  EXPECT_EQ(*root.resolve("/tmp/absolute"), root.path() + "/etc/passwd");
  EXPECT_EQ(*root.resolve("/tmp/climbing/passwd"), root.path() + "/etc/passwd");
  EXPECT_EQ(*root.resolve("/tmp/relative/x"), root.path() + "/usr/bin/x");
  EXPECT_EQ(*root.resolve("/tmp/relative/../x"), root.path() + "/usr/x");
  EXPECT_EQ(*root.resolve("/tmp/hosted/x"), root.path() + "/usr/bin/x");
}

TEST(DeviceRootResolve, SaysThatLinksGoRoundInALoop) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  fs::create_symlink("b", root.path() + "/tmp/a");
  fs::create_symlink("a", root.path() + "/tmp/b");
  const auto resolved = root.resolve("/tmp/a/x");
  ASSERT_FALSE(resolved.ok());
  EXPECT_THAT(resolved.error().message, HasSubstr("loop"));
}

TEST(DeviceRootResolve, RefusesANulByteAndAnOverlongPath) {
  TemporaryFolder folder;
  const DeviceRoot root = opened(folder);
  EXPECT_FALSE(root.resolve(std::string_view("/tmp\0/x", 7)).ok());
  EXPECT_FALSE(root.resolve(std::string(5000, 'x')).ok());
}

TEST(DeviceRootDefault, FollowsTheDataHomeAndThenTheHome) {
  const auto with = [](const char* data, const char* home) {
    data ? setenv("XDG_DATA_HOME", data, 1) : unsetenv("XDG_DATA_HOME");
    home ? setenv("HOME", home, 1) : unsetenv("HOME");
    return *DeviceRoot::default_folder();
  };
  const char* home = std::getenv("HOME");
  const std::string kept = home ? home : "";
  EXPECT_EQ(with("/data", "/home/me"), "/data/wispen/root");
  EXPECT_EQ(with(nullptr, "/home/me"), "/home/me/.local/share/wispen/root");
  EXPECT_EQ(with("relative", "/home/me"), "/home/me/.local/share/wispen/root");
  EXPECT_TRUE(with(nullptr, nullptr).ends_with("/.local/share/wispen/root"));
  setenv("HOME", kept.c_str(), 1);
}

}  // namespace
}  // namespace wispen
