// wispen/drive/expectations.cpp: the steps that look at the screen, the file, and what was posted.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/wispen_host.h"
#include "wispen/drive/driver.hpp"
#include "wispen/drive/views.hpp"

namespace wispen::program {

Result<Json> Driver::expect_page(const std::string& cls) {
  const std::string shown = wispen_host_shown_page();
  if (shown != cls) return Error{"the page is " + shown};
  return Json::object();
}

Result<Json> Driver::expect_text(const std::string& text, bool expected) {
  const UIView found =
      find_view([&](const UIView& view) { return text_in(view).find(text) != std::string::npos; });
  if (static_cast<bool>(found) == expected) return Json::object();
  return Error{std::string("the text is ") + (expected ? "not " : "") + "on the screen"};
}

Result<Json> Driver::expect_row(const std::string& name, bool expected) {
  const auto found = find(name);
  const bool there = found && row_of(*found);
  if (there == expected) return Json::object();
  return Error{std::string("there is ") + (expected ? "no" : "a") + " row \"" + name + "\""};
}

Result<Json> Driver::expect_value(const std::string& row, const std::string& wanted) {
  const auto found = find(row);
  if (!found) return found.error();
  const std::string actual = shown_value(*found);
  if (!is_same_value(actual, wanted)) return Error{"the row \"" + row + "\" shows \"" + actual + "\""};
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
      if (!is_same_value(actual, wanted)) return Error{"stored under \"" + key + "\" is " + text_of(value)};
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

}  // namespace wispen::program
