// wispen/commands.hpp: the commands of the program. Each gives the program's exit status.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wispen/session.hpp"

namespace wispen::program {

/// Every page's rows, or one page's.
int list_pages(const CommonOptions& options, const std::string& page);

struct DefaultsOptions {
  std::string page;
  std::string key;
  std::string value;
  std::string type;  // empty: as the row says
};
int read_defaults(const CommonOptions& options, const DefaultsOptions& what);
int write_defaults(const CommonOptions& options, const DefaultsOptions& what);

struct WatchOptions {
  std::string name;               // empty: every name
  unsigned long long count = 0;   // ends after so many posts; 0: never
  std::optional<double> timeout;  // ends after so many seconds, as a failure where posts are still missing
};
int watch_notifications(const CommonOptions& options, const WatchOptions& what);
int post_notification(const CommonOptions& options, const std::string& name);

struct RunOptions {
  LookOptions look;
  std::string page;      // empty: the root page
  std::string pictures;  // where a tour leaves its pictures
  bool without_window = false;
  bool without_home_screen = false;
};
/// The main job. With a display, a window on the pages that follows their files; without one, a tour.
int run(const CommonOptions& options, const RunOptions& what);

/// Sets a value on each page, shows what another process sees of it, and leaves pictures of all pages in that
/// folder.
int tour(const CommonOptions& options, const RunOptions& what);

/// Checks the bundle's specifier lists.
int lint(const CommonOptions& options);

struct SnapshotOptions {
  LookOptions look;
  std::string page;    // empty: the root page
  std::string output;  // a file, or a folder for all pages
  double scale = 0;    // 0: the device's
  bool all = false;
  bool whole_page = false;
  bool home = false;  // the home screen in place of a page
};
/// Pictures of one page or of all of them, or of the home screen.
int snapshot(const CommonOptions& options, const SnapshotOptions& what);

struct InspectOptions {
  LookOptions look;
  std::string page;  // empty: the root page
};
/// What is on a page's screen: the tree of views, and the row beside each cell.
int inspect(const CommonOptions& options, const InspectOptions& what);

struct DriveOptions {
  LookOptions look;
  std::string script;   // a file, or "-"
  bool follow = false;  // the bundle's files; and steps are done as they come
  std::string failure_picture = "failure.png";
};
/// Uses the pages as a script says: one line of JSON a step, and a picture of the moment at the first
/// failure.
int drive(const CommonOptions& options, const DriveOptions& what);

struct ColourOptions {
  std::string operation;  // hex, dark, dominant or second
  std::vector<std::string> inputs;
  std::string sheet;  // empty: none
};
/// The bundle's colour operations on texts, image files and folders of them.
int colour(const CommonOptions& options, const ColourOptions& what);

struct PackageOptions {
  std::string operation;  // verify, install, remove or status
  std::string file;       // empty for install: the one beside this program
};
/// Checks packages of the bundle, and installs them into a device root.
int package(const CommonOptions& options, const PackageOptions& what);

}  // namespace wispen::program
