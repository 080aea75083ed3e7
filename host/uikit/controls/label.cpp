// host/uikit/controls/label.cpp: UILabel: text that is read only.

#include "host/uikit/controls/label.hpp"

#include <algorithm>
#include <utility>

#include "host/uikit/painting/painter.hpp"
#include "host/uikit/values/attributed_text.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

using graphics::TextLayout;

Label Label::make(const Rect& frame) { return alloc().initialize<"initWithFrame:">(frame); }

void Label::content_changed() const {
  invalidateIntrinsicContentSize();
  setNeedsDisplay();
}

NSString Label::text() const {
  const LabelState& state = label();
  return state.attributed ? objc::send<"string", NSString>(state.attributed) : state.text;
}

void Label::setText(const NSString& text) const {
  LabelState& state = label();
  if (!state.attributed && text && state.text.isEqualToString(text)) return;
  state.text = objc::send<"copy", NSString>(text);
  state.attributed = NSAttributedString();
  content_changed();
}

NSAttributedString Label::attributedText() const { return label().attributed; }

void Label::setAttributedText(const NSAttributedString& text) const {
  label().attributed = text ? objc::send<"copy", NSAttributedString>(text) : text;
  if (!text) label().text = NSString();
  content_changed();
}

UIFont Label::font() const {
  UIFont& font = label().font;
  if (!font) font = font_from(graphics::Font::system(graphics::Font::kSystemSize));
  return font;
}

void Label::setFont(const UIFont& font) const {
  UIFont& own = label().font;
  // A control that sets its labels whenever it is laid out must not have itself laid out again by that.
  const bool same = own && font && font_of(own) == font_of(font);
  own = font;
  if (!same) content_changed();
}

UIColor Label::textColor() const {
  UIColor& colour = label().colour;
  if (!colour) colour = UIColor::labelColor();
  return colour;
}

void Label::setTextColor(const UIColor& colour) const {
  if (label().colour == colour) return;
  label().colour = colour;
  setNeedsDisplay();
}

void Label::setTextAlignment(NSInteger alignment) const {
  alignment = alignment >= 0 && alignment <= 4 ? alignment : 4;
  if (std::exchange(label().alignment, alignment) == alignment) return;
  setNeedsDisplay();
}

void Label::setNumberOfLines(NSInteger lines) const {
  lines = std::max<NSInteger>(lines, 0);
  if (std::exchange(label().lines, lines) == lines) return;
  content_changed();
}

void Label::setHighlighted(bool highlighted) const {
  if (std::exchange(label().highlighted, highlighted) == highlighted) return;
  setNeedsDisplay();
}

void Label::setEnabled(bool enabled) const {
  if (std::exchange(label().enabled, enabled) == enabled) return;
  setNeedsDisplay();
}

std::shared_ptr<const TextLayout> Label::set_in(Size room) const {
  const LabelState& state = label();
  graphics::TextAttributes attributes;
  attributes.font = font_of(font());
  const graphics::AttributedText text =
      state.attributed ? attributed_text_of(state.attributed, attributes)
                       : graphics::AttributedText(state.text ? state.text.utf8() : "", attributes);
  graphics::TextConstraints constraints;
  constraints.width = room.width;
  constraints.height = room.height;
  constraints.maximum_lines = static_cast<int>(state.lines);
  constraints.alignment = static_cast<graphics::TextAlignment>(state.alignment);
  constraints.line_break = static_cast<graphics::LineBreak>(state.line_break);
  if (state.attributed) {
    if (const auto look = paragraph_look_of(state.attributed)) {
      constraints.alignment = static_cast<graphics::TextAlignment>(look->alignment);
      constraints.line_spacing = look->line_spacing;
    }
  }
  if (constraints.alignment == graphics::TextAlignment::Natural) {
    // The platform goes by the direction of the interface, not by the letters.
    constraints.alignment =
        is_right_to_left() ? graphics::TextAlignment::Right : graphics::TextAlignment::Left;
  }
  if (state.shrinks && room.width < graphics::kUnbounded) {
    return graphics::fit_text(text, constraints, state.minimum_scale > 0 ? state.minimum_scale : 0.01);
  }
  return graphics::layout_text(text, constraints);
}

Point Label::text_origin(const TextLayout& text, const Rect& bounds) const {
  const double height = text.size().height;
  return {bounds.min_x(),
          bounds.min_y() + round_to_pixel((bounds.height() - height) / 2, display_settings().scale)};
}

struct LabelMethods {
  static Label initWithFrame(objc::Allocated<Label> self, const Rect& frame) {
    Label label = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (label) label.setUserInteractionEnabled(false);
    return label;
  }
  /// A width of 0 is no bound.
  static Size measure(const Label& self, double width) {
    if (!self.text() || self.text().length() == 0) return {0, 0};
    Size room{graphics::kUnbounded, graphics::kUnbounded};
    if (width > 0 && !self.label().shrinks) room.width = width;  // what shrinks to fit does not ask to
    return self.set_in(room)->size_on_grid(display_settings().scale);
  }
  static Size sizeThatFits(const Label& self, const Size& size) {
    const bool one_line = self.label().lines == 1;
    return measure(self, one_line ? 0 : size.width);
  }
  static Size intrinsicContentSize(const Label& self) { return measure(self, self.label().preferred_width); }
  static bool heightDependsOnWidth(const Label& self) {
    return self.label().lines != 1 && self.label().preferred_width <= 0;
  }
  static double firstBaseline(const Label& self) {
    const auto text = self.set_in({graphics::kUnbounded, graphics::kUnbounded});
    return text->first_baseline();
  }
  static double lastBaseline(const Label& self) {
    const auto text = self.set_in({graphics::kUnbounded, graphics::kUnbounded});
    return text->size().height - text->last_baseline();
  }
  static NSInteger textAlignment(const Label& self) { return self.label().alignment; }
  static NSInteger numberOfLines(const Label& self) { return self.label().lines; }
  static NSInteger lineBreakMode(const Label& self) { return self.label().line_break; }
  static void setLineBreakMode(const Label& self, NSInteger mode) {
    if (mode < 0 || mode > 5) return;
    self.label().line_break = mode;
    self.content_changed();
  }
  static bool isHighlighted(const Label& self) { return self.label().highlighted; }
  static bool isEnabled(const Label& self) { return self.label().enabled; }
  static UIColor highlightedTextColor(const Label& self) { return self.label().highlighted_colour; }
  static void setHighlightedTextColor(const Label& self, const UIColor& colour) {
    self.label().highlighted_colour = colour;
    self.setNeedsDisplay();
  }
  static bool adjustsFontSize(const Label& self) { return self.label().shrinks; }
  static void setAdjustsFontSize(const Label& self, bool adjusts) {
    self.label().shrinks = adjusts;
    self.content_changed();
  }
  static double minimumScale(const Label& self) { return self.label().minimum_scale; }
  static void setMinimumScale(const Label& self, double scale) {
    self.label().minimum_scale = std::clamp(scale, 0.0, 1.0);
    self.content_changed();
  }
  static double preferredWidth(const Label& self) { return self.label().preferred_width; }
  static void setPreferredWidth(const Label& self, double width) {
    self.label().preferred_width = width;
    self.content_changed();
  }
  static NSString accessibilityLabel(const Label& self) {
    const NSString own = objc::send_super<"accessibilityLabel", NSString>(self, objc::class_for<View>());
    return own ? own : self.text();
  }

  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Label self = view.as<Label>();
    const LabelState& state = self.label();
    if (!self.text() || bounds.empty()) return;
    const auto text = self.set_in(bounds.size);
    UIColor colour = self.textColor();
    if (state.highlighted && state.highlighted_colour) colour = state.highlighted_colour;
    if (!state.enabled) colour = UIColor::tertiaryLabelColor();
    const Size size = text->size();
    // A line that is higher than its label is cut off, as on the platform; the letters' own reach is not.
    const bool cut = size.height > bounds.height() || size.width > bounds.width();
    if (cut) {
      canvas.save();
      canvas.clip(reach(self, bounds));
    }
    canvas.draw(*text, self.text_origin(*text, bounds), colour_of(colour));
    if (cut) canvas.restore();
  }
  /// Slanted letters and marks may stand a little out of the line's box.
  static Rect reach(const View&, const Rect& bounds) { return bounds.inset(-2, -2); }
};

void Label::define() {
  using M = LabelMethods;
  objc::Class<Label>()
      .state<LabelState>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"text", &Label::text>()
      .method<"setText:", &Label::setText>()
      .method<"attributedText", &Label::attributedText>()
      .method<"setAttributedText:", &Label::setAttributedText>()
      .method<"font", &Label::font>()
      .method<"setFont:", &Label::setFont>()
      .method<"textColor", &Label::textColor>()
      .method<"setTextColor:", &Label::setTextColor>()
      .method<"textAlignment", &M::textAlignment>()
      .method<"setTextAlignment:", &Label::setTextAlignment>()
      .method<"numberOfLines", &M::numberOfLines>()
      .method<"setNumberOfLines:", &Label::setNumberOfLines>()
      .method<"lineBreakMode", &M::lineBreakMode>()
      .method<"setLineBreakMode:", &M::setLineBreakMode>()
      .method<"isHighlighted", &M::isHighlighted>()
      .method<"setHighlighted:", &Label::setHighlighted>()
      .method<"highlightedTextColor", &M::highlightedTextColor>()
      .method<"setHighlightedTextColor:", &M::setHighlightedTextColor>()
      .method<"isEnabled", &M::isEnabled>()
      .method<"setEnabled:", &Label::setEnabled>()
      .method<"adjustsFontSizeToFitWidth", &M::adjustsFontSize>()
      .method<"setAdjustsFontSizeToFitWidth:", &M::setAdjustsFontSize>()
      .method<"minimumScaleFactor", &M::minimumScale>()
      .method<"setMinimumScaleFactor:", &M::setMinimumScale>()
      .method<"preferredMaxLayoutWidth", &M::preferredWidth>()
      .method<"setPreferredMaxLayoutWidth:", &M::setPreferredWidth>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"_heightDependsOnWidth", &M::heightDependsOnWidth>()
      .method<"_firstBaselineOffsetFromTop", &M::firstBaseline>()
      .method<"_baselineOffsetFromBottom", &M::lastBaseline>()
      .method<"accessibilityLabel", &M::accessibilityLabel>()
      .register_class();
  set_painter(objc::class_for<Label>(), &M::paint, &M::reach);
}

}  // namespace wispen::uikit
