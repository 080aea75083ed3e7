// host/uikit/view/events/focus.hpp: which view the keyboard is talking to, where it is not a text field.
#pragma once

#include <vector>

#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// The view with the focus; nil while there is none. It is shown by a ring around it.
UIView focused_view();
/// Nil takes the focus away.
void focus(const UIView& view);
/// A finger or the mouse takes over: no view has the focus until the keyboard moves it on from where it was.
void rest_focus();
/// To the next view that answers `canBecomeFocused`, in the order of the hierarchy, or to the one before.
/// Scrolls it into sight. False where there is none.
bool move_focus(bool forward);
/// What can have the focus now: only what is in the topmost window that lets touches through.
std::vector<UIView> focusable_views();

}  // namespace wispen::uikit
