// wispen/drive/views.cpp: what a script finds on the screen: the views themselves.

#include "wispen/drive/views.hpp"

#include <cstdio>

namespace wispen::program {

namespace {

/// Runs `body` with each object of the array, the last first, until it gives something.
template <class T, class Body>
UIView first_from_the_end(const NSArray& objects, Body body) {
  for (NSUInteger i = objects.count(); i-- > 0;) {
    if (const UIView found = body(objects.objectAtIndex<T>(i))) return found;
  }
  return UIView();
}

std::string short_number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

/// The title of the chosen segment, or its number from 1 where it has an image.
std::string chosen_segment(const UISegmentedControl& segments) {
  const NSInteger index = segments.selectedSegmentIndex();
  const bool known = index >= 0 && static_cast<NSUInteger>(index) < segments.numberOfSegments();
  const std::string title =
      known ? segments.titleForSegmentAtIndex(static_cast<NSUInteger>(index)).utf8() : std::string();
  return title.empty() ? std::to_string(index + 1) : title;
}

void find_last_text(const UIView& view, const std::string& label, std::string& last) {
  if (view.isHidden()) return;
  const std::string text = text_in(view);
  if (!text.empty() && text != label) last = text;
  const NSArray subviews = view.subviews();
  for (NSUInteger i = 0; i < subviews.count(); ++i) {
    find_last_text(subviews.objectAtIndex<UIView>(i), label, last);
  }
}

}  // namespace

UIView find_view_in(const UIView& view, const std::function<bool(const UIView&)>& test) {
  if (view.isHidden()) return UIView();
  const UIView inside = first_from_the_end<UIView>(
      view.subviews(), [&](const UIView& subview) { return find_view_in(subview, test); });
  if (inside) return inside;
  return test(view) ? view : UIView();
}

UIView find_view(const std::function<bool(const UIView&)>& test) {
  return first_from_the_end<UIWindow>(UIApplication::sharedApplication().windows(),
                                      [&](const UIWindow& window) {
                                        window.layoutIfNeeded();
                                        return find_view_in(window, test);
                                      });
}

PSSpecifier row_of(const UIView& view) { return objc::cast_or_nil<PSTableCell>(view).specifier(); }

std::string text_in(const UIView& view) {
  if (const auto label = objc::cast_or_nil<UILabel>(view)) return label.text().utf8();
  if (const auto field = objc::cast_or_nil<UITextField>(view)) {
    return field.isSecureTextEntry() ? std::string() : field.text().utf8();
  }
  // An alert's button has a title too, and is not a UIButton.
  if (objc::responds_to(view, objc::selector<"currentTitle">())) {
    return objc::send<"currentTitle", NSString>(view).utf8();
  }
  return {};
}

std::string shown_value(const UIView& cell) {
  if (const auto control = find_in<UISwitch>(cell)) return control.isOn() ? "on" : "off";
  if (const auto slider = find_in<UISlider>(cell)) return short_number(slider.value());
  if (const auto segments = find_in<UISegmentedControl>(cell)) return chosen_segment(segments);
  if (const auto field = find_in<UITextField>(cell)) return text_in(field);
  std::string last;
  find_last_text(cell, row_of(cell).name().utf8(), last);
  return last;
}

CGRect frame_on_screen(const UIView& view) { return view.convertRectToView(view.bounds(), UIView()); }

CGPoint centre_on_screen(const UIView& view) {
  const CGRect frame = frame_on_screen(view);
  return {CGRectGetMidX(frame), CGRectGetMidY(frame)};
}

UIView view_at(CGPoint point) {
  return first_from_the_end<UIWindow>(
      UIApplication::sharedApplication().windows(),
      [&](const UIWindow& window) { return window.hitTest(point, NSObject()); });
}

}  // namespace wispen::program
