// host/uikit/values/paragraph_style.hpp: NSParagraphStyle and its mutable subclass.
#pragma once

#include "platform/UIKit/NSParagraphStyle.hpp"

namespace wispen::uikit {

struct ParagraphLook {
  NSTextAlignment alignment = NSTextAlignment::Natural;
  NSLineBreakMode line_break_mode = NSLineBreakMode::ByWordWrapping;
  double line_spacing = 0;       ///< points between lines
  double paragraph_spacing = 0;  ///< points after the paragraph
  friend bool operator==(const ParagraphLook&, const ParagraphLook&) = default;
};

/// Those of the platform for nil.
ParagraphLook look_of(const NSParagraphStyle& style);

void define_paragraph_styles();

}  // namespace wispen::uikit
