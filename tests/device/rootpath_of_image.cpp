// tests/device/rootpath_of_image.cpp: the root-path functions, answered by a Mach-O image that the loader
// brought to life: the tests of the desktop's own link this in their place.

#include <cstdio>
#include <cstdlib>

#include "rootpath/rootpath.h"
#include "tests/device/loader/loaded_bundles.hpp"

namespace {

void* image() {
  static void* const loaded = [] {
    const auto handle = wispen::loader::load_bundle(std::getenv("WISPEN_ROOTPATH_IMAGE"));
    if (!handle) {
      std::fprintf(stderr, "%s\n", handle.error().message.c_str());
      std::abort();
    }
    return *handle;
  }();
  return loaded;
}

template <class R, class... A>
R ask(R (*)(A...), const char* name, A... arguments) {
  void* const function = wispen::loader::symbol_of(image(), name);
  if (function == nullptr) std::abort();
  return reinterpret_cast<R (*)(A...)>(function)(arguments...);
}

}  // namespace

extern "C" {
void libroot_load() { ask(libroot_load, "libroot_load"); }
const char* libroot_dyn_get_root_prefix() {
  return ask(libroot_dyn_get_root_prefix, "libroot_dyn_get_root_prefix");
}
const char* libroot_dyn_get_jbroot_prefix() {
  return ask(libroot_dyn_get_jbroot_prefix, "libroot_dyn_get_jbroot_prefix");
}
const char* libroot_dyn_get_boot_uuid() {
  return ask(libroot_dyn_get_boot_uuid, "libroot_dyn_get_boot_uuid");
}
char* libroot_dyn_jbrootpath(const char* path, char* resolved) {
  return ask(libroot_dyn_jbrootpath, "libroot_dyn_jbrootpath", path, resolved);
}
char* libroot_dyn_rootfspath(const char* path, char* resolved) {
  return ask(libroot_dyn_rootfspath, "libroot_dyn_rootfspath", path, resolved);
}
const char* libroot_get_root_prefix_fallback() {
  return ask(libroot_get_root_prefix_fallback, "libroot_get_root_prefix_fallback");
}
const char* libroot_get_jbroot_prefix_fallback() {
  return ask(libroot_get_jbroot_prefix_fallback, "libroot_get_jbroot_prefix_fallback");
}
const char* libroot_get_boot_uuid_fallback() {
  return ask(libroot_get_boot_uuid_fallback, "libroot_get_boot_uuid_fallback");
}
char* libroot_jbrootpath_fallback(const char* path, char* resolved) {
  return ask(libroot_jbrootpath_fallback, "libroot_jbrootpath_fallback", path, resolved);
}
char* libroot_rootfspath_fallback(const char* path, char* resolved) {
  return ask(libroot_rootfspath_fallback, "libroot_rootfspath_fallback", path, resolved);
}
}
