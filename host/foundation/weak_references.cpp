// host/foundation/weak_references.cpp: the weak references that GCC's runtime lacks, under the names that
// the phone's runtime gives them.
//
// A weak slot holds a counted record of the object instead of the object. What ends first of an object's life
// empties the record: the dealloc of a class written in C++, or NSObject's, where every other ends. A
// reference is loaded on the thread that owns the object (the main thread, for everything here): a load that
// raced with the last release would find a dying object.

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <unordered_map>

#include "platform/objc/objc.hpp"

namespace {

using objc::abi::id;

struct Record {
  id object;
  std::size_t slots;
};

struct Table {
  std::mutex mutex;
  std::unordered_map<id, Record*> records;
};

Table& table() {
  static auto* const instance = new Table();  // outlives every object: some die while the process exits
  return *instance;
}

// Nearly no object is ever referred to weakly, and every dealloc asks: a zero here answers without the lock.
std::array<std::atomic<std::uint16_t>, 4096> referred{};

std::atomic<std::uint16_t>& referred_bucket(id object) {
  return referred[(reinterpret_cast<std::uintptr_t>(object) >> 4) % referred.size()];
}

using Dealloc = void (*)(id, objc::abi::SEL);
Dealloc original_dealloc = nullptr;

void empty_references(id object) {
  if (referred_bucket(object).load(std::memory_order_relaxed) == 0) return;
  const std::lock_guard lock(table().mutex);
  const auto found = table().records.find(object);
  if (found == table().records.end()) return;
  found->second->object = nullptr;
  table().records.erase(found);
  --referred_bucket(object);
}

void dealloc_emptying_references(id self, objc::abi::SEL name) {
  empty_references(self);
  original_dealloc(self, name);
}

void watch_deallocs() {
  static const bool watched = [] {
    const objc::abi::Class object = objc::class_named<"NSObject">().borrow();
    const objc::abi::SEL name = objc::selector<"dealloc">().borrow();
    const objc::abi::Method dealloc = objc::abi::class_getInstanceMethod(object, name);
    original_dealloc = reinterpret_cast<Dealloc>(objc::abi::method_getImplementation(dealloc));
    objc::abi::replace_method(object, name, reinterpret_cast<objc::abi::IMP>(&dealloc_emptying_references),
                              "v@:");
    return true;
  }();
  static_cast<void>(watched);
}

Record* record_of(id slot) { return reinterpret_cast<Record*>(slot); }

id acquire(id object) {
  if (object == nullptr) return nullptr;
  watch_deallocs();
  const std::lock_guard lock(table().mutex);
  Record*& record = table().records[object];
  if (record == nullptr) {
    record = new Record{object, 0};
    ++referred_bucket(object);
  }
  ++record->slots;
  return reinterpret_cast<id>(record);
}

void give_up(id slot) {
  Record* const record = record_of(slot);
  if (record == nullptr) return;
  const std::lock_guard lock(table().mutex);
  if (--record->slots > 0) return;
  if (record->object != nullptr) {
    table().records.erase(record->object);
    --referred_bucket(record->object);
  }
  delete record;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] id objc_initWeak(id* location, id object) {
  *location = acquire(object);
  return object;
}

[[gnu::visibility("default")]] id objc_storeWeak(id* location, id object) {
  const id old = *location;
  *location = acquire(object);
  give_up(old);
  return object;
}

[[gnu::visibility("default")]] id objc_loadWeakRetained(id* location) {
  Record* const record = record_of(*location);
  if (record == nullptr) return nullptr;
  const std::lock_guard lock(table().mutex);
  return record->object != nullptr ? objc::abi::retain(record->object) : nullptr;
}

[[gnu::visibility("default")]] void wispen_clear_weak_references(id object) { empty_references(object); }

[[gnu::visibility("default")]] void objc_destroyWeak(id* location) {
  give_up(*location);
  *location = nullptr;
}

}  // extern "C"
