// host/core/once.cpp: run once, with the phone's token.

#include "host/core/once.hpp"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::intptr_t kNotRun = 0;
constexpr std::intptr_t kDone = ~std::intptr_t{0};

/// What marks a token as being run by this thread: an address that no other thread has.
std::intptr_t mark_of_this_thread() {
  thread_local char mark = 0;
  return reinterpret_cast<std::intptr_t>(&mark);
}

/// Ends the run, by return or by exception; a destructor, because it must hold for every kind of exception.
class Run {
 public:
  explicit Run(std::atomic_ref<std::intptr_t> token) : token_(token) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() {
    token_.store(outcome_, std::memory_order_release);
    token_.notify_all();
  }
  void succeeded() { outcome_ = kDone; }

 private:
  std::atomic_ref<std::intptr_t> token_;
  std::intptr_t outcome_ = kNotRun;
};

}  // namespace

void dispatch_once_f(std::intptr_t* token, void* context, void (*function)(void*)) {
  const std::atomic_ref state(*token);
  const std::intptr_t mine = mark_of_this_thread();
  while (true) {
    std::intptr_t seen = kNotRun;
    if (state.compare_exchange_strong(seen, mine, std::memory_order_acquire)) {
      Run run(state);
      function(context);
      run.succeeded();
      return;
    }
    if (seen == kDone) return;
    if (seen == mine) {
      std::fputs("wispen: a once-only function waits for itself: its token was used again from inside it\n",
                 stderr);
      std::abort();
    }
    state.wait(seen, std::memory_order_acquire);
  }
}
