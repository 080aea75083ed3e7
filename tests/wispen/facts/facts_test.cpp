// tests/wispen/facts/facts_test.cpp: files of facts, good and bad, and which one belongs to a bundle.

#include "wispen/facts/facts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/temporary_folder.hpp"

namespace wispen {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

class FactsTest : public ::testing::Test {
 protected:
  std::string error_for(const std::string& json) const {
    folder_.write("x.facts.json", json);
    const auto facts = read_facts(folder_ / "x.facts.json");
    return facts ? "" : facts.error().message;
  }

  const wispen::testing::TemporaryFolder folder_;
};

TEST_F(FactsTest, OfOurOwnBundleAreWhole) {
  const auto facts = read_facts(WISPEN_TEST_FACTS);
  ASSERT_TRUE(facts.ok()) << facts.error().message;
  EXPECT_EQ(facts->folder(), "/Library/PreferenceBundles/3dvitrelleprefs.bundle");
  EXPECT_EQ(facts->executable(), "/Library/PreferenceBundles/3dvitrelleprefs.bundle/3dvitrelleprefs");
  EXPECT_EQ(facts->entry_file(), "/Library/PreferenceLoader/Preferences/3dvitrelleprefs.plist");
  EXPECT_EQ(facts->domain_file(), "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist");
  EXPECT_EQ(facts->notification, "com.m0rrow5.vitrelle3dtouch/prefschanged");
  EXPECT_EQ(facts->companion, "SpringBoard");
  EXPECT_THAT(facts->languages, ElementsAre("en", "de"));
  EXPECT_THAT(facts->row_keys, Contains(Pair("infoMessage", "text")));
}

TEST_F(FactsTest, NeedNoMoreThanTheBundlesName) {
  EXPECT_EQ(error_for(R"({"bundle": "Lumen"})"), "");
  const auto facts = read_facts(folder_ / "x.facts.json");
  EXPECT_EQ(facts->name, "Lumen");
  EXPECT_EQ(facts->companion, "");
  EXPECT_THAT(facts->row_keys, IsEmpty());
}

TEST_F(FactsTest, ThatAreWrongAreRefusedWithFileAndReason) {
  EXPECT_THAT(error_for("{"), HasSubstr("x.facts.json is not a JSON object"));
  EXPECT_THAT(error_for("[]"), HasSubstr("is not a JSON object"));
  EXPECT_THAT(error_for("{}"), HasSubstr("\"bundle\" is not the name of a folder"));
  EXPECT_THAT(error_for(R"({"bundle": "../x"})"), HasSubstr("\"bundle\" is not the name of a folder"));
  EXPECT_THAT(error_for(R"({"bundle": "x", "domain": 3})"),
              HasSubstr("x.facts.json: \"domain\" is not a text"));
  EXPECT_THAT(error_for(R"({"bundle": "x", "languages": "en"})"), HasSubstr("is not a list of texts"));
  EXPECT_THAT(error_for(R"({"bundle": "x", "rowKeys": ["a"]})"), HasSubstr("is not texts by name"));
  EXPECT_THAT(read_facts(folder_ / "none.facts.json").error().message, HasSubstr("cannot be read"));
}

TEST_F(FactsTest, LieBesideTheBundleOrBesideTheProgram) {
  folder_.write("here/Lumen.facts.json", R"({"bundle": "Lumen", "name": "Beside"})");
  folder_.write("programs/Lumen.facts.json", R"({"bundle": "Lumen", "name": "Program"})");
  const std::string programs = folder_ / "programs";
  EXPECT_EQ(facts_of_bundle(folder_ / "here/Lumen.bundle", programs)->name, "Beside");
  EXPECT_EQ(facts_of_bundle(folder_ / "here/Lumen.bundle/", programs)->name, "Beside");
  EXPECT_EQ(facts_of_bundle(folder_ / "root/Lumen.bundle", programs)->name, "Program");
  EXPECT_EQ(facts_of_bundle(folder_ / "root/Other.bundle", programs)->name, "Other");
  folder_.write(
      "root/Copy.bundle/Info.plist",
      "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>Lumen</string></dict></plist>");
  EXPECT_EQ(facts_of_bundle(folder_ / "root/Copy.bundle", programs)->name, "Program");
}

TEST_F(FactsTest, TheOnlyBundleIsFoundAndTwoAreAnError) {
  const std::string folder = folder_.path();
  EXPECT_THAT(only_bundle(folder).error().message, HasSubstr("there is no bundle in"));
  EXPECT_THAT(only_bundle(folder + "/none").error().message, HasSubstr("name one by --bundle"));
  folder_.write("a.facts.json", R"({"bundle": "a"})");
  EXPECT_EQ(only_bundle(folder)->bundle, "a");
  folder_.write("b.facts.json", R"({"bundle": "b"})");
  EXPECT_THAT(only_bundle(folder).error().message, HasSubstr("more than one bundle"));
}

}  // namespace
}  // namespace wispen
