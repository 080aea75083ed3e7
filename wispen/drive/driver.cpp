// wispen/drive/driver.cpp: the steps that use rows and texts.

#include "wispen/drive/driver.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "host/wispen_host.h"
#include "wispen/drive/touches.hpp"
#include "wispen/drive/views.hpp"
#include "wispen/screen.hpp"

namespace wispen::program {

namespace {

std::string quoted(const std::string& name) { return "\"" + name + "\""; }

bool is_row(const UIView& view, const std::string& name) {
  const PSSpecifier row = row_of(view);
  return row && (row.identifier().utf8() == name || row.name().utf8() == name ||
                 objc::cast_or_nil<NSString>(row.propertyForKey("key"_ns)).utf8() == name);
}

UIView find_now(const std::string& name) {
  if (UIView row = find_view([&](const UIView& view) { return is_row(view, name); })) return row;
  return find_view(
      [&](const UIView& view) { return text_in(view) == name || view.accessibilityLabel().utf8() == name; });
}

/// What the user means in a row: its control; the view itself where it has none.
UIView target_in(const UIView& view) {
  if (!row_of(view)) return view;
  if (UIView control = find_in<UISwitch>(view)) return control;
  if (UIView field = find_in<UITextField>(view)) return field;
  return view;
}

/// Fails where something else lies over the point of the view, so that it would take the touch.
Result<void> check_reach(const UIView& view, CGPoint point, const std::string& name) {
  const UIView hit = view_at(point);
  // What takes no touches lets what it stands in have them.
  if (hit && (hit.isDescendantOfView(view) || view.isDescendantOfView(hit))) return {};
  if (!hit) return Error{quoted(name) + " cannot be touched: nothing takes touches where it is"};
  return Error{quoted(name) + " cannot be touched: a " + objc::class_of(hit).name() + " lies over it"};
}

Result<void> touch(const UIView& view, double seconds, const std::string& name) {
  const CGPoint point = centre_on_screen(view);
  if (auto free = check_reach(view, point, name); !free) return free;
  return touch_at(point, seconds);
}

/// What a tap leaves where a control or a page is to answer it.
class TapCheck {
 public:
  TapCheck(const std::string& name, const UIView& view, const UIView& target) : name_(name) {
    const auto control = objc::cast_or_nil<UIControl>(target);
    const auto cell = objc::cast_or_nil<PSTableCell>(view);
    if (control && !control.isEnabled()) return;  // takes no touch, and is not to
    if (const auto toggle = objc::cast_or_nil<UISwitch>(target)) {
      kind_ = Kind::Switch;
      was_on_ = toggle.isOn();
    } else if (objc::cast_or_nil<UITextField>(target)) {
      kind_ = Kind::Field;
    } else if (cell && cell.cellEnabled()) {
      page_ = page_of_row(row_of(cell));
      if (!page_.empty()) kind_ = Kind::Link;
    }
  }
  Result<void> passed() const {
    if (kind_ == Kind::None) return {};
    if (kind_ == Kind::Link) {
      const std::string shown = wispen_host_shown_page();
      if (shown == page_) return {};
      return Error{"the row " + quoted(name_) + " leads to " + page_ + ", and the page is " + shown};
    }
    const UIView view = find_now(name_);  // its page may have been built anew
    if (!view) return {};
    if (kind_ == Kind::Field) {
      const auto field = objc::cast_or_nil<UITextField>(target_in(view));
      if (!field || field.isEditing()) return {};
      return Error{"the field " + quoted(name_) + " does not take text after the tap"};
    }
    const auto toggle = objc::cast_or_nil<UISwitch>(target_in(view));
    if (!toggle || toggle.isOn() != was_on_) return {};
    return Error{"the switch " + quoted(name_) + " is " + (was_on_ ? "on" : "off") +
                 " after the tap as before"};
  }

 private:
  enum class Kind { None, Switch, Field, Link };
  const std::string& name_;
  Kind kind_ = Kind::None;
  bool was_on_ = false;
  std::string page_;
};

/// The place of the slider's thumb at a value, as the slider itself says.
CGPoint thumb_at(const UISlider& slider, double value) {
  const CGRect bounds = slider.bounds();
  const CGRect thumb =
      slider.thumbRectForBounds(bounds, slider.trackRectForBounds(bounds), static_cast<float>(value));
  return slider.convertPointToView({CGRectGetMidX(thumb), CGRectGetMidY(thumb)}, UIView());
}

/// How far from the wanted value a drag may end: one point of the way, or half of a step of the row.
double drag_tolerance(const UISlider& slider, const PSSpecifier& row) {
  const double range = double{slider.maximumValue()} - double{slider.minimumValue()};
  const double way =
      std::abs(thumb_at(slider, slider.maximumValue()).x - thumb_at(slider, slider.minimumValue()).x);
  const auto number = [&](const NSString& key) {
    return objc::cast_or_nil<NSNumber>(row.propertyForKey(key)).doubleValue();
  };
  const double steps = number("isSegmented"_ns) != 0 ? number("segmentCount"_ns) : 0;
  return std::max(way > 0 ? range / way : 0, steps >= 1 ? range / steps / 2 : 0) * 1.001;
}

}  // namespace

Result<Json> answer(const Result<void>& result) {
  if (!result) return result.error();
  return Json::object();
}

bool is_same_value(const std::string& actual, const std::string& wanted) {
  if (actual == wanted) return true;
  char* end = nullptr;
  const double a = std::strtod(actual.c_str(), &end);
  if (actual.empty() || *end != '\0') return false;
  const double b = std::strtod(wanted.c_str(), &end);
  if (wanted.empty() || *end != '\0') return false;
  return std::abs(a - b) <= 0.005 * std::max({1.0, std::abs(a), std::abs(b)});
}

Result<UIView> Driver::find(const std::string& name) {
  if (const UIView found = find_now(name)) return found;
  const double page = wispen_host_screen().height * 0.5;
  turn_wheel(1e6);
  bool moved = true;
  while (moved) {
    if (const UIView found = find_now(name)) return found;
    moved = turn_wheel(-page);
  }
  return Error{"there is no row and no text " + quoted(name)};
}

Result<UIView> Driver::bring_into_sight(const std::string& name) {
  auto found = find(name);
  if (!found || !row_of(*found)) return found;
  // Rows are seen below the bar and above the screen's edge.
  const UIView bar = find_view(
      [](const UIView& view) { return static_cast<bool>(objc::cast_or_nil<UINavigationBar>(view)); });
  const double top = bar ? CGRectGetMaxY(frame_on_screen(bar)) : 0;
  const double bottom = wispen_host_screen().height;
  const CGRect frame = frame_on_screen(*found);
  if (CGRectGetMinY(frame) < top) turn_wheel(top - CGRectGetMinY(frame) + 8);
  if (CGRectGetMaxY(frame) > bottom) turn_wheel(bottom - CGRectGetMaxY(frame) - 40);
  return find(name);
}

Result<Json> Driver::show(const std::string& page) {
  if (!show_page(session_, page)) return Error{"there is no page " + quoted(page)};
  return Json::object();
}

Result<Json> Driver::tap(const std::string& name) {
  const auto found = bring_into_sight(name);
  if (!found) return found.error();
  const UIView target = target_in(*found);
  const TapCheck check(name, *found, target);
  if (const auto tapped = touch(target, kTapSeconds, name); !tapped) return tapped.error();
  return answer(check.passed());
}

Result<Json> Driver::hold(const std::string& name, double seconds) {
  const auto found = bring_into_sight(name);
  if (!found) return found.error();
  return answer(touch(target_in(*found), seconds, name));
}

Result<Json> Driver::drag_slider(const std::string& row, double value) {
  const auto found = bring_into_sight(row);
  if (!found) return found.error();
  const auto slider = find_in<UISlider>(*found);
  if (!slider) return Error{"the row " + quoted(row) + " has no slider"};
  const double low = slider.minimumValue();
  const double high = slider.maximumValue();
  if (value < low || value > high || high <= low) {
    return Error{"the slider goes from " + std::to_string(low) + " to " + std::to_string(high)};
  }
  const double tolerance = drag_tolerance(slider, row_of(*found));
  const CGPoint thumb = thumb_at(slider, slider.value());
  if (const auto free = check_reach(slider, thumb, row); !free) return free.error();
  if (const auto dragged = drag_between(thumb, thumb_at(slider, value)); !dragged) return dragged.error();
  const UIView after = find_now(row);
  if (!after) return Json{{"value", ""}};  // the value hides the row
  const std::string shown = shown_value(after);
  if (const auto moved = find_in<UISlider>(after); moved && std::abs(moved.value() - value) > tolerance) {
    return Error{"the slider of the row " + quoted(row) + " ended at " + shown};
  }
  return Json{{"value", shown}};
}

Result<Json> Driver::choose(const std::string& row, const std::string& title) {
  const auto found = bring_into_sight(row);
  if (!found) return found.error();
  const auto segments = find_in<UISegmentedControl>(*found);
  if (!segments) return Error{"the row " + quoted(row) + " has no segments"};
  const NSUInteger count = segments.numberOfSegments();
  Json titles = Json::array();
  for (NSUInteger i = 0; i < count; ++i) titles.push_back(segments.titleForSegmentAtIndex(i).utf8());
  const auto named = std::ranges::find(titles, Json(title));
  auto index = static_cast<NSUInteger>(named - titles.begin());
  if (named == titles.end()) {
    const double position = std::strtod(title.c_str(), nullptr);
    if (position < 1 || position > static_cast<double>(count)) {
      return Error{"the row " + quoted(row) + " has no segment " + quoted(title) + ": " + titles.dump()};
    }
    index = static_cast<NSUInteger>(position) - 1;
  }
  const bool reversed =
      segments.effectiveUserInterfaceLayoutDirection() == UIUserInterfaceLayoutDirection::RightToLeft;
  const CGRect frame = frame_on_screen(segments);
  const double width = frame.size.width / static_cast<double>(count);
  const NSUInteger from_left = reversed ? count - 1 - index : index;
  const CGPoint point{frame.origin.x + width * (static_cast<double>(from_left) + 0.5), CGRectGetMidY(frame)};
  if (const auto free = check_reach(segments, point, row); !free) return free.error();
  if (const auto tapped = touch_at(point, kTapSeconds); !tapped) return tapped.error();
  const UIView after = find_now(row);
  const auto chosen = after ? find_in<UISegmentedControl>(after) : UISegmentedControl();
  if (chosen && chosen.selectedSegmentIndex() != static_cast<NSInteger>(index)) {
    return Error{"the row " + quoted(row) + " shows " + quoted(shown_value(after)) + " after the choice"};
  }
  return Json::object();
}

Result<Json> Driver::scroll_to(const std::string& name) {
  const auto found = bring_into_sight(name);
  if (!found) return found.error();
  return Json::object();
}

}  // namespace wispen::program
