// host/uikit/view/responder.hpp: UIResponder: the chain along which touches, keys and actions travel.
#pragma once

#include "platform/UIKit/UIResponder.hpp"

namespace wispen::uikit {

/// Who gets the keys; nil when nobody.
UIResponder first_responder();

}  // namespace wispen::uikit
