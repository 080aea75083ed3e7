// cells/WispToggle.cpp: a switch row in the accent colour, over blur.

#include "cells/WispToggle.hpp"

#include "cells/palette.hpp"

namespace wispen {

WispToggle WispToggle::initWithStyle(objc::Allocated<WispToggle> self, NSInteger, const NSString& identifier,
                                     const PSSpecifier& specifier) {
  WispToggle cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
      UITableViewCellStyle::Subtitle, identifier, specifier);
  if (!cell) return cell;
  cell.control<UISwitch>().setOnTintColor(palette::accent());
  cell.titleLabel().setFont(UIFont::systemFontOfSize(18));
  const UIVisualEffectView blur = UIVisualEffectView::alloc().initWithEffect(
      UIBlurEffect::effectWithStyle(UIBlurEffectStyle::SystemUltraThinMaterial));
  blur.setFrame(cell.bounds());
  blur.setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  cell.insertSubview(blur, 0);
  return cell;
}

void WispToggle::define() {
  objc::Class<WispToggle>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &WispToggle::initWithStyle>()
      .register_class();
}

}  // namespace wispen
