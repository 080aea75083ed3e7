// host/uikit/view/effects/effects.hpp: makes the frosted panes known to the runtime.
#pragma once

namespace wispen::uikit {

void define_visual_effects();
void define_backdrop_view();

}  // namespace wispen::uikit
