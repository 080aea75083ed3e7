// host/uikit/controls/label.hpp: a label's text, laid out.
#pragma once

#include <memory>

#include "host/geometry/geometry.hpp"
#include "host/graphics/text_layout.hpp"
#include "platform/UIKit/UILabel.hpp"

namespace wispen::uikit {

/// As the label sets it in that much room; infinite where it is not bounded.
std::shared_ptr<const graphics::TextLayout> text_of_label(const UILabel& label, Size room);

}  // namespace wispen::uikit
