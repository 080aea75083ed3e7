// tests/host/preferences/page_controller_test.cpp: a page of Settings, whatever it shows, and its default
// store.

#include <filesystem>
#include <initializer_list>
#include <string>
#include <utility>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PageControllerTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    page_ = objc::make<PSViewController>();
  }
  void TearDown() override {
    page_ = PSViewController();
    HostTest::TearDown();
  }
  static PSSpecifier row(std::initializer_list<std::pair<const char*, const char*>> properties) {
    const PSSpecifier specifier = objc::make<PSSpecifier>();
    for (const auto& [key, value] : properties) specifier.setProperty(NSString(value), NSString(key));
    return specifier;
  }
  NSObject read(const PSSpecifier& specifier) const {
    return objc::send<"readPreferenceValue:", NSObject>(page_, specifier);
  }
  void set(const NSObject& value, const PSSpecifier& specifier) const {
    objc::send<"setPreferenceValue:specifier:">(page_, value, specifier);
  }
  bool stored(const char* domain) const {
    return std::filesystem::exists(folder_ / ("root/var/mobile/Library/Preferences/" + std::string(domain)));
  }

  PSViewController page_;
};

TEST_F(PageControllerTest, TheDefaultStoreUsesTheRowsDomain) {
  const PSSpecifier specifier =
      row({{"key", "k"}, {"defaults", "some.domain"}, {"PostNotification", "some/changed"}});
  specifier.setProperty(NSNumber::numberWithInt(3), "default"_ns);
  EXPECT_EQ(read(specifier).as<NSNumber>().intValue(), 3);
  set(NSNumber::numberWithInt(4), specifier);
  EXPECT_EQ(read(specifier).as<NSNumber>().intValue(), 4);
  EXPECT_TRUE(stored("some.domain.plist"));
  EXPECT_THAT(posted(), ElementsAre("some/changed"));
}

TEST_F(PageControllerTest, ANilValueRemovesTheKeyAndLeavesTheOthers) {
  const PSSpecifier first = row({{"key", "a"}, {"defaults", "some.domain"}});
  const PSSpecifier second = row({{"key", "b"}, {"defaults", "some.domain"}});
  set("x"_ns, first);
  set("y"_ns, second);
  set(NSObject(), first);
  EXPECT_FALSE(read(first));
  EXPECT_EQ(read(second).as<NSString>().utf8(), "y");
}

TEST_F(PageControllerTest, ARowWithoutAKeyOrADomainStoresNothing) {
  set(NSNumber::numberWithInt(4), row({{"defaults", "some.domain"}, {"PostNotification", "some/changed"}}));
  set(NSNumber::numberWithInt(4), row({{"key", "k"}, {"PostNotification", "some/changed"}}));
  EXPECT_FALSE(stored("some.domain.plist"));
  EXPECT_THAT(posted(), IsEmpty());
  EXPECT_FALSE(read(row({{"key", "k"}})));
}

TEST_F(PageControllerTest, ItsRowsNameIsItsTitle) {
  const PSSpecifier specifier = row({});
  specifier.setName("Colours"_ns);
  page_.setSpecifier(specifier);
  EXPECT_EQ(page_.specifier(), specifier);
  EXPECT_EQ(page_.title().utf8(), "Colours");
  page_.setSpecifier(PSSpecifier());
  EXPECT_EQ(page_.title().utf8(), "Colours") << "no row has no name to give";
}

TEST_F(PageControllerTest, OpensAPageOnTopAndTellsItWhereItIs) {
  const auto navigation = UINavigationController::alloc().initWithRootViewController(page_);
  const auto next = objc::make<PSViewController>();
  page_.pushController(next, false);
  EXPECT_EQ(navigation.topViewController(), next);
  EXPECT_EQ((objc::send<"parentController", NSObject>(next)), page_);
  EXPECT_EQ((objc::send<"rootController", NSObject>(next)), navigation);

  const auto plain = objc::make<UIViewController>();
  page_.pushController(plain, false);
  EXPECT_EQ(navigation.topViewController(), plain) << "a page of no list";
  page_.pushController(UIViewController(), false);
  EXPECT_EQ(navigation.topViewController(), plain);
}

TEST_F(PageControllerTest, OpensNothingOutsideANavigation) {
  const auto next = objc::make<PSViewController>();
  page_.pushController(next, false);
  EXPECT_EQ((objc::send<"parentController", NSObject>(next)), page_);
  EXPECT_FALSE((objc::send<"rootController", NSObject>(next)));
}

}  // namespace
}  // namespace wispen::testing
