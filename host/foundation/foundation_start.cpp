// host/foundation/foundation_start.cpp: bringing Foundation up without touching the account's own files.

#include "host/foundation/foundation_start.hpp"

#include <string>

#include "host/core/device_root.hpp"
#include "host/foundation/bundle.hpp"
#include "host/foundation/dates.hpp"
#include "host/foundation/file_dictionaries.hpp"
#include "host/foundation/task_environment.hpp"
#include "host/foundation/written_files.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

namespace {

extern "C" {
/// Foundation's own door for a configuration made by the program; it works out its paths again.
objc::abi::id GNUstepConfig(objc::abi::id configuration);
}

// Foundation ignores $HOME and keeps its defaults below the account's home. A configuration file would have
// to be named in the environment before the process starts, so it is told directly. The folder can never be
// made: Foundation's own defaults live and die with the process.
void keep_out_of_the_home() {
  const objc::AutoreleasePool pool;
  const auto configuration = objc::retain<NSDictionary>(GNUstepConfig(nullptr)).mutableCopy();
  for (const NSString& key : {"GNUSTEP_USER_DIR"_ns, "GNUSTEP_USER_DEFAULTS_DIR"_ns}) {
    configuration.setObject(NSString((std::string(DeviceRoot::kNowhere) + "/foundation").c_str()), key);
  }
  configuration.setObject("none"_ns, "GNUSTEP_USER_CONFIG_FILE"_ns);
  GNUstepConfig(objc::borrow(configuration));
}

}  // namespace

Result<void> start_foundation() {
  static bool started = false;
  if (started) return {};
  // Nothing in C++ names a symbol of Foundation: linked without care it is dropped, and every message
  // after that is lost without a word.
  if (!objc::class_named<"NSString">())
    return Error{"Foundation is not linked: the class NSString is missing"};
  keep_out_of_the_home();
  install_file_dictionaries();
  install_dates();
  install_written_files();
  install_bundles();
  install_task_environment();
  started = true;
  return {};
}

}  // namespace wispen
