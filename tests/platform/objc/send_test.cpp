// tests/platform/objc/send_test.cpp: messages, to objects, classes, nil and super.

#include <gtest/gtest.h>

#include "platform/Foundation.hpp"

namespace wispen::testing {
namespace {

struct Four {
  double a, b, c, d;
  bool operator==(const Four&) const = default;
};

}  // namespace
}  // namespace wispen::testing

template <>
struct objc::Encoding<wispen::testing::Four> {
  static constexpr FixedString value{"{Four=dddd}"};
};

namespace wispen::testing {
namespace {

/// Answers one message for each kind of value that crosses the border.
class Answering : public objc::Authored<Answering, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestAnswering"};
  using Authored::Authored;

  bool boolean(bool value) const { return !value; }
  int integer(int value) const { return value + 1; }
  NSUInteger unsigned_integer() const { return NSNotFound; }
  float single(float value) const { return value / 2; }
  double real(double a, float b, int c) const { return a + static_cast<double>(b) + c; }
  Four structure(Four value) const { return {value.d, value.c, value.b, value.a}; }
  NSRange range(NSRange value) const { return {value.length, value.location}; }
  NSString text(const NSString& value) const { return value; }
  objc::ClassRef class_of_it(objc::ClassRef cls) const { return cls.superclass(); }
  objc::Selector selector(objc::Selector value) const { return value; }
  const char* bytes(const char* value) const { return value + 1; }
  void write(int* out) const { *out = 7; }
  static NSString named(objc::ClassRef receiver) { return receiver.name(); }

  static void define() {
    objc::Class<Answering>()
        .method<"boolean:", &Answering::boolean>()
        .method<"integer:", &Answering::integer>()
        .method<"unsignedInteger", &Answering::unsigned_integer>()
        .method<"single:", &Answering::single>()
        .method<"real:and:and:", &Answering::real>()
        .method<"structure:", &Answering::structure>()
        .method<"range:", &Answering::range>()
        .method<"text:", &Answering::text>()
        .method<"classOfIt:", &Answering::class_of_it>()
        .method<"selector:", &Answering::selector>()
        .method<"bytes:", &Answering::bytes>()
        .method<"write:", &Answering::write>()
        .class_method<"named", &Answering::named>()
        .register_class();
  }
};

class SendTest : public ::testing::Test {
 protected:
  void SetUp() override { Answering::define(); }
  const objc::AutoreleasePool pool_;
};

TEST_F(SendTest, EveryKindOfValueCrossesBothWays) {
  const Answering object = objc::make<Answering>();
  EXPECT_FALSE((objc::send<"boolean:", bool>(object, true)));
  EXPECT_TRUE((objc::send<"boolean:", bool>(object, false)));
  EXPECT_EQ((objc::send<"integer:", int>(object, 41)), 42);
  EXPECT_EQ((objc::send<"unsignedInteger", NSUInteger>(object)), NSNotFound);
  EXPECT_EQ((objc::send<"single:", float>(object, 1.5F)), 0.75F);
  EXPECT_EQ((objc::send<"real:and:and:", double>(object, 1.5, 2.25F, -3)), 0.75);
  EXPECT_EQ((objc::send<"structure:", Four>(object, Four{1, 2, 3, 4})), (Four{4, 3, 2, 1}));
  EXPECT_EQ((objc::send<"range:", NSRange>(object, NSRange{1, 2})), (NSRange{2, 1}));
  EXPECT_EQ((objc::send<"text:", NSString>(object, "hi"_ns)).utf8(), "hi");
  EXPECT_EQ((objc::send<"classOfIt:", objc::ClassRef>(object, objc::class_for<NSMutableArray>())),
            objc::class_for<NSArray>());
  EXPECT_EQ((objc::send<"selector:", objc::Selector>(object, objc::selector<"count">())),
            objc::selector<"count">());
  EXPECT_STREQ((objc::send<"bytes:", const char*>(object, "xyz")), "yz");
  int written = 0;
  objc::send<"write:">(object, &written);
  EXPECT_EQ(written, 7);
  EXPECT_EQ((objc::send<"named", NSString>(objc::class_for<Answering>())).utf8(), "WispenTestAnswering");
}

TEST_F(SendTest, NilAnswersZeroOfEveryKind) {
  const Answering nil;
  EXPECT_FALSE((objc::send<"boolean:", bool>(nil, false)));
  EXPECT_EQ((objc::send<"integer:", int>(nil, 41)), 0);
  EXPECT_EQ((objc::send<"unsignedInteger", NSUInteger>(nil)), 0u);
  EXPECT_EQ((objc::send<"single:", float>(nil, 1.5F)), 0.0F);
  EXPECT_EQ((objc::send<"real:and:and:", double>(nil, 1.5, 2.25F, -3)), 0.0);
  EXPECT_EQ((objc::send<"structure:", Four>(nil, Four{1, 2, 3, 4})), (Four{0, 0, 0, 0}));
  EXPECT_EQ((objc::send<"range:", NSRange>(nil, NSRange{1, 2})), (NSRange{0, 0}));
  EXPECT_FALSE((objc::send<"text:", NSString>(nil, "hi"_ns)));
  EXPECT_EQ((objc::send<"bytes:", const char*>(nil, "xyz")), nullptr);
  int written = 0;
  objc::send<"write:">(nil, &written);
  EXPECT_EQ(written, 0);
}

TEST_F(SendTest, AClassThatIsNotRegisteredAnswersLikeNil) {
  EXPECT_FALSE((objc::send<"new", NSObject>(objc::class_named<"NoSuchClassAnywhere">())));
  EXPECT_EQ((objc::send<"count", NSUInteger>(objc::ClassRef::named("NoSuchClassEither"))), 0u);
}

TEST_F(SendTest, AMessageWithASelectorFromRunTimeFindsItsMethod) {
  const NSString text = "twelve chars"_ns;
  EXPECT_EQ((objc::perform<NSUInteger>(text, objc::Selector::named("length"))), 12u);
  EXPECT_TRUE(objc::responds_to(text, objc::Selector::named("length")));
  EXPECT_FALSE(objc::responds_to(text, objc::Selector::named("noSuchSelector")));
  EXPECT_FALSE(objc::responds_to(text, objc::Selector()));
  EXPECT_FALSE(objc::responds_to(NSObject(), objc::selector<"length">()));
}

TEST_F(SendTest, PlatformExceptionsPassThroughFramesOfOursAndRunTheirDestructors) {
  bool destroyed = false;
  struct Flag {
    bool& flag;
    ~Flag() { flag = true; }
  };
  const NSArray empty = NSArray::array();
  const auto raise = [&] {
    const Flag flag{destroyed};
    empty.objectAtIndex(3);
  };
  bool caught = false;
  try {
    raise();
  } catch (...) {  // its type cannot be asked for
    caught = true;
  }
  EXPECT_TRUE(caught);
  EXPECT_TRUE(destroyed);
}

TEST_F(SendTest, EncodingsAreThoseThatACompilerWrites) {
#if defined(__APPLE__)
  EXPECT_STREQ((objc::kMethodEncoding<bool, bool>.data()), "B@:B");
#else
  EXPECT_STREQ((objc::kMethodEncoding<bool, bool>.data()), "C@:C");
#endif
  EXPECT_STREQ((objc::kMethodEncoding<void>.data()), "v@:");
  EXPECT_STREQ((objc::kMethodEncoding<NSString, NSInteger, float, double>.data()), "@@:qfd");
  EXPECT_STREQ((objc::kMethodEncoding<NSRange, objc::Selector, objc::ClassRef>.data()), "{_NSRange=QQ}@::#");
  EXPECT_STREQ((objc::kMethodEncoding<void, objc::Block<void(bool)>, const char*, int*>.data()), "v@:@?r*^v");
}

TEST_F(SendTest, AMethodsEncodingReachesTheRuntime) {
  const auto signature = objc::send<"methodSignatureForSelector:", NSObject>(
      objc::make<Answering>(), objc::selector<"real:and:and:">());
  EXPECT_EQ((objc::send<"numberOfArguments", NSUInteger>(signature)), 5u);
  EXPECT_STREQ((objc::send<"getArgumentTypeAtIndex:", const char*>(signature, NSUInteger{3})), "f");
}

}  // namespace
}  // namespace wispen::testing
