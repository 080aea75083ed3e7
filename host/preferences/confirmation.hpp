// host/preferences/confirmation.hpp: the question that a row asks before it acts.
#pragma once

#include <functional>

#include "host/preferences/specifier.hpp"

namespace wispen::preferences {

/// Whether the row has a "confirmation" dictionary.
bool has_confirmation(const PSSpecifier& specifier);

/// Asks the row's "prompt" on its page, with "okTitle" (else "title", else "OK") and "cancelTitle" (else
/// "Cancel") as answers: from below on phones, as a box on pads. One of the two is called when it is gone.
/// Where nothing can be shown, nothing is.
void confirm(const PSSpecifier& specifier, std::function<void()> accepted, std::function<void()> cancelled);

}  // namespace wispen::preferences
