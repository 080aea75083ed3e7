// host/uikit/view/views.hpp: makes the kernel's classes known to the runtime, each after its base.
#pragma once

namespace wispen::uikit {

void define_responder();
void define_layer();
void define_view();
void define_window();
void define_application();
/// UIScreen and UIDevice.
void define_screen();

}  // namespace wispen::uikit
