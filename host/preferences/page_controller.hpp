// host/preferences/page_controller.hpp: PSViewController: a page of Settings, whatever it shows.
#pragma once

namespace wispen::preferences {

/// It knows the row that opened it, the page which that row is on, and the default value store.
void define_page_controller();

}  // namespace wispen::preferences
