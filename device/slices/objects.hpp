// device/slices/objects.hpp: whether an object file can go into an arm64e slice.
#pragma once

#include <string_view>

#include "host/core/result.hpp"

namespace wispen::slices {

/// An object of arm64e code without a signed pointer in its data, which the linker cannot write. An
/// error names the symbol that holds one.
Result<void> check_object(std::string_view bytes);

}  // namespace wispen::slices
