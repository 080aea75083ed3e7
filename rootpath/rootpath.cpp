// rootpath/rootpath.cpp: the optional library's five functions, or their fallbacks.

#include "rootpath/rootpath.h"

#include <cstdlib>
#include <cstring>

#include "platform/System.h"

namespace {

using PrefixFunction = const char* (*)();
using PathFunction = char* (*)(const char* path, char* resolved_path);

constexpr char kRootPrefixFallback[] = "";

PrefixFunction root_prefix = nullptr;
PrefixFunction jbroot_prefix = nullptr;
PrefixFunction boot_uuid = nullptr;
PathFunction jbrootpath = nullptr;
PathFunction rootfspath = nullptr;

platform_once_t loaded = 0;

template <class Function>
void look_up(void* library, const char* name, Function& function) {
  if (library != nullptr) function = reinterpret_cast<Function>(platform_dlsym(library, name));
}

void load(void* /*context*/) {
  void* const library = platform_dlopen("@rpath/libroot.dylib", PLATFORM_RTLD_NOW);
  look_up(library, "libroot_get_root_prefix", root_prefix);
  look_up(library, "libroot_get_jbroot_prefix", jbroot_prefix);
  look_up(library, "libroot_get_boot_uuid", boot_uuid);
  look_up(library, "libroot_jbrootpath", jbrootpath);
  look_up(library, "libroot_rootfspath", rootfspath);

  // Each entry falls back on its own: a library that lacks one still serves the others.
  if (root_prefix == nullptr) root_prefix = libroot_get_root_prefix_fallback;
  if (jbroot_prefix == nullptr) jbroot_prefix = libroot_get_jbroot_prefix_fallback;
  if (boot_uuid == nullptr) boot_uuid = libroot_get_boot_uuid_fallback;
  if (jbrootpath == nullptr) jbrootpath = libroot_jbrootpath_fallback;
  if (rootfspath == nullptr) rootfspath = libroot_rootfspath_fallback;
}

char* output_buffer(char* resolved_path) {
  return resolved_path != nullptr ? resolved_path : static_cast<char*>(std::malloc(LIBROOT_PATH_MAX));
}

}  // namespace

extern "C" {

void libroot_load() {
  // All ones is the once-token's documented "has run"; testing it here saves the call.
  if (__atomic_load_n(&loaded, __ATOMIC_ACQUIRE) != ~platform_once_t{0}) {
    platform_dispatch_once_f(&loaded, nullptr, load);
  }
}

const char* libroot_dyn_get_root_prefix() {
  libroot_load();
  return root_prefix();
}

const char* libroot_dyn_get_jbroot_prefix() {
  libroot_load();
  return jbroot_prefix();
}

const char* libroot_dyn_get_boot_uuid() {
  libroot_load();
  return boot_uuid();
}

char* libroot_dyn_jbrootpath(const char* path, char* resolved_path) {
  libroot_load();
  return jbrootpath(path, resolved_path);
}

char* libroot_dyn_rootfspath(const char* path, char* resolved_path) {
  libroot_load();
  return rootfspath(path, resolved_path);
}

const char* libroot_get_root_prefix_fallback() { return kRootPrefixFallback; }

const char* libroot_get_jbroot_prefix_fallback() { return "/var/jb"; }

const char* libroot_get_boot_uuid_fallback() { return "00000000-0000-0000-0000-000000000000"; }

char* libroot_jbrootpath_fallback(const char* path, char* resolved_path) {
  if (path == nullptr) return nullptr;
  char* const output = output_buffer(resolved_path);
  // Asked through the dynamic entry: a library that has the prefix but no path function is heard.
  const char* const prefix = libroot_dyn_get_jbroot_prefix();
  if (path[0] == '/') {
    platform_strlcpy(output, prefix, LIBROOT_PATH_MAX);
    platform_strlcat(output, path, LIBROOT_PATH_MAX);
  } else {
    platform_strlcpy(output, path, LIBROOT_PATH_MAX);
  }
  return output;
}

char* libroot_rootfspath_fallback(const char* path, char* resolved_path) {
  if (path == nullptr) return nullptr;
  char* const output = output_buffer(resolved_path);
  const char* const prefix = libroot_dyn_get_root_prefix();
  const char* const jailbreak_prefix = libroot_dyn_get_jbroot_prefix();
  const std::size_t length = std::strlen(jailbreak_prefix);
  if (path[0] != '/') {
    platform_strlcpy(output, path, LIBROOT_PATH_MAX);
  } else if (std::strncmp(path, jailbreak_prefix, length) == 0) {
    platform_strlcpy(output, path + length, LIBROOT_PATH_MAX);
  } else {
    platform_strlcpy(output, prefix, LIBROOT_PATH_MAX);
    platform_strlcat(output, path, LIBROOT_PATH_MAX);
  }
  return output;
}

}  // extern "C"
