// wispen/home_screen.cpp: the other end of the domain, as the commands show it.

#include "wispen/home_screen.hpp"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "host/core/device_root.hpp"
#include "host/wispen_host.h"
#include "platform/CoreFoundation.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

// As home_screen/main.cpp answers.
constexpr char kPaint[] = "wispen.home-screen.paint";
constexpr char kPainted[] = "wispen.home-screen.painted";
constexpr double kLongestWait = 30;  // seconds; reached only where something is wrong

void tell_of_loss(const char* why, void*) { std::fprintf(stderr, "wispen: %s\n", why); }

void note_painted(const char*, unsigned long long, void* context) { *static_cast<bool*>(context) = true; }

std::vector<std::string> words_for(const std::string& root, const CommonOptions& options,
                                   const LookOptions& look) {
  std::vector<std::string> words{"--root", root, "--bundle", bundle_folder(options)};
  const std::pair<const char*, const std::string*> looks[] = {
      {"--appearance", &look.appearance}, {"--device", &look.device}, {"--orientation", &look.orientation}};
  for (const auto& [name, value] : looks) {
    if (!value->empty()) words.insert(words.end(), {name, *value});
  }
  return words;
}

template <class Char>
std::vector<Char*> pointers(std::vector<std::string>& words) {
  std::vector<Char*> all;
  for (std::string& word : words) all.push_back(word.data());
  all.push_back(nullptr);
  return all;
}

/// Does what makes the home screen paint, which may fail with the host's last error, and waits until it has.
/// Exactly one reply per request: a second one would be taken for the next request's.
template <class Cause>
Result<void> await_painted_after(Cause cause) {
  bool painted = false;
  const int listening = wispen_host_listen(kPainted, note_painted, &painted);
  if (listening == 0) return Error{wispen_host_last_error()};
  if (!cause()) {
    const std::string why = wispen_host_last_error();
    wispen_host_stop_listening(listening);
    return Error{why};
  }
  const double end = wispen_host_now() + kLongestWait;
  while (!painted && wispen_host_now() < end && wispen_host_process("SpringBoard") != 0) {
    if (wispen_host_run_for(0.01) == 0) break;
  }
  wispen_host_stop_listening(listening);
  if (!painted) return Error{"the home screen does not paint its picture"};
  return {};
}

}  // namespace

Result<void> start_home_screen(const CommonOptions& options, const LookOptions& look,
                               const std::string& picture) {
  std::vector<std::string> words = words_for(wispen_host_root(), options, look);
  if (!picture.empty()) words.insert(words.end(), {"--picture", std::filesystem::absolute(picture).string()});
  const auto start = [&words] {
    return wispen_host_start_processes(nullptr, pointers<const char>(words).data(), tell_of_loss, nullptr) !=
           0;
  };
  if (!picture.empty()) return await_painted_after(start);
  if (!start()) return Error{wispen_host_last_error()};
  return {};
}

void tell_without_home_screen(const std::string& why) {
  std::fprintf(stderr, "wispen: there is no home screen, for %s\n", why.c_str());
}

Result<void> await_home_screen_picture() {
  return await_painted_after([] {
    CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), NSString(kPaint),
                                         nullptr, NSDictionary(), true);
    return true;
  });
}

int snapshot_home_screen(const CommonOptions& options, const SnapshotOptions& what) {
  const std::string folder = options.root.empty() ? wispen_host_default_root() : options.root;
  const auto root = DeviceRoot::open(folder, layout_from_name(options.layout));
  if (!root) return fail(root.error().message);
  const std::string file = what.output.empty() ? "home-screen.png" : what.output;
  const std::string program = program_folder() + "/stand-ins/SpringBoard";
  std::vector<std::string> words = words_for(root->path(), options, what.look);
  words.insert(words.begin(), "SpringBoard");
  words.insert(words.end(), {"--picture", file, "--once"});
  if (what.scale != 0) words.insert(words.end(), {"--scale", std::to_string(what.scale)});
  pid_t process = 0;
  const int error =
      ::posix_spawn(&process, program.c_str(), nullptr, nullptr, pointers<char>(words).data(), environ);
  if (error != 0) return fail("'" + program + "' cannot be started: " + std::strerror(error));
  int status = 0;
  while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return fail("the home screen was not painted");
  if (options.json) {
    std::printf("%s\n", Json{{"page", "home-screen"}, {"file", file}}.dump().c_str());
  } else {
    std::printf("%s\n", file.c_str());
  }
  return kDone;
}

}  // namespace wispen::program
