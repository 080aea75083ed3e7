// host/processes/device_processes.cpp: the phone's own processes that a host plays.

#include "host/processes/device_processes.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "host/core/platform_dlfcn.hpp"
#include "host/core/process_record.hpp"
#include "host/processes/end_with_host.hpp"
#include "host/processes/stand_in_mark.hpp"

namespace wispen {
namespace {

namespace fs = std::filesystem;

constexpr char kSpringBoardPath[] = "/System/Library/CoreServices/SpringBoard.app/SpringBoard";
constexpr char kBackboarddPath[] = "/usr/libexec/backboardd";

/// What a window, its fonts and its library of widgets ask of the desktop.
constexpr const char* kPassedOn[] = {"DISPLAY",
                                     "WAYLAND_DISPLAY",
                                     "XAUTHORITY",
                                     "XDG_RUNTIME_DIR",
                                     "XDG_CONFIG_HOME",
                                     "XDG_CACHE_HOME",
                                     "XDG_DATA_HOME",
                                     "HOME",
                                     "PATH",
                                     "LANG",
                                     "FONTCONFIG_FILE",
                                     "ASAN_OPTIONS",
                                     "LSAN_OPTIONS",
                                     "TSAN_OPTIONS",
                                     "UBSAN_OPTIONS",
                                     "GDK_SCALE"};

std::string bytes_of(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

Error cannot_install(const std::string& device_path, const std::string& why) {
  return Error{"'" + device_path + "' cannot be put into the device root: " + why};
}

/// A copy and not a link, for a path that leads out of the root is not followed there.
Result<void> install(const DeviceRoot& root, const std::string& source, const std::string& device_path) {
  const auto target = root.resolve(device_path);
  if (!target) return target.error();
  const std::string wanted = bytes_of(source);
  if (wanted.empty()) return cannot_install(device_path, "'" + source + "' cannot be read");
  std::error_code error;
  if (const auto kind = fs::symlink_status(*target, error).type(); kind != fs::file_type::not_found) {
    const std::string there = kind == fs::file_type::regular ? bytes_of(*target) : std::string();
    if (there == wanted) return {};
    if (there.find(kStandInMark) == std::string::npos) {
      return cannot_install(device_path, "somebody else's is there");
    }
  }
  fs::create_directories(fs::path(*target).parent_path(), error);
  // The old program may be running: it is replaced by its name and never written over.
  const std::string draft = *target + "." + std::to_string(getpid());
  std::ofstream out(draft, std::ios::binary | std::ios::trunc);
  out << wanted;
  out.close();
  if (out && ::chmod(draft.c_str(), 0755) == 0) {
    fs::rename(draft, *target, error);
    if (!error) return {};
  }
  const std::string why = error ? error.message() : "it cannot be written";
  fs::remove(draft, error);
  return cannot_install(device_path, why);
}

std::vector<std::string> environment() {
  std::vector<std::string> words;
  for (const char* const name : kPassedOn) {
    if (const char* const value = std::getenv(name)) words.push_back(std::string(name) + "=" + value);
  }
  words.push_back("LD_LIBRARY_PATH=" + host_library_folder());  // a copy is no longer beside its libraries
  words.push_back(std::string(kHostProcessVariable) + "=" + std::to_string(getpid()));
  return words;
}

}  // namespace

std::string killall_path(Layout layout) {
  return layout == Layout::Rootless ? "/var/jb/usr/bin/killall" : "/usr/bin/killall";
}

Result<void> install_device_programs(const DeviceRoot& root, const std::string& programs) {
  const std::pair<const char*, std::string> all[] = {{"killall", killall_path(root.layout())},
                                                     {kBackboardd, kBackboarddPath},
                                                     {kSpringBoard, kSpringBoardPath}};
  for (const auto& [name, path] : all) {
    if (auto installed = install(root, programs + "/" + name, path); !installed) return installed;
  }
  return {};
}

DeviceProcesses::DeviceProcesses(MainLoop& loop, std::function<void(const std::string&)> lost)
    : lost_(std::move(lost)), table_(loop) {
  table_.set_observer([this](const ProcessEnd& end) { ended(end); });
}

Result<std::unique_ptr<DeviceProcesses>> DeviceProcesses::start(MainLoop& loop, const DeviceRoot& root,
                                                                Options options) {
  remove_stale_process_records(root);
  if (auto installed = install_device_programs(root, options.programs); !installed) return installed.error();
  std::unique_ptr<DeviceProcesses> processes(new DeviceProcesses(loop, std::move(options.lost)));
  const std::vector<std::string> given = environment();
  const auto first = processes->table_.start(kBackboardd, kBackboarddPath, {}, given, WhenItEnds::StartAgain);
  if (!first) return first.error();
  const auto second =
      processes->table_.start(kSpringBoard, kSpringBoardPath, std::move(options.home_screen_arguments), given,
                              WhenItEnds::StartAgain);
  if (!second) return second.error();
  return processes;
}

void DeviceProcesses::ended(const ProcessEnd& end) {
  if (end.name == kBackboardd) table_.end_by_name(kSpringBoard, SIGTERM);
  if (!end.why_not.empty() && lost_) lost_(end.why_not);
}

}  // namespace wispen
