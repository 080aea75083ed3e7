// tests/platform/objc/lookup_test.cpp: selectors and classes are looked up by name once.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "platform/Preferences.hpp"

namespace {

int selector_lookups = 0;
int class_lookups = 0;

template <class Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

// These take the place of the runtime's own for everything in the process.
extern "C" {
[[gnu::visibility("default")]] objc::abi::SEL sel_registerName(const char* name) {
  static auto* const original = next<objc::abi::SEL(const char*)>("sel_registerName");
  ++selector_lookups;
  return original(name);
}
[[gnu::visibility("default")]] objc::abi::Class objc_lookUpClass(const char* name) {
  static auto* const original = next<objc::abi::Class(const char*)>("objc_lookUpClass");
  ++class_lookups;
  return original(name);
}
}

namespace wispen::testing {
namespace {

void do_some_work() {
  const objc::AutoreleasePool pool;
  NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
  dictionary.setObject(NSNumber::numberWithInt(1), "one"_ns);
  EXPECT_EQ(dictionary.objectForKey<NSNumber>("one"_ns).intValue(), 1);
  EXPECT_TRUE(objc::cast_or_nil<NSDictionary>(dictionary));
  EXPECT_TRUE(objc::responds_to(dictionary, objc::selector<"count">()));
}

TEST(Lookup, NothingIsLookedUpByNameTheSecondTime) {
  do_some_work();
  ASSERT_GT(selector_lookups, 0);
  ASSERT_GT(class_lookups, 0);
  const int selectors_before = selector_lookups;
  const int classes_before = class_lookups;
  for (int i = 0; i < 1000; ++i) do_some_work();
  EXPECT_EQ(selector_lookups, selectors_before);
  EXPECT_EQ(class_lookups, classes_before);
}

}  // namespace
}  // namespace wispen::testing
