// host/program/commands.hpp: the commands of the program. Each gives the program's exit status.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/program/session.hpp"

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

/// The main job, without a screen: sets values on the pages and shows what another process sees of it.
int tour(const CommonOptions& options);

/// Checks the bundle's specifier lists.
int lint(const CommonOptions& options);

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
