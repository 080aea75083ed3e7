// tests/host/preferences/named_method_test.cpp: what a list may have performed.

#include "tests/host/preferences/list_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

class NamedMethodTest : public ListTest {};

TEST_F(NamedMethodTest, AMethodThatDoesNotFitIsReportedAndNotPerformed) {
  for (const char* const name : {"hash", "retainCount", "release", "dealloc", "autorelease", "isProxy",
                                 "setPreferenceValue:specifier:", "specifiers", "initWithCoder:"}) {
    const auto specifier = load_one(item({{"cell", "PSSwitchCell"},
                                          {"key", "k"},
                                          {"get", name},
                                          {"set", "getIt:"},
                                          {"valuesDataSource", name},
                                          {"titlesDataSource", name}}));
    EXPECT_FALSE(specifier.values()) << name;
    EXPECT_FALSE(specifier.performGetter()) << name;
    specifier.performSetterWithValue("v"_ns);
    EXPECT_THAT(problems(), ::testing::Contains(HasSubstr(name))) << name;
  }
  EXPECT_TRUE(AskedPage::log.empty());
}

}  // namespace
}  // namespace wispen::testing
