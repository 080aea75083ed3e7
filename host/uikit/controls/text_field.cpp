// host/uikit/controls/text_field.cpp: UITextField: a line of text to write.

#include "host/uikit/controls/text_field.hpp"

#include <algorithm>

#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

using graphics::TextLayout;

namespace {

constexpr double kBorderedInset = 7;
constexpr double kRadius = 5;
constexpr double kCaretWidth = 2;

graphics::TextConstraints constraints() {
  graphics::TextConstraints one_line;
  one_line.maximum_lines = 1;
  one_line.line_break = graphics::LineBreak::Clip;
  one_line.alignment = graphics::TextAlignment::Left;
  return one_line;
}
}  // namespace

std::u16string utf16(const NSString& text) {
  std::u16string units(text ? text.length() : 0, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i] = objc::send<"characterAtIndex:", std::uint16_t>(text, NSUInteger{i});
  }
  return units;
}

NSString string_of(const std::u16string& units) {
  return objc::send<"stringWithCharacters:length:", NSString>(objc::class_for<NSString>(), units.data(),
                                                              NSUInteger{units.size()});
}

void TextField::setFont(const UIFont& font) {
  font_ = font;
  self().setNeedsDisplay();
}

UIColor TextField::textColor() { return colour_ ? colour_ : UIColor::labelColor(); }

void TextField::setTextColor(const UIColor& colour) {
  colour_ = colour;
  self().setNeedsDisplay();
}

void TextField::paint_border(graphics::Canvas& canvas, const Rect& bounds) {
  if (border_style_ == UITextBorderStyle::None) return;
  const bool rounded = border_style_ == UITextBorderStyle::RoundedRect;
  const auto path = graphics::Path::rounded_rect(bounds, rounded ? kRadius : 0);
  if (rounded) canvas.fill(path, colour_of(UIColor::systemBackgroundColor()));
  const double width = 1 / canvas.scale();
  canvas.stroke(graphics::Path::rounded_rect(bounds.inset(width / 2, width / 2), rounded ? kRadius : 0),
                colour_of(UIColor::systemGray4Color()), {.width = width});
}

void TextField::paint(graphics::Canvas& canvas, const Rect& bounds) {
  paint_border(canvas, bounds);
  const Rect area = text_area(bounds);
  const bool empty = text_.empty();
  const std::u16string content = empty && placeholder_ ? utf16(placeholder_) : shown_text();
  const auto line = line_with(content);
  const double width = content.empty() ? 0 : line->size().width;
  const Point origin{line_start(area, width),
                     round_to_pixel(area.mid_y() - line->size().height / 2, canvas.scale())};
  canvas.save();
  canvas.clip(area.inset(-kCaretWidth, 0));
  if (editing_ && anchor_ != caret_ && !empty) {
    const auto [low, high] = std::minmax(anchor_, caret_);
    for (const Rect& part : line->selection({low, high - low})) {
      canvas.fill(part.offset(origin.x, origin.y), colour_of(self().tintColor()).with_alpha(0.2));
    }
  }
  if (!content.empty()) {
    UIColor colour = empty ? UIColor::placeholderTextColor() : textColor();
    if (!self().isEnabled()) colour = UIColor::tertiaryLabelColor();
    canvas.draw(*line, origin, colour_of(colour));
  }
  if (editing_ && anchor_ == caret_) {
    Rect caret = line->caret(empty ? 0 : caret_).offset(origin.x, origin.y);
    if (empty) caret.origin.x = line_start(area, 0);
    canvas.fill(graphics::Path::rounded_rect({{caret.min_x(), caret.min_y()}, {kCaretWidth, caret.height()}},
                                             kCaretWidth / 2),
                colour_of(self().tintColor()));
  }
  canvas.restore();
}

Size TextField::sizeThatFits(const Size&) {
  const auto content = text_.empty() && placeholder_ ? utf16(placeholder_) : shown_text();
  const auto line = line_with(content);
  const double inset = border_style_ == UITextBorderStyle::None ? 0 : kBorderedInset;
  const double height = line->size().height + (border_style_ == UITextBorderStyle::None ? 0 : 2 * inset);
  return {ceil_to_pixel(line->size().width + 2 * inset + kCaretWidth, display_settings().scale),
          ceil_to_pixel(height, display_settings().scale)};
}

void TextField::setPlaceholder(const NSString& text) {
  placeholder_ = text;
  self().setNeedsDisplay();
}

UIFont TextField::font() {
  if (!font_) font_ = font_from(graphics::Font::system(graphics::Font::kSystemSize));
  return font_;
}

std::u16string TextField::shown_text() { return secure_ ? std::u16string(text_.size(), u'\u2022') : text_; }

std::shared_ptr<const TextLayout> TextField::line_with(const std::u16string& text) {
  graphics::TextAttributes attributes;
  attributes.font = font_of(font());
  // An empty line would have no height of its own.
  return graphics::layout_text(
      graphics::AttributedText(std::u16string_view(text.empty() ? u" " : text), attributes), constraints());
}

Rect TextField::text_area(const Rect& bounds) {
  return border_style_ == UITextBorderStyle::None ? bounds : bounds.inset(kBorderedInset, 0);
}

double TextField::line_start(const Rect& area, double width) {
  NSTextAlignment side = alignment_;
  if (side == NSTextAlignment::Natural)
    side = is_right_to_left(self()) ? NSTextAlignment::Right : NSTextAlignment::Left;
  if (width <= area.width()) {
    if (side == NSTextAlignment::Center) return area.mid_x() - width / 2;
    if (side == NSTextAlignment::Right) return area.max_x() - width;
    return area.min_x();
  }
  return area.min_x() - scrolled_;
}

void TextField::keep_caret_in_sight() {
  const Rect room = text_area(self().bounds());
  const auto line = line_with(shown_text());
  const double caret = line->caret(caret_).min_x();
  const double most = std::max(0.0, line->size().width + kCaretWidth - room.width());
  if (caret < scrolled_) scrolled_ = caret;
  if (caret + kCaretWidth > scrolled_ + room.width()) {
    scrolled_ = caret + kCaretWidth - room.width();
  }
  scrolled_ = std::clamp(scrolled_, 0.0, most);
}

void TextField::setText(const NSString& text) {
  text_ = utf16(text);
  anchor_ = caret_ = text_.size();
  self().invalidateIntrinsicContentSize();
  self().setNeedsDisplay();
}

void define_text_field() {
  auto field = objc::Class<UITextField>::implemented_by<TextField>();
  field.method<"text", &TextField::text>()
      .method<"setText:", &TextField::setText>()
      .getter<"placeholder", &TextField::placeholder_>()
      .method<"setPlaceholder:", &TextField::setPlaceholder>()
      .method<"font", &TextField::font>()
      .method<"setFont:", &TextField::setFont>()
      .method<"textColor", &TextField::textColor>()
      .method<"setTextColor:", &TextField::setTextColor>()
      .getter<"textAlignment", &TextField::alignment_>()
      .method<"setTextAlignment:", &TextField::set<&TextField::alignment_, NSTextAlignment>>()
      .getter<"borderStyle", &TextField::border_style_>()
      .method<"setBorderStyle:", &TextField::set<&TextField::border_style_, UITextBorderStyle>>()
      .getter<"keyboardType", &TextField::keyboard_type_>()
      .method<"setKeyboardType:", &TextField::set<&TextField::keyboard_type_, UIKeyboardType>>()
      .getter<"returnKeyType", &TextField::return_key_type_>()
      .method<"setReturnKeyType:", &TextField::set<&TextField::return_key_type_, UIReturnKeyType>>()
      .getter<"autocapitalizationType", &TextField::capitalization_>()
      .method<"setAutocapitalizationType:",
              &TextField::set<&TextField::capitalization_, UITextAutocapitalizationType>>()
      .getter<"autocorrectionType", &TextField::autocorrection_>()
      .method<"setAutocorrectionType:",
              &TextField::set<&TextField::autocorrection_, UITextAutocorrectionType>>()
      .getter<"clearButtonMode", &TextField::clear_button_mode_>()
      .method<"setClearButtonMode:", &TextField::set<&TextField::clear_button_mode_, UITextFieldViewMode>>()
      .getter<"isSecureTextEntry", &TextField::secure_>()
      .method<"setSecureTextEntry:", &TextField::set<&TextField::secure_, bool>>()
      .getter<"clearsOnBeginEditing", &TextField::clears_on_begin_>()
      .method<"setClearsOnBeginEditing:", &TextField::set<&TextField::clears_on_begin_, bool>>()
      .method<"delegate", &TextField::delegate>()
      .method<"setDelegate:", &TextField::setDelegate>()
      .getter<"isEditing", &TextField::editing_>();
  field.method<"canBecomeFirstResponder", &TextField::canBecomeFirstResponder>()
      .method<"canResignFirstResponder", &TextField::canResignFirstResponder>()
      .method<"becomeFirstResponder", &TextField::becomeFirstResponder>()
      .method<"resignFirstResponder", &TextField::resignFirstResponder>()
      .method<"touchesBegan:withEvent:", &TextField::touchesBegan>()
      .method<"touchesMoved:withEvent:", &TextField::touchesMoved>()
      .method<"touchesEnded:withEvent:", &TextField::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &TextField::touchesEnded>()
      .method<"insertText:", &TextField::insertText>()
      .method<"deleteBackward", &TextField::deleteBackward>()
      .method<"hasText", &TextField::hasText>()
      .method<"selectAll:", &TextField::selectAll>()
      .method<"sizeThatFits:", &TextField::sizeThatFits>()
      .method<"intrinsicContentSize", &TextField::intrinsicContentSize>()
      .method<hooks::kHandleKey, &TextField::handleKey>()
      .method<"canBecomeFocused", &TextField::canBecomeFocused>()
      .register_class();
  set_painter<&TextField::paint>();
}

}  // namespace wispen::uikit
