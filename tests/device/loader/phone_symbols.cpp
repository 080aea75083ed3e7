// tests/device/loader/phone_symbols.cpp: what the phone's runtime has and the desktop's has not, and where to
// find the rest.

#include "tests/device/loader/phone_symbols.hpp"

#include <dlfcn.h>
#include <locale.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "platform/objc/block.hpp"
#include "platform/objc/class.hpp"
#include "platform/objc/method_replacement.hpp"

extern "C" {
void wispen_loader_msg_send();
void wispen_loader_msg_send_super();
#if defined(__x86_64__)
void wispen_loader_msg_send_stret();
void wispen_loader_msg_send_super_stret();
extern char __cpu_model[];  // the compiler library's own, which every image is linked with
#elif defined(__aarch64__)
void wispen_loader_snprintf();

void wispen_loader_snprintf_l();

/// All arguments on the stack: both sets of registers are told to be used up.
[[gnu::visibility("hidden")]] int wispen_loader_vsnprintf(char* target, std::size_t size, const char* format,
                                                          void* stack) {
  std::va_list arguments;
  struct Layout {
    void* stack;
    void* general_top;
    void* vector_top;
    int general_offset;
    int vector_offset;
  } layout{stack, nullptr, nullptr, 0, 0};
  static_assert(sizeof layout == sizeof arguments);
  std::memcpy(&arguments, &layout, sizeof layout);
  return std::vsnprintf(target, size, format, arguments);
}

/// The same in the "C" locale, which is what the bundle's null locale means.
[[gnu::visibility("hidden")]] int wispen_loader_vsnprintf_l(char* target, std::size_t size, void* /*locale*/,
                                                            const char* format, void* stack) {
  static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
  const locale_t before = ::uselocale(plain);
  const int length = wispen_loader_vsnprintf(target, size, format, stack);
  ::uselocale(before);
  return length;
}
#endif
}

namespace wispen::loader {

namespace {

namespace abi = objc::abi;

abi::Class object_get_class(abi::id object) { return abi::class_of(object); }

/// Foundation copies a block only where this bit is set; the phone's blocks do not have it.
void* block_copy(const void* block) {
  constexpr int kCopiedByFoundation = 1 << 29;
  constexpr int kGlobal = 1 << 28;
  const auto* const layout = static_cast<const objc::detail::BlockLayout*>(block);
  if (layout != nullptr && (layout->flags & kGlobal) == 0) {
    const_cast<objc::detail::BlockLayout*>(layout)->flags |= kCopiedByFoundation;
  }
  return abi::_Block_copy(block);
}

abi::IMP replace_method(abi::Class cls, abi::SEL selector, abi::IMP implementation, const char* types) {
  const abi::Method old = abi::class_getInstanceMethod(cls, selector);
  const abi::IMP before = old != nullptr ? abi::method_getImplementation(old) : nullptr;
  abi::replace_method(cls, selector, implementation, types);
  return before;
}

void zero_memory(void* memory, std::size_t size) { std::memset(memory, 0, size); }

/// The desktop's C++ library has this constructor in its header only.
void construct_bad_array_length(void* memory) { new (memory) std::bad_array_new_length(); }

struct SineAndCosine {
  double sine, cosine;
};
SineAndCosine sine_and_cosine(double angle) { return {std::sin(angle), std::cos(angle)}; }

#if defined(__x86_64__)
void initialise_cpu_model() { __builtin_cpu_init(); }
#endif

// Any value serves: functions compare it with itself.
constinit std::uintptr_t stack_guard = 0x595e9fbd94fda766;

[[noreturn]] void binder_is_not_called() { __builtin_trap(); }

struct StandIn {
  std::string_view name;
  void* address;
};

template <class Function>
void* address_of(Function* function) {
  return reinterpret_cast<void*>(function);
}

void* stand_in(std::string_view name) {
  static const StandIn kStandIns[] = {
    {"_objc_msgSend", address_of(&wispen_loader_msg_send)},
    {"_objc_msgSendSuper", address_of(&wispen_loader_msg_send_super)},
#if defined(__x86_64__)
    {"_objc_msgSend_stret", address_of(&wispen_loader_msg_send_stret)},
    {"_objc_msgSendSuper_stret", address_of(&wispen_loader_msg_send_super_stret)},
    {"___cpu_model", &__cpu_model},
    {"___cpu_indicator_init", address_of(&initialise_cpu_model)},
#elif defined(__aarch64__)
    {"_snprintf", address_of(&wispen_loader_snprintf)},
    {"_snprintf_l", address_of(&wispen_loader_snprintf_l)},
#endif
    {"_objc_retain", address_of(&abi::retain)},
    {"_objc_release", address_of(&abi::release)},
    {"_objc_autorelease", address_of(&abi::autorelease)},
    {"_objc_autoreleasePoolPush", address_of(&abi::push_pool)},
    {"_objc_autoreleasePoolPop", address_of(&abi::pop_pool)},
    {"_object_getClass", address_of(&object_get_class)},
    {"_class_replaceMethod", address_of(&replace_method)},
    {"__Block_copy", address_of(&block_copy)},
    {"__ZNSt20bad_array_new_lengthC1Ev", address_of(&construct_bad_array_length)},
    {"_bzero", address_of(&zero_memory)},
    {"___sincos_stret", address_of(&sine_and_cosine)},
    {"___stack_chk_guard", &stack_guard},
    {"dyld_stub_binder", address_of(&binder_is_not_called)},
  };
  const auto* const found = std::ranges::find(kStandIns, name, &StandIn::name);
  return found != std::end(kStandIns) ? found->address : nullptr;
}

}  // namespace

void* phone_symbol(const macho::Import& import, std::string_view library) {
  if (void* const own = stand_in(import.name)) return own;
  std::string_view name = import.name;
  if (!name.starts_with('_')) return nullptr;
  name.remove_prefix(1);
  // As the bundle's own headers bind it on the desktop: the C library stays the process's own.
  if (library.find("libSystem") != std::string_view::npos) {
    if (void* const found = ::dlsym(RTLD_DEFAULT, ("wispen_platform_" + std::string(name)).c_str()))
      return found;
  }
  return ::dlsym(RTLD_DEFAULT, std::string(name).c_str());
}

}  // namespace wispen::loader
