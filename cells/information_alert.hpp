// cells/information_alert.hpp: the explanation that a row gives of itself.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// Shows the row's "infoTitle" (else its untranslated label) and its translated "infoMessage" in an alert
/// with one button, on the controller around the cell, else on the first window's. One routine for the two
/// cells that offer it.
void present_information(const PSTableCell& cell);

}  // namespace wispen
