// host/files/temporary_files.hpp: the files that replace() fills before they get their name.
#pragma once

#include <string>
#include <string_view>

#include "host/files/system_calls.hpp"

namespace wispen::files {

/// Makes an empty file in `folder` whose name, given back in `name`, holds this process and a count:
/// ".wispen-<pid>-<count>.tmp". An invalid descriptor (with errno) when the folder does not take it.
Descriptor create_temporary(int folder, mode_t mode, std::string& name, const SystemCalls& calls);

/// Removes temporary files whose process no longer lives, unless this process has looked through the folder
/// within the last second. `path` is what the folder was opened as.
void sweep_stale_temporaries(int folder, std::string_view path, const SystemCalls& calls);

}  // namespace wispen::files
