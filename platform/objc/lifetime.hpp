// platform/objc/lifetime.hpp: reference counts and autorelease pools; the seam between the two runtimes.
#pragma once

#include "platform/objc/abi.hpp"
#include "platform/objc/dispatch.hpp"
#include "platform/objc/selector.hpp"

namespace objc::abi {

#if defined(__APPLE__)

extern "C" {
id objc_retain(id object);
void objc_release(id object);
id objc_autorelease(id object);
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
}

inline id retain(id object) { return objc_retain(object); }
inline void release(id object) { objc_release(object); }
inline id autorelease(id object) { return objc_autorelease(object); }
inline void* push_pool() { return objc_autoreleasePoolPush(); }
inline void pop_pool(void* pool) { objc_autoreleasePoolPop(pool); }
inline void clear_weak_references(id) {}  // done before dealloc is sent

#else

extern "C" void wispen_clear_weak_references(id object);

inline id retain(id object) { return call<id>(object, selector<"retain">().borrow()); }
inline void release(id object) { call<void>(object, selector<"release">().borrow()); }
inline id autorelease(id object) { return call<id>(object, selector<"autorelease">().borrow()); }
inline void* push_pool() {
  static const Class pool_class = objc_lookUpClass("NSAutoreleasePool");
  return call<id>(reinterpret_cast<id>(pool_class), selector<"new">().borrow());
}
inline void pop_pool(void* pool) { call<void>(static_cast<id>(pool), selector<"drain">().borrow()); }
/// For the first dealloc of an object: what runs in there must not get hold of the object again.
inline void clear_weak_references(id object) { wispen_clear_weak_references(object); }

#endif

}  // namespace objc::abi

namespace objc {

/// A scope at whose end the autoreleased objects of this thread lose that reference. It is a scope and
/// no handle: a pool must not be retained. Scopes end in the reverse order of their beginning.
class AutoreleasePool {
 public:
  AutoreleasePool() : pool_(abi::push_pool()) {}
  ~AutoreleasePool() { abi::pop_pool(pool_); }
  AutoreleasePool(const AutoreleasePool&) = delete;
  AutoreleasePool& operator=(const AutoreleasePool&) = delete;

 private:
  void* pool_;
};

}  // namespace objc
