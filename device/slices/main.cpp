// device/slices/main.cpp: the tool of the cross-build.
//
//   wispen_slices check OBJECT...     whether the objects can go into an arm64e slice
//   wispen_slices finish IN OUT       makes the linked image IN an arm64e one
//   wispen_slices join OUT SLICE...   one file of several slices

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "device/slices/fat_file.hpp"
#include "device/slices/finish.hpp"
#include "device/slices/objects.hpp"

namespace {

using wispen::Error;
using wispen::Result;

Result<std::string> contents_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (!file) return Error{"cannot read " + path};
  return bytes;
}

Result<void> write_file(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) return Error{"cannot write " + path};
  // As a linker leaves an image.
  std::error_code error;
  std::filesystem::permissions(path, static_cast<std::filesystem::perms>(0755), error);
  return error ? Result<void>(Error{"cannot make " + path + " executable"}) : Result<void>();
}

Error about(const std::string& path, const Error& error) { return Error{path + ": " + error.message}; }

/// All objects are looked at, so that one build names every one.
Result<void> check(const std::vector<std::string>& paths) {
  bool failed = false;
  for (const std::string& path : paths) {
    const auto bytes = contents_of(path);
    const Result<void> done = bytes ? wispen::slices::check_object(*bytes) : Result<void>(bytes.error());
    if (done) continue;
    failed = true;
    std::fprintf(stderr, "%s: %s\n", path.c_str(), done.error().message.c_str());
  }
  return failed ? Result<void>(Error{"an object cannot go into an arm64e slice"}) : Result<void>();
}

Result<void> finish(const std::string& from, const std::string& to) {
  const auto linked = contents_of(from);
  if (!linked) return linked.error();
  const auto finished = wispen::slices::finish(*linked);
  if (!finished) return about(from, finished.error());
  return write_file(to, finished->bytes);
}

Result<void> join(const std::string& to, const std::vector<std::string>& paths) {
  std::vector<std::string> slices;
  for (const std::string& path : paths) {
    auto bytes = contents_of(path);
    if (!bytes) return bytes.error();
    slices.push_back(*std::move(bytes));
  }
  const auto file = wispen::slices::join(slices);
  if (!file) return about(to, file.error());
  return write_file(to, *file);
}

}  // namespace

int main(int count, char** words) {
  const std::string_view what = count > 1 ? words[1] : "";
  const std::vector<std::string> rest(words + (count > 1 ? 2 : count), words + count);
  Result<void> done;
  if (what == "check" && !rest.empty()) {
    done = check(rest);
  } else if (what == "finish" && rest.size() == 2) {
    done = finish(rest[0], rest[1]);
  } else if (what == "join" && rest.size() >= 2) {
    done = join(rest[0], {rest.begin() + 1, rest.end()});
  } else {
    std::fputs("usage: wispen_slices check OBJECT... | finish IN OUT | join OUT SLICE...\n", stderr);
    return 2;
  }
  if (done) return 0;
  std::fprintf(stderr, "wispen_slices: %s\n", done.error().message.c_str());
  return 1;
}
