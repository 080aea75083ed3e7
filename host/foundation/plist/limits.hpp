// host/foundation/plist/limits.hpp: how big a property list may be before it is refused.
#pragma once

#include <cstddef>
#include <cstdint>

namespace wispen::plist {

/// Containers inside one another, the root counted. Every walk over a document may recurse this far: it
/// fits a thread's stack of 512 KB.
inline constexpr std::size_t kMaxDepth = 512;

/// Bytes of a file, read or written.
inline constexpr std::size_t kMaxFileSize = std::size_t{64} << 20;

/// A binary list may name one object in many places. This bounds what it would hold if each place had its
/// own copy: 16 bytes a value and its payload. A list that shares no container stays below it.
inline constexpr std::uint64_t kMaxExpandedSize = std::uint64_t{160} << 20;
inline constexpr std::uint64_t kExpandedValueSize = 16;

}  // namespace wispen::plist
