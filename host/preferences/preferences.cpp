// host/preferences/preferences.cpp: the Preferences framework, made known to the runtime.

#include "host/preferences/preferences.hpp"

#include "host/preferences/cells/control_cells.hpp"
#include "host/preferences/cells/text_cells.hpp"
#include "host/preferences/choice_page.hpp"
#include "host/preferences/list_controller.hpp"

namespace wispen::preferences {

void define_preferences() {
  Specifier::define();
  Cell::define();
  ControlCell::define();
  SwitchCell::define();
  SliderCell::define();
  SegmentCell::define();
  EditCell::define();
  SpinnerCell::define();
  PageController::define();
  ListController::define();
  ChoicePage::define();
}

}  // namespace wispen::preferences
