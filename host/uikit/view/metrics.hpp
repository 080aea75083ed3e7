// host/uikit/view/metrics.hpp: the numbers of the look: sizes and radii in points, times in seconds,
// opacities. They are what the platform shows, measured or publicly documented.
#pragma once

#include "host/geometry/geometry.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit::metrics {

/// What moves under the finger stands a little above its track.
struct ThumbShadow {
  float opacity;
  double radius;
  CGSize offset;
};
inline constexpr ThumbShadow kSwitchThumbShadow{0.15F, 4, {0, 3}};
inline constexpr ThumbShadow kSliderThumbShadow{0.2F, 4, {0, 2}};
inline constexpr ThumbShadow kSegmentShadow{0.12F, 4, {0, 3}};

inline void cast_thumb_shadow(const CALayer& layer, const ThumbShadow& shadow) {
  layer.setShadowOpacity(shadow.opacity);
  layer.setShadowRadius(shadow.radius);
  layer.setShadowOffset(shadow.offset);
}

/// A control that is not enabled shows through.
inline constexpr double kDisabledAlpha = 0.5;

// Rows, their headers and footers, and the ring of the focus, as their neighbours know them too.
inline constexpr double kCellMargin = 16;
inline constexpr double kDefaultRowHeight = 44;
inline constexpr double kCellImageSize = 29;  // of an icon, whatever its own size
inline constexpr double kCellImageGap = 15;
inline constexpr double kCellVerticalPadding = 11;
inline constexpr double kCellAccessoryWidth = 8;
inline constexpr double kCellAccessoryMargin = 16;
inline constexpr double kSectionTextPadding = 7;  // between a header's words and its rows
inline constexpr double kFooterTextTop = 8;       // between the rows and a footer's words
/// How far a ring can reach beyond its view, in points.
inline constexpr double kFocusRingReach = 6;

/// A control under a finger.
namespace control {
// A finger may stray this far from a control before it counts as outside, as on the platform.
inline constexpr double kTrackingReach = 70;
}  // namespace control

/// UIButton.
namespace button {
inline constexpr double kDefaultSize = 18;  // of a title, on the platform; system buttons have 15 by style
inline constexpr double kSystemTitleSize = 15;
inline constexpr double kImageGap = 6;
inline constexpr double kHighlightedAlpha = 0.2;
inline constexpr double kHighlightFadeSeconds = 0.25;
}  // namespace button

/// UISegmentedControl.
namespace segments {
inline constexpr double kHeight = 32;
inline constexpr double kRadius = 9;
inline constexpr double kPillMargin = 2;
inline constexpr double kPillRadius = 7;
inline constexpr double kSidePadding = 12;  // of a title, on either side
inline constexpr double kLeastWidth = 32;
inline constexpr double kSeparatorMargin = 8;  // above and below
inline constexpr double kFontSize = 13;
inline constexpr double kSlideSeconds = 0.25;
inline constexpr double kPressedAlpha = 0.35;
inline constexpr double kPressedScale = 0.95;
}  // namespace segments

/// UISlider.
namespace slider {
inline constexpr double kHeight = 31;
inline constexpr double kTrack = 4;
inline constexpr double kTrackMargin = 2;
inline constexpr double kThumb = 28;
inline constexpr double kImageGap = 10;
inline constexpr double kTickWidth = 2;
inline constexpr double kTickHeight = 10;
inline constexpr double kTouchReach = 10;  // around the thumb
inline constexpr double kSlideSeconds = 0.25;
// Of the range, for one press of a key, and with the shift key.
inline constexpr float kKeyStep = 1.0F / 20;
inline constexpr float kFineKeyStep = 1.0F / 100;
}  // namespace slider

/// UISwitch.
namespace toggle {
inline constexpr Size kSize{51, 31};
inline constexpr double kThumb = 27;
inline constexpr double kThumbMargin = 2;
inline constexpr double kPressedGrowth = 7;  // the thumb's, along the track
inline constexpr double kSlideSeconds = 0.25;
inline constexpr double kDragDistance = 10;  // from where the finger came down, until the thumb follows it
}  // namespace toggle

/// UITextField.
namespace field {
inline constexpr double kBorderedInset = 7;
inline constexpr double kRadius = 5;
inline constexpr double kCaretWidth = 2;
}  // namespace field

/// UIActivityIndicatorView.
namespace spinner {
inline constexpr int kSpokes = 8;
}  // namespace spinner

/// Alerts and action sheets.
namespace alert {
inline constexpr double kButtonPadding = 8;
inline constexpr double kWidth = 270;
inline constexpr double kRadius = 14;
inline constexpr double kPadding = 16;
inline constexpr double kTop = 20;
inline constexpr double kTextGap = 3;
inline constexpr double kButtonHeight = 44;
inline constexpr double kSheetButtonHeight = 57;
inline constexpr double kSheetGap = 8;  // between the answers and "Cancel"
inline constexpr double kSheetMargin = 8;
inline constexpr double kMostSheetWidth = 420;
inline constexpr double kFieldHeight = 30;
inline constexpr double kFieldGap = 8;
}  // namespace alert

/// Navigation bars.
namespace bar {
inline constexpr double kMargin = 16;
inline constexpr double kBackMargin = 8;
inline constexpr double kGap = 8;
inline constexpr double kFadeDistance = 10;  // points of scrolling until the background is whole
inline constexpr double kFadeSeconds = 0.3;
}  // namespace bar

/// From page to page.
namespace transition {
inline constexpr double kTransitionSeconds = 0.35;
inline constexpr double kParallax = 0.3;       // how far the page below moves, of the width
inline constexpr double kDimming = 0.1;        // of the page below
inline constexpr double kThrowVelocity = 300;  // points a second that finish a way back whatever its length
}  // namespace transition

/// Sheets, boxes and alerts as they come and go.
namespace presentation {
inline constexpr double kSheetSeconds = 0.5;
inline constexpr double kAlertSeconds = 0.25;
inline constexpr double kCardRadius = 10;
inline constexpr double kBoxRadius = 13;
inline constexpr double kCardGap = 10;    // under the status bar
inline constexpr double kBoxMargin = 20;  // a box keeps this from the edges of the screen
inline constexpr Size kBoxSize{540, 620};
inline constexpr double kPresenterScale = 0.92;
inline constexpr double kDimming = 0.2;
inline constexpr double kAlertScale = 1.1;  // an alert shrinks into place
inline constexpr double kDragToDismiss = 0.35;
inline constexpr double kThrowVelocity = 800;
}  // namespace presentation

/// UIScrollView.
namespace scrolling {
// The platform's normal deceleration keeps this part of the speed every millisecond.
inline constexpr double kDeceleration = 0.998;
inline constexpr double kRubber = 0.55;  // how much a finger still moves content beyond its ends
inline constexpr double kSpringSeconds = 0.4;
inline constexpr double kOffsetSeconds = 0.3;
inline constexpr double kIndicatorWidth = 3;
inline constexpr double kIndicatorMargin = 3;
inline constexpr double kShortestIndicator = 36;
}  // namespace scrolling

/// Rows of tables.
namespace cell {
inline constexpr double kLabelGap = 8;
inline constexpr double kAccessoryGap = 8;
}  // namespace cell

/// Sections of tables.
namespace section {
// The platform's inset-grouped metrics, in points.
inline constexpr double kFirstHeader = 35;
inline constexpr double kGap = 17.5;
inline constexpr double kCornerRadius = 10;  // the platform's, in points
inline constexpr double kUpdateSeconds = 0.3;
}  // namespace section

/// Fingers.
namespace gesture {
// The platform's distances and times, as far as they are known from use.
inline constexpr double kTapDistance = 45;    // a finger that moves further does not tap
inline constexpr double kTapInterval = 0.35;  // seconds from one tap to the next of several
inline constexpr double kPanDistance = 10;    // before a pan begins
inline constexpr double kLongPressDistance = 10;
inline constexpr double kEdgeWidth = 20;
// The platform's, roughly: a second tap counts when it comes soon and close enough.
inline constexpr double kMultipleTapInterval = 0.35;
inline constexpr double kMultipleTapDistance = 40;
}  // namespace gesture

/// The ring around what has the keyboard.
namespace focus {
inline constexpr double kWidth = 3;
inline constexpr double kGap = 1;  // between the view and its ring
inline constexpr double kPlainRadius = 6;
}  // namespace focus

/// The sheets of OnBoardingKit.
namespace welcome {
inline constexpr double kTop = 44;
inline constexpr double kNarrowMargin = 24;
inline constexpr double kWideMargin = 64;
inline constexpr double kWide = 500;  // from where on the margins are wide
inline constexpr double kIconSide = 72;
inline constexpr double kIconGap = 14;
inline constexpr double kDetailGap = 8;
inline constexpr double kListGap = 36;
inline constexpr double kItemGap = 28;
inline constexpr double kSymbolSide = 40;
inline constexpr double kSymbolGap = 16;
inline constexpr double kTextGap = 3;
inline constexpr double kBottom = 44;
}  // namespace welcome

/// Rows of specifier lists.
namespace row {
inline constexpr double kValueWidth = 48;
inline constexpr double kValueGap = 8;
inline constexpr double kGiantHeight = 64;
inline constexpr double kGap = 12;
inline constexpr double kLeastFieldWidth = 90;
}  // namespace row

}  // namespace wispen::uikit::metrics
