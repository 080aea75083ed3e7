// tests/home_screen/separator_test.cpp: the lines of menus and notifications.

#include "home_screen/separator.hpp"

#include "tests/home_screen/parts_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SeparatorTest : public PartsTest {
 protected:
  static std::vector<double> heights(const UIView& view) {
    std::vector<double> found;
    for (const UIView& line : separators(view)) found.push_back(line.frame().size.height);
    return found;
  }
};

TEST_F(SeparatorTest, PartRowsByThinLinesAndGroupsByBoldOnes) {
  EXPECT_THAT(heights(menu({})), ElementsAre(1, 3, 1, 1));
  EXPECT_THAT(heights(notification({})), ElementsAre(3, 1, 1));
}

TEST_F(SeparatorTest, AreAsThickAsTheyAreSetAndRowsMakeRoom) {
  const UIView view = menu({{"hsSeparatorThickness", 4.0}});
  EXPECT_THAT(heights(view), ElementsAre(4, 12, 4, 4));
  EXPECT_EQ(view.frame().size.height, 5 * 44 + 4 + 12 + 4 + 4);
  EXPECT_THAT(heights(menu({{"lsSeparatorThickness", 4.0}})), ElementsAre(1, 3, 1, 1));
  EXPECT_THAT(heights(notification({{"lsSeparatorThickness", 2.0}})), ElementsAre(6, 2, 2));
  EXPECT_THAT(heights(menu({{"hsSeparatorThickness", 0.0}})), IsEmpty());
}

TEST_F(SeparatorTest, AreTrimmedAtBothSides) {
  for (const UIView& line : separators(menu({{"hsSeparatorTrim", 30.0}}))) {
    EXPECT_EQ(line.frame().origin.x, 30);
    EXPECT_EQ(line.frame().size.width, home_screen::kMenuWidth - 60);
  }
  for (const UIView& line : separators(notification({{"lsSeparatorTrim", 120.0}}))) {
    EXPECT_EQ(line.frame().size.width, 130);
  }
}

TEST_F(SeparatorTest, AreHiddenByTheirKind) {
  EXPECT_THAT(heights(menu({{"hsBoldHidden", true}})), ElementsAre(1, 1, 1));
  EXPECT_THAT(heights(menu({{"hsThinHidden", true}})), ElementsAre(3));
  EXPECT_THAT(heights(notification({{"lsBoldHidden", true}})), ElementsAre(1, 1));
  EXPECT_THAT(heights(notification({{"lsThinHidden", true}})), ElementsAre(3));
  EXPECT_THAT(heights(menu({{"hsBoldHidden", true}, {"hsThinHidden", true}})), IsEmpty());
}

TEST_F(SeparatorTest, TakeTheColourOfTheIconByTheirKind) {
  const std::string violet = hex(dominant(apps->pressed()));
  const auto colours = [&](const Values& values) {
    std::vector<bool> found;
    for (const UIView& line : separators(menu(values)))
      found.push_back(hex(line.backgroundColor()) == violet);
    return found;
  };
  EXPECT_THAT(colours({{"backgroundDynamic", false}}), ElementsAre(true, true, true, true));
  EXPECT_THAT(colours({{"backgroundDynamic", false}, {"hsBoldColor", false}}),
              ElementsAre(true, false, true, true));
  EXPECT_THAT(colours({{"backgroundDynamic", false}, {"hsThinColor", false}}),
              ElementsAre(false, true, false, false));
}

TEST_F(SeparatorTest, CanBeSeenOnAGroundOfTheirOwnColour) {
  const UIView view = menu({});
  for (const UIView& line : separators(view)) {
    EXPECT_NE(hex(line.backgroundColor()), hex(fill(view).backgroundColor()));
  }
}

TEST_F(SeparatorTest, AreDrawnInTheirStyle) {
  for (const char* const style : {"faded", "dotted"}) {
    const auto lines = separators(menu({{"hsSeparatorStyle", style}}));
    EXPECT_THAT(lines, SizeIs(4));
    for (const UIView& line : lines) {
      const auto picture = objc::cast_or_nil<UIImageView>(line);
      ASSERT_TRUE(picture) << style;
      EXPECT_TRUE(picture.image());
    }
  }
}

TEST_F(SeparatorTest, AreTheSystemsOwnWhereNothingIsEnabled) {
  EXPECT_THAT(heights(menu({{"enabled", false}, {"hsSeparatorThickness", 9.0}, {"hsThinHidden", true}})),
              ElementsAre(0.5, 8, 0.5, 0.5));
}

}  // namespace
}  // namespace wispen::testing
