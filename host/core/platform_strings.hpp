// host/core/platform_strings.hpp: the bounded string functions of the phone's C library.
//
// glibc has them only since 2.38. Both behave as the BSD manual says: the result is always terminated
// (where `size` is not 0), and the return value is the length that was wanted, so that a cut shows.
#pragma once

#include <cstddef>

extern "C" {

[[gnu::visibility("default")]] std::size_t wispen_platform_strlcpy(char* target, const char* source,
                                                                   std::size_t size);
[[gnu::visibility("default")]] std::size_t wispen_platform_strlcat(char* target, const char* source,
                                                                   std::size_t size);

/// snprintf as in the "C" locale, whatever locale is given or set.
[[gnu::visibility("default"), gnu::format(printf, 4, 5)]] int wispen_platform_snprintf_l(
    char* text, std::size_t size, void* locale, const char* format, ...);
/// The phone's takes null for the "C" locale, glibc's does not. Any locale given counts as that one.
[[gnu::visibility("default")]] float wispen_platform_strtof_l(const char* text, char** end, void* locale);
}
