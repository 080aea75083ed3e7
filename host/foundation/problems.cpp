// host/foundation/problems.cpp: what went wrong in places that cannot fail aloud.

#include "host/foundation/problems.hpp"

#include <algorithm>
#include <mutex>
#include <utility>

namespace wispen {

namespace {

constexpr std::size_t kMostProblems = 1000;

struct Problems {
  std::mutex mutex;
  std::vector<std::string> sentences;
};

Problems& problems() {
  static auto* const instance = new Problems();
  return *instance;
}

}  // namespace

void report_problem(std::string sentence) {
  const std::lock_guard lock(problems().mutex);
  auto& sentences = problems().sentences;
  if (sentences.size() >= kMostProblems) return;
  if (std::ranges::find(sentences, sentence) != sentences.end()) return;
  sentences.push_back(std::move(sentence));
}

std::vector<std::string> take_problems() {
  const std::lock_guard lock(problems().mutex);
  return std::exchange(problems().sentences, {});
}

}  // namespace wispen
