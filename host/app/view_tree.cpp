// host/app/view_tree.cpp: what is on the screen, in words.

#include "host/app/view_tree.hpp"

#include <cmath>
#include <cstdio>
#include <string>

#include "host/preferences/cell_types.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/application.hpp"
#include "host/uikit/view/events/focus.hpp"
#include "host/uikit/view/view.hpp"
#include "platform/Preferences.hpp"

namespace wispen {

namespace {

using Json = nlohmann::ordered_json;
using uikit::View;

double tidy(double value) { return std::round(value * 1000) / 1000; }

std::string hex_of(const UIColor& colour) {
  const graphics::Rgba rgba = uikit::colour_of(colour).rgba(uikit::display_settings().appearance);
  char text[10];
  const auto byte = [](double part) { return static_cast<unsigned>(std::lround(part * 255)); };
  std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", byte(rgba.red), byte(rgba.green), byte(rgba.blue),
                byte(rgba.alpha));
  return text;
}

void add_text(Json& json, const char* name, const NSString& text) {
  if (text && text.length() > 0) json[name] = text.utf8();
}

bool is_a(const UIView& view, const char* cls) {
  return objc::class_of(view).is_subclass_of(objc::ClassRef::named(cls));
}

void describe_control(const UIView& view, Json& json) {
  const auto control = objc::cast_or_nil<UIControl>(view);
  if (!control) return;
  if (!control.isEnabled()) json["enabled"] = false;
  if (control.isSelected()) json["selected"] = true;
  if (control.isHighlighted()) json["highlighted"] = true;
  if (is_a(view, "UISwitch")) json["value"] = view.as<UISwitch>().isOn();
  if (is_a(view, "UISlider")) {
    const auto slider = view.as<UISlider>();
    json["value"] = slider.value();
    json["minimum"] = slider.minimumValue();
    json["maximum"] = slider.maximumValue();
    if (uikit::is_right_to_left(view)) json["reversed"] = true;
  }
  if (is_a(view, "UISegmentedControl")) {
    const auto segments = view.as<UISegmentedControl>();
    json["value"] = segments.selectedSegmentIndex();
    if (uikit::is_right_to_left(view)) json["reversed"] = true;
    Json titles = Json::array();
    for (NSUInteger i = 0; i < segments.numberOfSegments(); ++i) {
      titles.push_back(segments.titleForSegmentAtIndex(i).utf8());
    }
    json["segments"] = titles;
  }
  // An alert's button has a title too, and is no UIButton.
  if (objc::responds_to(view, objc::selector<"currentTitle">())) {
    add_text(json, "text", objc::send<"currentTitle", NSString>(view));
  }
  if (const auto field = objc::cast_or_nil<UITextField>(view)) {
    if (!field.isSecureTextEntry()) add_text(json, "text", field.text());
    add_text(json, "placeholder", field.placeholder());
    if (field.isEditing()) json["editing"] = true;
  }
}

void describe_row(const UIView& view, Json& json) {
  const auto cell = objc::cast_or_nil<PSTableCell>(view);
  const PSSpecifier specifier = cell ? cell.specifier() : PSSpecifier();
  if (!specifier) return;
  Json row;
  add_text(row, "id", specifier.identifier());
  add_text(row, "key", objc::cast_or_nil<NSString>(specifier.propertyForKey("key"_ns)));
  row["cell"] = preferences::cell_type_name(static_cast<preferences::CellType>(specifier.cellType()));
  add_text(row, "label", specifier.name());
  if (!cell.cellEnabled()) row["enabled"] = false;
  if (cell.isChecked()) row["checked"] = true;
  json["row"] = row;
}

/// Where it is seen at this moment of an animation, in its superview.
Rect shown_frame(const UIView& view) {
  View& shown = View::of(view);
  const Size size = shown.presented_bounds().size;
  const Point centre = shown.presented_center();
  if (shown.presented_transform() != AffineTransform()) return view.frame();
  return {{centre.x - size.width / 2, centre.y - size.height / 2}, size};
}

Json describe(const UIView& view, const UIView& focused) {
  Json json;
  json["class"] = objc::class_of(view).name();
  const Rect frame = view.convertRectToView(view.bounds(), UIView());
  json["frame"] = {tidy(frame.min_x()), tidy(frame.min_y()), tidy(frame.width()), tidy(frame.height())};
  const Rect shown = shown_frame(view);
  if (shown != Rect(view.frame())) {
    json["shown"] = {tidy(frame.min_x() + shown.min_x() - Rect(view.frame()).min_x()),
                     tidy(frame.min_y() + shown.min_y() - Rect(view.frame()).min_y()), tidy(shown.width()),
                     tidy(shown.height())};
  }
  if (const auto controller = objc::cast_or_nil<UIViewController>(View::of(view).controller())) {
    json["controller"] = objc::class_of(controller).name();
    add_text(json, "title", controller.title());
  }
  if (const auto label = objc::cast_or_nil<UILabel>(view)) {
    add_text(json, "text", label.text());
    json["colour"] = hex_of(label.textColor());
  }
  describe_control(view, json);
  describe_row(view, json);
  add_text(json, "label", view.accessibilityLabel());
  add_text(json, "identifier", view.accessibilityIdentifier());
  if (view.tag() != 0) json["tag"] = view.tag();
  if (view.isHidden()) json["hidden"] = true;
  if (view.alpha() < 1) json["alpha"] = tidy(view.alpha());
  if (View::of(view).presented_alpha() != view.alpha())
    json["shown_alpha"] = tidy(View::of(view).presented_alpha());
  if (view.backgroundColor() && uikit::colour_of(view.backgroundColor()) != graphics::Colour()) {
    json["background"] = hex_of(view.backgroundColor());
  }
  if (focused && focused == view) json["focused"] = true;
  Json subviews = Json::array();
  for (const UIView& subview : View::of(view).subviews()) subviews.push_back(describe(subview, focused));
  if (!subviews.empty()) json["subviews"] = std::move(subviews);
  return json;
}

}  // namespace

Json view_tree() {
  uikit::Application::shared().lay_out_windows();
  const UIView focused = uikit::focused_view();
  Json windows = Json::array();
  for (const UIWindow& window : uikit::Application::shared().windows()) {
    if (!window.isHidden()) windows.push_back(describe(window, focused));
  }
  return windows;
}

}  // namespace wispen
