// tests/device/loader/signed_personality.hpp: the personality function of arm64e frames.
#pragma once

#include <unwind.h>

namespace wispen::loader {

/// Authenticates the personality word of the bundle around the frame, each time anew, as the phone's unwinder
/// does, and asks the function that it holds.
_Unwind_Reason_Code authenticating_personality(int version, _Unwind_Action actions,
                                               _Unwind_Exception_Class exception_class,
                                               _Unwind_Exception* exception, _Unwind_Context* context);

}  // namespace wispen::loader
