// tests/wispen/lint/specifier_lint_test.cpp: what the checker finds, and what it leaves alone.

#include "wispen/lint/specifier_lint.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/preferences/limits.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::lint {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class KnownClasses : public Classes {
 public:
  bool exists(const std::string& name) const override { return name == "SomePage" || name == "SomeCell"; }
  bool is_page(const std::string& name) const override { return name == "SomePage"; }
  bool answers(const std::string& name, const std::string& selector) const override {
    return name == "SomePage" && (selector == "doIt" || selector == "hash");
  }
  std::optional<std::string> misfit(const std::string&, const std::string& selector,
                                    preferences::MethodRole role) const override {
    if (selector == "hash") return preferences::why_not_performed(selector, {'Q', 0, true}, role);
    return std::nullopt;
  }
  std::string page_of_list(const std::string& list) const override {
    return list == "Orphan" ? "" : "SomePage";
  }
};

class SpecifierLintTest : public ::testing::Test {
 protected:
  /// The findings for a list with these items: "error row: message" each.
  std::vector<std::string> check(const std::string& items, const std::string& list = "Root") {
    folder_.write(list + ".plist",
                  "<plist version=\"1.0\"><dict><key>items</key><array>" + items + "</array></dict></plist>");
    return check_folder();
  }
  std::vector<std::string> check_folder() const {
    std::vector<std::string> found;
    for (const Finding& finding : check_bundle(folder_.path(), KnownClasses())) {
      found.push_back(std::string(finding.severity == Severity::Error ? "error " : "warning ") +
                      finding.file + " " + (finding.item ? std::to_string(*finding.item) : "-") + " " +
                      finding.row + ": " + finding.message);
    }
    return found;
  }
  static std::string row(const std::string& properties) {
    return "<dict><key>cell</key><string>PSSwitchCell</string>" + properties + "</dict>";
  }
  static std::string text(const char* key, const char* value) {
    return std::string("<key>") + key + "</key><string>" + value + "</string>";
  }

  const wispen::testing::TemporaryFolder folder_;
};

TEST_F(SpecifierLintTest, IsSilentAboutASoundList) {
  folder_.write("picture@2x.png", "");
  folder_.write("en.lproj/Root.strings", "\"Label\" = \"Label\";");
  EXPECT_THAT(check(row(text("key", "a") + text("label", "Label") + text("cellClass", "SomeCell") +
                        text("action", "doIt") + text("icon", "picture.png") + text("detail", "SomePage") +
                        "<key>default</key><true/>")),
              IsEmpty());
}

TEST_F(SpecifierLintTest, FindsUnknownKeysAndCells) {
  EXPECT_THAT(check(row(text("laebl", "x"))),
              ElementsAre(AllOf(HasSubstr("warning Root.plist 0"), HasSubstr("laebl"))));
  EXPECT_THAT(check("<dict><key>cell</key><string>PSSwichCell</string></dict>"),
              ElementsAre(HasSubstr("PSSwichCell")));
  EXPECT_THAT(check("<dict><key>id</key><string>x</string></dict>"), ElementsAre(HasSubstr("no cell type")));
  EXPECT_THAT(check("<string>x</string>"), ElementsAre(HasSubstr("not a dictionary")));
}

TEST_F(SpecifierLintTest, FindsMethodsThatDoNotFitWhatTheyAreNamedFor) {
  EXPECT_THAT(check(row(text("get", "hash"))),
              ElementsAre(HasSubstr("the method hash does not return an object (\"get\")")));
  EXPECT_THAT(check(row(text("set", "hash"))), ElementsAre(HasSubstr("does not take a value and the row")));
  EXPECT_THAT(check(row(text("titlesDataSource", "hash"))), ElementsAre(HasSubstr("titlesDataSource")));
  EXPECT_THAT(check(row(text("action", "hash"))), IsEmpty()) << "its result is not looked at";
}

TEST_F(SpecifierLintTest, FindsMoreRowsAndLongerTextsThanAreShown) {
  std::string rows;
  for (std::size_t i = 0; i < preferences::kMostRows; ++i) rows += row("");
  EXPECT_THAT(check(rows), IsEmpty());
  EXPECT_THAT(check(rows + row("")),
              ElementsAre(HasSubstr("10001 rows, and only the first 10000 are shown")));
  const std::string long_text(preferences::kLongestText + 1, '#');
  EXPECT_THAT(check(row(text("label", long_text.substr(1).c_str()))), IsEmpty());
  EXPECT_THAT(check(row(text("label", long_text.c_str()))), ElementsAre(HasSubstr("16385 characters")));
}

TEST_F(SpecifierLintTest, FindsClassesAndSelectorsThatDoNotExist) {
  EXPECT_THAT(check(row(text("cellClass", "Nothing"))), ElementsAre(HasSubstr("no class Nothing")));
  EXPECT_THAT(check(row(text("detail", "SomeCell"))), ElementsAre(HasSubstr("SomeCell is no page")));
  EXPECT_THAT(check(row(text("action", "dont"))),
              ElementsAre(AllOf(HasSubstr("SomePage"), HasSubstr("dont"))));
}

TEST_F(SpecifierLintTest, FindsMissingImagesAtEveryScaleOnly) {
  EXPECT_THAT(check(row(text("icon", "missing.png"))), ElementsAre(HasSubstr("missing.png")));
  folder_.write("there@3x~ipad.png", "");
  EXPECT_THAT(check(row(text("icon", "there.png"))), IsEmpty());
}

TEST_F(SpecifierLintTest, FindsTextsThatALanguageLacks) {
  folder_.write("en.lproj/Root.strings", "\"Label\" = \"Label\";");
  folder_.write("de.lproj/Root.strings", "\"Other\" = \"Andere\";");
  EXPECT_THAT(check(row(text("label", "Label"))),
              ElementsAre(AllOf(HasSubstr("warning"), HasSubstr("into de"))));
}

TEST_F(SpecifierLintTest, FindsABrokenStringsTableWithItsLine) {
  folder_.write("en.lproj/Root.strings", "\"a\" = \"b\";\n\"c\" \"d\";");
  EXPECT_THAT(check(row("")), ElementsAre(AllOf(HasSubstr("error en.lproj/Root.strings"), HasSubstr("2"))));
}

TEST_F(SpecifierLintTest, FindsIdsThatStandTwice) {
  EXPECT_THAT(check(row(text("id", "a")) + row(text("key", "a"))),
              ElementsAre(AllOf(HasSubstr("Root.plist 1 a"), HasSubstr("twice"))));
}

TEST_F(SpecifierLintTest, FindsValuesOfTheWrongType) {
  EXPECT_THAT(check(row("<key>height</key><string>44</string>")),
              ElementsAre(AllOf(HasSubstr("height"), HasSubstr("a number"))));
  EXPECT_THAT(check(row("<key>default</key><string>YES</string>")), ElementsAre(HasSubstr("yes or no")));
  EXPECT_THAT(check(row("<key>key</key><integer>1</integer>")), ElementsAre(HasSubstr("\"key\" holds")));
}

TEST_F(SpecifierLintTest, FindsAFirstRowThatCouldBeHidden) {
  for (const char* const property : {"depends", "dependsNot", "labelDependant"}) {
    EXPECT_THAT(check(row(text(property, "x"))), ElementsAre(HasSubstr("first row"))) << property;
    EXPECT_THAT(check(row("") + row(text(property, "x"))), IsEmpty()) << property;
  }
  EXPECT_THAT(check(row(text("key", "notificationColor"))), ElementsAre(HasSubstr("first row")));
}

TEST_F(SpecifierLintTest, FindsChoicesThatDoNotFitTogether) {
  const std::string values = "<key>validValues</key><array><string>a</string><integer>2</integer></array>";
  EXPECT_THAT(check(row(values + "<key>validTitles</key><array><string>A</string></array>")),
              ElementsAre(HasSubstr("2 values and 1 titles")));
  EXPECT_THAT(check(row(values)), ElementsAre(HasSubstr("no titles")));
  const std::string titles = "<key>validTitles</key><array><string>A</string><string>B</string></array>";
  EXPECT_THAT(
      check("<dict>" + text("cell", "PSSegmentCell") + values + titles + text("default", "c") + "</dict>"),
      ElementsAre(HasSubstr("none of the values")));
  EXPECT_THAT(check("<dict>" + text("cell", "PSSegmentCell") + values + titles +
                    "<key>default</key><real>2</real></dict>"),
              IsEmpty());
}

TEST_F(SpecifierLintTest, FindsImpossibleSliders) {
  const auto slider = [&](const std::string& properties) {
    return check("<dict><key>cell</key><string>PSSliderCell</string>" + properties + "</dict>");
  };
  EXPECT_THAT(slider("<key>min</key><real>1</real>"), ElementsAre(HasSubstr("not below")));
  EXPECT_THAT(slider("<key>max</key><integer>5</integer><key>default</key><integer>6</integer>"),
              ElementsAre(HasSubstr("outside")));
  EXPECT_THAT(slider("<key>default</key><string>1</string>"), ElementsAre(HasSubstr("a number")));
  EXPECT_THAT(slider("<key>min</key><integer>-1</integer><key>default</key><integer>0</integer>"), IsEmpty());
}

TEST_F(SpecifierLintTest, FindsListsThatCannotBeReadAndSaysWhere) {
  folder_.write("Root.plist", "<plist>\n<dict>\n<key>items</key>\n</dict></plist>");
  EXPECT_THAT(check_folder(), ElementsAre(AllOf(HasSubstr("error Root.plist"), HasSubstr("4"))));
  folder_.write("Root.plist", "<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><dict/></plist>");
  EXPECT_THAT(check_folder(), ElementsAre(HasSubstr("error Root.plist")));
  folder_.write("Root.plist", "<plist><dict/></plist>");
  EXPECT_THAT(check_folder(), ElementsAre(HasSubstr("no \"items\"")));
}

TEST_F(SpecifierLintTest, FindsAListThatNoPageShowsAndABundleWithoutLists) {
  EXPECT_THAT(check_folder(), ElementsAre(HasSubstr("no specifier list")));
  EXPECT_THAT(check(row(""), "Orphan"), ElementsAre(HasSubstr("warning Orphan.plist")));
}

}  // namespace
}  // namespace wispen::lint
