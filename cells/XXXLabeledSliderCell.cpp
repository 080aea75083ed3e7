// cells/XXXLabeledSliderCell.cpp: a slider below its title, with its value beside it.

#include "cells/XXXLabeledSliderCell.hpp"

#include "cells/information_alert.hpp"
#include "platform/System.h"

namespace wispen {

namespace {

NSString decimal(const char* format, double value) {
  char text[64];
  platform_snprintf_l(text, sizeof text, nullptr, format, value);
  return NSString(text);
}

/// One decimal beside the slider; two where a value is typed.
NSString shown(float value) { return decimal("%.01f", double{value}); }
NSString typed(float value) { return decimal("%.02f", double{value}); }

NSArray list_of(std::initializer_list<objc::Object> objects) {
  NSMutableArray list = NSMutableArray::array();
  for (const objc::Object& object : objects) list.addObject(object);
  return list;
}

UIStackView make_stack(const NSArray& views, UILayoutConstraintAxis axis,
                       UIStackViewDistribution distribution, CGFloat spacing) {
  const UIStackView stack = UIStackView::alloc().initWithArrangedSubviews(views);
  stack.setAlignment(UIStackViewAlignment::Center);
  stack.setAxis(axis);
  stack.setDistribution(distribution);
  stack.setSpacing(spacing);
  stack.setTranslatesAutoresizingMaskIntoConstraints(false);
  return stack;
}

UIViewController key_windows_controller() {
  const NSArray windows = UIApplication::sharedApplication().windows();
  for (NSUInteger i = 0; i < windows.count(); ++i) {
    const auto window = windows.objectAtIndex<UIWindow>(i);
    if (window.isKeyWindow()) return window.rootViewController();
  }
  return UIViewController();
}

}  // namespace

XXXLabeledSliderCell XXXLabeledSliderCell::initWithStyle(objc::Allocated<XXXLabeledSliderCell> self,
                                                         NSInteger style, const NSString& identifier,
                                                         const PSSpecifier& specifier) {
  XXXLabeledSliderCell cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
      style, identifier, specifier);
  if (!cell) return cell;
  specifier.setProperty(NSNumber::numberWithInt(56), "height"_ns);
  cell.make_labels(specifier);
  cell.make_stacks();
  cell.contentView().addSubview(cell.stack());
  cell.constrain();
  cell.watch();
  NSLayoutConstraint::activateConstraints(NSArray::array());
  return cell;
}

void XXXLabeledSliderCell::make_labels(const PSSpecifier& specifier) const {
  const NSBundle bundle = objc::send<"bundle", NSBundle>(specifier.target());
  const auto name = specifier.propertyForKey<NSString>("label"_ns);
  const auto table = specifier.propertyForKey<NSString>("localizationTable"_ns);

  title() = objc::make<UILabel>();
  title().setFont(UIFont::systemFontOfSize(15, UIFontWeightBold));
  title().setText(bundle.localizedString(name, name, table));
  title().setTranslatesAutoresizingMaskIntoConstraints(false);

  value_label() = objc::make<UILabel>();
  value_label().setFont(UIFont::monospacedDigitSystemFontOfSize(10, UIFontWeightBold));
  value_label().setText(shown(objc::send<"floatValue", float>(specifier.performGetter())));
  value_label().setUserInteractionEnabled(true);
  value_label().setTranslatesAutoresizingMaskIntoConstraints(false);
  value_label().sizeToFit();
}

void XXXLabeledSliderCell::make_stacks() const {
  slider_row() = make_stack(list_of({control<UISlider>(), value_label()}), UILayoutConstraintAxis::Horizontal,
                            UIStackViewDistribution::Fill, 5);
  stack() = make_stack(list_of({title(), slider_row()}), UILayoutConstraintAxis::Vertical,
                       UIStackViewDistribution::EqualCentering, 0);
}

void XXXLabeledSliderCell::constrain() const {
  const UIView content = contentView();
  NSLayoutConstraint::activateConstraints(
      list_of({stack().topAnchor().constraintEqualToAnchor(content.topAnchor(), 4),
               stack().leadingAnchor().constraintEqualToAnchor(content.leadingAnchor(), 15),
               stack().trailingAnchor().constraintEqualToAnchor(content.trailingAnchor(), -15),
               stack().bottomAnchor().constraintEqualToAnchor(content.bottomAnchor(), -4),
               slider_row().widthAnchor().constraintEqualToAnchor(stack().widthAnchor()),
               value_label().heightAnchor().constraintEqualToAnchor(slider_row().heightAnchor())}));
}

// The registrations overlap: while the finger moves, the text is written at every event of each kind.
void XXXLabeledSliderCell::watch() const {
  for (const UIControlEvents events :
       {UIControlEventTouchDragInside, UIControlEventTouchDragOutside, UIControlEventValueChanged}) {
    control<UISlider>().addTarget(*this, objc::selector<"sliderValueChanged:">(), events);
  }
  const UITapGestureRecognizer tap =
      UITapGestureRecognizer::alloc().initWithTarget(*this, objc::selector<"setCustomSliderValue">());
  tap.setNumberOfTapsRequired(1);
  value_label().addGestureRecognizer(tap);
}

void XXXLabeledSliderCell::infoButtonTapped() const { present_information(*this); }

void XXXLabeledSliderCell::sliderValueChanged(const UISlider& slider) const {
  value_label().setText(shown(slider.value()));
}

void XXXLabeledSliderCell::setCustomSliderValue() const {
  const auto slider = control<UISlider>();
  const NSString current = typed(slider.value());
  const UIAlertController alert =
      UIAlertController::alertController("Enter Value"_ns, NSString(), UIAlertControllerStyle::Alert);
  alert.addTextField([current](const UITextField& field) {
    field.setKeyboardType(UIKeyboardType::DecimalPad);
    field.setText(current);
    field.setTextColor(UIColor::orangeColor());
  });
  const XXXLabeledSliderCell kept = *this;
  const UIAlertAction set = UIAlertAction::actionWithTitle(
      "Set"_ns, UIAlertActionStyle::Default,
      [alert, slider, kept](const UIAlertAction&) { kept.take_typed_value(alert, slider); });
  const UIAlertAction cancel = UIAlertAction::actionWithTitle("Cancel"_ns, UIAlertActionStyle::Cancel);
  alert.addAction(set);
  alert.addAction(cancel);
  appropriateViewController().presentViewController(alert, true);
}

void XXXLabeledSliderCell::take_typed_value(const UIAlertController& alert, const UISlider& slider) const {
  const auto field = alert.textFields().objectAtIndex<UITextField>(0);
  auto value = objc::send<"floatValue", float>(field.text());
  if (value > slider.maximumValue()) {
    value = slider.maximumValue();
  } else if (value < slider.minimumValue()) {
    value = slider.minimumValue();
  }
  specifier().performSetterWithValue(NSNumber::numberWithFloat(value));
  slider.setValue(value, true);
  objc::send<"sliderValueChanged:">(*this, slider);
}

UIViewController XXXLabeledSliderCell::appropriateViewController() const {
  UIViewController candidate = viewControllerForAncestor();
  if (!candidate) candidate = key_windows_controller();
  while (const UIViewController presented = candidate.presentedViewController()) candidate = presented;
  return candidate;
}

void XXXLabeledSliderCell::colour_labels() const {
  title().setTextColor(UIColor::orangeColor());
  value_label().setTextColor(UIColor::orangeColor());
}

void XXXLabeledSliderCell::tintColorDidChange() const {
  super<"tintColorDidChange">();
  colour_labels();
}

void XXXLabeledSliderCell::refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const {
  super<"refreshCellContentsWithSpecifier:">(specifier);
  // The texts are left: the title is the row's for good, and the value follows the slider's own events.
  if (respondsToSelector(objc::selector<"tintColor">())) colour_labels();
}

void XXXLabeledSliderCell::define() {
  using Self = XXXLabeledSliderCell;
  objc::Class<Self>()
      .variable(kStackView)
      .variable(kSliderStackView)
      .variable(kSliderLabel)
      .variable(kValueLabel)
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &Self::initWithStyle>()
      .method<"infoButtonTapped", &Self::infoButtonTapped>()
      .method<"setCustomSliderValue", &Self::setCustomSliderValue>()
      .method<"appropriateViewController", &Self::appropriateViewController>()
      .method<"sliderValueChanged:", &Self::sliderValueChanged>()
      .method<"tintColorDidChange", &Self::tintColorDidChange>()
      .method<"refreshCellContentsWithSpecifier:", &Self::refreshCellContentsWithSpecifier>()
      .register_class();
}

}  // namespace wispen
