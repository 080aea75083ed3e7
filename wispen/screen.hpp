// wispen/screen.hpp: what the commands with a screen share.
#pragma once

#include <string>
#include <vector>

#include "wispen/session.hpp"

namespace wispen::program {

/// A page that can be shown: its class for the host, its list and a name for files.
struct ShownPage {
  std::string cls;   // "" for the list of Settings
  std::string name;  // of its specifier list, or "Settings"
};

/// The list of Settings, then every page of the bundle.
std::vector<ShownPage> shown_pages(const Session& session);

/// Shows a page by its class, its list, "root" or "settings", and lets it come to rest. Prints why, and gives
/// false, where that fails.
bool show_page(const Session& session, const std::string& name);

}  // namespace wispen::program
