// host/uikit/controls/text_editing.cpp: writing in a text field: its caret, its keys, and who is asked and
// told.

#include <algorithm>
#include <utility>

#include "host/uikit/controls/text_field_state.hpp"

namespace wispen::uikit {

namespace {

using Self = TextField;

bool is_low_surrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Yes where the delegate has no such method.
bool ask(const Self& self, auto selector_constant) {
  constexpr auto kSelector = decltype(selector_constant)::kName;
  const NSObject delegate = self.field().delegate.lock();
  return !objc::responds_to(delegate, objc::selector<kSelector>()) ||
         objc::send<kSelector, bool>(delegate, self);
}
template <objc::FixedString Name>
struct Named {
  static constexpr auto kName = Name;
};

template <objc::FixedString Sel>
NSObject answering(const Self& self) {
  const NSObject delegate = self.field().delegate.lock();
  return objc::responds_to(delegate, objc::selector<Sel>()) ? delegate : NSObject();
}

std::size_t index_at(const Self& self, const Touch& touch) {
  const Rect area = TextFieldLine::area(self, self.bounds());
  const auto line = TextFieldLine::set(self, TextFieldLine::shown(self));
  const double x = touch.locationInView(self).x - TextFieldLine::x(self, area, line->size().width);
  return std::min(line->index_at({x, line->size().height / 2}), self.field().text.size());
}
std::size_t step(const std::u16string& text, std::size_t from, int direction) {
  if (direction < 0) {
    if (from == 0) return 0;
    --from;
    return from > 0 && is_low_surrogate(text[from]) ? from - 1 : from;
  }
  if (from >= text.size()) return text.size();
  ++from;
  return from < text.size() && is_low_surrogate(text[from]) ? from + 1 : from;
}
bool press_return(const Self& self) {
  const Self kept = self;
  if (!ask(kept, Named<"textFieldShouldReturn:">())) return true;
  kept.sendActions(control_event::kEditingDidEndOnExit);
  kept.sendActions(control_event::kPrimaryActionTriggered);
  objc::send<"resignFirstResponder", bool>(kept);
  return false;  // and the default answer of an alert is given
}

}  // namespace

bool TextEditing::canBecomeFirstResponder(const Self& self) {
  return self.isEnabled() && ask(self, Named<"textFieldShouldBeginEditing:">());
}
bool TextEditing::canResignFirstResponder(const Self& self) {
  return ask(self, Named<"textFieldShouldEndEditing:">());
}
bool TextEditing::becomeFirstResponder(const Self& self) {
  if (self.field().editing) return true;
  if (!objc::send_super<"becomeFirstResponder", bool>(self, objc::class_for<Control>())) return false;
  TextFieldState& state = self.field();
  state.editing = true;
  if (state.clears_on_begin) state.text.clear();
  state.anchor = state.caret = state.text.size();
  TextFieldLine::keep_caret_in_sight(self);
  self.setNeedsDisplay();
  objc::send<"textFieldDidBeginEditing:">(answering<"textFieldDidBeginEditing:">(self), self);
  self.sendActions(control_event::kEditingDidBegin);
  return true;
}
bool TextEditing::resignFirstResponder(const Self& self) {
  const Self kept = self;
  if (!objc::send_super<"resignFirstResponder", bool>(kept, objc::class_for<Control>())) return false;
  if (!std::exchange(kept.field().editing, false)) return true;
  kept.field().scrolled = 0;
  kept.setNeedsDisplay();
  objc::send<"textFieldDidEndEditing:">(answering<"textFieldDidEndEditing:">(kept), kept);
  kept.sendActions(control_event::kEditingDidEnd);
  return true;
}
// Touches place the caret; a second tap takes it all.
void TextEditing::touchesBegan(const Self& self, const NSObject& touches, const Event&) {
  if (!self.isEnabled()) return;
  const Touch touch = touch_of(touches);
  if (!objc::send<"becomeFirstResponder", bool>(self)) return;
  TextFieldState& state = self.field();
  state.caret = index_at(self, touch);
  state.anchor = touch.parts().tap_count > 1 ? 0 : state.caret;
  if (touch.parts().tap_count > 1) state.caret = state.text.size();
  self.setNeedsDisplay();
}
void TextEditing::touchesMoved(const Self& self, const NSObject& touches, const Event&) {
  if (!self.field().editing) return;
  self.field().caret = index_at(self, touch_of(touches));
  TextFieldLine::keep_caret_in_sight(self);
  self.setNeedsDisplay();
}
void TextEditing::touchesEnded(const Self&, const NSObject&, const Event&) {}

void TextEditing::move_caret(const Self& self, std::size_t to, bool extend) {
  TextFieldState& state = self.field();
  state.caret = to;
  if (!extend) state.anchor = to;
  TextFieldLine::keep_caret_in_sight(self);
  self.setNeedsDisplay();
}

bool TextEditing::handleKey(const Self& self, const Key& key) {
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
        TextEditing::move_caret(self, state.text.size(), true);
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
      TextEditing::move_caret(self, collapses ? edge : step(state.text, state.caret, direction),
                              key.key().shift);
      return true;
    }
    case KeyCode::Home:
    case KeyCode::Up:
      TextEditing::move_caret(self, 0, key.key().shift);
      return true;
    case KeyCode::End:
    case KeyCode::Down:
      TextEditing::move_caret(self, state.text.size(), key.key().shift);
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
void TextEditing::insertText(const Self& self, const NSString& text) { self.insert(utf16(text)); }
void TextEditing::deleteBackward(const Self& self) {
  TextFieldState& state = self.field();
  if (state.anchor == state.caret) state.anchor = step(state.text, state.caret, -1);
  self.insert(u"");
}
bool TextEditing::hasText(const Self& self) { return !self.field().text.empty(); }
void TextEditing::selectAll(const Self& self, const NSObject&) {
  self.field().anchor = 0;
  TextEditing::move_caret(self, self.field().text.size(), true);
}

NSString TextField::selected_text() const {
  const TextFieldState& state = field();
  const auto [low, high] = std::minmax(state.anchor, state.caret);
  return string_of(state.secure ? u"" : state.text.substr(low, high - low));
}

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
  TextEditing::move_caret(*this, low + clean.size(), false);
  sendActions(control_event::kEditingChanged);
  return true;
}

}  // namespace wispen::uikit
