// tests/device/signed_image.cpp: a small bundle that does with pointers what the real one does, over the real
// bridge. Each function does one thing at the border and gives a number that shows that it was done.

#include <stdexcept>
#include <vector>

#include "platform/Dispatch.hpp"
#include "platform/System.h"
#include "platform/objc/objc.hpp"

#define SHOWN extern "C" __attribute__((visibility("default")))

namespace {

/// The test's own class.
class SignedHostShape : public objc::Object {
 public:
  static constexpr objc::FixedString kClass{"SignedHostShape"};
  using Object::Object;
  SignedHostShape() = default;
};

int lives = 0;
int last_words = 0;

struct Life {
  Life() { ++lives; }
  Life(const Life&) { ++lives; }
  Life& operator=(const Life&) = default;
  ~Life() { --lives; }
};

class SignedMeter : public objc::Authored<SignedMeter, SignedHostShape> {
 public:
  static constexpr objc::FixedString kClass{"SignedMeter"};
  using Authored::Authored;
  SignedMeter() = default;
  struct State {
    Life life;
    int value = 40;
  };

  int read() { return state<State>().value; }
  void add(int more) { state<State>().value += more; }
  int edges() { return super<"edges", int>() + 1; }
  void bye() { ++last_words; }

  static void define() {
    objc::Class<SignedMeter>()
        .state<State>()
        .method<"read", &SignedMeter::read>()
        .method<"add:", &SignedMeter::add>()
        .method<"edges", &SignedMeter::edges>()
        .on_dealloc<&SignedMeter::bye>()
        .register_class();
  }
};

objc::Original<int()> original_area;
int doubled_area(const SignedHostShape& self) { return original_area(self) * 2; }

__attribute__((constructor)) void initialise() {
  SignedMeter::define();
  objc::Category<SignedHostShape>().method<"area", &doubled_area>(original_area);
}

/// Its destructor is handed to the C library when the bundle is loaded.
struct Last {
  ~Last();
};
int* at_exit_target = nullptr;
Last::~Last() {
  if (at_exit_target != nullptr) *at_exit_target = 1;
}
Last last;

}  // namespace

// A pointer to data is not signed; the loader only moves it.
SHOWN int signed_number = 4;
SHOWN int* signed_number_pointer = &signed_number;

SHOWN int signed_message() {
  SignedMeter meter = SignedMeter::alloc().init();
  objc::send<"add:">(meter, 2);
  return objc::send<"read", int>(meter);
}

SHOWN int signed_super() { return objc::send<"edges", int>(SignedMeter::alloc().init()); }

SHOWN int signed_category(const void* shape) {
  return objc::send<"area", int>(
      *objc::Borrowed<SignedHostShape>(static_cast<objc::abi::id>(const_cast<void*>(shape))));
}

SHOWN int signed_dealloc() {
  last_words = 0;
  {
    SignedMeter meter = SignedMeter::alloc().init();
    if (objc::send<"read", int>(meter) != 40 || lives != 1) return -1;
  }
  return last_words * 10 + lives;
}

/// A block of ours, +1: gives three times its argument, and adds it to the sum.
SHOWN const void* signed_make_block(int* sum) {
  const objc::Block<int(int)> block([sum, life = Life()](int number) {
    *sum += number;
    return number * 3;
  });
  return objc::abi::_Block_copy(block.borrow());
}

SHOWN int signed_call_block(const void* theirs, int argument) {
  return objc::Block<int(int)>::retain(theirs)(argument);
}

SHOWN int signed_lives() { return lives; }

SHOWN int signed_symbols(void* everywhere) {
  auto* const number = static_cast<int*>(platform_dlsym(everywhere, "signed_test_number"));
  const auto twice = reinterpret_cast<int (*)(int)>(platform_dlsym(everywhere, "signed_test_twice"));
  return number != nullptr && twice != nullptr ? twice(*number) : -1;
}

SHOWN int signed_dispatch() {
  static int runs = 0;
  static dispatch_once_t token;
  for (int i = 0; i < 2; ++i)
    dispatch_once(
        &token, +[] { ++runs; });
  return runs;
}

SHOWN void signed_dispatch_later(int* target) {
  dispatch_async(dispatch_get_global_queue(0, 0),
                 [target] { __atomic_store_n(target, 30, __ATOMIC_RELEASE); });
}

/// Exceptions of the other side pass through this frame, whose destructor runs.
SHOWN int signed_pass(void (*callback)()) {
  const Life life;
  callback();
  return lives;
}

SHOWN int signed_catch(const void* theirs) {
  try {
    const Life life;
    return objc::Block<int(int)>::retain(theirs)(1);
  } catch (...) {
    return 100 + lives;
  }
}

SHOWN int signed_throw(unsigned long index) {
  const std::vector<int> none;
  return none.at(index);
}

SHOWN void signed_at_exit(int* target) { at_exit_target = target; }

/// What no compiler makes: a method whose function is not signed.
SHOWN void signed_add_plain_method() {
#if defined(__arm64e__)
  auto* function = reinterpret_cast<void*>(&doubled_area);
  asm("xpaci %0" : "+r"(function));
  objc::abi::class_addMethod(objc::class_for<SignedMeter>().borrow(), objc::selector<"plain">().borrow(),
                             reinterpret_cast<objc::abi::IMP>(function), "i@:");
#endif
}
