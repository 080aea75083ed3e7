// wispen/process_room.cpp

#include "wispen/process_room.hpp"

#include <sys/resource.h>

namespace wispen::program {

std::optional<std::string> missing_room() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur < kLeastStack) {
    return "the stack is limited to " + std::to_string(limit.rlim_cur / 1024) + " KB; at least " +
           std::to_string(kLeastStack / 1024) + " KB are needed (ulimit -s)";
  }
  if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < kLeastDescriptors) {
    return "the process may open " + std::to_string(limit.rlim_cur) + " files; at least " +
           std::to_string(kLeastDescriptors) + " are needed (ulimit -n)";
  }
  return std::nullopt;
}

}  // namespace wispen::program
