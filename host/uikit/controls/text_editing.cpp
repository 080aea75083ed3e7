// host/uikit/controls/text_editing.cpp: writing in a text field: its caret, its keys, and who is asked and
// told.

#include <algorithm>
#include <utility>

#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/view/events/touch.hpp"

namespace wispen::uikit {

namespace {

bool is_low_surrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

template <objc::FixedString Name>
struct Named {
  static constexpr auto kName = Name;
};

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
}  // namespace

/// Yes where the delegate has no such method.
bool TextField::ask_delegate(auto selector_constant) const {
  constexpr auto kSelector = decltype(selector_constant)::kName;
  const NSObject delegate = delegate_.lock();
  return !objc::responds_to(delegate, objc::selector<kSelector>()) ||
         objc::send<kSelector, bool>(delegate, self());
}

template <objc::FixedString Sel>
void TextField::tell_delegate() const {
  const NSObject delegate = delegate_.lock();
  if (objc::responds_to(delegate, objc::selector<Sel>())) objc::send<Sel>(delegate, self());
}

std::size_t TextField::index_at(const UITouch& touch) {
  const Rect area = text_area(self().bounds());
  const auto line = line_with(shown_text());
  const double x = touch.locationInView(self()).x - line_start(area, line->size().width);
  return std::min(line->index_at({x, line->size().height / 2}), text_.size());
}

bool TextField::press_return() {
  const UITextField kept = self();
  if (!ask_delegate(Named<"textFieldShouldReturn:">())) return true;
  kept.sendActionsForControlEvents(UIControlEventEditingDidEndOnExit);
  kept.sendActionsForControlEvents(UIControlEventPrimaryActionTriggered);
  kept.resignFirstResponder();
  return false;  // and the default answer of an alert is given
}

bool TextField::canBecomeFirstResponder() {
  return self().isEnabled() && ask_delegate(Named<"textFieldShouldBeginEditing:">());
}

bool TextField::canResignFirstResponder() { return ask_delegate(Named<"textFieldShouldEndEditing:">()); }

bool TextField::becomeFirstResponder() {
  if (editing_) return true;
  if (!super<"becomeFirstResponder", bool>()) return false;
  editing_ = true;
  if (clears_on_begin_) text_.clear();
  anchor_ = caret_ = text_.size();
  keep_caret_in_sight();
  self().setNeedsDisplay();
  tell_delegate<"textFieldDidBeginEditing:">();
  self().sendActionsForControlEvents(UIControlEventEditingDidBegin);
  return true;
}

bool TextField::resignFirstResponder() {
  const UITextField kept = self();
  if (!super<"resignFirstResponder", bool>()) return false;
  if (!std::exchange(editing_, false)) return true;
  scrolled_ = 0;
  self().setNeedsDisplay();
  tell_delegate<"textFieldDidEndEditing:">();
  self().sendActionsForControlEvents(UIControlEventEditingDidEnd);
  return true;
}

void TextField::touchesBegan(const NSObject& touches, const UIEvent&) {
  if (!self().isEnabled()) return;
  const UITouch touch = touch_of(touches);
  if (!self().becomeFirstResponder()) return;
  caret_ = index_at(touch);
  anchor_ = touch.tapCount() > 1 ? 0 : caret_;
  if (touch.tapCount() > 1) caret_ = text_.size();
  self().setNeedsDisplay();
}

void TextField::touchesMoved(const NSObject& touches, const UIEvent&) {
  if (!editing_) return;
  caret_ = index_at(touch_of(touches));
  keep_caret_in_sight();
  self().setNeedsDisplay();
}

void TextField::move_caret(std::size_t to, bool extend) {
  caret_ = to;
  if (!extend) anchor_ = to;
  keep_caret_in_sight();
  self().setNeedsDisplay();
}

bool TextField::handleKey(const UIKey& key) {
  if (!editing_) {
    if (!key.press().is_space() && key.press().code != KeyCode::Return) return false;
    return self().becomeFirstResponder();
  }
  const bool selected = anchor_ != caret_;
  const auto [low, high] = std::minmax(anchor_, caret_);
  switch (key.press().code) {
    case KeyCode::Text:
      if (key.press().command) {
        if (key.press().text != "a") return false;
        anchor_ = 0;
        move_caret(text_.size(), true);
        return true;
      }
      insert(utf16(NSString(key.press().text.c_str())));
      return true;
    case KeyCode::Backspace:
      if (!selected) anchor_ = step(text_, caret_, -1);
      insert(u"");
      return true;
    case KeyCode::Delete:
      if (!selected) anchor_ = step(text_, caret_, 1);
      insert(u"");
      return true;
    case KeyCode::Left:
    case KeyCode::Right: {
      const int direction = key.press().code == KeyCode::Left ? -1 : 1;
      const bool collapses = selected && !key.press().shift;
      const std::size_t edge = direction < 0 ? low : high;
      move_caret(collapses ? edge : step(text_, caret_, direction), key.press().shift);
      return true;
    }
    case KeyCode::Home:
    case KeyCode::Up:
      move_caret(0, key.press().shift);
      return true;
    case KeyCode::End:
    case KeyCode::Down:
      move_caret(text_.size(), key.press().shift);
      return true;
    case KeyCode::Return:
      return press_return();
    case KeyCode::Escape:
      // An alert around it is cancelled by the same key.
      self().resignFirstResponder();
      return false;
    default:
      return false;
  }
}

void TextField::deleteBackward() {
  if (anchor_ == caret_) anchor_ = step(text_, caret_, -1);
  insert(u"");
}

void TextField::selectAll(const NSObject&) {
  anchor_ = 0;
  move_caret(text_.size(), true);
}

NSString TextField::selected_text() {
  const auto [low, high] = std::minmax(anchor_, caret_);
  return string_of(secure_ ? u"" : text_.substr(low, high - low));
}

bool TextField::insert(const std::u16string& added) {
  std::u16string clean;
  for (const char16_t unit : added) {
    if (unit != u'\n' && unit != u'\r') clean.push_back(unit);  // one line
  }
  const auto [low, high] = std::minmax(anchor_, caret_);
  const NSObject delegate = delegate_.lock();
  constexpr auto kMayChange = objc::FixedString{"textField:shouldChangeCharactersInRange:replacementString:"};
  if (objc::responds_to(delegate, objc::selector<kMayChange>()) &&
      !objc::send<kMayChange, bool>(delegate, self(), NSRange{low, high - low}, string_of(clean))) {
    return false;
  }
  text_.replace(low, high - low, clean);
  move_caret(low + clean.size(), false);
  self().sendActionsForControlEvents(UIControlEventEditingChanged);
  return true;
}

}  // namespace wispen::uikit
