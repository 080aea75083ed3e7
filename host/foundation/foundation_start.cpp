// host/foundation/foundation_start.cpp: bringing Foundation up without touching the account's own files.

#include "host/foundation/foundation_start.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "host/foundation/bundle.hpp"
#include "host/foundation/file_dictionaries.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

namespace {

// Foundation ignores $HOME and keeps its defaults below the account's home, unless a configuration file
// says otherwise; it looks for that file once, when it first needs a path.
Result<void> write_private_configuration(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  const std::string file = folder + "/GNUstep.conf";
  std::ofstream configuration(file);
  configuration << "GNUSTEP_USER_DIR=" << folder << "\nGNUSTEP_USER_DEFAULTS_DIR=" << folder
                << "\nGNUSTEP_USER_CONFIG_FILE=none\n";
  configuration.close();
  if (error || !configuration) return Error{"cannot write Foundation's configuration " + file};
  // Foundation refuses a configuration that others may write.
  std::filesystem::permissions(file, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
                               error);
  ::setenv("GNUSTEP_CONFIG_FILE", file.c_str(), 1);
  return {};
}

}  // namespace

Result<void> start_foundation(const std::string& private_folder) {
  static bool started = false;
  if (started) return {};
  if (auto written = write_private_configuration(private_folder); !written) return written;
  // Nothing in C++ names a symbol of Foundation: linked without care it is dropped, and every message
  // after that is lost without a word.
  if (!objc::class_named<"NSString">())
    return Error{"Foundation is not linked: the class NSString is missing"};
  install_file_dictionaries();
  install_bundles();
  started = true;
  return {};
}

}  // namespace wispen
