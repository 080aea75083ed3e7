// host/plist/limits.hpp: how big a property list may be before it is refused.
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

/// Seconds since 2001: the first and the last second that a date object is made of. A file may hold dates
/// beyond (the platform writes its distant past as the year 0); their bytes stay as they are.
inline constexpr double kEarliestDate = -63113904000;  // 0001-01-01T00:00:00Z
inline constexpr double kLatestDate = 252423993599;    // 9999-12-31T23:59:59Z

}  // namespace wispen::plist
