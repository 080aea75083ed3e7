// tests/host/core/notification_test.cpp: within one process, and the files that carry the posts.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <thread>
#include <vector>

#include "host/core/notification_listener.hpp"
#include "host/core/notification_name.hpp"
#include "host/core/notification_poster.hpp"
#include "tests/host/core/device_fixture.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class Notifications : public testing::OnADevice {
 protected:
  const std::string folder = root().notifications_folder();
  NotificationPoster poster{folder};

  NotificationListener listening(const std::vector<std::string>& names = {}) const {
    auto listener = NotificationListener::open(folder, names);
    EXPECT_TRUE(listener.ok());
    return *std::move(listener);
  }
  std::string file(const std::string& name) const { return folder + "/" + notification_file_name(name); }
  void post(const std::string& name, int times = 1) {
    for (int i = 0; i < times; ++i) ASSERT_TRUE(poster.post(name));
  }
};

TEST_F(Notifications, AreCountedAndReportedOnce) {
  auto listener = listening();
  EXPECT_THAT(listener.read(), IsEmpty());
  post("a/b", 3);
  post("c");
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a/b", 3}, Notice{"c", 1}));
  EXPECT_THAT(listener.read(), IsEmpty());
  post("c", 2);
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"c", 2}));
}

TEST_F(Notifications, FromBeforeTheListenerAreNotReported) {
  post("a", 5);
  auto listener = listening();
  EXPECT_THAT(listener.read(), IsEmpty());
  post("a");
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a", 1}));
}

TEST_F(Notifications, OfOtherNamesAreNotReportedToWhoAskedForSome) {
  auto listener = listening({"wanted", "also/wanted"});
  post("other");
  post("also/wanted");
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"also/wanted", 1}));
}

TEST_F(Notifications, GoOnAfterTheirFileWasDeleted) {
  auto listener = listening();
  post("a", 2);
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a", 2}));
  fs::remove(file("a"));
  EXPECT_THAT(listener.read(), IsEmpty());
  post("a", 2);
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a", 2}));
  fs::remove(file("a"));
  post("a", 2);
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a", 2}))
      << "as many posts as before must not look like none";
}

TEST_F(Notifications, AreNotLostWhenTheKernelsQueueOverflows) {
  auto listener = listening({"a", "b", "quiet"});
  auto all = listening();
  // Events of one file in a row are merged by the kernel, so two names take turns.
  for (int i = 0; i < 20'000; ++i) {
    post("a");
    post("b");
  }
  const auto all_of = [](NotificationListener& from) {
    std::vector<Notice> total;
    for (auto notices = from.read(); !notices.empty(); notices = from.read()) {
      for (const Notice& notice : notices) {
        const auto found = std::ranges::find(total, notice.name, &Notice::name);
        found == total.end() ? total.push_back(notice) : void(found->posts += notice.posts);
      }
    }
    return total;
  };
  EXPECT_THAT(all_of(listener), UnorderedElementsAre(Notice{"a", 20'000}, Notice{"b", 20'000}));
  EXPECT_THAT(all_of(all), UnorderedElementsAre(Notice{"a", 20'000}, Notice{"b", 20'000}));
}

TEST_F(Notifications, OfAThousandNamesAreAllHeard) {
  auto early = listening();
  for (int i = 0; i < 1000; ++i) post("name " + std::to_string(i));
  std::set<std::string> heard;
  for (auto notices = early.read(); !notices.empty(); notices = early.read()) {
    for (const Notice& notice : notices) heard.insert(notice.name);
  }
  EXPECT_EQ(heard.size(), 1000u);
  auto late = listening();
  post("name 500");
  EXPECT_THAT(late.read(), ElementsAre(Notice{"name 500", 1}));
}

TEST_F(Notifications, OfOddNamesStayInTheFolder) {
  const std::vector<std::string> odd = {"",
                                        ".",
                                        "..",
                                        "/",
                                        "../../escape",
                                        "a b",
                                        "%41",
                                        "\xff\x01\n",
                                        "caf\xc3\xa9",
                                        std::string("nul\0nul", 7),
                                        ".x",
                                        "A",
                                        std::string(5000, 'x')};
  auto listener = listening(odd);
  for (const std::string& name : odd) post(name);
  std::set<std::string> heard;
  for (const Notice& notice : listener.read()) heard.insert(notice.name);
  EXPECT_EQ(heard, std::set<std::string>(odd.begin(), odd.end()));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), static_cast<std::ptrdiff_t>(odd.size()));
}

TEST(NotificationName, IsReadBackFromItsFile) {
  for (const std::string& name : {std::string("com.example/changed"), std::string("..a%2f"), std::string(),
                                  std::string("\0\x80", 2), std::string("%"), std::string("a.")}) {
    const std::string file = notification_file_name(name);
    EXPECT_EQ(file.find('/'), std::string::npos);
    EXPECT_FALSE(file.starts_with('.'));
    EXPECT_EQ(notification_name_of_file(file), name);
  }
}

TEST(NotificationName, OfAnyLengthGivesAShortFileOfItsOwn) {
  std::set<std::string> files;
  for (std::size_t length = 190; length < 400; ++length) {
    for (const char last : {'a', 'b', '/'}) {
      const std::string file = notification_file_name(std::string(length, 'x') + last);
      EXPECT_LE(file.size(), 200u);
      EXPECT_TRUE(files.insert(file).second) << file;
    }
  }
}

TEST_F(Notifications, FromManyThreadsAreAllCounted) {
  auto listener = listening();
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 500; ++i) {
        EXPECT_TRUE(poster.post("shared"));
        EXPECT_TRUE(
            poster.post("own " + std::to_string((t * 500 + i) % 40)));  // more names than are kept open
      }
    });
  }
  for (auto& thread : threads) thread.join();
  std::uint64_t shared = 0;
  std::uint64_t own = 0;
  for (auto notices = listener.read(); !notices.empty(); notices = listener.read()) {
    for (const Notice& notice : notices) (notice.name == "shared" ? shared : own) += notice.posts;
  }
  EXPECT_EQ(shared, 2000u);
  EXPECT_EQ(own, 2000u);
}

TEST_F(Notifications, NeverTakeMoreOfTheDiskThanTheirBound) {
  std::ofstream(file("a")) << std::string(3 * NotificationPoster::kMaxStored, '!');
  auto listener = listening();
  post("a", 2);
  struct stat status {};
  ASSERT_EQ(stat(file("a").c_str(), &status), 0);
  EXPECT_EQ(status.st_size, 3 * NotificationPoster::kMaxStored + 2) << "the count must go on";
  const int probe = open(file("a").c_str(), O_RDWR | O_CLOEXEC);
  const bool can_punch = fallocate(probe, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, 0, 4096) == 0;
  close(probe);
  if (can_punch) {
    EXPECT_LE(status.st_blocks * 512, 64 * 1024);
  }
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a", 2}));
}

TEST_F(Notifications, DoNotWaitForAPipeThatHasTakenTheirPlace) {
  ASSERT_EQ(mkfifo(file("pipe").c_str(), 0666), 0);
  fs::create_directory(file("folder"));
  fs::create_symlink("/dev/null", file("link"));
  for (const char* name : {"pipe", "folder", "link"}) EXPECT_FALSE(poster.post(name).ok()) << name;
}

TEST_F(Notifications, CannotBePostedInAFolderThatIsClosed) {
  ASSERT_EQ(chmod(folder.c_str(), 0555), 0);
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && setresuid(65534, 65534, 65534) != 0) _exit(2);
    const auto posted = poster.post("a");
    _exit(!posted.ok() && posted.error().message.starts_with("cannot post in '") ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  ASSERT_EQ(chmod(folder.c_str(), 0755), 0);
}

TEST_F(Notifications, GoToTheRootOfThisMoment) {
  auto listener = listening();
  EXPECT_TRUE(post_notification("a"));
  EXPECT_THAT(listener.read(), ElementsAre(Notice{"a", 1}));
  const auto other = std::make_shared<const DeviceRoot>(*DeviceRoot::open(folder_ / "other"));
  set_current_root(other);
  auto listener_there = *NotificationListener::open(other->notifications_folder());
  EXPECT_TRUE(post_notification("a"));
  EXPECT_THAT(listener.read(), IsEmpty());
  EXPECT_THAT(listener_there.read(), ElementsAre(Notice{"a", 1}));
  set_current_root(nullptr);
  EXPECT_FALSE(post_notification("a").ok());
}

TEST_F(Notifications, LetAListenerGiveUpWaiting) {
  auto listener = listening();
  EXPECT_THAT(listener.wait(1ms), IsEmpty());
}

TEST_F(Notifications, CannotBeHeardWhereThereIsNoFolder) {
  const auto listener = NotificationListener::open(folder_ / "nowhere");
  ASSERT_FALSE(listener.ok());
  EXPECT_THAT(listener.error().message, HasSubstr("cannot listen"));
}

}  // namespace
}  // namespace wispen
