// cells/WispButton.cpp: a button row in the colours of a label.

#include "cells/WispButton.hpp"

namespace wispen {

void WispButton::layoutSubviews() const {
  super<"layoutSubviews">();
  const bool disabled = specifier().propertyForKey("style"_ns).isEqual("disabled"_ns);
  textLabel().setTextColor(disabled ? UIColor::systemGrayColor() : UIColor::labelColor());
  textLabel().setHighlightedTextColor(UIColor::colorWithRed(0.5, 0.6, 0.1, 1.0));
}

void WispButton::define() {
  objc::Class<WispButton>().method<"layoutSubviews", &WispButton::layoutSubviews>().register_class();
}

}  // namespace wispen
