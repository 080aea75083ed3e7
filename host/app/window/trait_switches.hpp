// host/app/window/trait_switches.hpp: the traits that a window's toolbar and keys go through.
#pragma once

#include <string>
#include <vector>

#include "host/app/host.hpp"

namespace wispen {

/// One of the toolbar's buttons.
struct TraitSwitch {
  const uikit::TraitField* trait = nullptr;
  int key = 0;  ///< the function key's number
  /// What it goes through, in order.
  std::vector<std::string> values;
};

/// One for every trait, F2 for the first. `languages` are those that can be chosen; with fewer than two there
/// is no switch for them.
std::vector<TraitSwitch> trait_switches(const std::vector<std::string>& languages);

/// The one of the switch's values that the screen shows.
std::string shown_value(const Host& host, const TraitSwitch& one);

/// The next value, or the one before, of a switch; round at the ends.
Result<void> step(Host& host, const TraitSwitch& one, bool forward);

}  // namespace wispen
