// platform/objc/method_replacement.hpp: putting a method into a class that is in use; a seam between the
// runtimes.
#pragma once

#include "platform/objc/abi.hpp"

namespace objc::abi {

#if !defined(__APPLE__)
extern "C" void __objc_update_dispatch_table_for_class(Class cls);
#endif

/// Adds the method, or replaces the class's own of that name. Subclasses that were sent messages before see
/// the change too.
inline void replace_method(Class cls, SEL selector, IMP implementation, const char* types) {
  class_replaceMethod(cls, selector, implementation, types);
#if !defined(__APPLE__)
  // A replacement reaches the class itself only; its subclasses keep copies of the dispatch table.
  __objc_update_dispatch_table_for_class(cls);
#endif
}

}  // namespace objc::abi
