// tests/host/files/power_loss_test.cpp: what the disk may hold when the power goes.
//
// The system calls of one write are recorded, and replayed on a disk that promises no more than POSIX: the
// bytes of a file are there after its fsync and may be there before, names in a folder come in the order in
// which they were made, any number of them, until the folder's fsync.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "host/files/replace_file.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::files {
namespace {

using wispen::testing::contents_of;
using wispen::testing::TemporaryFolder;

struct Operation {
  enum Kind { Create, Write, SyncFile, SyncFolder, Rename, Remove } kind;
  int file = -1;     // the descriptor, which stands for the file
  std::string name;  // in the folder
  std::string text;  // what is written, or the new name
};

std::vector<Operation> recorded;
int folder_descriptor = -1;

const SystemCalls& recording_calls() {
  static const SystemCalls calls = [] {
    SystemCalls all = SystemCalls::real();
    all.openat = [](int folder, const char* path, int flags, mode_t mode) {
      const int file = SystemCalls::real().openat(folder, path, flags, mode);
      if ((flags & O_CREAT) != 0 && file >= 0) recorded.push_back({Operation::Create, file, path, {}});
      if ((flags & O_DIRECTORY) != 0) folder_descriptor = file;
      return file;
    };
    all.write = [](int file, const void* bytes, std::size_t count) {
      const ssize_t written = SystemCalls::real().write(file, bytes, count);
      if (written > 0) {
        recorded.push_back({Operation::Write,
                            file,
                            {},
                            std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(written))});
      }
      return written;
    };
    all.fsync = [](int file) {
      recorded.push_back(
          {file == folder_descriptor ? Operation::SyncFolder : Operation::SyncFile, file, {}, {}});
      return SystemCalls::real().fsync(file);
    };
    all.renameat = [](int from_folder, const char* from, int to_folder, const char* to) {
      recorded.push_back({Operation::Rename, -1, from, to});
      return SystemCalls::real().renameat(from_folder, from, to_folder, to);
    };
    all.unlinkat = [](int folder, const char* path, int flags) {
      recorded.push_back({Operation::Remove, -1, path, {}});
      return SystemCalls::real().unlinkat(folder, path, flags);
    };
    return all;
  }();
  return calls;
}

/// A file's bytes as they were handed over, and those that a loss of power leaves for certain.
struct Bytes {
  std::string all;
  std::string certain;
};
constexpr int kOldFile = -2;

void change_names(std::map<std::string, int>& names, const Operation& operation) {
  if (operation.kind == Operation::Create) names[operation.name] = operation.file;
  if (operation.kind == Operation::Remove) names.erase(operation.name);
  if (operation.kind == Operation::Rename) {
    names[operation.text] = names.at(operation.name);
    names.erase(operation.name);
  }
}

/// All that the file of that name may hold when only the first `done` operations have happened.
std::vector<std::string> left_behind(std::size_t done, const std::string& name,
                                     const std::string& old_bytes) {
  std::map<std::string, int> names{{name, kOldFile}};
  std::map<int, Bytes> files{{kOldFile, {old_bytes, old_bytes}}};
  std::vector<Operation> uncertain;
  for (std::size_t i = 0; i < done; ++i) {
    const Operation& operation = recorded[i];
    switch (operation.kind) {
      case Operation::Write:
        files[operation.file].all += operation.text;
        break;
      case Operation::SyncFile:
        files[operation.file].certain = files[operation.file].all;
        break;
      case Operation::SyncFolder:
        for (const Operation& each : uncertain) change_names(names, each);
        uncertain.clear();
        break;
      default:
        uncertain.push_back(operation);
        break;
    }
  }
  std::vector<std::string> possible;
  for (std::size_t made = 0; made <= uncertain.size(); ++made) {
    if (made > 0) change_names(names, uncertain[made - 1]);
    possible.push_back(files[names.at(name)].all);
    possible.push_back(files[names.at(name)].certain);
  }
  return possible;
}

TEST(PowerLoss, AtAnyMomentLeavesTheOldFileOrTheNewOne) {
  const TemporaryFolder folder;
  const std::string path = folder.write("domain.plist", "the old state");
  const std::string fresh(100'000, 'n');
  recorded.clear();
  ASSERT_TRUE(replace(path, fresh, recording_calls()).ok());
  ASSERT_EQ(contents_of(path), fresh);
  ASSERT_GE(recorded.size(), 5u) << "made, written, synced, renamed, synced";
  for (std::size_t done = 0; done <= recorded.size(); ++done) {
    for (const std::string& bytes : left_behind(done, "domain.plist", "the old state")) {
      EXPECT_TRUE(bytes == "the old state" || bytes == fresh)
          << "after " << done << " calls it holds " << bytes.size() << " bytes";
    }
  }
  for (const std::string& bytes : left_behind(recorded.size(), "domain.plist", "the old state")) {
    EXPECT_EQ(bytes, fresh) << "a write that was reported as done stays";
  }
}

}  // namespace
}  // namespace wispen::files
