// host/uikit/view/layout/layout_anchor.hpp: NSLayoutAnchor: one attribute of a view, from which constraints
// grow.
#pragma once

#include "host/layout/constraint.hpp"
#include "platform/UIKit/NSLayoutConstraint.hpp"

namespace wispen::uikit {

/// The host's NSLayoutAnchor. Its three subclasses exist so that code may ask for them by name.
class LayoutAnchor : public objc::Implementation<LayoutAnchor, NSLayoutAnchor> {
 public:
  static NSLayoutAnchor make(const NSObject& item, layout::Attribute attribute);
  const NSObject& item() const { return item_; }
  layout::Attribute attribute() const { return attribute_; }

 private:
  NSObject item_;
  layout::Attribute attribute_ = layout::Attribute::NotAnAttribute;
};

void define_layout_anchor();

template <class T, layout::Attribute A>
NSLayoutAnchor anchor_of(const T& item) {
  return LayoutAnchor::make(item, A);
}

/// Gives a class that stands for a rectangle its anchors.
template <class T>
void add_anchors(objc::Class<T>& cls) {
  using layout::Attribute;
  cls.template method<"leftAnchor", &anchor_of<T, Attribute::Left>>()
      .template method<"rightAnchor", &anchor_of<T, Attribute::Right>>()
      .template method<"topAnchor", &anchor_of<T, Attribute::Top>>()
      .template method<"bottomAnchor", &anchor_of<T, Attribute::Bottom>>()
      .template method<"leadingAnchor", &anchor_of<T, Attribute::Leading>>()
      .template method<"trailingAnchor", &anchor_of<T, Attribute::Trailing>>()
      .template method<"widthAnchor", &anchor_of<T, Attribute::Width>>()
      .template method<"heightAnchor", &anchor_of<T, Attribute::Height>>()
      .template method<"centerXAnchor", &anchor_of<T, Attribute::CenterX>>()
      .template method<"centerYAnchor", &anchor_of<T, Attribute::CenterY>>()
      .template method<"firstBaselineAnchor", &anchor_of<T, Attribute::FirstBaseline>>()
      .template method<"lastBaselineAnchor", &anchor_of<T, Attribute::LastBaseline>>();
}

}  // namespace wispen::uikit
