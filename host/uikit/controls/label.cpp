// host/uikit/controls/label.cpp: UILabel: text that is read only.

#include "host/uikit/controls/label.hpp"

#include <algorithm>
#include <utility>

#include "host/graphics/text_layout.hpp"
#include "host/uikit/controls/controls.hpp"
#include "host/uikit/values/attributed_text.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

using graphics::TextLayout;

namespace {

class Label : public objc::Implementation<Label, UILabel> {
 public:
  static UILabel initWithFrame(objc::Allocated<UILabel> self, const Rect& frame) {
    UILabel label = super_init<"initWithFrame:">(std::move(self), frame);
    if (label) label.setUserInteractionEnabled(false);
    return label;
  }
  /// A width of 0 is no bound.
  Size measure(double width) {
    if (!text() || text().length() == 0) return {0, 0};
    Size room{graphics::kUnbounded, graphics::kUnbounded};
    if (width > 0 && !shrinks_) room.width = width;  // what shrinks to fit does not ask to
    return set_in(room)->size_on_grid(display_settings().scale);
  }
  Size sizeThatFits(const Size& size) {
    const bool one_line = lines_ == 1;
    return measure(one_line ? 0 : size.width);
  }
  Size intrinsicContentSize() { return measure(preferred_width_); }
  bool heightDependsOnWidth() { return lines_ != 1 && preferred_width_ <= 0; }
  double firstBaseline() {
    const auto text = set_in({graphics::kUnbounded, graphics::kUnbounded});
    return text->first_baseline();
  }
  double lastBaseline() {
    const auto text = set_in({graphics::kUnbounded, graphics::kUnbounded});
    return text->size().height - text->last_baseline();
  }
  void setLineBreakMode(NSLineBreakMode mode) {
    if (mode < NSLineBreakMode::ByWordWrapping || mode > NSLineBreakMode::ByTruncatingMiddle) return;
    line_break_ = mode;
    content_changed();
  }
  void setHighlightedTextColor(const UIColor& colour) {
    highlighted_colour_ = colour;
    self().setNeedsDisplay();
  }
  void setAdjustsFontSize(bool adjusts) {
    shrinks_ = adjusts;
    content_changed();
  }
  void setMinimumScale(double scale) {
    minimum_scale_ = std::clamp(scale, 0.0, 1.0);
    content_changed();
  }
  void setPreferredWidth(double width) {
    preferred_width_ = width;
    content_changed();
  }
  NSString accessibilityLabel() {
    const NSString own = super<"accessibilityLabel", NSString>();
    return own ? own : text();
  }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    if (!text() || bounds.empty()) return;
    const auto text = set_in(bounds.size);
    UIColor colour = textColor();
    if (highlighted_ && highlighted_colour_) colour = highlighted_colour_;
    if (!enabled_) colour = UIColor::tertiaryLabelColor();
    const Size size = text->size();
    // A line that is higher than its label is cut off, as on the platform; the letters' own reach is not.
    const bool cut = size.height > bounds.height() || size.width > bounds.width();
    if (cut) {
      canvas.save();
      canvas.clip(reach(bounds));
    }
    canvas.draw(*text, text_origin(*text, bounds), colour_of(colour));
    if (cut) canvas.restore();
  }
  /// Slanted letters and marks may stand a little out of the line's box.
  Rect reach(const Rect& bounds) { return bounds.inset(-2, -2); }
  void content_changed() {
    self().invalidateIntrinsicContentSize();
    self().setNeedsDisplay();
  }
  NSString text() { return attributed_ ? attributed_.string() : text_; }
  void setText(const NSString& text) {
    if (!attributed_ && text && text_.isEqualToString(text)) return;
    text_ = text.copy();
    attributed_ = NSAttributedString();
    content_changed();
  }
  void setAttributedText(const NSAttributedString& text) {
    attributed_ = text ? text.copy() : text;
    if (!text) text_ = NSString();
    content_changed();
  }
  UIFont font() {
    if (!font_) font_ = font_from(graphics::Font::system(graphics::Font::kSystemSize));
    return font_;
  }
  void setFont(const UIFont& font) {
    // A control that sets its labels whenever it is laid out must not have itself laid out again by that.
    const bool same = font_ && font && font_of(font_) == font_of(font);
    font_ = font;
    if (!same) content_changed();
  }
  UIColor textColor() {
    if (!colour_) colour_ = UIColor::labelColor();
    return colour_;
  }
  void setTextColor(const UIColor& colour) {
    if (colour_ == colour) return;
    colour_ = colour;
    self().setNeedsDisplay();
  }
  void setTextAlignment(NSTextAlignment alignment) {
    const bool known = alignment >= NSTextAlignment::Left && alignment <= NSTextAlignment::Natural;
    if (!known) alignment = NSTextAlignment::Natural;
    if (std::exchange(alignment_, alignment) == alignment) return;
    self().setNeedsDisplay();
  }
  void setNumberOfLines(NSInteger lines) {
    lines = std::max<NSInteger>(lines, 0);
    if (std::exchange(lines_, lines) == lines) return;
    content_changed();
  }
  void setHighlighted(bool highlighted) {
    if (std::exchange(highlighted_, highlighted) == highlighted) return;
    self().setNeedsDisplay();
  }
  void setEnabled(bool enabled) {
    if (std::exchange(enabled_, enabled) == enabled) return;
    self().setNeedsDisplay();
  }
  /// Set in that much room; infinite where it is not bounded.
  std::shared_ptr<const TextLayout> set_in(Size room) {
    graphics::TextAttributes attributes;
    attributes.font = font_of(font());
    const graphics::AttributedText text =
        attributed_ ? attributed_text_of(attributed_, attributes)
                    : graphics::AttributedText(text_ ? text_.utf8() : "", attributes);
    graphics::TextConstraints constraints;
    constraints.width = room.width;
    constraints.height = room.height;
    constraints.maximum_lines = static_cast<int>(lines_);
    constraints.alignment = static_cast<graphics::TextAlignment>(alignment_);
    constraints.line_break = static_cast<graphics::LineBreak>(line_break_);
    if (attributed_) {
      if (const auto look = paragraph_look_of(attributed_)) {
        constraints.alignment = static_cast<graphics::TextAlignment>(look->alignment);
        constraints.line_spacing = look->line_spacing;
      }
    }
    if (constraints.alignment == graphics::TextAlignment::Natural) {
      // The platform goes by the direction of the interface, not by the letters.
      constraints.alignment =
          is_right_to_left(self()) ? graphics::TextAlignment::Right : graphics::TextAlignment::Left;
    }
    if (shrinks_ && room.width < graphics::kUnbounded) {
      return graphics::fit_text(text, constraints, minimum_scale_ > 0 ? minimum_scale_ : 0.01);
    }
    return graphics::layout_text(text, constraints);
  }
  /// Where the text lies in the bounds.
  Point text_origin(const TextLayout& text, const Rect& bounds) {
    const double height = text.size().height;
    return {bounds.min_x(),
            bounds.min_y() + round_to_pixel((bounds.height() - height) / 2, display_settings().scale)};
  }

 private:
  friend void wispen::uikit::define_label();

  NSString text_;
  NSAttributedString attributed_;  // in place of the text when it was set last
  UIFont font_;
  UIColor colour_;
  UIColor highlighted_colour_;
  bool highlighted_ = false;
  bool enabled_ = true;
  NSTextAlignment alignment_ = NSTextAlignment::Natural;
  NSInteger lines_ = 1;
  NSLineBreakMode line_break_ = NSLineBreakMode::ByTruncatingTail;
  bool shrinks_ = false;
  double minimum_scale_ = 0;
  double preferred_width_ = 0;
};

}  // namespace

std::shared_ptr<const TextLayout> text_of_label(const UILabel& label, Size room) {
  return Label::of(label).set_in(room);
}

void define_label() {
  objc::Class<UILabel>::implemented_by<Label>()
      .initializer<"initWithFrame:", &Label::initWithFrame>()
      .method<"text", &Label::text>()
      .method<"setText:", &Label::setText>()
      .getter<"attributedText", &Label::attributed_>()
      .method<"setAttributedText:", &Label::setAttributedText>()
      .method<"font", &Label::font>()
      .method<"setFont:", &Label::setFont>()
      .method<"textColor", &Label::textColor>()
      .method<"setTextColor:", &Label::setTextColor>()
      .getter<"textAlignment", &Label::alignment_>()
      .method<"setTextAlignment:", &Label::setTextAlignment>()
      .getter<"numberOfLines", &Label::lines_>()
      .method<"setNumberOfLines:", &Label::setNumberOfLines>()
      .getter<"lineBreakMode", &Label::line_break_>()
      .method<"setLineBreakMode:", &Label::setLineBreakMode>()
      .getter<"isHighlighted", &Label::highlighted_>()
      .method<"setHighlighted:", &Label::setHighlighted>()
      .getter<"highlightedTextColor", &Label::highlighted_colour_>()
      .method<"setHighlightedTextColor:", &Label::setHighlightedTextColor>()
      .getter<"isEnabled", &Label::enabled_>()
      .method<"setEnabled:", &Label::setEnabled>()
      .getter<"adjustsFontSizeToFitWidth", &Label::shrinks_>()
      .method<"setAdjustsFontSizeToFitWidth:", &Label::setAdjustsFontSize>()
      .getter<"minimumScaleFactor", &Label::minimum_scale_>()
      .method<"setMinimumScaleFactor:", &Label::setMinimumScale>()
      .getter<"preferredMaxLayoutWidth", &Label::preferred_width_>()
      .method<"setPreferredMaxLayoutWidth:", &Label::setPreferredWidth>()
      .method<"sizeThatFits:", &Label::sizeThatFits>()
      .method<"intrinsicContentSize", &Label::intrinsicContentSize>()
      .method<hooks::kHeightDependsOnWidth, &Label::heightDependsOnWidth>()
      .method<hooks::kFirstBaseline, &Label::firstBaseline>()
      .method<hooks::kLastBaseline, &Label::lastBaseline>()
      .method<"accessibilityLabel", &Label::accessibilityLabel>()
      .register_class();
  set_painter<&Label::paint, &Label::reach>();
}

}  // namespace wispen::uikit
