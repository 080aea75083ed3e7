// host/uikit/values/attributed_text.hpp: from attributed strings to the text that is drawn.
#pragma once

#include <optional>

#include "host/graphics/attributed_text.hpp"
#include "host/uikit/values/paragraph_style.hpp"
#include "platform/UIKit/NSAttributedString.hpp"

namespace wispen::uikit {

/// `defaults` stand for what the string's own attributes leave open. Empty for nil.
graphics::AttributedText attributed_text_of(const NSAttributedString& text,
                                            const graphics::TextAttributes& defaults);

/// The first paragraph's style, where the string has one.
std::optional<ParagraphLook> paragraph_look_of(const NSAttributedString& text);

/// The attributes of one dictionary over `defaults`.
graphics::TextAttributes text_attributes_of(const NSDictionary& attributes,
                                            const graphics::TextAttributes& defaults);

}  // namespace wispen::uikit
