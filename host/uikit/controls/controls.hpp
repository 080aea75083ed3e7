// host/uikit/controls/controls.hpp: makes the controls known to the runtime; each after its base.
#pragma once

namespace wispen::uikit {

void define_label();
void define_image_view();
void define_control();
void define_button();
void define_text_field();
void define_switch();
void define_slider();
void define_segmented_control();
void define_activity_indicator();

}  // namespace wispen::uikit
