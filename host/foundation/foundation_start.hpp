// host/foundation/foundation_start.hpp: bringing Foundation up without touching the account's own files.
#pragma once

#include <string>

#include "host/core/result.hpp"

namespace wispen {

/// Starts Foundation with a private configuration in `private_folder`, which is made if need be, and puts
/// the host's own property lists, bundles and weak references in place. Only the first call of a process
/// does anything: Foundation reads its configuration once. Fails where Foundation was not linked.
Result<void> start_foundation(const std::string& private_folder);

}  // namespace wispen
