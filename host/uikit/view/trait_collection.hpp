// host/uikit/view/trait_collection.hpp: UITraitCollection: idiom, appearance, size classes, text size.
#pragma once

#include "platform/UIKit/UITraitCollection.hpp"

namespace wispen::uikit {

void define_trait_collection();

/// Of the display as it is now.
UITraitCollection current_trait_collection();

}  // namespace wispen::uikit
