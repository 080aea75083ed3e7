// host/uikit/controls/text_field.cpp: UITextField: a line of text to write.

#include "host/uikit/controls/text_field.hpp"

#include <algorithm>

#include "host/uikit/controls/text_field_state.hpp"
#include "host/uikit/painting/painter.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

using graphics::TextLayout;

namespace {

constexpr double kBorderedInset = 7;
constexpr double kRadius = 5;
constexpr double kCaretWidth = TextFieldLine::kCaretWidth;

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

TextFieldState& TextField::field() const { return state<TextFieldState>(); }
TextField TextField::make() { return alloc().initialize<"initWithFrame:">(Rect{}); }
NSString TextField::text() const { return string_of(field().text); }
bool TextField::is_editing() const { return field().editing; }

void TextField::set_text(const NSString& text) const {
  TextFieldState& state = field();
  state.text = utf16(text);
  state.anchor = state.caret = state.text.size();
  invalidateIntrinsicContentSize();
  setNeedsDisplay();
}

void TextField::set_font(const graphics::Font& font) const {
  field().font = font_from(font);
  setNeedsDisplay();
}

UIFont TextFieldLine::font(const Self& self) {
  UIFont& font = self.field().font;
  if (!font) font = font_from(graphics::Font::system(graphics::Font::kSystemSize));
  return font;
}

std::u16string TextFieldLine::shown(const Self& self) {
  const TextFieldState& state = self.field();
  return state.secure ? std::u16string(state.text.size(), u'\u2022') : state.text;
}
std::shared_ptr<const TextLayout> TextFieldLine::set(const Self& self, const std::u16string& text) {
  graphics::TextAttributes attributes;
  attributes.font = font_of(font(self));
  // An empty line would have no height of its own.
  return graphics::layout_text(
      graphics::AttributedText(std::u16string_view(text.empty() ? u" " : text), attributes), constraints());
}
Rect TextFieldLine::area(const Self& self, const Rect& bounds) {
  return self.field().border_style == 0 ? bounds : bounds.inset(kBorderedInset, 0);
}
double TextFieldLine::x(const Self& self, const Rect& area, double width) {
  NSInteger side = self.field().alignment;
  if (side == 4) side = self.is_right_to_left() ? 2 : 0;
  if (width <= area.width()) {
    if (side == 1) return area.mid_x() - width / 2;
    if (side == 2) return area.max_x() - width;
    return area.min_x();
  }
  return area.min_x() - self.field().scrolled;
}

void TextFieldLine::keep_caret_in_sight(const Self& self) {
  TextFieldState& state = self.field();
  const Rect room = TextFieldLine::area(self, self.bounds());
  const auto line = set(self, shown(self));
  const double caret = line->caret(state.caret).min_x();
  const double most = std::max(0.0, line->size().width + kCaretWidth - room.width());
  if (caret < state.scrolled) state.scrolled = caret;
  if (caret + kCaretWidth > state.scrolled + room.width()) {
    state.scrolled = caret + kCaretWidth - room.width();
  }
  state.scrolled = std::clamp(state.scrolled, 0.0, most);
}

struct TextFieldMethods {
  using Self = TextField;

  static void setFont(const Self& self, const UIFont& font) {
    self.field().font = font;
    self.setNeedsDisplay();
  }
  static UIColor textColor(const Self& self) {
    return self.field().colour ? self.field().colour : UIColor::labelColor();
  }
  static void setTextColor(const Self& self, const UIColor& colour) {
    self.field().colour = colour;
    self.setNeedsDisplay();
  }

  static void paint_border(const Self& self, graphics::Canvas& canvas, const Rect& bounds) {
    const NSInteger style = self.field().border_style;
    if (style == 0) return;
    const auto path = graphics::Path::rounded_rect(bounds, style == 3 ? kRadius : 0);
    if (style == 3) canvas.fill(path, colour_of(UIColor::systemBackgroundColor()));
    const double width = 1 / canvas.scale();
    canvas.stroke(graphics::Path::rounded_rect(bounds.inset(width / 2, width / 2), style == 3 ? kRadius : 0),
                  colour_of(UIColor::systemGray4Color()), {.width = width});
  }

  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    TextFieldState& state = self.field();
    paint_border(self, canvas, bounds);
    const Rect area = TextFieldLine::area(self, bounds);
    const bool empty = state.text.empty();
    const std::u16string content =
        empty && state.placeholder ? utf16(state.placeholder) : TextFieldLine::shown(self);
    const auto line = TextFieldLine::set(self, content);
    const double width = content.empty() ? 0 : line->size().width;
    const Point origin{TextFieldLine::x(self, area, width),
                       round_to_pixel(area.mid_y() - line->size().height / 2, canvas.scale())};
    canvas.save();
    canvas.clip(area.inset(-kCaretWidth, 0));
    if (state.editing && state.anchor != state.caret && !empty) {
      const auto [low, high] = std::minmax(state.anchor, state.caret);
      for (const Rect& part : line->selection({low, high - low})) {
        canvas.fill(part.offset(origin.x, origin.y), colour_of(self.tintColor()).with_alpha(0.2));
      }
    }
    if (!content.empty()) {
      UIColor colour = empty ? UIColor::placeholderTextColor() : textColor(self);
      if (!self.isEnabled()) colour = UIColor::tertiaryLabelColor();
      canvas.draw(*line, origin, colour_of(colour));
    }
    if (state.editing && state.anchor == state.caret) {
      Rect caret = line->caret(empty ? 0 : state.caret).offset(origin.x, origin.y);
      if (empty) caret.origin.x = TextFieldLine::x(self, area, 0);
      canvas.fill(graphics::Path::rounded_rect(
                      {{caret.min_x(), caret.min_y()}, {kCaretWidth, caret.height()}}, kCaretWidth / 2),
                  colour_of(self.tintColor()));
    }
    canvas.restore();
  }

  static Size sizeThatFits(const Self& self, const Size&) {
    const TextFieldState& state = self.field();
    const auto content =
        state.text.empty() && state.placeholder ? utf16(state.placeholder) : TextFieldLine::shown(self);
    const auto line = TextFieldLine::set(self, content);
    const double inset = state.border_style == 0 ? 0 : kBorderedInset;
    const double height = line->size().height + (state.border_style == 0 ? 0 : 2 * inset);
    return {ceil_to_pixel(line->size().width + 2 * inset + kCaretWidth, display_settings().scale),
            ceil_to_pixel(height, display_settings().scale)};
  }
  static Size intrinsicContentSize(const Self& self) { return sizeThatFits(self, {}); }

  static bool canBecomeFocused(const Self& self) { return self.isEnabled(); }
  static void setText(const Self& self, const NSString& text) { self.set_text(text); }
  static NSString placeholder(const Self& self) { return self.field().placeholder; }
  static void setPlaceholder(const Self& self, const NSString& text) {
    self.field().placeholder = text;
    self.setNeedsDisplay();
  }
  static NSObject delegate(const Self& self) { return self.field().delegate.lock(); }
  static void setDelegate(const Self& self, const NSObject& delegate) { self.field().delegate = delegate; }
  template <auto Member>
  static auto get(const Self& self) {
    return self.field().*Member;
  }
  template <auto Member, class V>
  static void set(const Self& self, V value) {
    self.field().*Member = value;
    self.setNeedsDisplay();
  }
};

void TextField::define() {
  using M = TextFieldMethods;
  using E = TextEditing;
  using S = TextFieldState;
  objc::Class<TextField> field;
  field.state<TextFieldState>()
      .method<"text", &TextField::text>()
      .method<"setText:", &M::setText>()
      .method<"placeholder", &M::placeholder>()
      .method<"setPlaceholder:", &M::setPlaceholder>()
      .method<"font", &TextFieldLine::font>()
      .method<"setFont:", &M::setFont>()
      .method<"textColor", &M::textColor>()
      .method<"setTextColor:", &M::setTextColor>()
      .method<"textAlignment", &M::get<&S::alignment>>()
      .method<"setTextAlignment:", &M::set<&S::alignment, NSInteger>>()
      .method<"borderStyle", &M::get<&S::border_style>>()
      .method<"setBorderStyle:", &M::set<&S::border_style, NSInteger>>()
      .method<"keyboardType", &M::get<&S::keyboard_type>>()
      .method<"setKeyboardType:", &M::set<&S::keyboard_type, NSInteger>>()
      .method<"returnKeyType", &M::get<&S::return_key_type>>()
      .method<"setReturnKeyType:", &M::set<&S::return_key_type, NSInteger>>()
      .method<"autocapitalizationType", &M::get<&S::capitalization>>()
      .method<"setAutocapitalizationType:", &M::set<&S::capitalization, NSInteger>>()
      .method<"autocorrectionType", &M::get<&S::autocorrection>>()
      .method<"setAutocorrectionType:", &M::set<&S::autocorrection, NSInteger>>()
      .method<"clearButtonMode", &M::get<&S::clear_button_mode>>()
      .method<"setClearButtonMode:", &M::set<&S::clear_button_mode, NSInteger>>()
      .method<"isSecureTextEntry", &M::get<&S::secure>>()
      .method<"setSecureTextEntry:", &M::set<&S::secure, bool>>()
      .method<"clearsOnBeginEditing", &M::get<&S::clears_on_begin>>()
      .method<"setClearsOnBeginEditing:", &M::set<&S::clears_on_begin, bool>>()
      .method<"delegate", &M::delegate>()
      .method<"setDelegate:", &M::setDelegate>()
      .method<"isEditing", &TextField::is_editing>();
  field.method<"canBecomeFirstResponder", &E::canBecomeFirstResponder>()
      .method<"canResignFirstResponder", &E::canResignFirstResponder>()
      .method<"becomeFirstResponder", &E::becomeFirstResponder>()
      .method<"resignFirstResponder", &E::resignFirstResponder>()
      .method<"touchesBegan:withEvent:", &E::touchesBegan>()
      .method<"touchesMoved:withEvent:", &E::touchesMoved>()
      .method<"touchesEnded:withEvent:", &E::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &E::touchesEnded>()
      .method<"insertText:", &E::insertText>()
      .method<"deleteBackward", &E::deleteBackward>()
      .method<"hasText", &E::hasText>()
      .method<"selectAll:", &E::selectAll>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"_handleKey:", &E::handleKey>()
      .method<"canBecomeFocused", &M::canBecomeFocused>()
      .register_class();
  set_painter(objc::class_for<TextField>(), &M::paint);
}

}  // namespace wispen::uikit
