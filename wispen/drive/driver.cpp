// wispen/drive/driver.cpp: does a script's steps on the running host.

#include "wispen/drive/driver.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>

#include "host/wispen_host.h"
#include "wispen/screen.hpp"

namespace wispen::program {

namespace {

constexpr double kLongestSettling = 20;
constexpr double kFrame = 1.0 / 60;

double number(const std::string& word) { return std::strtod(word.c_str(), nullptr); }

Result<Json> done_or_why(int status) {
  if (status == 0) return Error{wispen_host_last_error()};
  return Json::object();
}

Result<Json> settle() { return done_or_why(wispen_host_settle(kLongestSettling)); }

Json tree() {
  const char* const text = wispen_host_view_tree();
  return text != nullptr ? Json::parse(text) : Json::array();
}

/// The first view, the uppermost first, for which the test holds.
std::optional<Json> search(const Json& views, const std::function<bool(const Json&)>& test) {
  for (auto view = views.rbegin(); view != views.rend(); ++view) {
    if (view->value("hidden", false)) continue;
    if (view->contains("subviews")) {
      if (auto found = search((*view)["subviews"], test)) return found;
    }
    if (test(*view)) return *view;
  }
  return std::nullopt;
}

bool is_row(const Json& view, const std::string& name) {
  if (!view.contains("row")) return false;
  const Json& row = view["row"];
  return row.value("id", std::string()) == name || row.value("key", std::string()) == name ||
         row.value("label", std::string()) == name;
}

bool says(const Json& view, const std::string& text) {
  return view.value("text", std::string()) == text || view.value("label", std::string()) == text;
}

std::optional<Json> part_of(const Json& view, std::initializer_list<const char*> classes) {
  const Json self = Json::array({view});
  for (const char* const cls : classes) {
    if (auto found = search(self, [&](const Json& part) { return part["class"] == cls; })) return found;
  }
  return std::nullopt;
}

struct Place {
  double x = 0;
  double y = 0;
};

Place centre(const Json& view) {
  const Json& frame = view["frame"];
  return {frame[0].get<double>() + frame[2].get<double>() / 2,
          frame[1].get<double>() + frame[3].get<double>() / 2};
}

Result<Json> tap(Place place) {
  if (wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, place.x, place.y) == 0 || wispen_host_advance(kFrame) == 0 ||
      wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, place.x, place.y) == 0) {
    return Error{wispen_host_last_error()};
  }
  return settle();
}

Result<Json> drag(Place from, Place to) {
  constexpr int kSteps = 12;
  int status = wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, from.x, from.y);
  for (int i = 1; i <= kSteps && status != 0; ++i) {
    const double part = static_cast<double>(i) / kSteps;
    status = wispen_host_advance(kFrame);
    if (status != 0) {
      status = wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, from.x + (to.x - from.x) * part,
                                 from.y + (to.y - from.y) * part);
    }
  }
  if (status == 0 || wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, to.x, to.y) == 0) {
    return Error{wispen_host_last_error()};
  }
  return settle();
}

/// Where the page's rows can be seen: below the bar, above the edge.
struct Sight {
  double top = 0;
  double bottom = 0;
};

Sight sight() {
  const auto screen = wispen_host_screen();
  Sight seen{0, screen.height};
  if (const auto bar = search(tree(), [](const Json& view) { return view["class"] == "UINavigationBar"; })) {
    seen.top = (*bar)["frame"][1].get<double>() + (*bar)["frame"][3].get<double>();
  }
  return seen;
}

void wheel(double points) {
  const auto screen = wispen_host_screen();
  wispen_host_wheel(screen.width / 2, screen.height * 0.6, points);
  wispen_host_settle(kLongestSettling);
}

std::string displayed(const Json& view) {
  if (const auto control = part_of(view, {"UISwitch", "UISlider", "UISegmentedControl", "UITextField"})) {
    if ((*control)["class"] == "UITextField") return control->value("text", std::string());
    const Json& value = (*control)["value"];
    if (value.is_boolean()) return value.get<bool>() ? "on" : "off";
    if ((*control)["class"] == "UISegmentedControl") {
      const auto index = value.get<int>();
      const Json titles = control->value("segments", Json::array());
      const bool known = index >= 0 && static_cast<std::size_t>(index) < titles.size();
      const auto title = known ? titles[static_cast<std::size_t>(index)].get<std::string>() : std::string();
      return title.empty() ? std::to_string(index + 1) : title;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%g", value.get<double>());
    return text;
  }
  // The last text of a row is its value.
  std::string last;
  const std::function<void(const Json&)> walk = [&](const Json& part) {
    if (part.value("hidden", false)) return;
    if (part.contains("text") && part["text"] != view["row"].value("label", std::string()))
      last = part["text"];
    for (const Json& subview : part.value("subviews", Json::array())) walk(subview);
  };
  walk(view);
  return last;
}

bool same(const std::string& actual, const std::string& wanted) {
  if (actual == wanted) return true;
  char* end = nullptr;
  const double a = std::strtod(actual.c_str(), &end);
  if (actual.empty() || *end != '\0') return false;
  const double b = std::strtod(wanted.c_str(), &end);
  if (wanted.empty() || *end != '\0') return false;
  return std::abs(a - b) <= 0.005 * std::max({1.0, std::abs(a), std::abs(b)});
}

}  // namespace

std::optional<Json> Driver::find_now(const std::string& name) const {
  const Json windows = tree();
  if (auto row = search(windows, [&](const Json& view) { return is_row(view, name); })) return row;
  return search(windows, [&](const Json& view) { return says(view, name); });
}

Result<Json> Driver::find(const std::string& name) {
  if (auto found = find_now(name)) return *found;
  const double page = wispen_host_screen().height * 0.5;
  wheel(1e6);
  std::string before;
  for (int i = 0; i < 2000; ++i) {
    if (auto found = find_now(name)) return *found;
    const std::string now = tree().dump();
    if (now == before) break;
    before = now;
    wheel(-page);
  }
  return Error{"there is no row and no text \"" + name + "\""};
}

Result<Json> Driver::bring_into_sight(const std::string& name) {
  auto found = find(name);
  if (!found || !found->contains("row")) return found;
  const Sight seen = sight();
  const Json& frame = (*found)["frame"];
  const double top = frame[1].get<double>();
  const double bottom = top + frame[3].get<double>();
  if (top < seen.top) wheel(seen.top - top + 8);
  if (bottom > seen.bottom) wheel(seen.bottom - bottom - 40);
  return find(name);
}

Result<Json> Driver::touch(const Step& step) {
  const Words& words = step.words;
  if (words.size() == 3 && step.verb() == "tap") return tap({number(words[1]), number(words[2])});
  auto found = bring_into_sight(words[1]);
  if (!found) return found;
  // What the user means in a row with a control is the control.
  Json target = *found;
  if (target.contains("row")) {
    if (auto control = part_of(target, {"UISwitch", "UITextField"})) target = *control;
  }
  if (step.verb() == "tap") return tap(centre(target));
  const Place place = centre(target);
  if (wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, place.x, place.y) == 0 ||
      wispen_host_advance(number(words[2])) == 0 ||
      wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, place.x, place.y) == 0) {
    return Error{wispen_host_last_error()};
  }
  return settle();
}

Result<Json> Driver::drag_slider(const std::string& row, double value) {
  const auto found = bring_into_sight(row);
  if (!found) return found;
  const auto slider = part_of(*found, {"UISlider"});
  if (!slider) return Error{"the row \"" + row + "\" has no slider"};
  const double low = slider->value("minimum", 0.0);
  const double high = slider->value("maximum", 1.0);
  if (value < low || value > high || high <= low) {
    return Error{"the slider goes from " + std::to_string(low) + " to " + std::to_string(high)};
  }
  constexpr double kThumb = 28;
  const Json& frame = (*slider)["frame"];
  const double way = frame[2].get<double>() - kThumb;
  const bool turned = slider->value("reversed", false);
  const auto place_of = [&](double at) {
    const double part = (at - low) / (high - low);
    return frame[0].get<double>() + kThumb / 2 + way * (turned ? 1 - part : part);
  };
  const double y = centre(*slider).y;
  double x = place_of((*slider)["value"].get<double>());
  int status = wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, x, y);
  const double start = x;
  const double end = place_of(value);
  constexpr int kSteps = 10;
  for (int i = 1; i <= kSteps && status != 0; ++i) {
    x = start + (end - start) * i / kSteps;
    status = wispen_host_advance(kFrame) != 0 ? wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, x, y) : 0;
  }
  if (status == 0 || wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, x, y) == 0) {
    return Error{wispen_host_last_error()};
  }
  if (auto quiet = settle(); !quiet) return quiet;
  const auto after = find_now(row);
  return Json{{"value", after ? displayed(*after) : ""}};
}

Result<Json> Driver::choose(const std::string& row, const std::string& title) {
  const auto found = bring_into_sight(row);
  if (!found) return found;
  const auto segments = part_of(*found, {"UISegmentedControl"});
  if (!segments) return Error{"the row \"" + row + "\" has no segments"};
  const Json titles = segments->value("segments", Json::array());
  const auto named = std::ranges::find(titles, Json(title));
  std::size_t index = static_cast<std::size_t>(named - titles.begin());
  if (named == titles.end()) {
    const double position = number(title);
    if (position < 1 || position > static_cast<double>(titles.size())) {
      return Error{"the row \"" + row + "\" has no segment \"" + title + "\": " + titles.dump()};
    }
    index = static_cast<std::size_t>(position) - 1;
  }
  const Json& frame = (*segments)["frame"];
  const double width = frame[2].get<double>() / static_cast<double>(titles.size());
  const std::size_t place = segments->value("reversed", false) ? titles.size() - 1 - index : index;
  return tap({frame[0].get<double>() + width * (static_cast<double>(place) + 0.5), centre(*segments).y});
}

Result<Json> Driver::scroll(const Words& words) {
  if (words[1] == "to") {
    const auto found = bring_into_sight(words[2]);
    if (!found) return found;
    return Json::object();
  }
  wheel(words[1] == "up" ? number(words[2]) : -number(words[2]));
  return Json::object();
}

Result<Json> Driver::expect_value(const std::string& row, const std::string& wanted) {
  const auto found = find(row);
  if (!found) return found;
  const std::string actual = displayed(*found);
  if (!same(actual, wanted)) return Error{"the row \"" + row + "\" shows \"" + actual + "\""};
  return Json{{"value", actual}};
}

Result<Json> Driver::expect_stored(const std::string& key, const std::string& wanted) {
  for (const Page& page : session_.pages()) {
    const NSArray rows = page.all_specifiers();
    for (NSUInteger i = 0; i < rows.count(); ++i) {
      const auto row = rows.objectAtIndex<PSSpecifier>(i);
      const auto own = objc::cast_or_nil<NSString>(row.propertyForKey("key"_ns));
      if (!own || own.utf8() != key) continue;
      const NSObject value = row.performGetter();
      const auto text = objc::cast_or_nil<NSString>(value);
      std::string actual = text ? text.utf8() : text_of(value);
      if (actual == "yes" && (wanted == "on" || wanted == "true")) actual = wanted;
      if (actual == "no" && (wanted == "off" || wanted == "false")) actual = wanted;
      if (!same(actual, wanted)) return Error{"stored under \"" + key + "\" is " + text_of(value)};
      return Json{{"value", json_of(value)}};
    }
  }
  return Error{"no row has the key \"" + key + "\""};
}

Result<Json> Driver::expect_posted(const std::string& name) {
  const std::size_t count = wispen_host_posted_count();
  std::size_t times = 0;
  for (std::size_t i = posts_seen_; i < count; ++i) times += wispen_host_posted_name(i) == name ? 1U : 0U;
  posts_seen_ = count;
  if (times == 0) return Error{"\"" + name + "\" was not posted"};
  return Json{{"times", times}};
}

Result<Json> Driver::expect_colour(double x, double y, const std::string& wanted) {
  wispen_host_frame_pixels frame{};
  if (wispen_host_frame(&frame) == 0) return Error{wispen_host_last_error()};
  const double scale = wispen_host_screen().scale;
  const int column = static_cast<int>(x * scale);
  const int row = static_cast<int>(y * scale);
  if (column < 0 || row < 0 || column >= frame.width || row >= frame.height) {
    return Error{"the place is outside the screen"};
  }
  std::uint32_t pixel = 0;
  std::copy_n(
      frame.pixels + static_cast<std::size_t>(row) * frame.stride + static_cast<std::size_t>(column) * 4, 4,
      reinterpret_cast<unsigned char*>(&pixel));
  char actual[8];
  std::snprintf(actual, sizeof actual, "#%06X", pixel & 0xFFFFFFU);
  char* end = nullptr;
  const unsigned long colour = wanted.starts_with('#') ? std::strtoul(wanted.c_str() + 1, &end, 16) : 0;
  if (end == nullptr || *end != '\0' || wanted.size() != 7) return Error{"a colour is written #RRGGBB"};
  for (const unsigned shift : {0U, 8U, 16U}) {
    const int difference =
        static_cast<int>((pixel >> shift) & 0xFFU) - static_cast<int>((colour >> shift) & 0xFFU);
    if (std::abs(difference) > 2) return Error{std::string("the pixel is ") + actual};
  }
  return Json{{"colour", actual}};
}

Result<Json> Driver::expect(const Words& words) {
  const bool absent = words[1] == "no";
  const std::string& what = absent ? words[2] : words[1];
  const std::string& name = absent ? words[3] : words[2];
  if (what == "page") {
    const std::string shown = wispen_host_shown_page();
    if (shown != name) return Error{"the page is " + shown};
    return Json::object();
  }
  if (what == "value") return expect_value(name, words[3]);
  if (what == "stored") return expect_stored(name, words[3]);
  if (what == "posted") return expect_posted(name);
  if (what == "colour") return expect_colour(number(words[2]), number(words[3]), words[4]);
  if (what == "row") {
    const auto found = find(name);
    const bool there = found && found->contains("row");
    if (there == absent)
      return Error{std::string("there is ") + (absent ? "a" : "no") + " row \"" + name + "\""};
    return Json::object();
  }
  const Json windows = tree();
  const bool there = search(windows, [&](const Json& view) {
                       return view.value("text", std::string()).find(name) != std::string::npos;
                     }).has_value();
  if (there == absent) return Error{std::string("the text is ") + (absent ? "" : "not ") + "on the screen"};
  return Json::object();
}

Result<Json> Driver::run(const Step& step) {
  const objc::AutoreleasePool pool;
  const Words& words = step.words;
  const std::string& verb = step.verb();
  if (verb == "show") {
    if (!show_page(session_, words[1])) return Error{"there is no page \"" + words[1] + "\""};
    return Json::object();
  }
  if (verb == "tap" || verb == "hold") return touch(step);
  if (verb == "drag") {
    if (words.size() == 4) return drag_slider(words[1], number(words[3]));
    return drag({number(words[1]), number(words[2])}, {number(words[4]), number(words[5])});
  }
  if (verb == "choose") return choose(words[1], words[2]);
  if (verb == "scroll") return scroll(words);
  if (verb == "wait") return done_or_why(wispen_host_run_for(number(words[1])));
  if (verb == "settle") return settle();
  if (verb == "expect") return expect(words);
  if (verb == "snapshot") return done_or_why(wispen_host_snapshot(words[1].c_str(), 0, 0));
  if (verb == "inspect") return Json{{"windows", tree()}};
  int status = 0;
  if (verb == "type") status = wispen_host_type(words[1].c_str());
  if (verb == "key") status = wispen_host_key(words[1].c_str());
  if (verb == "back") status = wispen_host_key("escape");
  if (verb == "look") status = wispen_host_set_look(words[1].c_str(), words[2].c_str());
  if (verb == "reload") status = wispen_host_reload_pages();
  if (status == 0) return Error{wispen_host_last_error()};
  return settle();
}

}  // namespace wispen::program
