// tests/platform/objc/counted.hpp: a class whose living instances are counted.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Foundation.hpp"

namespace wispen::testing {

class Counted : public objc::Authored<Counted, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestCounted"};
  using Authored::Authored;

  static inline int alive = 0;
  static inline std::function<void()> on_death;

  static Counted make() { return alloc().init(); }
  static Counted init(objc::Allocated<Counted> self) {
    Counted object = std::move(self).initialize_super<"init">();
    if (object) {
      ++alive;
      object.variable(kCounted) = true;
    }
    return object;
  }
  void dying() {
    if (!variable(kCounted)) return;  // it was never initialised
    --alive;
    if (on_death) on_death();
  }

  static constexpr objc::InstanceVariable<"_counted", bool> kCounted{};
  static void define() {
    objc::Class<Counted>()
        .variable(kCounted)
        .initializer<"init", &Counted::init>()
        .on_dealloc<&Counted::dying>()
        .register_class();
  }
};

}  // namespace wispen::testing
