// tests/device/loader/signed_symbols.cpp

#include "tests/device/loader/signed_symbols.hpp"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <typeinfo>

#include "platform/objc/abi.hpp"
#include "tests/device/loader/phone_symbols.hpp"
#include "tests/device/loader/pointer_signing.hpp"
#include "tests/device/loader/signed_blocks.hpp"

namespace wispen::loader {

namespace {

namespace abi = objc::abi;

// How the phone's runtime signs the handles of methods, which are opaque to everybody else.
constexpr macho::Signing kMethodSigning{macho::Key::DB, false, 0xC1AB};

template <class F>
F* from_signed_code(F* function, const char* what) {
  const auto pointer = reinterpret_cast<std::uint64_t>(function);
  return reinterpret_cast<F*>(authenticated(pointer, kFunctionSigning, nullptr, what));
}

template <class F>
F* for_signed_code(F* function) {
  return reinterpret_cast<F*>(
      signed_pointer(reinterpret_cast<std::uint64_t>(function), kFunctionSigning, nullptr));
}

abi::Method plain(abi::Method method) {
  const auto pointer = reinterpret_cast<std::uint64_t>(method);
  return reinterpret_cast<abi::Method>(authenticated(pointer, kMethodSigning, nullptr, "a method's handle"));
}

abi::Method handle_of(abi::Method method) {
  return reinterpret_cast<abi::Method>(
      signed_pointer(reinterpret_cast<std::uint64_t>(method), kMethodSigning, nullptr));
}

/// What unsigned code is given under that name.
template <class F>
F* process_function(const char* name, const char* library) {
  return reinterpret_cast<F*>(phone_symbol({name, 1, false}, library));
}

constexpr char kSystem[] = "/usr/lib/libSystem.B.dylib";
constexpr char kRuntime[] = "/usr/lib/libobjc.A.dylib";
constexpr char kLibrary[] = "/usr/lib/libc++.1.dylib";

abi::BOOL add_method(abi::Class cls, abi::SEL selector, abi::IMP implementation, const char* types) {
  return abi::class_addMethod(cls, selector,
                              from_signed_code(implementation, "class_addMethod's implementation"), types);
}

abi::IMP replace_method(abi::Class cls, abi::SEL selector, abi::IMP implementation, const char* types) {
  static auto* const real = process_function<decltype(replace_method)>("_class_replaceMethod", kRuntime);
  return for_signed_code(
      real(cls, selector, from_signed_code(implementation, "class_replaceMethod's implementation"), types));
}

abi::Method instance_method(abi::Class cls, abi::SEL selector) {
  return handle_of(abi::class_getInstanceMethod(cls, selector));
}

abi::Method class_method(abi::Class cls, abi::SEL selector) {
  return handle_of(abi::class_getClassMethod(cls, selector));
}

abi::Method* copy_method_list(abi::Class cls, unsigned int* count) {
  unsigned int found = 0;
  abi::Method* const methods = abi::class_copyMethodList(cls, &found);
  for (unsigned int i = 0; i < found; ++i) methods[i] = handle_of(methods[i]);
  if (count != nullptr) *count = found;
  return methods;
}

abi::IMP implementation_of(abi::Method method) {
  return for_signed_code(abi::method_getImplementation(plain(method)));
}

abi::SEL name_of(abi::Method method) { return abi::method_getName(plain(method)); }

const char* types_of(abi::Method method) { return abi::method_getTypeEncoding(plain(method)); }

using Work = void(void* context);

void async(void* queue, void* context, Work* work) {
  static auto* const real = process_function<decltype(async)>("_dispatch_async_f", kSystem);
  real(queue, context, from_signed_code(work, "dispatch_async_f's function"));
}

void once(long* token, void* context, Work* work) {
  static auto* const real = process_function<decltype(once)>("_dispatch_once_f", kSystem);
  real(token, context, from_signed_code(work, "dispatch_once_f's function"));
}

int at_exit(Work* work, void* argument, void* image) {
  static auto* const real = process_function<decltype(at_exit)>("___cxa_atexit", kSystem);
  return real(from_signed_code(work, "__cxa_atexit's function"), argument, image);
}

void throw_exception(void* exception, std::type_info* type, Work* destroy) {
  static auto* const real = process_function<decltype(throw_exception)>("___cxa_throw", kLibrary);
  real(exception, type, from_signed_code(destroy, "the destructor of an exception"));
}

/// A function or a variable: only functions are signed.
bool is_function(const void* address) {
  Dl_info info{};
  const ElfW(Sym)* symbol = nullptr;
  const int found =
      ::dladdr1(address, &info, reinterpret_cast<void**>(const_cast<ElfW(Sym)**>(&symbol)), RTLD_DL_SYMENT);
  return found != 0 && symbol != nullptr && ELF64_ST_TYPE(symbol->st_info) == STT_FUNC;
}

void* find_symbol(void* handle, const char* name) {
  static auto* const real = process_function<decltype(find_symbol)>("_dlsym", kSystem);
  void* const found = real(handle, name);
  if (!is_function(found)) return found;
  return reinterpret_cast<void*>(
      signed_pointer(reinterpret_cast<std::uint64_t>(found), kFunctionSigning, nullptr));
}

struct StandIn {
  std::string_view name;
  void* address;
};

template <class F>
void* address_of(F* function) {
  return reinterpret_cast<void*>(function);
}

}  // namespace

void* phone_symbol_for_signed_code(const macho::Import& import, std::string_view library) {
  static const StandIn kStandIns[] = {
      {"_class_addMethod", address_of(&add_method)},
      {"_class_replaceMethod", address_of(&replace_method)},
      {"_class_getInstanceMethod", address_of(&instance_method)},
      {"_class_getClassMethod", address_of(&class_method)},
      {"_class_copyMethodList", address_of(&copy_method_list)},
      {"_method_getImplementation", address_of(&implementation_of)},
      {"_method_getName", address_of(&name_of)},
      {"_method_getTypeEncoding", address_of(&types_of)},
      {"_dispatch_async_f", address_of(&async)},
      {"_dispatch_once_f", address_of(&once)},
      {"___cxa_atexit", address_of(&at_exit)},
      {"___cxa_throw", address_of(&throw_exception)},
      {"_dlsym", address_of(&find_symbol)},
      {"__Block_copy", address_of(&copy_signed_block)},
  };
  const auto* const found = std::ranges::find(kStandIns, import.name, &StandIn::name);
  return found != std::end(kStandIns) ? found->address : phone_symbol(import, library);
}

}  // namespace wispen::loader
