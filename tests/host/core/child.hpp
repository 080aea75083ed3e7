// tests/host/core/child.hpp: a forked process of a test's own, ended with it.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>

namespace wispen::testing {

/// Runs `body(output)` in a forked process; what it writes to the descriptor can be read here by lines.
class Child {
 public:
  explicit Child(const std::function<void(int)>& body) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) abort();
    process_ = fork();
    if (process_ == 0) {
      close(ends[0]);
      body(ends[1]);
      _exit(0);
    }
    close(ends[1]);
    output_ = ends[0];
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    close(output_);
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
  }

  pid_t process() const { return process_; }

  /// The next line, without its end; what is left when the process has ended.
  std::string line() const {
    std::string text;
    char c = 0;
    while (::read(output_, &c, 1) == 1 && c != '\n') text += c;
    return text;
  }

  void stop() const {
    kill(process_, SIGSTOP);
    int status = 0;
    waitpid(process_, &status, WUNTRACED);
  }
  void go_on() const { kill(process_, SIGCONT); }
  int end(int signal = SIGKILL) {
    kill(process_, signal);
    return wait();
  }
  int wait() {
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return status;
  }

 private:
  pid_t process_ = 0;
  int output_ = -1;
};

inline void say(int fd, const std::string& line) {
  const std::string text = line + "\n";
  if (write(fd, text.data(), text.size()) < 0) _exit(1);
}

}  // namespace wispen::testing
