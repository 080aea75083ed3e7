// cells/XXXSwitchWithInfoCell.cpp: a switch with a button that explains it.

#include "cells/XXXSwitchWithInfoCell.hpp"

#include "cells/information_alert.hpp"

namespace wispen {

XXXSwitchWithInfoCell XXXSwitchWithInfoCell::initWithStyle(objc::Allocated<XXXSwitchWithInfoCell> self,
                                                           NSInteger style, const NSString& identifier,
                                                           const PSSpecifier& specifier) {
  XXXSwitchWithInfoCell cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
      style, identifier, specifier);
  if (!cell) return cell;
  const auto control = cell.control<UISwitch>();
  control.setOnTintColor(UIColor::purpleColor());
  control.setThumbTintColor(UIColor::blackColor());

  const UIButton button = UIButton::buttonWithType(UIButtonType::InfoDark);
  cell.info_button() = button;
  button.setTranslatesAutoresizingMaskIntoConstraints(false);
  button.addTarget(cell, objc::selector<"infoButtonTapped">(), UIControlEventTouchUpInside);
  const UIView content = cell.contentView();
  content.addSubview(button);
  // Beside the switch, which is outside of the content; a long title runs under it.
  NSMutableArray constraints = NSMutableArray::array();
  constraints.addObject(button.centerYAnchor().constraintEqualToAnchor(content.centerYAnchor()));
  constraints.addObject(button.trailingAnchor().constraintEqualToAnchor(content.trailingAnchor(), -4));
  NSLayoutConstraint::activateConstraints(constraints);
  return cell;
}

void XXXSwitchWithInfoCell::infoButtonTapped() const { present_information(*this); }

void XXXSwitchWithInfoCell::tintColorDidChange() const {
  super<"tintColorDidChange">();
  info_button().setTintColor(UIColor::purpleColor());
}

void XXXSwitchWithInfoCell::refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const {
  super<"refreshCellContentsWithSpecifier:">(specifier);
  if (respondsToSelector(objc::selector<"tintColor">())) {
    info_button().setTintColor(UIColor::purpleColor());
  }
}

void XXXSwitchWithInfoCell::define() {
  using Self = XXXSwitchWithInfoCell;
  objc::Class<Self>()
      .variable(kInfoButton)
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &Self::initWithStyle>()
      .method<"infoButtonTapped", &Self::infoButtonTapped>()
      .method<"tintColorDidChange", &Self::tintColorDidChange>()
      .method<"refreshCellContentsWithSpecifier:", &Self::refreshCellContentsWithSpecifier>()
      .register_class();
}

}  // namespace wispen
