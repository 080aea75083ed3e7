// wispen/colour_command.cpp: wispen colour.

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "host/wispen_host.h"
#include "wispen/colour_items.hpp"
#include "wispen/colour_sheet.hpp"
#include "wispen/commands.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

/// A patch of the colour, where a terminal shows colours of 24 bits. Elsewhere nothing.
std::string patch_of(const NamedColour& colour) {
  static const bool shown = [] {
    const char* const depth = std::getenv("COLORTERM");
    const std::string said = depth != nullptr ? depth : "";
    return ::isatty(STDOUT_FILENO) != 0 && (said == "truecolor" || said == "24bit");
  }();
  if (!shown) return {};
  const auto byte = [](double component) {
    return std::to_string(std::lround(std::clamp(component, 0.0, 1.0) * 255));
  };
  return "\x1B[48;2;" + byte(colour.red) + ";" + byte(colour.green) + ";" + byte(colour.blue) +
         "m    \x1B[0m ";
}

Json json_of(const ColourItem& item) {
  if (!item.error.empty()) return {{"input", item.input}, {"error", item.error}};
  const NamedColour& c = item.colour;
  return {{"input", item.input}, {"kind", item.is_image ? "image" : "text"},
          {"hex", c.hex},        {"red", c.red},
          {"green", c.green},    {"blue", c.blue},
          {"alpha", c.alpha},    {"dark", c.dark}};
}

void print_line(const ColourItem& item, bool darkness_first) {
  const char* const darkness = item.colour.dark ? "dark " : "light";
  char alpha[32] = "";
  if (item.colour.alpha != 1) std::snprintf(alpha, sizeof alpha, "  alpha %g", item.colour.alpha);
  std::printf("%s%s  %s%s  %s\n", patch_of(item.colour).c_str(),
              darkness_first ? darkness : item.colour.hex.c_str(),
              darkness_first ? item.colour.hex.c_str() : darkness, alpha, item.input.c_str());
}

}  // namespace

int colour(const CommonOptions& options, const ColourOptions& what) {
  const objc::AutoreleasePool pool;
  const bool of_images_alone = what.operation == "dominant" || what.operation == "second";
  const auto wanted = what.operation == "second" ? ImageColour::Second : ImageColour::Dominant;
  std::vector<ColourItem> items = colour_items(what.inputs, !of_images_alone);
  const auto session = Session::start_with_bundle(options);
  if (!session) return kFailed;
  std::vector<ColourItem> others = what.sheet.empty() ? std::vector<ColourItem>() : items;
  find_colours(items, wanted);

  Json all = Json::array();
  int status = kDone;
  for (const ColourItem& item : items) {
    if (!item.error.empty()) status = fail(item.error);
    if (options.json) {
      all.push_back(json_of(item));
    } else if (item.error.empty()) {
      print_line(item, what.operation == "dark");
    }
  }
  if (options.json) std::printf("%s\n", all.dump(2, ' ', false, Json::error_handler_t::replace).c_str());

  if (!what.sheet.empty()) {
    const bool second_first = wanted == ImageColour::Second;
    find_colours(others, second_first ? ImageColour::Dominant : ImageColour::Second);
    if (items.size() > kMostOnSheet) {
      status = fail("a sheet holds " + std::to_string(kMostOnSheet) + " images; the others are left out");
    }
    const auto written = second_first ? write_colour_sheet(others, items, what.sheet)
                                      : write_colour_sheet(items, others, what.sheet);
    if (!written) status = fail(written.error().message);
  }
  while (wispen_host_next_problem() != nullptr) {
    // Each broken image is named above.
  }
  return status;
}

}  // namespace wispen::program
