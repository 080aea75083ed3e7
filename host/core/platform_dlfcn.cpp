// host/core/platform_dlfcn.cpp: dynamic loading with the phone's names and numbers.

#include "host/core/platform_dlfcn.hpp"

#include <dlfcn.h>

#include <array>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "host/core/current_root.hpp"

namespace wispen {
namespace {

constexpr std::string_view kRunPath = "@rpath/";

struct SearchPath {
  std::mutex mutex;
  std::optional<std::vector<std::string>> folders;
};

SearchPath& search_path() {
  static SearchPath instance;
  return instance;
}

int host_mode(int mode) {
  struct Pair {
    int phone;
    int host;
  };
  constexpr std::array kPairs = {Pair{2, RTLD_NOW}, Pair{8, RTLD_GLOBAL}, Pair{16, RTLD_NOLOAD},
                                 Pair{128, RTLD_NODELETE}};
  int result = 0;
  for (const auto& pair : kPairs) {
    if (mode & pair.phone) result |= pair.host;
  }
  // glibc demands one of the two; the phone takes lazy for granted.
  return mode & 2 ? result : result | RTLD_LAZY;
}

}  // namespace

std::string host_library_folder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&host_library_folder), &info) == 0 || !info.dli_fname) return ".";
  const std::string file = info.dli_fname;
  const std::size_t slash = file.rfind('/');
  return slash == std::string::npos ? "." : file.substr(0, slash);
}

std::vector<std::string> library_search_path() {
  SearchPath& shared = search_path();
  const std::lock_guard lock(shared.mutex);
  return shared.folders ? *shared.folders : std::vector{host_library_folder()};
}

void set_library_search_path(std::vector<std::string> folders) {
  SearchPath& shared = search_path();
  const std::lock_guard lock(shared.mutex);
  shared.folders = std::move(folders);
}

}  // namespace wispen

void* wispen_platform_dlopen(const char* path, int mode) {
  const int host_mode = wispen::host_mode(mode);
  if (!path) return dlopen(nullptr, host_mode);
  const std::string_view name = path;
  if (name.starts_with(wispen::kRunPath)) {
    for (const std::string& folder : wispen::library_search_path()) {
      const std::string file = folder + "/" + std::string(name.substr(wispen::kRunPath.size()));
      if (void* handle = dlopen(file.c_str(), host_mode)) return handle;
    }
    return nullptr;
  }
  // Everything else that is not absolute would make glibc search the machine's own folders.
  const auto root = wispen::current_root();
  if (!name.starts_with('/') || !root) return nullptr;
  const auto file = root->resolve(name);
  return file ? dlopen(file->c_str(), host_mode) : nullptr;
}

void* wispen_platform_dlsym(void* handle, const char* name) {
  const auto number = reinterpret_cast<std::intptr_t>(handle);
  if (!handle || !name) return nullptr;
  return dlsym(number >= -5 && number <= -2 ? RTLD_DEFAULT : handle, name);
}
