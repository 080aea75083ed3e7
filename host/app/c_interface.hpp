// host/app/c_interface.hpp: what the parts of the C interface share.
#pragma once

#include <memory>
#include <string>

#include "host/app/host.hpp"

namespace wispen::c_interface {

/// Null while none runs.
std::unique_ptr<Host>& running_host();
/// 1, and the last error is forgotten.
int done();
/// 0, and the sentence is the last error.
int failed(std::string why);
int done_or_failed(const Result<void>& result);
/// False, with the error said, while no host runs, and on another thread than that which started it.
bool is_running();
/// Notes that a listener raised an exception; the loop goes on, and the function that runs it fails.
void listener_raised();
/// The sentence about what was noted since the last call; "" where nothing was.
std::string take_listener_exception();

/// Runs `body`. The platform's exceptions end here, for a C program has no other end for them: the result is
/// then `failure`, and the error says what raised.
template <class R, class Body>
R guarded(R failure, Body body) {
  std::string why = "the bundle raised an exception";
  try {
    R result = body();
    why = take_listener_exception();
    if (why.empty()) return result;
  } catch (...) {
    take_listener_exception();
  }
  failed(std::move(why));
  return failure;
}

/// The text's bytes, until the next text is given out.
const char* give(std::string text);

}  // namespace wispen::c_interface
