// host/uikit/controls/control.hpp: UIControl: a view that turns touches and keys into actions.
#pragma once

#include "platform/UIKit.hpp"

namespace wispen::uikit {

/// Tells every target of any of these events, in order of registration. `event` may be nil.
void send_actions(const UIControl& control, UIControlEvents events, const NSObject& event);

}  // namespace wispen::uikit
