// cells/XXXSwitchWithInfoCell.hpp: a switch with a button that explains it.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

class XXXSwitchWithInfoCell : public objc::Authored<XXXSwitchWithInfoCell, PSSwitchTableCell> {
 public:
  static constexpr objc::FixedString kClass{"XXXSwitchWithInfoCell"};
  using Authored::Authored;

  static void define();

  static XXXSwitchWithInfoCell initWithStyle(objc::Allocated<XXXSwitchWithInfoCell> self, NSInteger style,
                                             const NSString& identifier, const PSSpecifier& specifier);
  void infoButtonTapped() const;
  void tintColorDidChange() const;
  void refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const;

 private:
  static constexpr objc::InstanceVariable<"_infoButton", UIButton> kInfoButton{};

  UIButton& info_button() const { return variable(kInfoButton); }
};

}  // namespace wispen
