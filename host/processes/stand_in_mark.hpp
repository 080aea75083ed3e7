// host/processes/stand_in_mark.hpp: how a program of ours is known from a stranger's.
#pragma once

#include <string_view>

namespace wispen {

/// Stands in the file of every program that a host installs into device roots, so that a later host knows
/// which files there it may replace.
inline constexpr char kStandInMark[] =
    "wispen: this program plays a part of a phone and may be replaced by its host";

/// Called once by each such program: what nobody reads would not be kept in the file.
inline void keep_stand_in_mark() {
  [[maybe_unused]] const volatile char* const kept = kStandInMark;
  asm volatile("" : : "r"(kept) : "memory");
}

}  // namespace wispen
