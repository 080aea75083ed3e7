// tests/device/loader/interpose.cpp: the process's dlopen and its kin, taught Mach-O bundles.
//
// Linked into a program, these come before the C library's for every library of the process; so the host
// loads a phone's bundle as it loads the desktop's, and finds the image that a class came from.

#include <dlfcn.h>

#include <string>

#include "tests/device/loader/loaded_bundles.hpp"

namespace {

std::string& last_error() {
  static auto* const error = new std::string();
  return *error;
}

using Dlsym = void*(void*, const char*);

/// The C library's own, which cannot be asked for by the function that stands in its place.
Dlsym* real_dlsym() {
#if defined(__aarch64__)
  constexpr char kVersion[] = "GLIBC_2.17";
#else
  constexpr char kVersion[] = "GLIBC_2.2.5";
#endif
  static auto* const real = reinterpret_cast<Dlsym*>(::dlvsym(RTLD_NEXT, "dlsym", kVersion));
  return real;
}

template <class Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(real_dlsym()(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] void* dlopen(const char* path, int mode) noexcept {
  last_error().clear();
  if (path != nullptr) {
    if (void* const known = wispen::loader::loaded_bundle(path)) return known;
  }
  if (path == nullptr || !wispen::loader::is_macho_file(path)) {
    return next<void*(const char*, int)>("dlopen")(path, mode);
  }
  const auto handle = wispen::loader::load_bundle(path);
  if (handle) return *handle;
  last_error() = std::string(path) + ": " + handle.error().message;
  return nullptr;
}

[[gnu::visibility("default")]] void* dlsym(void* handle, const char* name) noexcept {
  if (wispen::loader::is_bundle_handle(handle)) return wispen::loader::symbol_of(handle, name);
  return real_dlsym()(handle, name);
}

[[gnu::visibility("default")]] char* dlerror() noexcept {
  if (last_error().empty()) return next<char*()>("dlerror")();
  static auto* const told = new std::string();
  *told = std::move(last_error());
  last_error().clear();
  return told->data();
}

[[gnu::visibility("default")]] int dlclose(void* handle) noexcept {
  if (wispen::loader::is_bundle_handle(handle)) return 0;  // it stays, as its classes do
  return next<int(void*)>("dlclose")(handle);
}

[[gnu::visibility("default")]] int dladdr(const void* address, Dl_info* info) noexcept {
  const auto place = wispen::loader::bundle_around(address);
  if (!place) return next<int(const void*, Dl_info*)>("dladdr")(address, info);
  // Bundles stay, and so must the text that the caller is pointed to.
  static auto* const path = new std::string();
  *path = place->path;
  *info = {path->c_str(), place->base, nullptr, nullptr};
  return 1;
}

}  // extern "C"
