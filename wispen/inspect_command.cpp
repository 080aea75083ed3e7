// wispen/inspect_command.cpp: wispen inspect: what is on a page's screen.

#include <cstdio>

#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/output.hpp"
#include "wispen/screen.hpp"

namespace wispen::program {

namespace {

std::string short_number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

/// One line: class, frame, and whatever the view says.
void print_view(const Json& view, int depth) {
  std::string line(static_cast<std::size_t>(depth) * 2, ' ');
  line += view["class"].get<std::string>();
  line += " (";
  for (std::size_t i = 0; i < 4; ++i)
    line += (i > 0 ? " " : "") + short_number(view["frame"][i].get<double>());
  line += ")";
  for (const auto& [name, value] : view.items()) {
    if (name == "class" || name == "frame" || name == "subviews") continue;
    if (name == "row") {
      line += "   row " + value.value("id", std::string());
      if (value.contains("key")) line += " key=" + value["key"].get<std::string>();
      line += " " + value.value("cell", std::string());
      continue;
    }
    line += " " + name + "=" + value.dump();
  }
  std::printf("%s\n", shown(line).c_str());
  if (!view.contains("subviews")) return;
  for (const Json& subview : view["subviews"]) print_view(subview, depth + 1);
}

}  // namespace

int inspect(const CommonOptions& options, const InspectOptions& what) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_screen(options, what.look);
  if (!session || !show_page(*session, what.page)) return kFailed;
  const char* const tree = wispen_host_view_tree();
  if (tree == nullptr) return fail(wispen_host_last_error());
  const Json windows = Json::parse(tree);
  if (options.json) {
    std::printf("%s\n", windows.dump(2).c_str());
  } else {
    for (const Json& window : windows) print_view(window, 0);
  }
  print_problems();
  return kDone;
}

}  // namespace wispen::program
