// wispen/watching_process.cpp: another process that listens.

#include "wispen/watching_process.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <sstream>
#include <utility>

namespace wispen::program {

namespace {

/// Everything up to the end, or up to the first line's end.
std::string read_text(int fd, bool one_line) {
  std::string text;
  char buffer[512];
  while (true) {
    const ssize_t count = ::read(fd, buffer, one_line ? 1 : sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer, static_cast<std::size_t>(count));
    if (one_line && text.back() == '\n') return text;
  }
}

}  // namespace

std::optional<WatchingProcess> WatchingProcess::start(const std::string& root, const std::string& name,
                                                      unsigned long long posts, double timeout) {
  int output[2];
  int ready[2];
  if (::pipe2(output, O_CLOEXEC) != 0) return std::nullopt;
  if (::pipe2(ready, O_CLOEXEC) != 0) {
    ::close(output[0]);
    ::close(output[1]);
    return std::nullopt;
  }
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, ready[1], STDERR_FILENO);

  std::vector<std::string> words{"wispen",
                                 "notify",
                                 "watch",
                                 "--root",
                                 root,
                                 "--count",
                                 std::to_string(posts),
                                 "--timeout",
                                 std::to_string(timeout)};
  if (!name.empty()) words.push_back(name);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t pid = -1;
  const int error = ::posix_spawn(&pid, "/proc/self/exe", &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(output[1]);
  ::close(ready[1]);
  const std::string said = error == 0 ? read_text(ready[0], true) : std::string();
  ::close(ready[0]);
  if (said.find("watching") == std::string::npos) {
    ::close(output[0]);
    if (error == 0) ::waitpid(pid, nullptr, 0);
    return std::nullopt;
  }
  return WatchingProcess(pid, output[0]);
}

WatchingProcess::WatchingProcess(WatchingProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)), output_(std::exchange(other.output_, -1)) {}

WatchingProcess::~WatchingProcess() {
  if (output_ >= 0) ::close(output_);
  if (pid_ > 0) {
    ::kill(pid_, SIGTERM);
    ::waitpid(pid_, nullptr, 0);
  }
}

std::vector<std::string> WatchingProcess::finish() {
  std::vector<std::string> lines;
  std::istringstream stream(read_text(output_, false));
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  ::waitpid(std::exchange(pid_, -1), nullptr, 0);
  return lines;
}

}  // namespace wispen::program
