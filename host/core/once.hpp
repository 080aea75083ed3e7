// host/core/once.hpp: run once, with the phone's token.
#pragma once

#include <atomic>
#include <cstdint>

extern "C" {

/// Runs `function(context)` once for the life of the token, which starts as 0 and ends as ~0; whoever
/// comes meanwhile waits for the end. If the function leaves by an exception, of any kind, the token is
/// 0 again and the next caller (or one that waits) runs it. A call from inside the function on the same
/// token can never return: the process is ended with a sentence, as the phone ends it.
[[gnu::visibility("default")]] void dispatch_once_f(std::intptr_t* token, void* context,
                                                    void (*function)(void*));
}

namespace wispen {

/// The same, with the common case in line: one load and one comparison once the token is done.
inline void once(std::intptr_t* token, void* context, void (*function)(void*)) {
  if (std::atomic_ref(*token).load(std::memory_order_acquire) == ~std::intptr_t{0}) [[likely]] {
    return;
  }
  dispatch_once_f(token, context, function);
}

}  // namespace wispen
