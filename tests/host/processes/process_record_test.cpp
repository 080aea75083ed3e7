// tests/host/processes/process_record_test.cpp: what a host writes down, and what of it is believed.

#include "host/core/process_record.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>

#include "tests/host/core/child.hpp"
#include "tests/host/processes/stayer_fixture.hpp"

namespace wispen {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ProcessRecords = testing::WithStayers;

TEST(ProcessRecordText, IsReadAsItWasWritten) {
  const ProcessRecord record{"Spring Board", 77, 123456789012345, 42, 5};
  EXPECT_EQ(record_from(text_of(record)), record);
}

TEST(ProcessRecordText, IsNothingWhereAnythingIsWrongWithIt) {
  const std::string good = text_of({"SpringBoard", 77, 1234, 42, 5});
  for (std::size_t length = 0; length < good.size(); ++length) {
    EXPECT_FALSE(record_from(good.substr(0, length))) << length;
  }
  EXPECT_FALSE(record_from(good + "\n"));
  EXPECT_FALSE(record_from(good + good));
  EXPECT_FALSE(record_from(std::string(5000, 'x')));
  const auto with = [](const char* process, const char* started, const char* host) {
    return record_from("wispen process 1\nSpringBoard\n" + std::string(process) + "\n" + started + "\n" +
                       host + "\n5\n");
  };
  ASSERT_TRUE(with("77", "1234", "42"));
  for (const char* const bad :
       {"", "0", "1", "-1", "-77", "+77", " 77", "77 ", "0x4d", "77.0", "99999999999", "x"}) {
    EXPECT_FALSE(with(bad, "1234", "42")) << bad;
    EXPECT_FALSE(with("77", "1234", bad)) << bad;
  }
  EXPECT_FALSE(with("77", "-1234", "42"));
  EXPECT_FALSE(with("77", "18446744073709551616", "42"));
}

TEST(KernelProcess, TellsParentAndStartOfAProcessAlsoWithAMisleadingName) {
  const testing::Child child([](int output) {
    std::ofstream("/proc/self/comm") << ") R 1 (";
    testing::say(output, "named");
    pause();
  });
  ASSERT_EQ(child.line(), "named");
  const auto known = look_up_process(child.process());
  ASSERT_TRUE(known);
  EXPECT_EQ(known->parent, getpid());
  EXPECT_EQ(known->user, geteuid());
  EXPECT_GE(known->started, look_up_process(getpid())->started);
}

TEST(KernelProcess, IsNothingForIdsThatAreNoneOfOurs) {
  for (const pid_t process : {1, 0, -1, -77}) EXPECT_FALSE(look_up_process(process)) << process;
}

TEST_F(ProcessRecords, OfAStartedProcessHoldTrueAndGoWithIt) {
  const pid_t process = start_stayer("SpringBoard");
  const auto records = read_process_records(root(), "SpringBoard");
  ASSERT_THAT(records, ElementsAre(record_of("SpringBoard", process)));
  EXPECT_TRUE(holds_true(records[0], root()));
  table.end_by_name("SpringBoard", SIGTERM);
  run_until([&] { return table.size() == 0; });
  EXPECT_THAT(read_process_records(root(), "SpringBoard"), IsEmpty());
  EXPECT_FALSE(holds_true(records[0], root()));
}

TEST_F(ProcessRecords, AreForThisUserAlone) {
  start_stayer("SpringBoard");
  struct stat status {};
  ASSERT_EQ(stat(process_records_folder(root()).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  // Where others can write, nothing can be believed.
  ASSERT_EQ(chmod(process_records_folder(root()).c_str(), 0777), 0);
  EXPECT_THAT(read_process_records(root(), "SpringBoard"), IsEmpty());
  EXPECT_FALSE(table.start("second", "/usr/bin/stayer", {"1000"}));
}

TEST_F(ProcessRecords, LeftByAHostThatWasKilledAreRemovedAndTrueOnesStay) {
  const pid_t living = start_stayer("SpringBoard");
  pid_t gone = 0;
  {
    const testing::Child child([](int) { pause(); });
    gone = child.process();
    put_record(record_of("SpringBoard", gone));
  }
  put_record("garbage", "garbage");
  remove_stale_process_records(root());
  EXPECT_FALSE(std::filesystem::exists(record_file(gone)));
  EXPECT_TRUE(std::filesystem::exists(record_file(living)));
}

}  // namespace
}  // namespace wispen
