// host/libroot/libroot.cpp: answers with the device root that the host stands on at the moment of the call.

#include "host/libroot/libroot.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>

#include "host/core/current_root.hpp"

namespace {

constexpr std::size_t kBufferSize = 1024;

char* written(std::string_view prefix, std::string_view path, char* resolved) {
  char* buffer = resolved ? resolved : static_cast<char*>(std::malloc(kBufferSize));
  if (!buffer) return nullptr;
  const std::size_t head = std::min(prefix.size(), kBufferSize - 1);
  const std::size_t tail = std::min(path.size(), kBufferSize - 1 - head);
  // The caller may convert a path in place, so the path is moved before the prefix overwrites it.
  std::memmove(buffer + head, path.data(), tail);
  std::memcpy(buffer, prefix.data(), head);
  buffer[head + tail] = '\0';
  return buffer;
}

std::string read_boot_uuid() {
  std::ifstream file("/proc/sys/kernel/random/boot_id");
  std::string uuid;
  file >> uuid;
  if (uuid.size() != 36) return "00000000-0000-0000-0000-000000000000";
  std::ranges::transform(uuid, uuid.begin(),
                         [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return uuid;
}

}  // namespace

const char* libroot_get_root_prefix() { return wispen_host_root_prefix(); }

const char* libroot_get_jbroot_prefix() { return wispen_host_jbroot_prefix(); }

const char* libroot_get_boot_uuid() {
  static const std::string uuid = read_boot_uuid();
  return uuid.c_str();
}

char* libroot_jbrootpath(const char* path, char* resolved) {
  if (!path) return nullptr;
  return written(path[0] == '/' ? libroot_get_jbroot_prefix() : "", path, resolved);
}

char* libroot_rootfspath(const char* path, char* resolved) {
  if (!path) return nullptr;
  std::string_view rest = path;
  if (!rest.starts_with('/')) return written("", rest, resolved);
  const std::string_view jbroot = libroot_get_jbroot_prefix();
  if (rest.starts_with(jbroot) && (rest.size() == jbroot.size() || rest[jbroot.size()] == '/')) {
    rest.remove_prefix(jbroot.size());
  }
  return written(libroot_get_root_prefix(), rest, resolved);
}
