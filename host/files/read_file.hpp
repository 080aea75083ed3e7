// host/files/read_file.hpp: a whole file as bytes, or why not.
#pragma once

#include <cstddef>
#include <string>

#include "host/core/result.hpp"
#include "host/files/buffer.hpp"
#include "host/files/system_calls.hpp"

namespace wispen::files {

/// Reads all of a regular file of at most `limit` bytes. Anything else that the path may name (a folder, a
/// pipe, a device) is an error at once: opening never waits for another process. A file that shrinks or
/// grows meanwhile is read up to the end that the last read saw. When there is an error, `error_number` gets
/// the kernel's number for it: EFBIG for too large a file, EINVAL for one that is not regular, ENOMEM.
Result<Buffer> read(const std::string& path, std::size_t limit,
                    const SystemCalls& calls = SystemCalls::real(), int* error_number = nullptr);

}  // namespace wispen::files
