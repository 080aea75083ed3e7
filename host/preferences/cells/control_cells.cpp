// host/preferences/cells/control_cells.cpp: rows with a control: switch, slider, segments.

#include "host/preferences/cells/control_cells.hpp"

#include <algorithm>
#include <cmath>

#include "host/preferences/cells/table_cell.hpp"
#include "host/preferences/confirmation.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::preferences {

namespace {

constexpr double kMargin = uikit::kCellMargin;
constexpr double kValueWidth = 48;
constexpr double kValueGap = 8;

double number(const NSObject& value, double fallback) {
  if (!value || !objc::responds_to(value, objc::selector<"doubleValue">())) return fallback;
  return objc::send<"doubleValue", double>(value);
}

}  // namespace

/// The host's PSControlTableCell: it makes its control by `newControl`, shows the row's value in it, and
/// gives what the user sets there to the row's setter.
class ControlCell : public objc::Implementation<ControlCell, PSControlTableCell> {
 public:
  static PSControlTableCell initWithStyle(objc::Allocated<PSControlTableCell> self,
                                          UITableViewCellStyle style, const NSString& identifier,
                                          const PSSpecifier& specifier) {
    PSControlTableCell cell =
        super_init<"initWithStyle:reuseIdentifier:specifier:">(std::move(self), style, identifier, specifier);
    if (!cell) return cell;
    cell.setSelectionStyle(UITableViewCellSelectionStyle::None);
    const auto control = objc::send<"newControl", UIControl>(cell);
    if (!control) return cell;
    control.addTarget(cell, objc::selector<"controlChanged:">(), UIControlEventValueChanged);
    cell.setControl(control);
    return cell;
  }
  UIControl newControl() { return UIControl(); }
  NSObject controlValue() { return self().value(); }
  void controlChanged(const NSObject&) {
    const auto value = self().controlValue();
    Cell::of(self()).keep_value(value);
    self().specifier().performSetterWithValue(value);
  }
  void refresh(const PSSpecifier& specifier) {
    super<"refreshCellContentsWithSpecifier:">(specifier);
    self().setValue(specifier.performGetter());
  }
  void setCellEnabled(bool enabled) {
    super<"setCellEnabled:">(enabled);
    self().setSelectionStyle(UITableViewCellSelectionStyle::None);
    if (control_) control_.setEnabled(enabled);
  }
  void setControl(const UIControl& control) {
    if (control_) control_.removeFromSuperview();
    control_ = control;
  }
  /// Whether the control lies in the row's content, where the cell places it; a page may have moved it.
  bool places_control() { return control_ && control_.superview() == self().contentView(); }

 private:
  friend void define_control_cell();

  UIControl control_;
};

void define_control_cell() {
  objc::Class<PSControlTableCell>::implemented_by<ControlCell>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &ControlCell::initWithStyle>()
      .creating<"newControl", &ControlCell::newControl>()
      .getter<"control", &ControlCell::control_>()
      .method<"setControl:", &ControlCell::setControl>()
      .method<"controlValue", &ControlCell::controlValue>()
      .method<"controlChanged:", &ControlCell::controlChanged>()
      .method<"refreshCellContentsWithSpecifier:", &ControlCell::refresh>()
      .method<"setCellEnabled:", &ControlCell::setCellEnabled>()
      .register_class();
}

/// The host's PSSwitchTableCell: a switch at the trailing edge.
class SwitchCell : public objc::Implementation<SwitchCell, PSSwitchTableCell> {
 public:
  UIControl newControl() { return objc::make<UISwitch>(); }
  void setControl(const UIControl& control) {
    super<"setControl:">(control);
    self().setAccessoryView(control);
  }
  UISwitch toggle() { return self().control<UISwitch>(); }
  bool inverted() { return is_set(self().specifier(), "negate"_ns); }
  NSObject controlValue() {
    const bool on = toggle().isOn();
    return NSNumber::numberWithBool(on != inverted());
  }
  void setValue(const NSObject& value) {
    Cell::of(self()).keep_value(value);
    const bool stored = value && objc::responds_to(value, objc::selector<"boolValue">()) &&
                        objc::send<"boolValue", bool>(value);
    const bool on = stored != inverted();
    if (toggle().isOn() != on) {
      toggle().setOn(on, bool{self().window()});
    }
  }
  void store() { super<"controlChanged:">(toggle()); }
  void controlChanged(const NSObject&) {
    if (!has_confirmation(self().specifier())) return store();
    const PSSwitchTableCell kept = self();
    confirm(
        self().specifier(), [kept] { of(kept).store(); },
        [kept] {
          const UISwitch toggle = of(kept).toggle();
          toggle.setOn(!toggle.isOn(), true);
        });
  }
};

void define_switch_cell() {
  objc::Class<PSSwitchTableCell>::implemented_by<SwitchCell>()
      .creating<"newControl", &SwitchCell::newControl>()
      .method<"setControl:", &SwitchCell::setControl>()
      .method<"controlValue", &SwitchCell::controlValue>()
      .method<"setValue:", &SwitchCell::setValue>()
      .method<"controlChanged:", &SwitchCell::controlChanged>()
      .register_class();
}

/// The host's PSSliderTableCell: a slider over the whole row.
class SliderCell : public objc::Implementation<SliderCell, PSSliderTableCell> {
 public:
  UIControl newControl() {
    const auto slider = objc::make<UISlider>();
    if (slider) configure(slider, self().specifier());
    return slider;
  }
  void setControl(const UIControl& control) {
    super<"setControl:">(control);
    if (control) self().contentView().addSubview(control);
  }
  UISlider slider() { return self().control<UISlider>(); }
  void configure(const UISlider& slider, const PSSpecifier& specifier) {
    const double low = number(specifier.propertyForKey("min"_ns), 0);
    const double high = number(specifier.propertyForKey("max"_ns), 1);
    slider.setMinimumValue(static_cast<float>(low));
    slider.setMaximumValue(static_cast<float>(high));
    slider.setContinuous(is_set(specifier, "isContinuous"_ns));
    if (const UIImage left = image_named_by(specifier, "leftImage"_ns)) {
      slider.setMinimumValueImage(left);
    }
    if (const UIImage right = image_named_by(specifier, "rightImage"_ns)) {
      slider.setMaximumValueImage(right);
    }
    show_value_label(is_set(specifier, "showValue"_ns), slider);
  }
  void show_value_label(bool shown, const UISlider& slider) {
    if (!shown) {
      if (value_label_) value_label_.removeFromSuperview();
      value_label_ = UILabel();
      return;
    }
    if (value_label_) return;
    value_label_ = objc::make<UILabel>();
    value_label_.setTextColor(UIColor::secondaryLabelColor());
    value_label_.setTextAlignment(NSTextAlignment::Right);
    self().contentView().addSubview(value_label_);
    constexpr UIControlEvents kEveryMove =
        UIControlEventValueChanged | UIControlEventTouchDragInside | UIControlEventTouchDragOutside;
    slider.addTarget(self(), objc::selector<"_showSliderValue:">(), kEveryMove);
  }
  void showSliderValue(const NSObject&) {
    if (!value_label_) return;
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", double{slider().value()});
    value_label_.setText(text);
  }
  /// With steps, a slider rests only on one of them.
  void snap() {
    const PSSpecifier specifier = self().specifier();
    const double steps = number(specifier.propertyForKey("segmentCount"_ns), 0);
    if (!is_set(specifier, "isSegmented"_ns) || steps < 1) return;
    const UISlider slider = this->slider();
    const double low = slider.minimumValue();
    const double high = slider.maximumValue();
    const double value = slider.value();
    if (high <= low) return;
    const double step = (high - low) / steps;
    const auto rested = static_cast<float>(low + std::round((value - low) / step) * step);
    slider.setValue(rested);
  }
  NSObject controlValue() { return NSNumber::numberWithFloat(slider().value()); }
  void controlChanged(const NSObject& sender) {
    snap();
    super<"controlChanged:">(sender);
  }
  void setValue(const NSObject& value) {
    Cell::of(self()).keep_value(value);
    slider().setValue(static_cast<float>(number(value, 0)));
    showSliderValue(NSObject());
  }
  void refresh(const PSSpecifier& specifier) {
    if (self().control()) configure(slider(), specifier);
    super<"refreshCellContentsWithSpecifier:">(specifier);
  }
  // The row is the slider: what it stands for, its group says.
  void setTitle(const NSString& title) {
    self().setAccessibilityLabel(title);
    if (self().control()) self().control().setAccessibilityLabel(title);
  }
  void layoutSubviews() {
    super<"layoutSubviews">();
    if (!ControlCell::of(self()).places_control()) return;
    const Rect content = self().contentView().bounds();
    const UILabel label = value_label_;
    const double value_room = label ? kValueWidth + kValueGap : 0;
    const double width = std::max(0.0, content.width() - 2 * kMargin - value_room);
    const double height = self().control().sizeThatFits(Size{width, content.height()}).height;
    const bool turned = uikit::is_right_to_left(self());
    const double x = kMargin + (turned ? value_room : 0);
    const double y = round_to_pixel((content.height() - height) / 2, uikit::display_settings().scale);
    self().control().setFrame(Rect{{x, y}, {width, height}});
    if (!label) return;
    const double label_x = turned ? kMargin : content.width() - kMargin - kValueWidth;
    label.setTextAlignment(turned ? NSTextAlignment::Left : NSTextAlignment::Right);
    label.setFrame(Rect{{label_x, 0}, {kValueWidth, content.height()}});
  }

 private:
  friend void define_slider_cell();

  UILabel value_label_;  // only where the row shows its value
};

void define_slider_cell() {
  objc::Class<PSSliderTableCell>::implemented_by<SliderCell>()
      .creating<"newControl", &SliderCell::newControl>()
      .method<"setControl:", &SliderCell::setControl>()
      .method<"controlValue", &SliderCell::controlValue>()
      .method<"controlChanged:", &SliderCell::controlChanged>()
      .method<"setValue:", &SliderCell::setValue>()
      .method<"setTitle:", &SliderCell::setTitle>()
      .method<"refreshCellContentsWithSpecifier:", &SliderCell::refresh>()
      .method<"layoutSubviews", &SliderCell::layoutSubviews>()
      .method<"_showSliderValue:", &SliderCell::showSliderValue>()
      .register_class();
}

/// The host's PSSegmentTableCell: one segment for each of the row's values.
class SegmentCell : public objc::Implementation<SegmentCell, PSSegmentTableCell> {
 public:
  UIControl newControl() { return objc::make<UISegmentedControl>(); }
  void setControl(const UIControl& control) {
    super<"setControl:">(control);
    if (control) self().contentView().addSubview(control);
  }
  UISegmentedControl segments() { return self().control<UISegmentedControl>(); }
  void build(const PSSpecifier& specifier) {
    const auto segments = this->segments();
    const NSArray values = specifier.values();
    const auto titles = specifier.titleDictionary();
    segments.removeAllSegments();
    for (NSUInteger i = 0, count = values.count(); i < count; ++i) {
      const auto title = objc::cast_or_nil<NSString>(titles.objectForKey(values.objectAtIndex(i)));
      segments.insertSegment(title ? title : displayed_value(specifier, values.objectAtIndex(i)), i, false);
    }
  }
  void refresh(const PSSpecifier& specifier) {
    build(specifier);
    super<"refreshCellContentsWithSpecifier:">(specifier);
  }
  void setTitle(const NSString& title) {
    self().setAccessibilityLabel(title);
    if (self().control()) self().control().setAccessibilityLabel(title);
  }
  NSObject controlValue() {
    const auto index = segments().selectedSegmentIndex();
    const NSArray values = self().specifier().values();
    if (index < 0 || static_cast<NSUInteger>(index) >= values.count()) return NSObject();
    return values.objectAtIndex(static_cast<NSUInteger>(index));
  }
  void setValue(const NSObject& value) {
    Cell::of(self()).keep_value(value);
    const NSArray values = self().specifier().values();
    const NSUInteger index = value && values ? values.indexOfObject(value) : NSUInteger{NSNotFound};
    segments().setSelectedSegmentIndex(index == NSNotFound ? NSInteger{-1} : static_cast<NSInteger>(index));
  }
  void layoutSubviews() {
    super<"layoutSubviews">();
    if (!ControlCell::of(self()).places_control()) return;
    const Rect content = self().contentView().bounds();
    const double width = std::max(0.0, content.width() - 2 * kMargin);
    const double fitting = self().control().sizeThatFits(Size{width, content.height()}).height;
    const double height = std::min(fitting, content.height());
    const double y = round_to_pixel((content.height() - height) / 2, uikit::display_settings().scale);
    self().control().setFrame(Rect{{kMargin, y}, {width, height}});
  }
};

void define_segment_cell() {
  objc::Class<PSSegmentTableCell>::implemented_by<SegmentCell>()
      .creating<"newControl", &SegmentCell::newControl>()
      .method<"setControl:", &SegmentCell::setControl>()
      .method<"controlValue", &SegmentCell::controlValue>()
      .method<"setValue:", &SegmentCell::setValue>()
      .method<"setTitle:", &SegmentCell::setTitle>()
      .method<"refreshCellContentsWithSpecifier:", &SegmentCell::refresh>()
      .method<"layoutSubviews", &SegmentCell::layoutSubviews>()
      .register_class();
}

}  // namespace wispen::preferences
