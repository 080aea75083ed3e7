// tests/host/plist/splice_test.cpp
#include "host/plist/splice.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/plist/limits.hpp"
#include "host/plist/utf.hpp"
#include "tests/host/plist/binary_maker.hpp"
#include "tests/host/plist/samples.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::plist {
namespace {

using testing::binary;
using testing::everything;
using testing::tree_of;
using testing::xml_dictionary;
using namespace std::string_literals;

std::string spliced(const std::string& bytes, const std::vector<Change>& changes) {
  const Result<Document> document = Document::parse(bytes);
  EXPECT_TRUE(document) << document.error().message;
  const Result<std::string> result = splice(*document, changes);
  EXPECT_TRUE(result) << result.error().message;
  EXPECT_TRUE(Document::parse(*result)) << *result;
  return *result;
}

TEST(SpliceXml, ChangesTheBytesOfOneValueOnly) {
  const std::string before =
      "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- head --><plist  version='1.0'>\n<dict x='y'>\n"
      "  <key>a</key> <integer> 0x10 </integer>  <!-- sixteen -->\n\n <key>&#98;</key><!-- why "
      "--><real>1.50</real>"
      "<key>c</key>\n<array><string><![CDATA[<]]></string></array>\n<!-- tail --></dict >\n</plist>\n<!-- "
      "end -->";
  std::string after = before;
  after.replace(after.find("<real>1.50</real>"), 17, "<false/>");
  EXPECT_EQ(spliced(before, {{"b", false}}), after);
}

TEST(SpliceXml, AppendsNewKeysInTheFilesOwnIndentation) {
  EXPECT_EQ(
      spliced("<plist>\n  <dict>\n    <key>a</key>\n    <true/>\n    <!-- last -->\n  </dict>\n</plist>",
              {{"b", Array{1}}, {"c", Dictionary{{"<", 2}}}}),
      "<plist>\n  <dict>\n    <key>a</key>\n    <true/>\n    <key>b</key>\n    <array>\n      <integer>1"
      "</integer>\n    </array>\n    <key>c</key>\n    <dict>\n      <key>&lt;</key>\n      <integer>2"
      "</integer>\n    </dict>\n    <!-- last -->\n  </dict>\n</plist>");
  EXPECT_EQ(spliced("<plist><dict><key>a</key><true/></dict></plist>", {{"b", true}}),
            "<plist><dict><key>a</key><true/><key>b</key><true/></dict></plist>");
  EXPECT_EQ(
      spliced("<plist>\r\n<dict>\r\n\t<key>a</key>\r\n\t<true/>\r\n</dict>\r\n</plist>", {{"b", Array{1}}}),
      "<plist>\r\n<dict>\r\n\t<key>a</key>\r\n\t<true/>\r\n\t<key>b</key>\r\n\t<array>\r\n\t\t<integer>1"
      "</integer>\r\n\t</array>\r\n</dict>\r\n</plist>");
}

TEST(SpliceXml, FillsEmptyDictionaries) {
  const std::string filled = "<plist>\n<dict>\n\t<key>a</key>\n\t<true/>\n</dict>\n</plist>";
  EXPECT_EQ(spliced("<plist>\n<dict/>\n</plist>", {{"a", true}}), filled);
  EXPECT_EQ(spliced("<plist>\n<dict></dict>\n</plist>", {{"a", true}}), filled);
  EXPECT_EQ(spliced("<plist>\n<dict>\n</dict>\n</plist>", {{"a", true}}), filled);
  EXPECT_EQ(spliced("<plist>\n<dict>\n<!-- c -->\n</dict>\n</plist>", {{"a", true}}),
            "<plist>\n<dict>\n<!-- c -->\n\t<key>a</key>\n\t<true/>\n</dict>\n</plist>");
  EXPECT_EQ(spliced("<dict/>", {{"a", true}}), "<dict>\n\t<key>a</key>\n\t<true/>\n</dict>");
}

TEST(SpliceXml, RemovesKeysWithTheirSpace) {
  const std::string three =
      "<plist>\n<dict>\n\t<key>a</key>\n\t<true/>\n\t<key>b</key>\n\t<true/>\n\t<key>c</key>\n\t<true/>\n"
      "</dict>\n</plist>";
  EXPECT_EQ(spliced(three, {{"b", std::nullopt}}),
            "<plist>\n<dict>\n\t<key>a</key>\n\t<true/>\n\t<key>c</key>\n\t<true/>\n</dict>\n</plist>");
  EXPECT_EQ(spliced(three, {{"a", std::nullopt}, {"b", std::nullopt}, {"c", std::nullopt}}),
            "<plist>\n<dict>\n</dict>\n</plist>");
  EXPECT_EQ(
      spliced(three, {{"c", std::nullopt}, {"d", 4}}),
      "<plist>\n<dict>\n\t<key>a</key>\n\t<true/>\n\t<key>b</key>\n\t<true/>\n\t<key>d</key>\n\t<integer>4"
      "</integer>\n</dict>\n</plist>");
  EXPECT_EQ(spliced(three, {{"missing", std::nullopt}}), three);
}

TEST(SpliceXml, KeepsUtf16) {
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
    std::string before;
    append_utf16(before,
                 "\xEF\xBB\xBF<plist><dict><key>\xC3\xA4</key><true/><key>b</key><true/></dict></plist>",
                 order);
    std::string after;
    append_utf16(
        after,
        "\xEF\xBB\xBF<plist><dict><key>\xC3\xA4</key><string>\xF0\x9F\x98\x80</string><key>b</key><true/>"
        "</dict></plist>",
        order);
    EXPECT_EQ(spliced(before, {{"\xC3\xA4", "\xF0\x9F\x98\x80"}}), after);
  }
}

TEST(SpliceXml, TurnsBinaryForWhatXmlCannotHold) {
  const std::string before = xml_dictionary("<key>a</key><true/><key>b</key><true/>");
  const std::string after = spliced(before, {{"b", "\x1B"}});
  EXPECT_EQ(Document::parse(after)->format(), Format::Binary);
  EXPECT_EQ(tree_of(after), Tree(Dictionary{{"a", true}, {"b", "\x1B"}}));
}

TEST(SpliceBinary, KeepsTheBytesOfEveryOtherObject) {
  // A float and a number in more bytes than it needs are written differently by the encoder.
  const std::string before =
      binary({"\xD3\x01\x02\x03\x04\x05\x06"s, "\x51"s + "a", "\x51"s + "b", "\x51"s + "c",
              "\x22\x3F\xC0\x00\x00"s, "\x11\x00\x07"s, "\xA2\x04\x05"s});
  const std::string after = spliced(before, {{"b", "new"}});
  EXPECT_EQ(tree_of(after), Tree(Dictionary{{"a", 1.5}, {"b", "new"}, {"c", Array{1.5, 7}}}));
  EXPECT_THAT(after, ::testing::HasSubstr("\x22\x3F\xC0\x00\x00\x11\x00\x07\xA2\x04\x05"s));
}

TEST(SpliceBinary, DropsWhatNothingNamesAnyMore) {
  std::string bytes = *encode(Tree(Dictionary{{"a", 1}, {"b", std::string(1000, 'x')}}), Format::Binary);
  bytes = spliced(bytes, {{"b", 2}});
  EXPECT_LT(bytes.size(), 100U);
  const std::size_t size = bytes.size();
  for (int i = 0; i < 1000; ++i) bytes = spliced(bytes, {{"b", i % 2 == 0 ? Tree("text") : Tree(2)}});
  EXPECT_EQ(bytes.size(), size) << "a list that is written again and again must not grow";
}

TEST(SpliceBinary, WidensReferencesWhenObjectsOutgrowThem) {
  Dictionary members = {{"nested", Array{"x", Dictionary{{"y", "z"}}}}};
  for (int i = 0; i < 120; ++i) members.push_back({"k" + std::to_string(i), 1000 + i});
  std::string bytes = *encode(Tree(members), Format::Binary);
  for (int i = 120; i < 200; ++i) {
    members.push_back({"k" + std::to_string(i), 1000 + i});
    bytes = spliced(bytes, {{members.back().key, members.back().value}});
    ASSERT_EQ(tree_of(bytes), Tree(members));
  }
}

class Splice : public ::testing::TestWithParam<Format> {};
INSTANTIATE_TEST_SUITE_P(Formats, Splice, ::testing::Values(Format::Xml, Format::Binary),
                         [](const auto& format) { return format.param == Format::Xml ? "Xml" : "Binary"; });

TEST_P(Splice, ChangesAddsAndRemovesWithoutTouchingTheRest) {
  const Dictionary original = *everything().as<Dictionary>();
  std::string bytes = *encode(Tree(original), GetParam());
  for (const Member& member : original) {
    const std::string without = spliced(bytes, {{member.key, std::nullopt}});
    EXPECT_FALSE(Document::parse(without)->root().find(member.key)) << member.key;
    EXPECT_EQ(Document::parse(without)->root().count(), original.size() - 1);
    const Result<Document> back = Document::parse(spliced(without, {{member.key, member.value}}));
    EXPECT_EQ(Tree::of(*back->root().find(member.key)), member.value) << member.key;
    EXPECT_EQ(tree_of(spliced(bytes, {{member.key, member.value}})), Tree(original)) << member.key;
  }
}

TEST_P(Splice, SettingTheSameValueGivesTheSameFile) {
  const std::string bytes = *encode(everything(), GetParam());
  EXPECT_EQ(tree_of(spliced(bytes, {{"one", 1}})), everything());
  const Tree array = Tree::of(*Document::parse(bytes)->root().find("array"));
  const std::string same = spliced(bytes, {{"array", array}});
  EXPECT_EQ(tree_of(same), everything());
  EXPECT_TRUE(GetParam() == Format::Binary || same == bytes);
}

TEST_P(Splice, LetsTheLastChangeOfAKeyCount) {
  const std::string bytes = *encode(Tree(Dictionary{{"a", 1}}), GetParam());
  EXPECT_EQ(tree_of(spliced(bytes, {{"a", 2}, {"b", 3}, {"a", std::nullopt}, {"b", 4}})),
            Tree(Dictionary{{"b", 4}}));
}

TEST_P(Splice, LeavesOneOfEqualKeys) {
  const std::string bytes = *encode(Tree(Dictionary{{"a", 1}, {"b", 2}, {"a", 3}}), GetParam());
  ASSERT_EQ(Document::parse(bytes)->root().count(), 3U);
  const std::string set = spliced(bytes, {{"a", 4}});
  EXPECT_EQ(Document::parse(set)->root().count(), 2U);
  EXPECT_EQ(tree_of(set), Tree(Dictionary{{"a", 4}, {"b", 2}}));
  EXPECT_EQ(tree_of(spliced(bytes, {{"a", std::nullopt}})), Tree(Dictionary{{"b", 2}}));
}

TEST_P(Splice, WritesAFreshFileWhereThereIsNoDictionary) {
  const std::vector<Change> changes = {{"a", 1}, {"b", std::nullopt}};
  const Result<std::string> fresh = splice(std::nullopt, changes, GetParam());
  EXPECT_EQ(tree_of(*fresh), Tree(Dictionary{{"a", 1}}));
  EXPECT_EQ(Document::parse(*fresh)->format(), GetParam());
  const Result<Document> array = Document::parse(*encode(Tree(Array{1}), Format::Xml));
  EXPECT_EQ(*splice(*array, changes, GetParam()), *fresh);
}

TEST_P(Splice, RefusesWhatCannotBeReadAgain) {
  const Result<Document> document = Document::parse(*encode(Tree(Dictionary{{"a", 1}}), GetParam()));
  EXPECT_FALSE(splice(*document, {{"b", "\xE4"}}));
  EXPECT_FALSE(splice(*document, {{"\xE4", 1}}));
  Tree deep = Array{};
  for (std::size_t depth = 1; depth < kMaxDepth; ++depth) deep = Array{std::move(deep)};
  EXPECT_FALSE(splice(*document, {{"b", deep}}));
  EXPECT_FALSE(splice(*document, {{"b", std::string(kMaxFileSize, 'x')}}));
}

TEST_P(Splice, UpdatesFilesOneAfterTheOtherWithoutLosingKeys) {
  const wispen::testing::TemporaryFolder folder;
  const std::string path = folder / "values.plist";
  Dictionary expected;
  for (int i = 0; i < 50; ++i) {
    expected.push_back({"key " + std::to_string(i), i});
    ASSERT_TRUE(update_file(path, {{expected.back().key, i}}, GetParam()));
  }
  EXPECT_EQ(Tree::of(Document::read(path)->root()), Tree(expected));
  EXPECT_EQ(folder.names().size(), 1U);
}

TEST_P(Splice, ReplacesAFileThatCannotBeRead) {
  const wispen::testing::TemporaryFolder folder;
  const std::string path = folder / "values.plist";
  wispen::testing::write_file(path, "<plist><dict><key>a</key>");
  ASSERT_TRUE(update_file(path, {{"b", 1}}, GetParam()));
  EXPECT_EQ(Tree::of(Document::read(path)->root()), Tree(Dictionary{{"b", 1}}));
}

TEST_P(Splice, DoesNotLockWritersThatReadBeforeTheOtherWrote) {
  // By contract: two writers at the same moment may lose one another's keys, one after the other never.
  const wispen::testing::TemporaryFolder folder;
  const std::string path = folder / "values.plist";
  ASSERT_TRUE(update_file(path, {{"a", 0}}, GetParam()));
  const Result<Document> seen_by_first = Document::read(path);
  ASSERT_TRUE(update_file(path, {{"second", 2}}, GetParam()));
  wispen::testing::write_file(path, *splice(*seen_by_first, {{"first", 1}}));
  EXPECT_EQ(Tree::of(Document::read(path)->root()), Tree(Dictionary{{"a", 0}, {"first", 1}}));
}

}  // namespace
}  // namespace wispen::plist
