// tests/host/preferences/confirmation_test.cpp: the question that a row asks before it acts.

#include <string>
#include <vector>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::ElementsAre;

class ConfirmationTest : public PageTest {
 protected:
  /// A page with one button, which asks with these words.
  void show_button(const std::string& words, const std::string& more = "") {
    show("SepSettingsCell",
         {{"Root.plist",
           specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
          {"SepSettingsLS.plist",
           specifier_list(item({{"cell", "PSButtonCell"}, {"label", "Do it"}, {"action", "reloadSpecifiers"}},
                               "<key>confirmation</key><dict>" + words + "</dict>" + more))}});
  }
  static std::string word(const char* key, const char* text) {
    return std::string("<key>") + key + "</key><string>" + text + "</string>";
  }
  static UIAlertController question() {
    return objc::cast_or_nil<UIAlertController>(navigation().presentedViewController());
  }
  static std::vector<std::string> titles() {
    std::vector<std::string> all;
    const NSArray actions = question().actions();
    for (NSUInteger i = 0; i < actions.count(); ++i)
      all.push_back(actions.objectAtIndex<UIAlertAction>(i).title().utf8());
    return all;
  }
  static UIAlertActionStyle style(NSUInteger index) {
    return question().actions().objectAtIndex<UIAlertAction>(index).style();
  }
};

TEST_F(ConfirmationTest, OnAPhoneTheTitleIsTheButton) {
  show_button(word("title", "Erase") + word("prompt", "Really?"), "<key>isDestructive</key><true/>");
  tap_text("Do it");
  ASSERT_TRUE(question());
  EXPECT_FALSE(question().title());
  EXPECT_EQ(question().message().utf8(), "Really?");
  EXPECT_THAT(titles(), ElementsAre("Erase", "Cancel"));
  EXPECT_EQ(style(0), UIAlertActionStyle::Destructive);
  EXPECT_EQ(style(1), UIAlertActionStyle::Cancel);
}

TEST_F(ConfirmationTest, OnAPadTheTitleStandsAboveTheQuestion) {
  ASSERT_EQ(wispen_host_set_look("device", "pad"), 1) << wispen_host_last_error();
  show_button(word("title", "Erase") + word("okTitle", "Yes") + word("cancelTitle", "No"));
  tap_text("Do it");
  ASSERT_TRUE(question());
  EXPECT_EQ(question().title().utf8(), "Erase");
  EXPECT_THAT(titles(), ElementsAre("Yes", "No"));
  EXPECT_EQ(style(0), UIAlertActionStyle::Default);
}

TEST_F(ConfirmationTest, WithoutWordsItIsOKAndCancel) {
  show_button("<key>title</key><integer>1</integer>");
  tap_text("Do it");
  EXPECT_THAT(titles(), ElementsAre("OK", "Cancel"));
  tap_text("Cancel");
  EXPECT_FALSE(question());
}

}  // namespace
}  // namespace wispen::testing
