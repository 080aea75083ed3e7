// host/app/window/look_switches.hpp: the looks that a window's toolbar and keys go through.
#pragma once

#include <string>
#include <vector>

#include "host/app/host.hpp"

namespace wispen {

/// One of the toolbar's buttons.
struct LookSwitch {
  std::string look;  ///< a name of Host::set_look()
  int key = 0;       ///< the function key's number
  /// What it goes through, in order.
  std::vector<std::string> values;
};

/// Appearance, language, direction, text size, device and orientation. `languages` are those that can be
/// chosen; without any there is no switch for them.
std::vector<LookSwitch> look_switches(const std::vector<std::string>& languages);

/// What the host has now.
std::string current_look(const Host& host, const std::string& look);

/// The next value, or the one before, of a switch; round at the ends.
Result<void> step_look(Host& host, const LookSwitch& look, bool forward);

}  // namespace wispen
