// host/core/root_path.hpp: paths that stay below a folder, whatever links lie there.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "host/core/result.hpp"

namespace wispen {

/// The path of `path` below the folder `root` (absolute, without links), with every link followed as if the
/// folder were the file system's own root: ".." and absolute links stay below it. What does not exist is
/// appended as written; a path that lies below the folder already keeps its place. Fails for an embedded NUL,
/// a loop of links and a path over 4095 bytes.
Result<std::string> resolve_below(const std::string& root, std::string_view path);

/// open(2) of `path` resolved so. The kernel is asked to follow no link while it opens, so that nothing leads
/// out of the folder between the look and the opening. The descriptor, or -1 and errno.
int open_below(const std::string& root, std::string_view path, int flags, mode_t mode = 0);

/// open(2), failing with ELOOP where any part of the path is a link. Kernels before 5.6 look at the last
/// only.
int open_without_links(const char* path, int flags, mode_t mode = 0);

}  // namespace wispen
