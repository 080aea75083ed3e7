// home_screen/processes/killall.cpp: the device root's own killall.
//
// It is not the machine's: it finds the root by its own place in it, needs no environment, and knows only
// what hosts have started there. It asks no host, because the host that runs it may be waiting for its end.

#include <cstdio>
#include <string>
#include <vector>

#include "home_screen/processes/end_named.hpp"
#include "host/processes/stand_in_mark.hpp"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;

int fail(const std::string& why) {
  std::fprintf(stderr, "killall: %s\n", why.c_str());
  return kFailed;
}

}  // namespace

int main(int argc, char** argv) {
  wispen::keep_stand_in_mark();
  const auto request =
      wispen::killall_request(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
  if (!request) {
    fail(request.error().message);
    std::fprintf(stderr, "usage: killall [-SIGNAL | -s SIGNAL] NAME...\n");
    return kFailed;
  }
  const auto root = wispen::DeviceRoot::around("/proc/self/exe");
  if (!root) return fail(root.error().message);
  std::size_t count = 0;
  for (const std::string& name : request->names) count += wispen::signal_named(*root, name, request->signal);
  if (count > 0) return kDone;
  std::fprintf(stderr, "No matching processes were found\n");
  return kFailed;
}
