// wispen/process_room.hpp: what the process must have before it starts.
#pragma once

#include <optional>
#include <string>

namespace wispen::program {

/// The least that any command needs. With less, the libraries of the object layer and of the text end the
/// process without a word, or wait for ever.
inline constexpr unsigned long kLeastStack = 1024UL * 1024;
inline constexpr unsigned long kLeastDescriptors = 64;

/// What the limits of the process lack, as one sentence; nothing where they do.
std::optional<std::string> missing_room();

}  // namespace wispen::program
