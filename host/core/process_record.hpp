// host/core/process_record.hpp: which processes a host has started in a device root, for other processes to
// see.
//
// A record is one small file below the root. Whoever reads it believes nothing of it: files outlive the
// processes that they name, process ids are used again, and anybody can write a file. A record counts only
// where the kernel says the same.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/core/device_root.hpp"
#include "host/core/result.hpp"

namespace wispen {

/// What the kernel says about a process, from proc(5).
struct KernelProcess {
  pid_t parent = 0;
  std::uint64_t started = 0;  ///< clock ticks after the machine's start
  uid_t user = 0;
  std::string program;  ///< the file that it runs; "" where that may not be known
};

/// Nothing where there is no such process, and for ids that are not above 1.
std::optional<KernelProcess> look_up_process(pid_t process);

struct ProcessRecord {
  std::string name;
  pid_t process = 0;
  std::uint64_t started = 0;
  pid_t host = 0;  ///< the process that started it, and waits for it
  std::uint64_t host_started = 0;

  bool operator==(const ProcessRecord&) const = default;
};

/// "/var/run/wispen-processes" on the phone.
std::string process_records_folder(const DeviceRoot& root);

/// The file's text, and back; nothing for a text that is not exactly one record.
std::string text_of(const ProcessRecord& record);
std::optional<ProcessRecord> record_from(std::string_view text);

/// Whether the kernel knows this very process, as the child of that very host, of this user, running a
/// program of that root.
bool holds_true(const ProcessRecord& record, const DeviceRoot& root);

/// A record of a child of this process; it is removed with the object.
class ProcessRecordFile {
 public:
  ProcessRecordFile() = default;
  ProcessRecordFile(ProcessRecordFile&& other) noexcept : path_(std::exchange(other.path_, {})) {}
  ProcessRecordFile& operator=(ProcessRecordFile&& other) noexcept {
    std::swap(path_, other.path_);
    return *this;
  }
  ~ProcessRecordFile();

  static Result<ProcessRecordFile> write(const DeviceRoot& root, const std::string& name, pid_t process);

 private:
  explicit ProcessRecordFile(std::string path) : path_(std::move(path)) {}
  std::string path_;
};

/// The records of that name that can be read, true or not. Links, files of other users and whatever is no
/// plain small file are passed over.
std::vector<ProcessRecord> read_process_records(const DeviceRoot& root, std::string_view name);

/// Removes what was left by hosts that had no time to do so.
void remove_stale_process_records(const DeviceRoot& root);

}  // namespace wispen
