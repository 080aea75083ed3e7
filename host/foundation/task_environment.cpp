// host/foundation/task_environment.cpp: what the programs find that Foundation's tasks start.

#include "host/foundation/task_environment.hpp"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "host/core/current_root.hpp"
#include "host/core/unique_fd.hpp"
#include "platform/Foundation/NSTask.hpp"

namespace wispen {

namespace {

/// The class whose instances Foundation gives out as tasks, and which does the work.
class WorkingTask : public NSTask {
 public:
  static constexpr objc::FixedString kClass{"NSConcreteUnixTask"};
  using NSTask::NSTask;
};

objc::Original<NSDictionary()> task_environment;
objc::Original<void()> task_launch;
objc::Original<void()> task_wait;

/// Foundation keeps the environment as it was when it was loaded, before there was a root.
NSDictionary environment(const NSTask& task) {
  const NSDictionary given = task_environment(task);
  const auto root = current_root();
  if (!root || given.objectForKey("DPKG_ADMINDIR"_ns)) return given;
  const NSMutableDictionary more = given.mutableCopy();
  more.setObject(
      NSString((root->resolve_or_nowhere(std::string(root->device_jbroot()) + "/var/lib/dpkg")).c_str()),
      "DPKG_ADMINDIR"_ns);
  return more;
}

void launch(const WorkingTask& task) {
  const auto standard_error =
      objc::send<"fileHandleWithStandardError", NSObject>(objc::class_for<NSFileHandle>());
  if (objc::send<"standardError", NSObject>(task) == standard_error) {
    objc::send<"setStandardError:">(
        task, objc::send<"fileHandleWithNullDevice", NSObject>(objc::class_for<NSFileHandle>()));
  }
  task_launch(task);
}

/// Foundation's own looks every tenth of a second; a version that is asked for is there after a few
/// milliseconds.
void wait_until_exit(const WorkingTask& task) {
  // The id of one that has been waited for already may be somebody else's by now.
  if (!objc::send<"isRunning", bool>(task)) return task_wait(task);
  // By its number: the library declares this call for C alone.
  const UniqueFd process(
      static_cast<int>(::syscall(SYS_pidfd_open, objc::send<"processIdentifier", int>(task), 0)));
  pollfd ended{.fd = process.get(), .events = POLLIN, .revents = 0};
  if (process) {
    while (::poll(&ended, 1, -1) < 0 && errno == EINTR) {
    }
  }
  task_wait(task);  // notes how it ended, at once
}

}  // namespace

void install_task_environment() {
  objc::Category<NSTask>().method<"environment", &environment>(task_environment);
  objc::Category<WorkingTask>()
      .method<"launch", &launch>(task_launch)
      .method<"waitUntilExit", &wait_until_exit>(task_wait);
}

}  // namespace wispen
