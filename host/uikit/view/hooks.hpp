// host/uikit/view/hooks.hpp: the messages by which classes of the host ask each other what no public method
// says.
#pragma once

#include "platform/objc/fixed_string.hpp"

namespace wispen::uikit::hooks {

// Keys and focus.
/// (UIKey) -> bool: whether the responder took the key; one that did not passes it up the chain.
inline constexpr objc::FixedString kHandleKey{"_handleKey:"};
/// (UIView): the view is about to get the focus; a scroll view brings it into sight.
inline constexpr objc::FixedString kRevealFocusedView{"_revealFocusedView:"};
/// -> bool: the ring of the focus is drawn inside of the view's bounds.
inline constexpr objc::FixedString kShowsFocusInside{"_showsFocusInside"};

// Controls.
/// A control was enabled, selected or highlighted, or the opposite.
inline constexpr objc::FixedString kControlStateChanged{"_controlStateChanged"};
/// -> bool: a drag that begins on the view is the view's own, and scrolls nothing.
inline constexpr objc::FixedString kKeepsDrags{"_keepsDrags"};

// Layout.
/// -> bool: how high the view wants to be is known when its width is.
inline constexpr objc::FixedString kHeightDependsOnWidth{"_heightDependsOnWidth"};
/// -> double: points from the top to the first line's baseline, and from the last one's to the bottom.
inline constexpr objc::FixedString kFirstBaseline{"_firstBaselineOffsetFromTop"};
inline constexpr objc::FixedString kLastBaseline{"_baselineOffsetFromBottom"};
/// -> UIEdgeInsets: what a controller's bars take from the safe area of the views in its own view.
inline constexpr objc::FixedString kSafeAreaForContent{"_safeAreaInsetsForContent"};

// Controllers.
/// (UIViewController, UIScrollView): a page's content was scrolled under the bar.
inline constexpr objc::FixedString kContentScrolled{"_contentOf:scrolled:"};
/// One page back, as the bar's button does.
inline constexpr objc::FixedString kGoBack{"_goBack"};

}  // namespace wispen::uikit::hooks
