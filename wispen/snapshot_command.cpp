// wispen/snapshot_command.cpp: wispen snapshot: pictures of pages.

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/home_screen.hpp"
#include "wispen/output.hpp"
#include "wispen/screen.hpp"

namespace wispen::program {

namespace {

int take(const CommonOptions& options, const SnapshotOptions& what, const std::string& file) {
  if (wispen_host_snapshot(file.c_str(), what.scale, what.whole_page ? 1 : 0) == 0) {
    return fail(wispen_host_last_error());
  }
  if (options.json) {
    std::printf("%s\n", Json{{"page", wispen_host_shown_page()}, {"file", file}}.dump().c_str());
  } else {
    std::printf("%s\n", file.c_str());
  }
  return kDone;
}

int take_all(const CommonOptions& options, const SnapshotOptions& what, const Session& session) {
  const std::filesystem::path folder = what.output.empty() ? "." : what.output;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return fail("the folder " + folder.string() + " cannot be made: " + error.message());
  for (const ShownPage& page : shown_pages(session)) {
    const objc::AutoreleasePool pool;
    if (!show_page(session, page.cls.empty() ? "settings" : page.cls)) return kFailed;
    if (const int status = take(options, what, folder / (page.name + ".png")); status != kDone) return status;
  }
  return kDone;
}

}  // namespace

int snapshot(const CommonOptions& options, const SnapshotOptions& what) {
  if (what.home) return snapshot_home_screen(options, what);
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_screen(options, what.look);
  if (!session) return kFailed;
  int status = kFailed;
  if (what.all) {
    status = take_all(options, what, *session);
  } else if (show_page(*session, what.page)) {
    status = take(options, what, what.output.empty() ? "page.png" : what.output);
  }
  print_problems();
  return status;
}

}  // namespace wispen::program
