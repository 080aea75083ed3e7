// wispen/home_screen.hpp: the other end of the domain, as the commands show it.
#pragma once

#include <string>

#include "host/core/result.hpp"
#include "wispen/commands.hpp"
#include "wispen/session.hpp"

namespace wispen::program {

/// Starts the home screen on the running session: in a window beside its own, or with `picture` painting into
/// that file, which is there when this returns. Who runs the program is told at once when it cannot live.
Result<void> start_home_screen(const CommonOptions& options, const LookOptions& look,
                               const std::string& picture);

/// Says why there is none, for whoever can do without.
void tell_without_home_screen(const std::string& why);

/// Lets the session run until the home screen's picture shows what is stored now.
Result<void> await_home_screen_picture();

/// Paints the home screen once for what is stored.
int snapshot_home_screen(const CommonOptions& options, const SnapshotOptions& what);

}  // namespace wispen::program
