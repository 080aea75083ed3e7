// home_screen/processes/end_named.cpp

#include "home_screen/processes/end_named.hpp"

#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <csignal>
#include <optional>
#include <string_view>
#include <utility>

#include "host/core/process_record.hpp"
#include "host/core/unique_fd.hpp"

namespace wispen {
namespace {

constexpr std::array kSignals{
    std::pair{std::string_view("HUP"), SIGHUP},   std::pair{std::string_view("INT"), SIGINT},
    std::pair{std::string_view("QUIT"), SIGQUIT}, std::pair{std::string_view("ABRT"), SIGABRT},
    std::pair{std::string_view("KILL"), SIGKILL}, std::pair{std::string_view("USR1"), SIGUSR1},
    std::pair{std::string_view("USR2"), SIGUSR2}, std::pair{std::string_view("TERM"), SIGTERM},
    std::pair{std::string_view("CONT"), SIGCONT}, std::pair{std::string_view("STOP"), SIGSTOP}};

std::optional<int> signal_from(std::string_view word) {
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error == std::errc() && end == word.data() + word.size() && number >= 0 && number <= SIGRTMAX)
    return number;
  if (word.starts_with("SIG")) word.remove_prefix(3);
  for (const auto& [name, value] : kSignals) {
    if (word == name) return value;
  }
  return std::nullopt;
}

bool signal_process(const ProcessRecord& record, const DeviceRoot& root, int signal) {
  // The handle comes first: should the id be given to another process from now on, the handle still means
  // this one, and what is asked next is either about it or about nobody who will be signalled.
  const UniqueFd handle(static_cast<int>(syscall(SYS_pidfd_open, record.process, 0)));
  if (!handle || !holds_true(record, root)) return false;
  return syscall(SYS_pidfd_send_signal, handle.get(), signal, nullptr, 0) == 0;
}

}  // namespace

Result<KillallRequest> killall_request(const std::vector<std::string>& words) {
  KillallRequest request;
  request.signal = SIGTERM;
  std::size_t at = 0;
  for (; at < words.size() && words[at].size() > 1 && words[at].front() == '-'; ++at) {
    if (words[at] == "--") {
      ++at;
      break;
    }
    const bool apart = words[at] == "-s";
    if (apart && ++at == words.size()) return Error{"a signal is missing after -s"};
    const std::string word = apart ? words[at] : words[at].substr(1);
    const auto signal = signal_from(word);
    if (!signal) return Error{"there is no signal or option '" + word + "'"};
    request.signal = *signal;
  }
  request.names.assign(words.begin() + static_cast<std::ptrdiff_t>(at), words.end());
  if (request.names.empty()) return Error{"the name of a process is missing"};
  return request;
}

std::size_t signal_named(const DeviceRoot& root, const std::string& name, int signal) {
  std::size_t count = 0;
  for (const ProcessRecord& record : read_process_records(root, name)) {
    if (signal_process(record, root, signal)) ++count;
  }
  return count;
}

}  // namespace wispen
