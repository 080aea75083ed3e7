// platform/objc/dispatch.hpp: finding a method and calling it; the seam between the two runtimes.
#pragma once

#include <type_traits>

#include "platform/objc/abi.hpp"

namespace objc::abi {

extern "C" {
#if defined(__APPLE__)
void objc_msgSend();
void objc_msgSendSuper();
#if defined(__x86_64__)
void objc_msgSend_stret();
void objc_msgSendSuper_stret();
#endif
Class object_getClass(id object);
#else
IMP objc_msg_lookup(id receiver, SEL selector);
IMP objc_msg_lookup_super(SuperReceiver* receiver, SEL selector);
#endif
}

#if defined(__APPLE__)

namespace detail {
// Only the x86-64 calling convention has entries of their own for results returned in memory.
template <class R>
inline IMP send_entry() {
#if defined(__x86_64__)
  if constexpr (!std::is_void_v<R> && sizeof(std::conditional_t<std::is_void_v<R>, char, R>) > 16) {
    return &objc_msgSend_stret;
  }
#endif
  return &objc_msgSend;
}
template <class R>
inline IMP send_super_entry() {
#if defined(__x86_64__)
  if constexpr (!std::is_void_v<R> && sizeof(std::conditional_t<std::is_void_v<R>, char, R>) > 16) {
    return &objc_msgSendSuper_stret;
  }
#endif
  return &objc_msgSendSuper;
}
}  // namespace detail

inline Class class_of(id object) { return object_getClass(object); }

template <class R, class... Raw>
inline R call(id receiver, SEL selector, Raw... arguments) {
  if (receiver == nullptr) return R();  // a structure's worth of zeros is not promised by the runtime
  return reinterpret_cast<R (*)(id, SEL, Raw...)>(detail::send_entry<R>())(receiver, selector, arguments...);
}

template <class R, class... Raw>
inline R call_super(SuperReceiver receiver, SEL selector, Raw... arguments) {
  if (receiver.receiver == nullptr) return R();
  return reinterpret_cast<R (*)(SuperReceiver*, SEL, Raw...)>(detail::send_super_entry<R>())(
      &receiver, selector, arguments...);
}

#else

inline Class class_of(id object) {
  return object != nullptr ? *reinterpret_cast<Class*>(object)
                           : nullptr;  // the class is an object's first word
}

template <class R, class... Raw>
inline R call(id receiver, SEL selector, Raw... arguments) {
  if (receiver == nullptr) return R();  // the runtime's nil method returns the receiver, whatever R is
  const IMP implementation = objc_msg_lookup(receiver, selector);
  return reinterpret_cast<R (*)(id, SEL, Raw...)>(implementation)(receiver, selector, arguments...);
}

template <class R, class... Raw>
inline R call_super(SuperReceiver receiver, SEL selector, Raw... arguments) {
  if (receiver.receiver == nullptr) return R();
  const IMP implementation = objc_msg_lookup_super(&receiver, selector);
  return reinterpret_cast<R (*)(id, SEL, Raw...)>(implementation)(receiver.receiver, selector, arguments...);
}

#endif

}  // namespace objc::abi
