// host/preferences/cells/control_cells.cpp: rows with a control: switch, slider, segments.

#include "host/preferences/cells/control_cells.hpp"

#include <algorithm>
#include <cmath>

#include "host/preferences/confirmation.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/window.hpp"

namespace wispen::preferences {

namespace {

constexpr double kMargin = uikit::kCellMargin;
constexpr double kValueWidth = 48;
constexpr double kValueGap = 8;

uikit::Control make_control(const char* name) {
  return objc::send<"new", uikit::Control>(objc::ClassRef::named(name));
}

double number(const NSObject& value, double fallback) {
  if (!value || !objc::responds_to(value, objc::selector<"doubleValue">())) return fallback;
  return objc::send<"doubleValue", double>(value);
}

}  // namespace

void ControlCell::setControl(const uikit::Control& control) const {
  uikit::Control& slot = state<ControlCellState>().control;
  if (slot) slot.removeFromSuperview();
  slot = control;
}

bool ControlCell::places_control() const { return control() && control().superview() == contentView(); }

struct ControlCellMethods {
  using Self = ControlCell;

  static Self initWithStyle(objc::Allocated<Self> self, NSInteger style, const NSString& identifier,
                            const PSSpecifier& specifier) {
    Self cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
        style, identifier, specifier);
    if (!cell) return cell;
    objc::send<"setSelectionStyle:">(cell, NSInteger{0});
    const auto control = objc::send<"newControl", uikit::Control>(cell);
    if (!control) return cell;
    control.addTarget(cell, objc::selector<"controlChanged:">(), uikit::control_event::kValueChanged);
    objc::send<"setControl:">(cell, control);
    return cell;
  }
  static uikit::Control newControl(const Self&) { return uikit::Control(); }
  static NSObject controlValue(const Self& self) { return self.parts().value; }
  static void controlChanged(const Self& self, const NSObject&) {
    const auto value = objc::send<"controlValue", NSObject>(self);
    self.parts().value = value;
    self.specifier().performSetterWithValue(value);
  }
  static void refresh(const Self& self, const PSSpecifier& specifier) {
    objc::send_super<"refreshCellContentsWithSpecifier:">(self, objc::class_for<Cell>(), specifier);
    objc::send<"setValue:">(self, specifier.performGetter());
  }
  static void setCellEnabled(const Self& self, bool enabled) {
    objc::send_super<"setCellEnabled:">(self, objc::class_for<Cell>(), enabled);
    objc::send<"setSelectionStyle:">(self, NSInteger{0});
    if (self.control()) objc::send<"setEnabled:">(self.control(), enabled);
  }
};

void ControlCell::define() {
  using M = ControlCellMethods;
  objc::Class<ControlCell>()
      .state<ControlCellState>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &M::initWithStyle>()
      .creating<"newControl", &M::newControl>()
      .method<"control", &ControlCell::control>()
      .method<"setControl:", &ControlCell::setControl>()
      .method<"controlValue", &M::controlValue>()
      .method<"controlChanged:", &M::controlChanged>()
      .method<"refreshCellContentsWithSpecifier:", &M::refresh>()
      .method<"setCellEnabled:", &M::setCellEnabled>()
      .register_class();
}

struct SwitchCellMethods {
  using Self = SwitchCell;

  static uikit::Control newControl(const Self&) { return make_control("UISwitch"); }
  static void setControl(const Self& self, const uikit::Control& control) {
    objc::send_super<"setControl:">(self, objc::class_for<ControlCell>(), control);
    objc::send<"setAccessoryView:">(self, control);
  }
  static bool inverted(const Self& self) { return is_set(self.specifier(), "negate"_ns); }
  static NSObject controlValue(const Self& self) {
    const bool on = objc::send<"isOn", bool>(self.control());
    return NSNumber::numberWithBool(on != inverted(self));
  }
  static void setValue(const Self& self, const NSObject& value) {
    self.parts().value = value;
    const bool stored = value && objc::responds_to(value, objc::selector<"boolValue">()) &&
                        objc::send<"boolValue", bool>(value);
    const bool on = stored != inverted(self);
    if (objc::send<"isOn", bool>(self.control()) != on) {
      objc::send<"setOn:animated:">(self.control(), on, self.window() ? true : false);
    }
  }
  static void store(const Self& self) {
    objc::send_super<"controlChanged:">(self, objc::class_for<ControlCell>(), NSObject(self.control()));
  }
  static void controlChanged(const Self& self, const NSObject&) {
    if (!has_confirmation(self.specifier())) return store(self);
    const Self kept = self;
    confirm(
        self.specifier(), [kept] { store(kept); },
        [kept] {
          const bool on = objc::send<"isOn", bool>(kept.control());
          objc::send<"setOn:animated:">(kept.control(), !on, true);
        });
  }
};

void SwitchCell::define() {
  using M = SwitchCellMethods;
  objc::Class<SwitchCell>()
      .creating<"newControl", &M::newControl>()
      .method<"setControl:", &M::setControl>()
      .method<"controlValue", &M::controlValue>()
      .method<"setValue:", &M::setValue>()
      .method<"controlChanged:", &M::controlChanged>()
      .register_class();
}

struct SliderCellMethods {
  using Self = SliderCell;

  static uikit::Control newControl(const Self& self) {
    const uikit::Control slider = make_control("UISlider");
    if (slider) configure(self, slider, self.specifier());
    return slider;
  }
  static void setControl(const Self& self, const uikit::Control& control) {
    objc::send_super<"setControl:">(self, objc::class_for<ControlCell>(), control);
    if (control) self.contentView().addSubview(control);
  }

  static void configure(const Self& self, const uikit::Control& slider, const PSSpecifier& specifier) {
    const double low = number(specifier.propertyForKey("min"_ns), 0);
    const double high = number(specifier.propertyForKey("max"_ns), 1);
    objc::send<"setMinimumValue:">(slider, static_cast<float>(low));
    objc::send<"setMaximumValue:">(slider, static_cast<float>(high));
    objc::send<"setContinuous:">(slider, is_set(specifier, "isContinuous"_ns));
    if (const UIImage left = image_named_by(specifier, "leftImage"_ns)) {
      objc::send<"setMinimumValueImage:">(slider, left);
    }
    if (const UIImage right = image_named_by(specifier, "rightImage"_ns)) {
      objc::send<"setMaximumValueImage:">(slider, right);
    }
    show_value_label(self, is_set(specifier, "showValue"_ns), slider);
  }

  static void show_value_label(const Self& self, bool shown, const uikit::Control& slider) {
    uikit::Label& label = self.state<SliderCellState>().value_label;
    if (!shown) {
      if (label) label.removeFromSuperview();
      label = uikit::Label();
      return;
    }
    if (label) return;
    label = uikit::Label::make();
    label.setTextColor(UIColor::secondaryLabelColor());
    label.setTextAlignment(2);  // right
    self.contentView().addSubview(label);
    constexpr NSUInteger kEveryMove = uikit::control_event::kValueChanged |
                                      uikit::control_event::kTouchDragInside |
                                      uikit::control_event::kTouchDragOutside;
    slider.addTarget(self, objc::selector<"_showSliderValue:">(), kEveryMove);
  }
  static void showSliderValue(const Self& self, const NSObject&) {
    const uikit::Label label = self.state<SliderCellState>().value_label;
    if (!label) return;
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", double{objc::send<"value", float>(self.control())});
    label.setText(text);
  }

  /// With steps, a slider rests only on one of them.
  static void snap(const Self& self) {
    const PSSpecifier specifier = self.specifier();
    const double steps = number(specifier.propertyForKey("segmentCount"_ns), 0);
    if (!is_set(specifier, "isSegmented"_ns) || steps < 1) return;
    const uikit::Control slider = self.control();
    const double low = objc::send<"minimumValue", float>(slider);
    const double high = objc::send<"maximumValue", float>(slider);
    const double value = objc::send<"value", float>(slider);
    if (high <= low) return;
    const double step = (high - low) / steps;
    const auto rested = static_cast<float>(low + std::round((value - low) / step) * step);
    objc::send<"setValue:">(slider, rested);
  }

  static NSObject controlValue(const Self& self) {
    return objc::send<"numberWithFloat:", NSObject>(objc::class_for<NSNumber>(),
                                                    objc::send<"value", float>(self.control()));
  }
  static void controlChanged(const Self& self, const NSObject& sender) {
    snap(self);
    objc::send_super<"controlChanged:">(self, objc::class_for<ControlCell>(), sender);
  }
  static void setValue(const Self& self, const NSObject& value) {
    self.parts().value = value;
    objc::send<"setValue:">(self.control(), static_cast<float>(number(value, 0)));
    showSliderValue(self, NSObject());
  }
  static void refresh(const Self& self, const PSSpecifier& specifier) {
    if (self.control()) configure(self, self.control(), specifier);
    objc::send_super<"refreshCellContentsWithSpecifier:">(self, objc::class_for<ControlCell>(), specifier);
  }
  // The row is the slider: what it stands for, its group says.
  static void setTitle(const Self& self, const NSString& title) {
    objc::send<"setAccessibilityLabel:">(self, title);
    if (self.control()) objc::send<"setAccessibilityLabel:">(self.control(), title);
  }
  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<ControlCell>());
    if (!self.places_control()) return;
    const Rect content = self.contentView().bounds();
    const uikit::Label label = self.state<SliderCellState>().value_label;
    const double value_room = label ? kValueWidth + kValueGap : 0;
    const double width = std::max(0.0, content.width() - 2 * kMargin - value_room);
    const double height = self.control().sizeThatFits({width, content.height()}).height;
    const bool turned = self.is_right_to_left();
    const double x = kMargin + (turned ? value_room : 0);
    const double y = round_to_pixel((content.height() - height) / 2, uikit::display_settings().scale);
    self.control().setFrame({{x, y}, {width, height}});
    if (!label) return;
    const double label_x = turned ? kMargin : content.width() - kMargin - kValueWidth;
    label.setTextAlignment(turned ? 0 : 2);
    label.setFrame({{label_x, 0}, {kValueWidth, content.height()}});
  }
};

void SliderCell::define() {
  using M = SliderCellMethods;
  objc::Class<SliderCell>()
      .state<SliderCellState>()
      .creating<"newControl", &M::newControl>()
      .method<"setControl:", &M::setControl>()
      .method<"controlValue", &M::controlValue>()
      .method<"controlChanged:", &M::controlChanged>()
      .method<"setValue:", &M::setValue>()
      .method<"setTitle:", &M::setTitle>()
      .method<"refreshCellContentsWithSpecifier:", &M::refresh>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"_showSliderValue:", &M::showSliderValue>()
      .register_class();
}

struct SegmentCellMethods {
  using Self = SegmentCell;

  static uikit::Control newControl(const Self&) { return make_control("UISegmentedControl"); }
  static void setControl(const Self& self, const uikit::Control& control) {
    objc::send_super<"setControl:">(self, objc::class_for<ControlCell>(), control);
    if (control) self.contentView().addSubview(control);
  }
  static void build(const Self& self, const PSSpecifier& specifier) {
    const uikit::Control segments = self.control();
    const NSArray values = specifier.values();
    const auto titles = specifier.titleDictionary();
    objc::send<"removeAllSegments">(segments);
    for (NSUInteger i = 0, count = values.count(); i < count; ++i) {
      const auto title = objc::cast_or_nil<NSString>(titles.objectForKey(values.objectAtIndex(i)));
      objc::send<"insertSegmentWithTitle:atIndex:animated:">(
          segments, title ? title : displayed_value(specifier, values.objectAtIndex(i)), i, false);
    }
  }
  static void refresh(const Self& self, const PSSpecifier& specifier) {
    build(self, specifier);
    objc::send_super<"refreshCellContentsWithSpecifier:">(self, objc::class_for<ControlCell>(), specifier);
  }
  static void setTitle(const Self& self, const NSString& title) {
    objc::send<"setAccessibilityLabel:">(self, title);
    if (self.control()) objc::send<"setAccessibilityLabel:">(self.control(), title);
  }
  static NSObject controlValue(const Self& self) {
    const auto index = objc::send<"selectedSegmentIndex", NSInteger>(self.control());
    const NSArray values = self.specifier().values();
    if (index < 0 || static_cast<NSUInteger>(index) >= values.count()) return NSObject();
    return values.objectAtIndex(static_cast<NSUInteger>(index));
  }
  static void setValue(const Self& self, const NSObject& value) {
    self.parts().value = value;
    const NSArray values = self.specifier().values();
    const NSUInteger index =
        value && values ? objc::send<"indexOfObject:", NSUInteger>(values, value) : NSUInteger{NSNotFound};
    objc::send<"setSelectedSegmentIndex:">(
        self.control(), index == NSNotFound ? NSInteger{-1} : static_cast<NSInteger>(index));
  }
  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<ControlCell>());
    if (!self.places_control()) return;
    const Rect content = self.contentView().bounds();
    const double width = std::max(0.0, content.width() - 2 * kMargin);
    const double fitting = self.control().sizeThatFits({width, content.height()}).height;
    const double height = std::min(fitting, content.height());
    const double y = round_to_pixel((content.height() - height) / 2, uikit::display_settings().scale);
    self.control().setFrame({{kMargin, y}, {width, height}});
  }
};

void SegmentCell::define() {
  using M = SegmentCellMethods;
  objc::Class<SegmentCell>()
      .creating<"newControl", &M::newControl>()
      .method<"setControl:", &M::setControl>()
      .method<"controlValue", &M::controlValue>()
      .method<"setValue:", &M::setValue>()
      .method<"setTitle:", &M::setTitle>()
      .method<"refreshCellContentsWithSpecifier:", &M::refresh>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .register_class();
}

}  // namespace wispen::preferences
