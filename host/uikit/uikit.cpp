// host/uikit/uikit.cpp: makes UIKit's classes known.

#include "host/uikit/controllers/alert_controller.hpp"
#include "host/uikit/controllers/navigation_controller.hpp"
#include "host/uikit/controllers/presentation.hpp"
#include "host/uikit/controllers/trait_collection.hpp"
#include "host/uikit/controls/activity_indicator.hpp"
#include "host/uikit/controls/button.hpp"
#include "host/uikit/controls/control.hpp"
#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/controls/segmented_control.hpp"
#include "host/uikit/controls/slider.hpp"
#include "host/uikit/controls/switch.hpp"
#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/effects/backdrop_view.hpp"
#include "host/uikit/effects/visual_effect_view.hpp"
#include "host/uikit/events/gesture_recognizer.hpp"
#include "host/uikit/events/key.hpp"
#include "host/uikit/events/touch.hpp"
#include "host/uikit/layout/layout_anchor.hpp"
#include "host/uikit/layout/layout_constraint.hpp"
#include "host/uikit/layout/layout_guide.hpp"
#include "host/uikit/layout/stack_view.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/tables/header_footer_view.hpp"
#include "host/uikit/tables/table_view.hpp"
#include "host/uikit/values/values.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::uikit {

void define_uikit() {
  define_values();
  TraitCollection::define();
  Responder::define();
  Touch::define();
  Event::define();
  GestureRecognizer::define();
  Layer::define();
  View::define();
  LayoutAnchor::define();
  LayoutConstraint::define();
  LayoutGuide::define();
  StackView::define();
  Application::define();
  Screen::define();
  Device::define();
  Window::define();
  Key::define();
  Label::define();
  ImageView::define();
  Control::define();
  Button::define();
  TextField::define();
  Switch::define();
  Slider::define();
  SegmentedControl::define();
  ActivityIndicator::define();
  VisualEffect::define();
  BlurEffect::define();
  VisualEffectView::define();
  BackdropSettings::define();
  BackdropView::define();
  ViewController::define();
  BarButtonItem::define();
  NavigationItem::define();
  NavigationBar::define();
  NavigationController::define();
  define_presentation();
  AlertAction::define();
  AlertController::define();
  ScrollView::define();
  TableCell::define();
  HeaderFooterView::define();
  TableView::define();
}

}  // namespace wispen::uikit
