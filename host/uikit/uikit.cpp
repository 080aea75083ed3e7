// host/uikit/uikit.cpp: makes UIKit's classes known, each after its base.

#include "host/uikit/containers/controllers/alert_controller.hpp"
#include "host/uikit/containers/controllers/navigation_bar.hpp"
#include "host/uikit/containers/controllers/navigation_controller.hpp"
#include "host/uikit/containers/controllers/navigation_item.hpp"
#include "host/uikit/containers/controllers/presentation.hpp"
#include "host/uikit/containers/controllers/view_controller.hpp"
#include "host/uikit/containers/tables/header_footer_view.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/containers/tables/table_view.hpp"
#include "host/uikit/controls/controls.hpp"
#include "host/uikit/values/values.hpp"
#include "host/uikit/view/effects/effects.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"
#include "host/uikit/view/events/key.hpp"
#include "host/uikit/view/events/touch.hpp"
#include "host/uikit/view/layout/layout_anchor.hpp"
#include "host/uikit/view/layout/layout_constraint.hpp"
#include "host/uikit/view/layout/layout_guide.hpp"
#include "host/uikit/view/layout/stack_view.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/trait_collection.hpp"
#include "host/uikit/view/views.hpp"

namespace wispen::uikit {

void define_uikit() {
  define_values();
  define_trait_collection();
  define_responder();
  define_touch();
  define_gesture_recognizers();
  define_layer();
  define_view();
  define_layout_anchor();
  define_layout_constraint();
  define_layout_guide();
  define_stack_view();
  define_application();
  define_screen();
  define_window();
  define_key();
  define_label();
  define_image_view();
  define_control();
  define_button();
  define_text_field();
  define_switch();
  define_slider();
  define_segmented_control();
  define_activity_indicator();
  define_visual_effects();
  define_backdrop_view();
  define_view_controller();
  define_navigation_item();
  define_navigation_bar();
  define_navigation_controller();
  define_presentation();
  define_alert_controller();
  define_scroll_view();
  define_table_cell();
  define_header_footer_view();
  define_table_view();
}

}  // namespace wispen::uikit
