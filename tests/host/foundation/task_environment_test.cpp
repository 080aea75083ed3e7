// tests/host/foundation/task_environment_test.cpp: what a task of the bundle finds around it.

#include <string>

#include "platform/Foundation/NSTask.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

class TaskEnvironmentTest : public HostTest {};

TEST_F(TaskEnvironmentTest, NamesThePackageDatabaseOfTheRoot) {
  const auto task = objc::make<NSTask>();
  const auto environment = objc::send<"environment", NSDictionary>(task);
  const std::string database = environment.objectForKey<NSString>("DPKG_ADMINDIR"_ns).utf8();
  EXPECT_EQ(database, device_path("/var/jb/var/lib/dpkg").string());
}

TEST_F(TaskEnvironmentTest, LeavesADatabaseThatTheTaskNamesItself) {
  const auto task = objc::make<NSTask>();
  NSMutableDictionary own = NSMutableDictionary::dictionary();
  own.setObject("/elsewhere"_ns, "DPKG_ADMINDIR"_ns);
  objc::send<"setEnvironment:">(task, own);
  const auto environment = objc::send<"environment", NSDictionary>(task);
  EXPECT_EQ(environment.objectForKey<NSString>("DPKG_ADMINDIR"_ns).utf8(), "/elsewhere");
}

}  // namespace
}  // namespace wispen::testing
