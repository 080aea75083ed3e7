// fuzz/rootpath_fuzz.cpp: any path through the fallbacks, in buffers of exactly 1024 bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "rootpath/rootpath.h"

namespace {

using Convert = char* (*)(const char* path, char* resolved_path);

void require(bool holds) {
  if (!holds) std::abort();
}

/// The result in a buffer on the heap, where one byte too many is noticed; the same as in a buffer of its
/// own.
std::string converted(Convert convert, const std::string& path) {
  const std::unique_ptr<char[]> buffer(new char[LIBROOT_PATH_MAX]);
  std::memset(buffer.get(), 0x5A, LIBROOT_PATH_MAX);
  require(convert(path.c_str(), buffer.get()) == buffer.get());
  require(std::memchr(buffer.get(), 0, LIBROOT_PATH_MAX) != nullptr);
  char* const made = convert(path.c_str(), nullptr);
  require(made != nullptr && std::strcmp(made, buffer.get()) == 0);
  std::free(made);
  return buffer.get();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string path(data, data + size);
  path.resize(std::min(path.find('\0'), path.size()));
  const std::string there = converted(libroot_jbrootpath_fallback, path);
  const std::string prefix = libroot_dyn_get_jbroot_prefix();
  const std::string expected = path.starts_with('/') ? prefix + path : path;
  require(there == expected.substr(0, LIBROOT_PATH_MAX - 1));

  const std::string back = converted(libroot_rootfspath_fallback, there);
  if (path.starts_with('/') && expected.size() < LIBROOT_PATH_MAX) require(back == path);
  converted(libroot_rootfspath_fallback, path);
  return 0;
}
