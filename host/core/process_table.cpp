// host/core/process_table.cpp: the named processes that a device would have, started and watched.

#include "host/core/process_table.hpp"

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "host/core/current_root.hpp"
#include "host/core/spawn.hpp"

namespace wispen {
namespace {

// glibc's own declarations of these two lack C linkage before 2.37.
int open_handle(pid_t process) { return static_cast<int>(syscall(SYS_pidfd_open, process, 0)); }

bool send_signal(const UniqueFd& handle, int signal) {
  return syscall(SYS_pidfd_send_signal, handle.get(), signal, nullptr, 0) == 0;
}

std::vector<char*> pointers(std::vector<std::string>& words) {
  std::vector<char*> result;
  result.reserve(words.size() + 1);
  for (std::string& word : words) result.push_back(word.data());
  result.push_back(nullptr);
  return result;
}

/// Ends a process of ours for good and waits for it.
void end_at_once(pid_t process) {
  kill(process, SIGKILL);
  reap(process, nullptr, 0);
}

}  // namespace

ProcessTable::~ProcessTable() { stop(); }

Result<void> ProcessTable::launch(std::size_t number, Entry& entry) {
  std::vector<std::string> words{entry.name};
  words.insert(words.end(), entry.arguments.begin(), entry.arguments.end());
  const std::vector<char*> arguments = pointers(words);
  const std::vector<char*> environment = pointers(entry.environment);
  if (const int error =
          spawn_below_root(&entry.process, entry.path.c_str(), arguments.data(), environment.data())) {
    return Error{"cannot start '" + entry.name + "' from '" + entry.path + "': " + std::strerror(error)};
  }
  entry.handle.reset(open_handle(entry.process));
  if (!entry.handle) {
    const std::string reason = std::strerror(errno);
    end_at_once(entry.process);
    return Error{"cannot watch over '" + entry.name + "': " + reason};
  }
  const auto root = current_root();
  auto record = root ? ProcessRecordFile::write(*root, entry.name, entry.process)
                     : Result<ProcessRecordFile>(Error{"there is no device root"});
  if (!record) {
    end_at_once(entry.process);
    return record.error();
  }
  entry.record = *std::move(record);
  entry.started = Clock::steady_now();
  entry.watch = loop_.watch(entry.handle.get(), POLLIN, [this, number](short) { ended(number); });
  return {};
}

Result<pid_t> ProcessTable::start(const std::string& name, const std::string& path,
                                  std::vector<std::string> arguments, std::vector<std::string> environment,
                                  WhenItEnds when_it_ends) {
  Entry entry;
  entry.name = name;
  entry.path = path;
  entry.arguments = std::move(arguments);
  entry.environment = std::move(environment);
  entry.when_it_ends = when_it_ends;
  const std::size_t number = next_++;
  if (auto launched = launch(number, entry); !launched) return launched.error();
  const pid_t process = entry.process;
  entries_.emplace(number, std::move(entry));
  return process;
}

void ProcessTable::ended(std::size_t number) {
  const auto place = entries_.find(number);
  if (place == entries_.end()) return;
  Entry& entry = place->second;
  loop_.unwatch(entry.watch);
  entry.record = ProcessRecordFile();
  // Foundation may have collected it already; the handle says that it has ended, and that is enough.
  int status = 0;
  const bool asked = reap(entry.process, &status, WNOHANG) == entry.process && WIFSIGNALED(status) &&
                     WTERMSIG(status) == SIGTERM;
  const bool quick = !asked && Clock::steady_now() - entry.started < kQuick;
  entry.quick_restarts = quick ? entry.quick_restarts + 1 : 0;
  ProcessEnd end{entry.name, {}, {}};
  if (entry.when_it_ends == WhenItEnds::StartAgain) {
    if (entry.quick_restarts > kMaxQuickRestarts) {
      end.why_not =
          "'" + entry.name + "' ended at once each time that it was started, and is not started again";
    } else if (const auto launched = launch(number, entry); !launched) {
      end.why_not = launched.error().message;
    } else {
      end.again = entry.process;
    }
  }
  if (!end.again) entries_.erase(place);
  if (observer_) observer_(end);
}

std::size_t ProcessTable::end_by_name(const std::string& name, int signal) {
  std::size_t count = 0;
  for (const auto& [number, entry] : entries_) {
    if (entry.name == name && send_signal(entry.handle, signal)) ++count;
  }
  return count;
}

std::vector<pid_t> ProcessTable::processes(const std::string& name) const {
  std::vector<pid_t> result;
  for (const auto& [number, entry] : entries_) {
    if (entry.name == name) result.push_back(entry.process);
  }
  return result;
}

void ProcessTable::stop(std::chrono::milliseconds bound) {
  for (const auto& [number, entry] : entries_) {
    loop_.unwatch(entry.watch);
    send_signal(entry.handle, SIGTERM);
    send_signal(entry.handle, SIGCONT);  // a stopped one would not hear it
  }
  const Nanoseconds end = Clock::steady_now() + bound;
  for (const auto& [number, entry] : entries_) {
    pollfd polled{entry.handle.get(), POLLIN, 0};
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::steady_now());
    const int wait = static_cast<int>(std::max<std::int64_t>(left.count(), 0));
    if (poll(&polled, 1, wait) == 0) send_signal(entry.handle, SIGKILL);
    reap(entry.process, nullptr, 0);
  }
  entries_.clear();
}

}  // namespace wispen
