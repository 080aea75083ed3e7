// host/uikit/values/values.cpp: UIKit's value classes, all of them.

#include "host/uikit/values/values.hpp"

#include "host/uikit/values/color.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/values/paragraph_style.hpp"
#include "host/uikit/values/string_constants.hpp"
#include "host/uikit/values/symbol_configuration.hpp"

namespace wispen::uikit {

void define_values() {
  make_string_constants();
  define_color();
  define_font();
  define_symbol_configurations();
  define_image();
  define_paragraph_styles();
}

}  // namespace wispen::uikit
