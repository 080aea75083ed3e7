// host/core/process_record.cpp: which processes a host has started in a device root, for other processes
// to see.

#include "host/core/process_record.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <functional>
#include <memory>

#include "host/core/unique_fd.hpp"

namespace wispen {
namespace {

constexpr std::string_view kFolder = "/var/run/wispen-processes";
constexpr std::string_view kFirstLine = "wispen process 1";
constexpr std::size_t kMaxRecord = 1024;

std::string read_small(int fd, std::size_t most) {
  std::string text(most + 1, '\0');
  std::size_t used = 0;
  while (used < text.size()) {
    const ssize_t count = ::read(fd, text.data() + used, text.size() - used);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    used += static_cast<std::size_t>(count);
  }
  text.resize(used);
  return text;
}

/// The whole text as a number; nothing for signs, blanks and what does not fit.
template <class T>
std::optional<T> number_from(std::string_view text) {
  T value{};
  if (text.empty() || text.front() == '-') return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::string_view next_part(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return part;
}

/// The folder, where it is this user's and nobody else can write into it.
UniqueFd open_folder(const DeviceRoot& root) {
  UniqueFd folder(
      ::open(process_records_folder(root).c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!folder || fstat(folder.get(), &status) != 0) return {};
  if (status.st_uid != geteuid() || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0) return {};
  return folder;
}

std::optional<ProcessRecord> read_record(int folder, const char* file) {
  // Not blocking, for a FIFO would wait here for its writer.
  const UniqueFd fd(openat(folder, file, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!fd || fstat(fd.get(), &status) != 0) return std::nullopt;
  if (!S_ISREG(status.st_mode) || status.st_uid != geteuid() || status.st_nlink != 1) return std::nullopt;
  return record_from(read_small(fd.get(), kMaxRecord));
}

void for_each_record(const DeviceRoot& root,
                     const std::function<void(int folder, const char* file, const ProcessRecord&)>& body) {
  const UniqueFd folder = open_folder(root);
  if (!folder) return;
  const int listed = fcntl(folder.get(), F_DUPFD_CLOEXEC, 0);
  const auto close_listing = [](DIR* listing) { closedir(listing); };
  const std::unique_ptr<DIR, decltype(close_listing)> listing(listed >= 0 ? fdopendir(listed) : nullptr);
  if (!listing) return;
  while (const dirent* const entry = readdir(listing.get())) {
    if (entry->d_name[0] == '.') continue;
    const auto record = read_record(folder.get(), entry->d_name);
    // A record has one place, so that a copy of it is none.
    if (record && std::to_string(record->process) == entry->d_name)
      body(folder.get(), entry->d_name, *record);
  }
}

Error cannot_note(const std::string& name, const std::string& why) {
  return Error{"the process '" + name + "' cannot be noted in the device root: " + why};
}

}  // namespace

std::optional<KernelProcess> look_up_process(pid_t process) {
  if (process <= 1) return std::nullopt;
  const std::string place = "/proc/" + std::to_string(process);
  const UniqueFd folder(::open(place.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  struct stat status {};
  if (!folder || fstat(folder.get(), &status) != 0) return std::nullopt;
  const UniqueFd file(openat(folder.get(), "stat", O_RDONLY | O_CLOEXEC));
  if (!file) return std::nullopt;
  const std::string text = read_small(file.get(), 4096);
  // The name may hold anything, also blanks and brackets; what follows the last one does not.
  const std::size_t end_of_name = text.rfind(')');
  if (end_of_name == std::string::npos || end_of_name + 2 >= text.size()) return std::nullopt;
  std::string_view rest(text);
  rest.remove_prefix(end_of_name + 2);
  KernelProcess result;
  result.user = status.st_uid;
  constexpr int kState = 3, kParent = 4, kStarted = 22;
  for (int field = kState; field <= kStarted; ++field) {
    const std::string_view part = next_part(rest, ' ');
    if (field == kParent) result.parent = number_from<pid_t>(part).value_or(0);
    if (field != kStarted) continue;
    const auto started = number_from<std::uint64_t>(part);
    if (!started) return std::nullopt;
    result.started = *started;
  }
  std::array<char, PATH_MAX> program{};
  const ssize_t length = readlinkat(folder.get(), "exe", program.data(), program.size());
  if (length > 0) result.program.assign(program.data(), static_cast<std::size_t>(length));
  return result;
}

std::string process_records_folder(const DeviceRoot& root) { return root.resolve_or_nowhere(kFolder); }

std::string text_of(const ProcessRecord& record) {
  return std::string(kFirstLine) + "\n" + record.name + "\n" + std::to_string(record.process) + "\n" +
         std::to_string(record.started) + "\n" + std::to_string(record.host) + "\n" +
         std::to_string(record.host_started) + "\n";
}

std::optional<ProcessRecord> record_from(std::string_view text) {
  if (text.empty() || text.size() > kMaxRecord || text.back() != '\n') return std::nullopt;
  if (next_part(text, '\n') != kFirstLine) return std::nullopt;
  ProcessRecord record;
  record.name = next_part(text, '\n');
  const auto process = number_from<pid_t>(next_part(text, '\n'));
  const auto started = number_from<std::uint64_t>(next_part(text, '\n'));
  const auto host = number_from<pid_t>(next_part(text, '\n'));
  const auto host_started = number_from<std::uint64_t>(next_part(text, '\n'));
  if (record.name.empty() || !process || !started || !host || !host_started || !text.empty())
    return std::nullopt;
  if (*process <= 1 || *host <= 1) return std::nullopt;
  record.process = *process;
  record.started = *started;
  record.host = *host;
  record.host_started = *host_started;
  return record;
}

bool holds_true(const ProcessRecord& record, const DeviceRoot& root) {
  const auto process = look_up_process(record.process);
  const auto host = look_up_process(record.host);
  if (!process || !host) return false;
  const uid_t user = geteuid();
  return process->started == record.started && process->user == user && process->parent == record.host &&
         host->started == record.host_started && host->user == user &&
         process->program.starts_with(root.path() + "/");
}

ProcessRecordFile::~ProcessRecordFile() {
  if (!path_.empty()) unlink(path_.c_str());
}

Result<ProcessRecordFile> ProcessRecordFile::write(const DeviceRoot& root, const std::string& name,
                                                   pid_t process) {
  const auto child = look_up_process(process);
  const auto host = look_up_process(getpid());
  if (!child || !host) return cannot_note(name, "it has ended already");
  const std::string place = process_records_folder(root);
  if (mkdir(place.c_str(), 0700) != 0 && errno != EEXIST) return cannot_note(name, std::strerror(errno));
  const UniqueFd folder = open_folder(root);
  if (!folder) return cannot_note(name, "'" + place + "' is not a folder of this user alone");

  const std::string text = text_of({name, process, child->started, getpid(), host->started});
  const std::string file = std::to_string(process);
  const std::string draft = "." + file;
  unlinkat(folder.get(), draft.c_str(), 0);
  const UniqueFd fd(openat(folder.get(), draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  const bool written = fd && ::write(fd.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
  if (!written || renameat(folder.get(), draft.c_str(), folder.get(), file.c_str()) != 0) {
    const std::string why = std::strerror(errno);
    unlinkat(folder.get(), draft.c_str(), 0);
    return cannot_note(name, why);
  }
  return ProcessRecordFile(place + "/" + file);
}

std::vector<ProcessRecord> read_process_records(const DeviceRoot& root, std::string_view name) {
  std::vector<ProcessRecord> records;
  for_each_record(root, [&](int, const char*, const ProcessRecord& record) {
    if (record.name == name) records.push_back(record);
  });
  return records;
}

void remove_stale_process_records(const DeviceRoot& root) {
  for_each_record(root, [&](int folder, const char* file, const ProcessRecord& record) {
    const auto process = look_up_process(record.process);
    if (!process || process->started != record.started) unlinkat(folder, file, 0);
  });
}

}  // namespace wispen
