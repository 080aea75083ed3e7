// cells/WispSlider.cpp: a slider row in the accent colour.

#include "cells/WispSlider.hpp"

#include "cells/palette.hpp"

namespace wispen {

WispSlider WispSlider::initWithStyle(objc::Allocated<WispSlider> self, NSInteger, const NSString& identifier,
                                     const PSSpecifier& specifier) {
  WispSlider cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
      UITableViewCellStyle::Subtitle, identifier, specifier);
  if (cell) cell.control<UISlider>().setMinimumTrackTintColor(palette::accent());
  return cell;
}

void WispSlider::define() {
  objc::Class<WispSlider>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &WispSlider::initWithStyle>()
      .register_class();
}

}  // namespace wispen
