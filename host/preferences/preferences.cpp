// host/preferences/preferences.cpp: the Preferences framework, made known to the runtime.

#include "host/preferences/preferences.hpp"

#include "host/preferences/cells/control_cells.hpp"
#include "host/preferences/cells/table_cell.hpp"
#include "host/preferences/cells/text_cells.hpp"
#include "host/preferences/choice_page.hpp"
#include "host/preferences/list_controller.hpp"
#include "host/preferences/page_controller.hpp"
#include "host/preferences/specifier.hpp"

namespace wispen::preferences {

void define_preferences() {
  define_specifier();
  define_table_cell();
  define_control_cell();
  define_switch_cell();
  define_slider_cell();
  define_segment_cell();
  define_edit_cell();
  define_spinner_cell();
  define_page_controller();
  define_list_controller();
  define_choice_page();
}

}  // namespace wispen::preferences
