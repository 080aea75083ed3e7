// tests/platform/objc/class_test.cpp: classes and categories authored in C++.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Foundation.hpp"
#include "tests/platform/objc/counted.hpp"

namespace wispen::testing {
namespace {

std::vector<std::string> deaths;

/// Says its name when it dies.
class Named : public objc::Authored<Named, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestNamed"};
  using Authored::Authored;

  static constexpr objc::InstanceVariable<"_name", NSString> kName{};
  static Named make(const char* name) {
    Named object = alloc().init();
    object.variable(kName) = name;
    return object;
  }
  void dying() { deaths.push_back(variable(kName).utf8()); }
  static void define() { objc::Class<Named>().variable(kName).on_dealloc<&Named::dying>().register_class(); }
};

class Parent : public objc::Authored<Parent, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestParent"};
  using Authored::Authored;

  static constexpr objc::InstanceVariable<"_first", Named> kFirst{};
  static constexpr objc::InstanceVariable<"second", Named> kSecond{};
  static constexpr objc::InstanceVariable<"_number", int> kNumber{};
  Named& first() const { return variable(kFirst); }
  Named& second() const { return variable(kSecond); }
  int& number() const { return variable(kNumber); }
  int get_number() const { return number(); }
  void set_number(int value) const { number() = value; }
  NSString greet(const NSString& name) const { return ("parent " + name.utf8()).c_str(); }
  NSString who() const { return "parent"_ns; }
  void dying() { deaths.push_back("parent's last words"); }

  static void define() {
    objc::Class<Parent>()
        .variable(kFirst)
        .variable(kSecond)
        .variable(kNumber)
        .method<"number", &Parent::get_number>()
        .method<"setNumber:", &Parent::set_number>()
        .method<"greet:", &Parent::greet>()
        .method<"who", &Parent::who>()
        .on_dealloc<&Parent::dying>()
        .register_class();
  }
};

class Child : public objc::Authored<Child, Parent> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestChild"};
  using Authored::Authored;

  static constexpr objc::InstanceVariable<"_own", Named> kOwn{};
  static Child init_with_number(objc::Allocated<Child> self, int number) {
    if (number < 0) return Child();  // the allocated object dies with the token
    Child child = std::move(self).initialize_super<"init">();
    child.number() = number;
    return child;
  }
  static Child init_as_another(objc::Allocated<Child>) { return allocate_with(99); }
  static Child allocate_with(int number) { return alloc().initialize<"initWithNumber:">(number); }

  NSString greet(const NSString& name) const {
    return ("child of " + super<"greet:", NSString>(name).utf8()).c_str();
  }
  static void define() {
    objc::Class<Child>()
        .variable(kOwn)
        .initializer<"initWithNumber:", &Child::init_with_number>()
        .initializer<"initAsAnother", &Child::init_as_another>()
        .method<"greet:", &Child::greet>()
        .register_class();
  }
  Named& own() const { return variable(kOwn); }
};

class GrandChild : public objc::Authored<GrandChild, Child> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestGrandChild"};
  using Authored::Authored;
  static void define() { objc::Class<GrandChild>().register_class(); }
};

struct Counter {
  static inline int alive = 0;
  Counter() { ++alive; }
  ~Counter() { --alive; }
  int value = 0;
};

class Stateful : public objc::Authored<Stateful, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestStateful"};
  using Authored::Authored;
  Counter& counter() const { return state<Counter>(); }
  static void define() { objc::Class<Stateful>().state<Counter>().register_class(); }
};

class NoSuchBase : public NSObject {
 public:
  static constexpr objc::FixedString kClass{"NoSuchBaseAnywhere"};
};
class Orphan : public objc::Authored<Orphan, NoSuchBase> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestOrphan"};
};

NSString shouted(const NSString& self) { return (self.utf8() + "!").c_str(); }
NSString class_greeting(objc::ClassRef) { return "hello from the class"_ns; }

class ClassTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Named::define();
    Parent::define();
    Child::define();
    GrandChild::define();
    Stateful::define();
    Counted::define();
    deaths.clear();
  }
  const objc::AutoreleasePool pool_;
};

TEST_F(ClassTest, VariablesStartAsNilAreFoundByNameAndDieInReverseOrder) {
  {
    const Parent parent = objc::make<Parent>();
    EXPECT_FALSE(parent.first());
    EXPECT_EQ(parent.number(), 0);
    parent.first() = Named::make("first");
    parent.second() = Named::make("second");
    EXPECT_NE(objc::abi::class_getInstanceVariable(objc::class_for<Parent>().borrow(), "second"), nullptr);
    EXPECT_STREQ(objc::abi::ivar_getTypeEncoding(
                     objc::abi::class_getInstanceVariable(objc::class_for<Parent>().borrow(), "_first")),
                 "@");
  }
  EXPECT_THAT(deaths, ::testing::ElementsAre("parent's last words", "second", "first"));
}

TEST_F(ClassTest, ASubclassDiesBeforeItsBase) {
  {
    const Child child = Child::allocate_with(1);
    child.own() = Named::make("own");
    child.first() = Named::make("first");
  }
  EXPECT_THAT(deaths, ::testing::ElementsAre("own", "parent's last words", "first"));
}

TEST_F(ClassTest, SuperReachesTheRegisteredBaseAlsoFromASubclassOfTheDefiningClass) {
  EXPECT_EQ((objc::send<"greet:", NSString>(Child::allocate_with(1), "bob"_ns)).utf8(),
            "child of parent bob");
  EXPECT_EQ((objc::send<"greet:", NSString>(objc::make<GrandChild>(), "eve"_ns)).utf8(),
            "child of parent eve");
}

TEST_F(ClassTest, AnInitialiserMayGiveNilOrAnotherObject) {
  EXPECT_FALSE(Child::allocate_with(-1));
  EXPECT_EQ(deaths.size(), 1u);  // the allocated object's last words
  const Child other = Child::alloc().initialize<"initAsAnother">();
  EXPECT_EQ(other.number(), 99);
  EXPECT_EQ(other.retainCount(), 1u);
}

TEST_F(ClassTest, AResultIsAutoreleasedAndNotLeaked) {
  const Parent parent = objc::make<Parent>();
  const NSUInteger before = parent.retainCount();
  {
    const objc::AutoreleasePool pool;
    const auto same = objc::send<"self", Parent>(parent);
    EXPECT_EQ(same, parent);
  }
  EXPECT_EQ(parent.retainCount(), before);
}

TEST_F(ClassTest, KeyValueCodingFindsAuthoredAccessors) {
  const Parent parent = objc::make<Parent>();
  objc::send<"setValue:forKey:">(parent, NSNumber::numberWithInt(5), "number"_ns);
  EXPECT_EQ(parent.number(), 5);
  EXPECT_EQ((objc::send<"valueForKey:", NSNumber>(parent, "number"_ns)).intValue(), 5);
}

TEST_F(ClassTest, SortDescriptorsWorkOnAuthoredProperties) {
  NSMutableArray parents = NSMutableArray::array();
  for (const int number : {2, 9, 4}) {
    const Parent parent = objc::make<Parent>();
    parent.number() = number;
    parents.addObject(parent);
  }
  const auto descriptor = objc::send<"sortDescriptorWithKey:ascending:", NSObject>(
      objc::class_named<"NSSortDescriptor">(), "number"_ns, false);
  NSMutableArray descriptors = NSMutableArray::array();
  descriptors.addObject(descriptor);
  const auto sorted = objc::send<"sortedArrayUsingDescriptors:", NSArray>(parents, descriptors);
  EXPECT_EQ(sorted.objectAtIndex<Parent>(0).number(), 9);
  EXPECT_EQ(sorted.objectAtIndex<Parent>(2).number(), 2);
}

TEST_F(ClassTest, StateIsMadeAtItsFirstUseAndDiesWithTheObject) {
  {
    const Stateful object = objc::make<Stateful>();
    EXPECT_EQ(Counter::alive, 0);
    object.counter().value = 3;
    EXPECT_EQ(object.counter().value, 3);
    EXPECT_EQ(Counter::alive, 1);
  }
  EXPECT_EQ(Counter::alive, 0);
}

TEST_F(ClassTest, DefiningAClassAgainChangesNothing) {
  const objc::ClassRef before = objc::class_for<Parent>();
  Parent::define();
  EXPECT_EQ(objc::class_for<Parent>(), before);
  const Parent parent = objc::make<Parent>();
  parent.first() = Named::make("once");
}

TEST_F(ClassTest, AClassWhoseBaseIsMissingIsNotRegistered) {
  EXPECT_FALSE(objc::Class<Orphan>().register_class());
  EXPECT_FALSE(objc::class_for<Orphan>());
}

TEST_F(ClassTest, ACategoryAddsMethodsToAnExistingClass) {
  objc::Category<NSString>()
      .method<"wispenTestShouted", &shouted>()
      .class_method<"wispenTestGreeting", &class_greeting>();
  EXPECT_EQ((objc::send<"wispenTestShouted", NSString>("hey"_ns)).utf8(), "hey!");
  EXPECT_EQ((objc::send<"wispenTestGreeting", NSString>(objc::class_for<NSString>())).utf8(),
            "hello from the class");
}

objc::Original<NSString()> original_who;
NSString new_who(const Parent& self) { return ("more than " + original_who(self).utf8()).c_str(); }

TEST_F(ClassTest, ACategoryCanReplaceAMethodAndCallTheOriginal) {
  objc::Category<Parent>().method<"who", &new_who>(original_who);
  EXPECT_EQ((objc::send<"who", NSString>(objc::make<Parent>())).utf8(), "more than parent");
}

NSString replaced_greeting(objc::ClassRef) { return "another"_ns; }
NSString replaced_hello(const NSObject&) { return "another hello"_ns; }
NSString first_greeting(objc::ClassRef) { return "first"_ns; }
NSString first_hello(const NSObject&) { return "first hello"_ns; }

TEST_F(ClassTest, AReplacedMethodReachesSubclassesThatWereUsedBefore) {
  objc::Category<NSObject>()
      .method<"wispenTestHello", &first_hello>()
      .class_method<"wispenTestFirst", &first_greeting>();
  const NSString text = "used before"_ns;
  ASSERT_EQ((objc::send<"wispenTestHello", NSString>(text)).utf8(), "first hello");
  ASSERT_EQ((objc::send<"wispenTestFirst", NSString>(objc::class_for<NSMutableArray>())).utf8(), "first");
  objc::Category<NSObject>()
      .method<"wispenTestHello", &replaced_hello>()
      .class_method<"wispenTestFirst", &replaced_greeting>();
  EXPECT_EQ((objc::send<"wispenTestHello", NSString>(text)).utf8(), "another hello");
  EXPECT_EQ((objc::send<"wispenTestFirst", NSString>(objc::class_for<NSMutableArray>())).utf8(), "another");
}

TEST_F(ClassTest, ManyObjectsLeaveNothingBehind) {
  for (int i = 0; i < 10000; ++i) {
    const objc::AutoreleasePool pool;
    const Counted object = Counted::make();
    const auto described = object.description();
    ASSERT_TRUE(described);
  }
  EXPECT_EQ(Counted::alive, 0);
}

}  // namespace
}  // namespace wispen::testing
