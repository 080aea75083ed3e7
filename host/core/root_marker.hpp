// host/core/root_marker.hpp: the file by which a device root is known as one, and its layout.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/core/result.hpp"

namespace wispen {

/// Where a jailbreak keeps its own files: below /var/jb, or straight at the root.
enum class Layout { Rootless, Rootful };

std::string_view layout_name(Layout layout);
/// The layout named "rootless" or "rootful"; nothing for any other word.
std::optional<Layout> layout_from_name(std::string_view name);

/// The layout that the folder's marker remembers. Nothing where there is no marker, or an empty one: a root
/// that was being made when the machine went down.
Result<std::optional<Layout>> remembered_layout(const std::string& folder);

/// Makes the folder a root of that layout (rootless where none is wanted) unless it is one already, and gives
/// the layout that it has then. The marker appears whole or not at all, and of processes that come at the
/// same time the first decides. Fails for a folder without a marker that holds more than an
/// interrupted start left.
Result<Layout> remember_layout(const std::string& folder, std::optional<Layout> wanted);

}  // namespace wispen
