// host/app/view_tree.cpp: what is on the screen, in words.

#include "host/app/view_tree.hpp"

#include <cmath>
#include <cstdio>
#include <string>

#include "host/preferences/cells/table_cell.hpp"
#include "host/uikit/controllers/view_controller.hpp"
#include "host/uikit/controls/button.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/controls/text_field.hpp"
#include "host/uikit/events/focus.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/views/application.hpp"
#include "host/uikit/views/view_state.hpp"

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

bool is_a(const View& view, const char* cls) {
  return objc::class_of(view).is_subclass_of(objc::ClassRef::named(cls));
}

void describe_control(const View& view, Json& json) {
  const auto control = objc::cast_or_nil<uikit::Control>(view);
  if (!control) return;
  if (!control.isEnabled()) json["enabled"] = false;
  if (control.isSelected()) json["selected"] = true;
  if (control.isHighlighted()) json["highlighted"] = true;
  if (is_a(view, "UISwitch")) json["value"] = objc::send<"isOn", bool>(view);
  if (is_a(view, "UISlider")) {
    json["value"] = objc::send<"value", float>(view);
    json["minimum"] = objc::send<"minimumValue", float>(view);
    json["maximum"] = objc::send<"maximumValue", float>(view);
    if (view.is_right_to_left()) json["reversed"] = true;
  }
  if (is_a(view, "UISegmentedControl")) {
    json["value"] = objc::send<"selectedSegmentIndex", NSInteger>(view);
    if (view.is_right_to_left()) json["reversed"] = true;
    Json titles = Json::array();
    const auto count = objc::send<"numberOfSegments", NSUInteger>(view);
    for (NSUInteger i = 0; i < count; ++i) {
      titles.push_back(objc::send<"titleForSegmentAtIndex:", NSString>(view, i).utf8());
    }
    json["segments"] = titles;
  }
  if (const auto button = objc::cast_or_nil<uikit::Button>(view))
    add_text(json, "text", button.current_title());
  if (const auto field = objc::cast_or_nil<uikit::TextField>(view)) {
    const bool secret = objc::send<"isSecureTextEntry", bool>(view);
    if (!secret) add_text(json, "text", field.text());
    add_text(json, "placeholder", objc::send<"placeholder", NSString>(view));
    if (field.is_editing()) json["editing"] = true;
  }
}

void describe_row(const View& view, Json& json) {
  const auto cell = objc::cast_or_nil<preferences::Cell>(view);
  const PSSpecifier specifier = cell ? cell.specifier() : PSSpecifier();
  if (!specifier) return;
  Json row;
  add_text(row, "id", specifier.identifier());
  add_text(row, "key", objc::cast_or_nil<NSString>(specifier.propertyForKey("key"_ns)));
  row["cell"] = preferences::cell_type_name(static_cast<preferences::CellType>(specifier.cellType()));
  add_text(row, "label", specifier.name());
  if (!cell.is_enabled()) row["enabled"] = false;
  if (cell.parts().checked) row["checked"] = true;
  json["row"] = row;
}

/// Where it is seen at this moment of an animation, in its superview.
Rect shown_frame(const View& view) {
  const Size size = view.presented_bounds().size;
  const Point centre = view.presented_center();
  if (view.presented_transform() != AffineTransform()) return view.frame();
  return {{centre.x - size.width / 2, centre.y - size.height / 2}, size};
}

Json describe(const View& view, const View& focused) {
  Json json;
  json["class"] = objc::class_of(view).name();
  const Rect frame = view.convertRectToView(view.bounds(), View());
  json["frame"] = {tidy(frame.min_x()), tidy(frame.min_y()), tidy(frame.width()), tidy(frame.height())};
  const Rect shown = shown_frame(view);
  if (shown != view.frame()) {
    json["shown"] = {tidy(frame.min_x() + shown.min_x() - view.frame().min_x()),
                     tidy(frame.min_y() + shown.min_y() - view.frame().min_y()), tidy(shown.width()),
                     tidy(shown.height())};
  }
  if (const auto controller = objc::cast_or_nil<uikit::ViewController>(view.controller())) {
    json["controller"] = objc::class_of(controller).name();
    add_text(json, "title", controller.title());
  }
  if (const auto label = objc::cast_or_nil<uikit::Label>(view)) {
    add_text(json, "text", label.text());
    json["colour"] = hex_of(label.textColor());
  }
  describe_control(view, json);
  describe_row(view, json);
  add_text(json, "label", objc::send<"accessibilityLabel", NSString>(view));
  add_text(json, "identifier", view.parts().accessibility_identifier);
  if (view.parts().tag != 0) json["tag"] = view.parts().tag;
  if (view.isHidden()) json["hidden"] = true;
  if (view.alpha() < 1) json["alpha"] = tidy(view.alpha());
  if (view.presented_alpha() != view.alpha()) json["shown_alpha"] = tidy(view.presented_alpha());
  if (view.backgroundColor() && uikit::colour_of(view.backgroundColor()) != graphics::Colour()) {
    json["background"] = hex_of(view.backgroundColor());
  }
  if (focused && focused == view) json["focused"] = true;
  Json subviews = Json::array();
  for (const View& subview : view.subviews()) subviews.push_back(describe(subview, focused));
  if (!subviews.empty()) json["subviews"] = std::move(subviews);
  return json;
}

}  // namespace

Json view_tree() {
  uikit::Application::shared().lay_out_windows();
  const View focused = uikit::focused_view();
  Json windows = Json::array();
  for (const uikit::Window& window : uikit::Application::shared().windows()) {
    if (!window.isHidden()) windows.push_back(describe(window, focused));
  }
  return windows;
}

}  // namespace wispen
