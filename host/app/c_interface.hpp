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
/// False, with the error said, while no host runs.
bool is_running();
/// The text's bytes, until the next text is given out.
const char* give(std::string text);

}  // namespace wispen::c_interface
