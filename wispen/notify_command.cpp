// wispen/notify_command.cpp: wispen notify watch and post.

#include <cstdio>

#include "host/wispen_host.h"
#include "platform/CoreFoundation.hpp"
#include "wispen/commands.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

struct Watch {
  bool json;
  unsigned long long posts = 0;
  bool lost = false;
};

void print_post(const char* name, unsigned long long posts, void* context) {
  auto* const watch = static_cast<Watch*>(context);
  watch->posts += posts;
  if (watch->json) {
    std::printf(
        "%s\n",
        Json{{"name", name}, {"posts", posts}}.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
  } else if (posts == 1) {
    std::printf("%s\n", shown(name).c_str());
  } else {
    std::printf("%s (%llu posts)\n", shown(name).c_str(), posts);
  }
  watch->lost = !output_is_written();  // whoever reads along wants to see it now
}

}  // namespace

int watch_notifications(const CommonOptions& options, const WatchOptions& what) {
  const auto session = Session::start(options);
  if (!session) return kFailed;
  Watch watch{.json = options.json};
  if (wispen_host_listen(what.name.empty() ? nullptr : what.name.c_str(), print_post, &watch) == 0) {
    return fail(wispen_host_last_error());
  }
  std::fprintf(stderr, "wispen: watching %s\n", what.name.empty() ? "all notifications" : what.name.c_str());
  const double end = what.timeout ? wispen_host_now() + *what.timeout : 0;
  while (what.count == 0 || watch.posts < what.count) {
    if (wispen_host_run_for(0.05) == 0) return fail(wispen_host_last_error());
    if (watch.lost) return kFailed;
    if (what.timeout && wispen_host_now() >= end) {
      return what.count == 0 ? kDone : fail("not all of the awaited notifications came in time");
    }
  }
  return kDone;
}

int post_notification(const CommonOptions& options, const std::string& name) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start(options);
  if (!session) return kFailed;
  CFNotificationCenterPostNotification(CFNotificationCenterGetDarwinNotifyCenter(), NSString(name.c_str()),
                                       nullptr, NSDictionary(), true);
  if (const char* const problem = wispen_host_next_problem()) return fail(problem);
  return kDone;
}

}  // namespace wispen::program
