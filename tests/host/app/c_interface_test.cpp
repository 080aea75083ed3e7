// tests/host/app/c_interface_test.cpp: what a C program may do wrong.

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <thread>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

std::string last_error() { return wispen_host_last_error(); }

class CInterfaceTest : public HostTest {
 protected:
  /// Stores a value whose row has that notification.
  static void post(const char* name) {
    const NSMutableDictionary properties = NSMutableDictionary::dictionary();
    properties.setObject("k"_ns, "key"_ns);
    properties.setObject(NSString(name), "PostNotification"_ns);
    const PSSpecifier row = objc::make<PSSpecifier>();
    objc::send<"setProperties:">(row, properties);
    objc::send<"setPreferenceValue:specifier:">(open_page("SepSettingsCell"), "v"_ns, row);
  }
};

void raise_platform_exception(const char*, unsigned long long, void*) { NSArray::array().objectAtIndex(7); }
void throw_exception(const char*, unsigned long long, void*) { throw std::runtime_error("x"); }
void count(const char*, unsigned long long posts, void* context) {
  *static_cast<unsigned long long*>(context) += posts;
}

TEST_F(CInterfaceTest, AnExceptionInAListenerFailsTheFunctionThatRunsItAndNothingElse) {
  load_shipped_bundle();
  unsigned long long heard = 0;
  ASSERT_GT(wispen_host_listen("a/first", raise_platform_exception, nullptr), 0);
  ASSERT_GT(wispen_host_listen("a/second", throw_exception, nullptr), 0);
  ASSERT_GT(wispen_host_listen(nullptr, count, &heard), 0);
  for (const char* const name : {"a/first", "a/second"}) {
    post(name);
    EXPECT_EQ(wispen_host_run_until_idle(), 0) << name;
    EXPECT_EQ(last_error(), "a listener raised an exception") << name;
  }
  EXPECT_EQ(heard, 2u) << "the others hear all the same";
  EXPECT_EQ(wispen_host_run_until_idle(), 1) << "and the loop runs on";
  post("a/first");
  EXPECT_EQ(wispen_host_advance(1), 0);
  post("a/first");
  EXPECT_EQ(wispen_host_run_for(1), 0);
}

/// A page that cannot be made.
class RaisingPage : public objc::Authored<RaisingPage, PSListController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestRaisingPage"};
  using Authored::Authored;

  static RaisingPage start(objc::Allocated<RaisingPage>) {
    NSArray::array().objectAtIndex(7);
    return RaisingPage();
  }
  static void define() {
    objc::Class<RaisingPage>().initializer<"init", &RaisingPage::start>().register_class();
  }
};

TEST_F(CInterfaceTest, AnExceptionOfThePlatformsIsAnErrorToo) {
  RaisingPage::define();
  EXPECT_EQ(wispen_host_open_page("WispenTestRaisingPage"), nullptr);
  EXPECT_EQ(last_error(), "the bundle raised an exception");
}

TEST_F(CInterfaceTest, AnotherThreadIsRefusedWithTheSentenceAndKeepsItsErrorToItself) {
  load_shipped_bundle();
  const wispen_host_object page = wispen_host_open_page(nullptr);
  EXPECT_EQ(wispen_host_open_page("NoSuchPage"), nullptr);
  const std::string own_error = last_error();
  std::thread([&] {
    EXPECT_EQ(wispen_host_run_until_idle(), 0);
    EXPECT_THAT(last_error(), HasSubstr("only the thread that started the host"));
    EXPECT_EQ(wispen_host_open_page(nullptr), nullptr);
    EXPECT_EQ(wispen_host_root(), nullptr);
    EXPECT_EQ(wispen_host_path("/tmp"), nullptr);
    EXPECT_EQ(wispen_host_listen(nullptr, count, nullptr), 0);
    EXPECT_EQ(wispen_host_settle(1), 0);
    EXPECT_EQ(wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, 1, 1), 0);
    EXPECT_EQ(wispen_host_view_tree(), nullptr);
    EXPECT_EQ(wispen_host_posted_count(), 0u);
    EXPECT_EQ(wispen_host_next_problem(), nullptr);
    EXPECT_EQ(wispen_host_stop(), 0);
    EXPECT_EQ(wispen_host_running(), 1);
    wispen_host_release(page);
    EXPECT_THAT(last_error(), HasSubstr("only the thread that started the host"));
    wispen_host_options options{};
    options.size = sizeof options;
    options.root = "/nowhere";
    EXPECT_EQ(wispen_host_start(&options), 0);
    EXPECT_THAT(last_error(), HasSubstr("running already"));
  }).join();
  EXPECT_EQ(last_error(), own_error);
  wispen_host_release(page);
}

TEST_F(CInterfaceTest, AReferenceIsTakenBackAsOftenAsItWasGiven) {
  load_shipped_bundle();
  const wispen_host_object page = wispen_host_open_page("SepSettingsCell");
  objc::Weak<NSObject> alive;
  {
    const objc::AutoreleasePool pool;
    alive = objc::retain<NSObject>(reinterpret_cast<objc::abi::id>(page));
  }
  wispen_host_release(page);
  EXPECT_FALSE(alive.lock());
  wispen_host_release(page);
  EXPECT_THAT(last_error(), HasSubstr("was given back already"));
  int mine = 0;
  wispen_host_release(reinterpret_cast<wispen_host_object>(&mine));
  EXPECT_THAT(last_error(), HasSubstr("not given out by this library"));
  wispen_host_release(nullptr);
}

TEST_F(CInterfaceTest, ARowWithAPageAndNoKeyLeadsToIt) {
  load_shipped_bundle();
  const objc::AutoreleasePool pool;
  const auto row = objc::make<PSSpecifier>();
  const auto page_of = [&] {
    return std::string(wispen_host_page_of_row(reinterpret_cast<wispen_host_object>(objc::borrow(row))));
  };
  EXPECT_EQ(page_of(), "");
  row.setProperty("SepSettingsCell"_ns, "detail"_ns);
  EXPECT_EQ(page_of(), "SepSettingsCell");
  row.setProperty("key"_ns, "key"_ns);
  EXPECT_EQ(page_of(), "");
  EXPECT_EQ(wispen_host_page_of_row(nullptr), nullptr);
  EXPECT_EQ(last_error(), "the object is not a row");
}

TEST_F(CInterfaceTest, AReferenceThatAHandleTookOverIsForgotten) {
  load_shipped_bundle();
  // Memory of a page that died is used again for the next of its class; a stale entry would let a reference
  // that was never given out be taken back.
  for (int tries = 0; tries < 3; ++tries) {
    wispen_host_object page = nullptr;
    {
      const objc::AutoreleasePool pool;
      page = wispen_host_open_page("SepSettingsCell");
      objc::adopt<NSObject>(reinterpret_cast<objc::abi::id>(page));
    }
    wispen_host_release(page);
    EXPECT_THAT(last_error(), HasSubstr("was given back already"));
  }
  const wispen_host_object page = wispen_host_open_page("SepSettingsCell");
  wispen_host_release(page);
  wispen_host_release(page);
  EXPECT_THAT(last_error(), HasSubstr("was given back already"));
}

}  // namespace
}  // namespace wispen::testing
