// host/foundation/files/temporary_files.hpp: the files that replace() fills before they get their name.
#pragma once

#include <string>

#include "host/foundation/files/system_calls.hpp"

namespace wispen::files {

/// Makes an empty file in `folder` whose name, given back in `name`, holds this process and a count:
/// ".wispen-<pid>-<count>.tmp". An invalid descriptor (with errno) when the folder does not take it.
Descriptor createTemporary(int folder, mode_t mode, std::string& name, const SystemCalls& calls);

/// Removes temporary files whose process no longer lives. A folder that has not changed since
/// rememberFolder(), and was listed a moment ago, is not listed again.
void sweepStaleTemporaries(int folder, const struct stat& status, const SystemCalls& calls);

/// Says that the folder's present state is this process's own doing.
void rememberFolder(int folder, const SystemCalls& calls);

}  // namespace wispen::files
