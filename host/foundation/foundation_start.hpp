// host/foundation/foundation_start.hpp: bringing Foundation up without touching the account's own files.
#pragma once

#include "host/core/result.hpp"

namespace wispen {

/// Keeps Foundation out of the account's home, and puts the host's own property lists and bundles behind
/// Foundation's selectors. Only the first call of a process does anything. Fails where Foundation was not
/// linked.
Result<void> start_foundation();

}  // namespace wispen
