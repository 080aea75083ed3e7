// tests/host/processes/stayer_fixture.hpp: processes of a device root that stay until they are ended.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "host/core/process_record.hpp"
#include "host/core/process_table.hpp"
#include "tests/host/core/device_fixture.hpp"

namespace wispen::testing {

class WithStayers : public OnADevice {
 protected:
  WithStayers() {
    std::filesystem::copy_file("/bin/sleep", root().path() + "/usr/bin/stayer");
    std::filesystem::copy_file("/bin/false", root().path() + "/usr/bin/crasher");
  }

  pid_t start_stayer(const std::string& name, WhenItEnds when = WhenItEnds::Forget) {
    const auto started = table.start(name, "/usr/bin/stayer", {"1000"}, {}, when);
    EXPECT_TRUE(started) << (started ? "" : started.error().message);
    const pid_t process = started ? *started : 0;
    // A new process runs its parent's program until the kernel has given it its own.
    run_until([&] {
      const auto known = look_up_process(process);
      return known && known->program.starts_with(root().path());
    });
    return process;
  }
  template <class Condition>
  void run_until(Condition condition) {
    using namespace std::chrono_literals;
    bool held = condition();
    for (int i = 0; i < 4000 && !held; ++i) {
      ASSERT_TRUE(loop.run_for(2ms));
      held = condition();
    }
    EXPECT_TRUE(held);
  }
  /// Written as it is, whatever it is, under that name.
  void put_record(const std::string& file, const std::string& text) const {
    folder_.write("root/var/run/wispen-processes/" + file, text);
  }
  void put_record(const ProcessRecord& record) const {
    put_record(std::to_string(record.process), text_of(record));
  }
  /// A record that is true of a process, but for what the test changes in it.
  static ProcessRecord record_of(const std::string& name, pid_t process) {
    const auto known = look_up_process(process);
    const auto host = look_up_process(getpid());
    return {name, process, known ? known->started : 0, getpid(), host->started};
  }
  std::string record_file(pid_t process) const {
    return process_records_folder(root()) + "/" + std::to_string(process);
  }
  static bool lives(pid_t process) { return kill(process, 0) == 0; }

  MainLoop loop;
  ProcessTable table{loop};
};

}  // namespace wispen::testing
