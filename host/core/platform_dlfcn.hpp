// host/core/platform_dlfcn.hpp: dynamic loading with the phone's names and numbers.
#pragma once

#include <string>
#include <vector>

namespace wispen {

/// Where "@rpath/" leads, in order of search; at first the folder of the host library. From any thread.
std::vector<std::string> library_search_path();
void set_library_search_path(std::vector<std::string> folders);
/// The folder of the library (or program) that this code was linked into.
std::string host_library_folder();

}  // namespace wispen

extern "C" {

/// Opens a library. A leading "@rpath/" is tried below each folder of the search path; any other path is
/// looked up below the current device root; null is the process itself; a bare name is not found. Modes
/// are the phone's: lazy 1, now 2, local 4, global 8, no load 16, no delete 128. Null when not opened.
[[gnu::visibility("default")]] void* wispen_platform_dlopen(const char* path, int mode);

/// The address of a symbol, or null. The phone's special handles (-2 to -5) all mean the whole process.
[[gnu::visibility("default")]] void* wispen_platform_dlsym(void* handle, const char* name);
}
