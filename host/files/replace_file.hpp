// host/files/replace_file.hpp: new content for a file, all of it or none of it.
#pragma once

#include <string>
#include <string_view>

#include "host/core/result.hpp"
#include "host/files/system_calls.hpp"

namespace wispen::files {

/// Makes `path` hold exactly `bytes`, durably. At every moment another process finds either the old file or
/// the new one, whole; after a failure the old one is as it was.
///
/// - The bytes go to a temporary file in the same folder, which is synced, renamed over `path`, and the
///   folder synced after it. Only when that very last sync fails is the new content already in place though
///   an error is returned: it may not outlive a power cut.
/// - Mode and owner of the old file are kept, and set before it gets its name. Where the kernel forbids
///   giving the file to another owner, it becomes the writer's, without set-user and set-group bits. A new
///   file gets 0644 less the process's umask. Extended attributes and further hard links are not kept.
/// - A symbolic link is followed and stays: the file that it names is replaced, or made. A loop is an error.
/// - A folder that is not there is not made; a path that names a folder, pipe or device is an error.
/// - Temporary files that killed writers left in the folder are removed on the way.
Result<void> replace(const std::string& path, std::string_view bytes,
                     const SystemCalls& calls = SystemCalls::real());

}  // namespace wispen::files
