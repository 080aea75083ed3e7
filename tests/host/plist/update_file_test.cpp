// tests/host/plist/update_file_test.cpp: what an error while reading means for the write after it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "host/plist/limits.hpp"
#include "host/plist/splice.hpp"
#include "tests/host/files/failing_calls.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::plist {
namespace {

using files::testing::failing_calls;
using files::testing::plan;
using ::testing::HasSubstr;
using wispen::testing::contents_of;
using wispen::testing::TemporaryFolder;

class UpdateFile : public ::testing::Test {
 protected:
  UpdateFile() {
    EXPECT_TRUE(update_file(path_, {{"a", 1}}));
    plan() = {};
  }

  Tree content() const { return Tree::of(Document::read(path_)->root()); }

  TemporaryFolder folder_;
  std::string path_ = folder_ / "values.plist";
};

TEST_F(UpdateFile, NeverLosesKeysToATroubleThatPasses) {
  for (const int error_number : {EIO, EMFILE, ENFILE, ENOMEM, ENOSPC}) {
    for (const char* call : {"openat", "fstat", "read"}) {
      plan() = {.fail_at = 1, .error_number = error_number, .only = call};
      EXPECT_FALSE(update_file(path_, {{"b", 2}}, Format::Xml, failing_calls())) << call;
      EXPECT_EQ(content(), Tree(Dictionary{{"a", 1}})) << call;
      EXPECT_EQ(plan().open_files, 0);
    }
  }
}

TEST_F(UpdateFile, ReplacesAFileThatMayNotBeRead) {
  plan() = {.fail_at = 1, .error_number = EACCES, .only = "openat"};
  EXPECT_TRUE(update_file(path_, {{"b", 2}}, Format::Xml, failing_calls()));
  EXPECT_EQ(content(), Tree(Dictionary{{"b", 2}}));
}

TEST_F(UpdateFile, LeavesAFileThatIsTooLargeToBeRead) {
  const std::string before = contents_of(path_);
  std::filesystem::resize_file(path_, kMaxFileSize + 1);
  const auto done = update_file(path_, {{"b", 2}});
  ASSERT_FALSE(done);
  EXPECT_THAT(done.error().message, HasSubstr("larger than"));
  std::filesystem::resize_file(path_, before.size());
  EXPECT_EQ(contents_of(path_), before);
}

TEST_F(UpdateFile, LeavesTheKeysWhenAnyCallFails) {
  for (const int error_number : {EIO, ENOSPC, EDQUOT}) {
    int call = 0;
    do {
      ASSERT_TRUE(update_file(path_, {{"a", 1}, {"b", std::nullopt}}));
      plan() = {.fail_at = ++call, .error_number = error_number};
      const bool done = update_file(path_, {{"b", 2}}, Format::Xml, failing_calls()).ok();
      const Tree now = content();
      const bool old_state = now == Tree(Dictionary{{"a", 1}});
      const bool new_state = now == Tree(Dictionary{{"a", 1}, {"b", 2}});
      EXPECT_TRUE(done ? new_state : old_state || new_state) << "call " << call;
    } while (plan().calls >= call);
  }
}

}  // namespace
}  // namespace wispen::plist
