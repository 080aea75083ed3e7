// host/uikit/controls/text_field.cpp: UITextField: a line of text to write.

#include "host/uikit/controls/text_field.hpp"

#include <algorithm>

#include "host/uikit/painting/painter.hpp"
#include "host/uikit/session.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"

namespace wispen::uikit {

using graphics::TextLayout;
using graphics::TextRange;

namespace {

constexpr double kBorderedInset = 7;
constexpr double kRadius = 5;
constexpr double kCaretWidth = 2;

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

bool is_low_surrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

struct TextFieldState {
  std::u16string text;
  NSString placeholder;
  UIFont font;
  UIColor colour;
  NSInteger alignment = 4;
  NSInteger border_style = 0;  // 0 none, 1 line, 2 bezel, 3 rounded
  NSInteger keyboard_type = 0;
  NSInteger return_key_type = 0;
  NSInteger capitalization = 2;  // 0 none, 1 words, 2 sentences, 3 all
  NSInteger autocorrection = 0;
  NSInteger clear_button_mode = 0;
  bool secure = false;
  bool clears_on_begin = false;
  bool shrinks = false;
  objc::Weak<NSObject> delegate;
  std::size_t anchor = 0;  // the selection's fixed end
  std::size_t caret = 0;
  double scrolled = 0;  // points of the text that are out of sight on the left
  bool editing = false;
};

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

struct TextFieldMethods {
  using Self = TextField;

  static UIFont font(const Self& self) {
    UIFont& font = self.field().font;
    if (!font) font = font_from(graphics::Font::system(graphics::Font::kSystemSize));
    return font;
  }
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

  /// What is seen in place of the text.
  static std::u16string shown(const Self& self) {
    const TextFieldState& state = self.field();
    return state.secure ? std::u16string(state.text.size(), u'\u2022') : state.text;
  }
  static graphics::TextConstraints constraints() {
    graphics::TextConstraints one_line;
    one_line.maximum_lines = 1;
    one_line.line_break = graphics::LineBreak::Clip;
    one_line.alignment = graphics::TextAlignment::Left;
    return one_line;
  }
  static std::shared_ptr<const TextLayout> set_line(const Self& self, const std::u16string& text) {
    graphics::TextAttributes attributes;
    attributes.font = font_of(font(self));
    // An empty line would have no height of its own.
    return graphics::layout_text(
        graphics::AttributedText(std::u16string_view(text.empty() ? u" " : text), attributes), constraints());
  }
  static Rect text_area(const Self& self, const Rect& bounds) {
    return self.field().border_style == 0 ? bounds : bounds.inset(kBorderedInset, 0);
  }
  static double text_x(const Self& self, const Rect& area, double width) {
    NSInteger side = self.field().alignment;
    if (side == 4) side = self.is_right_to_left() ? 2 : 0;
    if (width <= area.width()) {
      if (side == 1) return area.mid_x() - width / 2;
      if (side == 2) return area.max_x() - width;
      return area.min_x();
    }
    return area.min_x() - self.field().scrolled;
  }

  static void keep_caret_in_sight(const Self& self) {
    TextFieldState& state = self.field();
    const Rect area = text_area(self, self.bounds());
    const auto line = set_line(self, shown(self));
    const double caret = line->caret(state.caret).min_x();
    const double most = std::max(0.0, line->size().width + kCaretWidth - area.width());
    if (caret < state.scrolled) state.scrolled = caret;
    if (caret + kCaretWidth > state.scrolled + area.width()) {
      state.scrolled = caret + kCaretWidth - area.width();
    }
    state.scrolled = std::clamp(state.scrolled, 0.0, most);
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
    const Rect area = text_area(self, bounds);
    const bool empty = state.text.empty();
    const std::u16string content = empty && state.placeholder ? utf16(state.placeholder) : shown(self);
    const auto line = set_line(self, content);
    const double width = content.empty() ? 0 : line->size().width;
    const Point origin{text_x(self, area, width),
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
      if (empty) caret.origin.x = text_x(self, area, 0);
      canvas.fill(graphics::Path::rounded_rect(
                      {{caret.min_x(), caret.min_y()}, {kCaretWidth, caret.height()}}, kCaretWidth / 2),
                  colour_of(self.tintColor()));
    }
    canvas.restore();
  }

  static Size sizeThatFits(const Self& self, const Size&) {
    const TextFieldState& state = self.field();
    const auto content = state.text.empty() && state.placeholder ? utf16(state.placeholder) : shown(self);
    const auto line = set_line(self, content);
    const double inset = state.border_style == 0 ? 0 : kBorderedInset;
    const double height = line->size().height + (state.border_style == 0 ? 0 : 2 * inset);
    return {ceil_to_pixel(line->size().width + 2 * inset + kCaretWidth, display_settings().scale),
            ceil_to_pixel(height, display_settings().scale)};
  }
  static Size intrinsicContentSize(const Self& self) { return sizeThatFits(self, {}); }

  static bool ask(const Self& self, auto selector_constant) {
    constexpr auto kSelector = decltype(selector_constant)::kName;
    const NSObject delegate = self.field().delegate.lock();
    return !objc::responds_to(delegate, objc::selector<kSelector>()) ||
           objc::send<kSelector, bool>(delegate, self);
  }
  template <objc::FixedString Name>
  struct Named {
    static constexpr auto kName = Name;
  };

  static bool canBecomeFirstResponder(const Self& self) {
    return self.isEnabled() && ask(self, Named<"textFieldShouldBeginEditing:">());
  }
  static bool canResignFirstResponder(const Self& self) {
    return ask(self, Named<"textFieldShouldEndEditing:">());
  }
  static bool becomeFirstResponder(const Self& self) {
    if (self.field().editing) return true;
    if (!objc::send_super<"becomeFirstResponder", bool>(self, objc::class_for<Control>())) return false;
    TextFieldState& state = self.field();
    state.editing = true;
    if (state.clears_on_begin) state.text.clear();
    state.anchor = state.caret = state.text.size();
    keep_caret_in_sight(self);
    self.setNeedsDisplay();
    objc::send<"textFieldDidBeginEditing:">(answering<"textFieldDidBeginEditing:">(self), self);
    self.sendActions(control_event::kEditingDidBegin);
    return true;
  }
  static bool resignFirstResponder(const Self& self) {
    const Self kept = self;
    if (!objc::send_super<"resignFirstResponder", bool>(kept, objc::class_for<Control>())) return false;
    if (!std::exchange(kept.field().editing, false)) return true;
    kept.field().scrolled = 0;
    kept.setNeedsDisplay();
    objc::send<"textFieldDidEndEditing:">(answering<"textFieldDidEndEditing:">(kept), kept);
    kept.sendActions(control_event::kEditingDidEnd);
    return true;
  }
  template <objc::FixedString Sel>
  static NSObject answering(const Self& self) {
    const NSObject delegate = self.field().delegate.lock();
    return objc::responds_to(delegate, objc::selector<Sel>()) ? delegate : NSObject();
  }

  // Touches place the caret; a second tap takes it all.
  static std::size_t index_at(const Self& self, const Touch& touch) {
    const Rect area = text_area(self, self.bounds());
    const auto line = set_line(self, shown(self));
    const double x = touch.locationInView(self).x - text_x(self, area, line->size().width);
    return std::min(line->index_at({x, line->size().height / 2}), self.field().text.size());
  }
  static void touchesBegan(const Self& self, const NSObject& touches, const Event&) {
    if (!self.isEnabled()) return;
    const Touch touch = touch_of(touches);
    if (!objc::send<"becomeFirstResponder", bool>(self)) return;
    TextFieldState& state = self.field();
    state.caret = index_at(self, touch);
    state.anchor = touch.parts().tap_count > 1 ? 0 : state.caret;
    if (touch.parts().tap_count > 1) state.caret = state.text.size();
    self.setNeedsDisplay();
  }
  static void touchesMoved(const Self& self, const NSObject& touches, const Event&) {
    if (!self.field().editing) return;
    self.field().caret = index_at(self, touch_of(touches));
    keep_caret_in_sight(self);
    self.setNeedsDisplay();
  }
  static void touchesEnded(const Self&, const NSObject&, const Event&) {}

  static std::size_t step(const std::u16string& text, std::size_t from, int direction) {
    if (direction < 0) {
      if (from == 0) return 0;
      --from;
      return from > 0 && is_low_surrogate(text[from]) ? from - 1 : from;
    }
    if (from >= text.size()) return text.size();
    ++from;
    return from < text.size() && is_low_surrogate(text[from]) ? from + 1 : from;
  }
  static void move_caret(const Self& self, std::size_t to, bool extend) {
    TextFieldState& state = self.field();
    state.caret = to;
    if (!extend) state.anchor = to;
    keep_caret_in_sight(self);
    self.setNeedsDisplay();
  }

  static bool handleKey(const Self& self, const Key& key) {
    TextFieldState& state = self.field();
    if (!state.editing) {
      if (!key.is_space() && key.code() != KeyCode::Return) return false;
      return objc::send<"becomeFirstResponder", bool>(self);
    }
    const bool selected = state.anchor != state.caret;
    const auto [low, high] = std::minmax(state.anchor, state.caret);
    switch (key.code()) {
      case KeyCode::Text:
        if (key.key().command) {
          if (key.key().text != "a") return false;
          state.anchor = 0;
          move_caret(self, state.text.size(), true);
          return true;
        }
        self.insert(utf16(NSString(key.key().text.c_str())));
        return true;
      case KeyCode::Backspace:
        if (!selected) state.anchor = step(state.text, state.caret, -1);
        self.insert(u"");
        return true;
      case KeyCode::Delete:
        if (!selected) state.anchor = step(state.text, state.caret, 1);
        self.insert(u"");
        return true;
      case KeyCode::Left:
      case KeyCode::Right: {
        const int direction = key.code() == KeyCode::Left ? -1 : 1;
        const bool collapses = selected && !key.key().shift;
        const std::size_t edge = direction < 0 ? low : high;
        move_caret(self, collapses ? edge : step(state.text, state.caret, direction), key.key().shift);
        return true;
      }
      case KeyCode::Home:
      case KeyCode::Up:
        move_caret(self, 0, key.key().shift);
        return true;
      case KeyCode::End:
      case KeyCode::Down:
        move_caret(self, state.text.size(), key.key().shift);
        return true;
      case KeyCode::Return:
        return press_return(self);
      case KeyCode::Escape:
        // An alert around it is cancelled by the same key.
        objc::send<"resignFirstResponder", bool>(self);
        return false;
      default:
        return false;
    }
  }
  static bool press_return(const Self& self) {
    const Self kept = self;
    if (!ask(kept, Named<"textFieldShouldReturn:">())) return true;
    kept.sendActions(control_event::kEditingDidEndOnExit);
    kept.sendActions(control_event::kPrimaryActionTriggered);
    objc::send<"resignFirstResponder", bool>(kept);
    return false;  // and the default answer of an alert is given
  }

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
  static void insertText(const Self& self, const NSString& text) { self.insert(utf16(text)); }
  static void deleteBackward(const Self& self) {
    TextFieldState& state = self.field();
    if (state.anchor == state.caret) state.anchor = step(state.text, state.caret, -1);
    self.insert(u"");
  }
  static bool hasText(const Self& self) { return !self.field().text.empty(); }
  static bool canBecomeFocused(const Self& self) { return self.isEnabled(); }
  static void selectAll(const Self& self, const NSObject&) {
    self.field().anchor = 0;
    move_caret(self, self.field().text.size(), true);
  }
};

bool TextField::insert(const std::u16string& added) const {
  TextFieldState& state = field();
  std::u16string clean;
  for (const char16_t unit : added) {
    if (unit != u'\n' && unit != u'\r') clean.push_back(unit);  // one line
  }
  const auto [low, high] = std::minmax(state.anchor, state.caret);
  const NSObject delegate = state.delegate.lock();
  constexpr auto kMayChange = objc::FixedString{"textField:shouldChangeCharactersInRange:replacementString:"};
  if (objc::responds_to(delegate, objc::selector<kMayChange>()) &&
      !objc::send<kMayChange, bool>(delegate, *this, NSRange{low, high - low}, string_of(clean))) {
    return false;
  }
  state.text.replace(low, high - low, clean);
  TextFieldMethods::move_caret(*this, low + clean.size(), false);
  sendActions(control_event::kEditingChanged);
  return true;
}

void TextField::define() {
  using M = TextFieldMethods;
  using S = TextFieldState;
  objc::Class<TextField> field;
  field.state<TextFieldState>()
      .method<"text", &TextField::text>()
      .method<"setText:", &M::setText>()
      .method<"placeholder", &M::placeholder>()
      .method<"setPlaceholder:", &M::setPlaceholder>()
      .method<"font", &M::font>()
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
  field.method<"canBecomeFirstResponder", &M::canBecomeFirstResponder>()
      .method<"canResignFirstResponder", &M::canResignFirstResponder>()
      .method<"becomeFirstResponder", &M::becomeFirstResponder>()
      .method<"resignFirstResponder", &M::resignFirstResponder>()
      .method<"touchesBegan:withEvent:", &M::touchesBegan>()
      .method<"touchesMoved:withEvent:", &M::touchesMoved>()
      .method<"touchesEnded:withEvent:", &M::touchesEnded>()
      .method<"touchesCancelled:withEvent:", &M::touchesEnded>()
      .method<"insertText:", &M::insertText>()
      .method<"deleteBackward", &M::deleteBackward>()
      .method<"hasText", &M::hasText>()
      .method<"selectAll:", &M::selectAll>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"_handleKey:", &M::handleKey>()
      .method<"canBecomeFocused", &M::canBecomeFocused>()
      .register_class();
  set_painter(objc::class_for<TextField>(), &M::paint);
}

}  // namespace wispen::uikit
