// wispen/drive/views.hpp: what a script finds on the screen: the views themselves.
#pragma once

#include <functional>
#include <string>

#include "platform/Preferences.hpp"
#include "platform/UIKit.hpp"

namespace wispen::program {

/// The first view of all windows for which the test holds, the uppermost first; nil where there is none.
/// Hidden views, and what is in them, are passed over.
UIView find_view(const std::function<bool(const UIView&)>& test);
/// The same in one view, and that view itself.
UIView find_view_in(const UIView& view, const std::function<bool(const UIView&)>& test);

/// The first view of a class in that view.
template <class T>
T find_in(const UIView& view) {
  return objc::cast_or_nil<T>(
      find_view_in(view, [](const UIView& part) { return static_cast<bool>(objc::cast_or_nil<T>(part)); }));
}

/// The row that a view shows; nil where it is not a cell of a page.
PSSpecifier row_of(const UIView& view);
/// What a label, a field or a button says; "" for any other view, and for a field of secrets.
std::string text_in(const UIView& view);
/// What a row shows as its value: "on", "off", a number, a segment's title, or the last of its texts.
std::string shown_value(const UIView& cell);

/// On the screen, in points.
CGRect frame_on_screen(const UIView& view);
CGPoint centre_on_screen(const UIView& view);
/// The view that takes a touch there; nil for none.
UIView view_at(CGPoint point);

}  // namespace wispen::program
