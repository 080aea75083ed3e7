// tests/device/loader/signed_personality.cpp

#include "tests/device/loader/signed_personality.hpp"

#include <cstdint>

#include "tests/device/loader/loaded_bundles.hpp"
#include "tests/device/loader/pointer_signing.hpp"
#include "wispen/macho/signed_code.hpp"

namespace wispen::loader {

_Unwind_Reason_Code authenticating_personality(int version, _Unwind_Action actions,
                                               _Unwind_Exception_Class exception_class,
                                               _Unwind_Exception* exception, _Unwind_Context* context) {
  const auto bundle = bundle_around(reinterpret_cast<const void*>(_Unwind_GetRegionStart(context)));
  if (!bundle || bundle->personality_word == nullptr) refuse("a frame without a personality word");
  const std::uint64_t pointer = *bundle->personality_word;
  const auto personality = reinterpret_cast<decltype(&authenticating_personality)>(authenticated(
      pointer, macho::kPersonalitySigning, bundle->personality_word, "the personality function"));
  return personality(version, actions, exception_class, exception, context);
}

}  // namespace wispen::loader
