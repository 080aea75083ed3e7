// host/foundation/dates.hpp: dates as text.
#pragma once

namespace wispen {

/// Dates describe themselves as the platform's do: "2001-01-01 00:00:00 +0000", whatever the time zone.
/// Foundation's own description looks for the year by walking there, and never ends before the year 1.
void install_dates();

}  // namespace wispen
