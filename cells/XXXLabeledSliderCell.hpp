// cells/XXXLabeledSliderCell.hpp: a slider below its title, with its value beside it.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

/// A tap on the value asks for an exact one, which is kept within the slider's range, stored and shown.
class XXXLabeledSliderCell : public objc::Authored<XXXLabeledSliderCell, PSSliderTableCell> {
 public:
  static constexpr objc::FixedString kClass{"XXXLabeledSliderCell"};
  using Authored::Authored;

  static void define();

  static XXXLabeledSliderCell initWithStyle(objc::Allocated<XXXLabeledSliderCell> self, NSInteger style,
                                            const NSString& identifier, const PSSpecifier& specifier);
  void infoButtonTapped() const;
  void setCustomSliderValue() const;
  /// The controller around the cell, else the key window's; then whatever that presents, and so on. Nil where
  /// there is none.
  UIViewController appropriateViewController() const;
  void sliderValueChanged(const UISlider& slider) const;
  void tintColorDidChange() const;
  void refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const;

 private:
  static constexpr objc::InstanceVariable<"_stackView", UIStackView> kStackView{};
  static constexpr objc::InstanceVariable<"_sliderStackView", UIStackView> kSliderStackView{};
  static constexpr objc::InstanceVariable<"_sliderLabel", UILabel> kSliderLabel{};
  static constexpr objc::InstanceVariable<"_valueLabel", UILabel> kValueLabel{};

  UIStackView& stack() const { return variable(kStackView); }
  UIStackView& slider_row() const { return variable(kSliderStackView); }
  UILabel& title() const { return variable(kSliderLabel); }
  UILabel& value_label() const { return variable(kValueLabel); }

  void make_labels(const PSSpecifier& specifier) const;
  void make_stacks() const;
  void constrain() const;
  void watch() const;
  void take_typed_value(const UIAlertController& alert, const UISlider& slider) const;
  void colour_labels() const;
};

}  // namespace wispen
