// home_screen/pieces.hpp: what menu, notification and screen are made of.
#pragma once

#include "home_screen/palette.hpp"

namespace wispen::home_screen {

// Tags by which the parts are found, as by whoever inspects the screen.
inline constexpr NSInteger kMenuTag = 1001;
inline constexpr NSInteger kWidgetTag = 1002;
inline constexpr NSInteger kNotificationTag = 1003;
inline constexpr NSInteger kFillTag = 1004;
inline constexpr NSInteger kSeparatorTag = 1005;
inline constexpr NSInteger kIconPlateTag = 1006;
inline constexpr NSInteger kNameTag = 1007;
inline constexpr NSInteger kDockNameTag = 1008;

/// One line of text, in the frame's vertical middle.
UILabel make_label(const std::string& text, const UIFont& font, const UIColor& colour, CGRect frame,
                   NSTextAlignment alignment = NSTextAlignment::Natural);

/// A pane with round corners: blur, and the ground's fill over it. What is added to it later lies above both.
UIView make_pane(CGRect frame, double radius, UIBlurEffectStyle blur, const Ground& ground);

/// Makes the pane, and what fills it, so high.
void set_pane_height(const UIView& pane, double height);

}  // namespace wispen::home_screen
