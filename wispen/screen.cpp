// wispen/screen.cpp: what the commands with a screen share.

#include "wispen/screen.hpp"

#include <algorithm>

#include "host/wispen_host.h"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

constexpr double kLongestSettling = 20;

}  // namespace

std::vector<ShownPage> shown_pages(const Session& session) {
  std::vector<ShownPage> all{{"", "Settings"}};
  for (const Page& page : session.pages()) all.push_back({page.cls, page.list});
  return all;
}

bool show_page(const Session& session, const std::string& name) {
  std::string cls = name.empty() ? "root" : name;
  if (cls == "settings" || cls == "Settings") {
    cls.clear();
  } else if (cls != "root") {
    const auto page = session.page(name);
    if (!page) return false;
    cls = page->cls;
  }
  // A wall clock settles by itself.
  if (wispen_host_show_page(cls.c_str()) == 0 ||
      (!session.on_wall_clock() && wispen_host_settle(kLongestSettling) == 0)) {
    fail(wispen_host_last_error());
    return false;
  }
  return true;
}

}  // namespace wispen::program
