// tests/host/preferences/specifier_list_test.cpp: a list of a bundle, made into rows.

#include "host/preferences/limits.hpp"
#include "tests/host/preferences/list_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class SpecifierListTest : public ListTest {};

TEST_F(SpecifierListTest, ATableThatTheRowNamesItselfWins) {
  const auto specifier = load_one(item({{"cell", "PSSwitchCell"}, {"localizationTable", "Other"}}));
  EXPECT_EQ(specifier.propertyForKey<NSString>("localizationTable"_ns).utf8(), "Other");
}

TEST_F(SpecifierListTest, ItsNameIsTheTranslatedLabelAndItsLabelStaysAsWritten) {
  const auto specifiers =
      load(item({{"cell", "PSGroupCell"}, {"label", "Colours"}, {"footerText", "Foot"}}) +
               item({{"cell", "PSEditTextCell"}, {"label", "Untranslated"}, {"placeholder", "Hint"}}),
           {{"en.lproj/List.strings", "Colours = \"Farben\"; Foot = \"Fu\xC3\x9F\"; Hint = \"Wink\";"}});
  const auto group = specifiers.objectAtIndex<PSSpecifier>(0);
  EXPECT_EQ(group.name().utf8(), "Farben");
  EXPECT_EQ(group.propertyForKey<NSString>("label"_ns).utf8(), "Colours");
  EXPECT_EQ(group.propertyForKey<NSString>("footerText"_ns).utf8(), "Fu\xC3\x9F");
  const auto text = specifiers.objectAtIndex<PSSpecifier>(1);
  EXPECT_EQ(text.name().utf8(), "Untranslated");
  EXPECT_EQ(text.propertyForKey<NSString>("placeholder"_ns).utf8(), "Wink");
}

TEST_F(SpecifierListTest, ADataSourceThatAsksForItsOwnListEnds) {
  const auto specifiers =
      load(item({{"cell", "PSLinkListCell"}, {"key", "k"}, {"valuesDataSource", "loadAgain:"}}) +
           item({{"cell", "PSLinkListCell"}, {"key", "l"}, {"valuesDataSource", "loadAgain:"}}));
  EXPECT_EQ(specifiers.count(), 2u);
  EXPECT_THAT(problems(), ::testing::Contains(HasSubstr("asks for the list that it belongs to")));
}

TEST_F(SpecifierListTest, OfAListWithoutEndTheFirstRowsAreRead) {
  std::string items;
  for (std::size_t i = 0; i <= preferences::kMostRows; ++i) items += "<dict/>";
  EXPECT_EQ(load(items).count(), preferences::kMostRows);
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("List.plist: only the first 10000 rows are shown")));
}

TEST_F(SpecifierListTest, ATextWithoutEndIsCutAndReported) {
  const std::string text(preferences::kLongestText - 1, 'x');
  const auto whole = load_one(item({{"cell", "PSGroupCell"}, {"footerText", (text + "y").c_str()}}));
  EXPECT_EQ(whole.propertyForKey<NSString>("footerText"_ns).utf8(), text + "y");
  EXPECT_TRUE(problems().empty());
  const auto cut = load_one(item({{"cell", "PSGroupCell"}, {"footerText", (text + "\U0001F642").c_str()}}));
  EXPECT_EQ(cut.propertyForKey<NSString>("footerText"_ns).utf8(), text + "\u2026")
      << "not between the halves of a character";
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("16385 characters is cut")));
}

TEST_F(SpecifierListTest, TakesItsChoicesFromDataSourcesOfTheTarget) {
  const auto specifier = load_one(item({{"cell", "PSLinkListCell"},
                                        {"key", "k"},
                                        {"valuesDataSource", "valueSource:"},
                                        {"titlesDataSource", "titleSource:"}}));
  EXPECT_EQ(specifier.values().count(), 2u);
  EXPECT_EQ(specifier.titleDictionary().objectForKey<NSString>(NSNumber::numberWithInt(2)).utf8(), "Two");
}

TEST_F(SpecifierListTest, ValuesAndTitlesOfDifferentNumberAreReported) {
  load_one(item({{"cell", "PSSegmentCell"}, {"key", "odd"}},
                "<key>validValues</key><array><string>a</string><string>b</string></array>"
                "<key>validTitles</key><array><string>A</string></array>"));
  EXPECT_THAT(problems(),
              ElementsAre(::testing::AllOf(HasSubstr("odd"), HasSubstr("2 values and 1 titles"))));
}

TEST_F(SpecifierListTest, ARowThatNeedsWhatTheDeviceLacksIsLeftOut) {
  const auto specifiers =
      load(item({{"cell", "PSSwitchCell"}, {"key", "a"}},
                "<key>requiredCapabilities</key><array><string>wifi</string></array>") +
           item({{"cell", "PSSwitchCell"}, {"key", "b"}},
                "<key>requiredCapabilities</key><array><string>warp-drive</string></array>"));
  ASSERT_EQ(specifiers.count(), 1u);
  EXPECT_EQ(specifiers.objectAtIndex<PSSpecifier>(0).identifier().utf8(), "a");
}

TEST_F(SpecifierListTest, OddItemsArePassedOverAndReported) {
  const auto specifiers = load("<string>no dictionary</string>" +
                               item({{"cell", "PSSwitchCell"}, {"key", "a"}}) + "<integer>3</integer>");
  EXPECT_EQ(specifiers.count(), 1u);
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("item 0"), HasSubstr("item 2")));
}

TEST_F(SpecifierListTest, ABrokenListIsEmptyAndReported) {
  load_bundle_with({{"List.plist", "<plist><dict>"}, {"NoItems.plist", plist("<dict/>")}});
  EXPECT_EQ(page_.loadSpecifiersFromPlistName("List"_ns, page_).count(), 0u);
  EXPECT_EQ(page_.loadSpecifiersFromPlistName("NoItems"_ns, page_).count(), 0u);
  EXPECT_EQ(problems().size(), 2u);
}

TEST_F(SpecifierListTest, TranslatesTheQuestionThatARowAsks) {
  const auto specifiers = load(
      item({{"cell", "PSButtonCell"}, {"label", "x"}},
           "<key>confirmation</key><dict><key>prompt</key><string>Sure?</string><key>okTitle</key><string>OK"
           "</string><key>odd</key><integer>1</integer></dict>"),
      {{"en.lproj/List.strings", "\"Sure?\" = \"Sicher?\";"}});
  const auto question =
      specifiers.objectAtIndex<PSSpecifier>(0).propertyForKey<NSDictionary>("confirmation"_ns);
  EXPECT_EQ(question.objectForKey<NSString>("prompt"_ns).utf8(), "Sicher?");
  EXPECT_EQ(question.objectForKey<NSString>("okTitle"_ns).utf8(), "OK");
  EXPECT_EQ(question.objectForKey<NSNumber>("odd"_ns).intValue(), 1);
}

TEST_F(SpecifierListTest, TakesTitlesThatAreNotTextsAsTheyAre) {
  const auto specifier =
      load_one(item({{"cell", "PSSegmentCell"}, {"key", "k"}},
                    "<key>validValues</key><array><integer>1</integer><integer>2</integer></array>"
                    "<key>validTitles</key><array><integer>10</integer><string>Two</string></array>"
                    "<key>shortTitles</key><array><string>1</string><string>2</string></array>"));
  EXPECT_EQ(specifier.titleDictionary().objectForKey<NSNumber>(NSNumber::numberWithInt(1)).intValue(), 10);
  EXPECT_EQ(specifier.shortTitleDictionary().objectForKey<NSString>(NSNumber::numberWithInt(2)).utf8(), "2");
}

TEST_F(SpecifierListTest, AListThatTheBundleLacksIsReported) {
  load_bundle_with({});
  EXPECT_EQ(page_.loadSpecifiersFromPlistName("NoSuch"_ns, page_).count(), 0u);
  EXPECT_THAT(problems(), ElementsAre(HasSubstr("the bundle has no list NoSuch.plist")));
}

}  // namespace
}  // namespace wispen::testing
