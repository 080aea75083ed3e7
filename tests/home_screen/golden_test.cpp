// tests/home_screen/golden_test.cpp: the home screen as it is to look.

#include "tests/support/golden.hpp"

#include "tests/home_screen/screen_fixture.hpp"

namespace wispen::testing {
namespace {

struct Look {
  const char* name;  // of the file
  const char* appearance;
  const char* device;
  const char* orientation;
  Values values;
};

const Look kLooks[] = {
    {"usual", "light", "phone", "portrait", {}},
    {"usual-dark", "dark", "phone", "portrait", {}},
    {"off", "light", "phone", "portrait", {{"enabled", false}}},
    {"off-dark", "dark", "phone-small", "portrait", {{"enabled", false}}},
    {"glass",
     "light",
     "phone",
     "portrait",
     {{"vitrelleBackground", true},
      {"backgroundDynamic", false},
      {"borderEnabled", true},
      {"borderWidth", 3.0},
      {"cornerRadiusEnabled", true},
      {"cornerRadius", 30.0},
      {"hideLabels", true},
      {"iconBackground", true},
      {"lsSeparatorStyle", "faded"},
      {"lsSeparatorThickness", 3.0},
      {"expandedSubtitle", true},
      {"expandedCornerRadius", 28.0}}},
    {"second-dotted-dark",
     "dark",
     "phone",
     "portrait",
     {{"colorSource", "second"},
      {"hsSeparatorStyle", "dotted"},
      {"hsSeparatorThickness", 4.0},
      {"hsSeparatorTrim", 20.0},
      {"notificationMode", "custom"},
      {"notificationColor", "#3A506B"},
      {"labelWeight", "bold"},
      {"hiddenCellsEnabled", true},
      {"hiddenCells", "Share"}}},
    {"pad", "light", "pad", "landscape", {{"backgroundDynamic", false}, {"expandedBackground", false}}},
};

class HomeScreenGolden : public ScreenTest, public ::testing::WithParamInterface<Look> {};

INSTANTIATE_TEST_SUITE_P(Looks, HomeScreenGolden, ::testing::ValuesIn(kLooks), [](const auto& test) {
  std::string name = test.param.name;
  std::ranges::replace(name, '-', '_');
  return name;
});

TEST_P(HomeScreenGolden, LooksAsItIsToLook) {
  const Look& look = GetParam();
  for (const auto& [name, value] :
       {std::pair("device", look.device), std::pair("appearance", look.appearance),
        std::pair("orientation", look.orientation)}) {
    ASSERT_EQ(wispen_host_set_look(name, value), 1) << wispen_host_last_error();
  }
  picture_of(look.values);
  EXPECT_TRUE(looks_like({WISPEN_GOLDENS, WISPEN_GOLDEN_FAILURES}, look.name, picture_file()));
}

}  // namespace
}  // namespace wispen::testing
