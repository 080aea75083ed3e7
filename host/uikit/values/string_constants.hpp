// host/uikit/values/string_constants.hpp: the string objects that UIKit exports.
#pragma once

namespace wispen::uikit {

/// Makes them; before that they are nil. Again does nothing.
void make_string_constants();

}  // namespace wispen::uikit
