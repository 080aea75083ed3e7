// wispen/package/command.cpp

#include "wispen/package/command.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "host/core/unique_fd.hpp"

namespace wispen::package {

namespace {

std::string all_of(int fd) {
  constexpr std::size_t kMost = std::size_t{1} << 20;
  std::string text;
  char buffer[4096];
  for (;;) {
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return text;
    if (text.size() < kMost) text.append(buffer, static_cast<std::size_t>(got));
  }
}

}  // namespace

Result<CommandResult> run_command(const std::vector<std::string>& words) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return Error{std::string("cannot make a pipe: ") + std::strerror(errno)};
  const UniqueFd reading(ends[0]);
  UniqueFd writing(ends[1]);

  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  // dpkg looks for its helpers on the path; an account's own may lack the administrator's folders.
  char path[] = "PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";
  char locale[] = "LC_ALL=C";
  char* const environment[] = {path, locale, nullptr};

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, writing.get(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, writing.get(), STDERR_FILENO);
  pid_t child = -1;
  const int failure =
      ::posix_spawnp(&child, words.front().c_str(), &actions, nullptr, arguments.data(), environment);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) return Error{"cannot run " + words.front() + ": " + std::strerror(failure)};
  writing.reset();

  CommandResult result;
  result.output = all_of(reading.get());
  int status = 0;
  // This child and no other: Foundation reaps its own in the same process.
  pid_t ended = -1;
  do {
    ended = ::waitpid(child, &status, 0);
  } while (ended < 0 && errno == EINTR);
  if (ended != child) return Error{"lost sight of " + words.front()};
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

}  // namespace wispen::package
