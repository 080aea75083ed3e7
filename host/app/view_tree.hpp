// host/app/view_tree.hpp: what is on the screen, in words.
#pragma once

#include <nlohmann/json.hpp>

namespace wispen {

/// Every window that shows, lowest first, as a tree of views. A view has its "class", its "frame" (x, y,
/// width and height on the screen, in points), and where they say something "text", "value", "placeholder",
/// "hidden", "alpha", "enabled", "selected", "focused", "editing", "tag", "identifier", "subviews", and
/// "truncated" for a label whose text is cut. While it moves, "shown" and "shown_alpha" tell where and how
/// strongly it is seen. A row of a settings page also has its "row": id, key, cell and label; a page's own
/// view has its "controller".
nlohmann::ordered_json view_tree();

}  // namespace wispen
