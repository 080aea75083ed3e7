// tests/host/plist/round_trip_test.cpp
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/plist/limits.hpp"
#include "host/plist/utf.hpp"
#include "tests/host/plist/samples.hpp"

namespace wispen::plist {
namespace {

using testing::everything;
using ::testing::HasSubstr;
using testing::tree_of;

class RoundTrip : public ::testing::TestWithParam<Format> {};
INSTANTIATE_TEST_SUITE_P(Formats, RoundTrip, ::testing::Values(Format::Xml, Format::Binary),
                         [](const auto& format) { return format.param == Format::Xml ? "Xml" : "Binary"; });

TEST_P(RoundTrip, KeepsOneOfEverything) {
  const Result<std::string> bytes = encode(everything(), GetParam());
  ASSERT_TRUE(bytes);
  EXPECT_EQ(tree_of(*bytes), everything());
  EXPECT_EQ(*encode(tree_of(*bytes), GetParam()), *bytes);
}

TEST_P(RoundTrip, KeepsBooleansApartFromNumbers) {
  const Tree tree(Array{true, 1, false, 0});
  EXPECT_EQ(tree_of(*encode(tree, GetParam())), tree);
  EXPECT_FALSE(Tree(true) == Tree(1));
}

TEST_P(RoundTrip, KeepsEveryCharacterOfTheBasicPlane) {
  std::string text;
  for (char32_t character = 0x20; character < 0xFFFE; ++character) {
    if (character < 0xD800 || character > 0xDFFF) append_utf8(text, character);
  }
  text += "\t\n\r";
  const Tree tree(Dictionary{{text, text}});
  EXPECT_EQ(tree_of(*encode(tree, GetParam())), tree);
}

TEST_P(RoundTrip, KeepsTheOrderOfKeys) {
  Dictionary members;
  for (int i = 0; i < 1000; ++i) members.push_back({std::to_string(i * 7919 % 1000), i});
  const Tree tree(members);
  EXPECT_EQ(tree_of(*encode(tree, GetParam())), tree);
}

TEST_P(RoundTrip, RefusesStringsThatAreNotUtf8) {
  EXPECT_THAT(encode(Tree("\xE4"), GetParam()).error().message, HasSubstr("UTF-8"));
  EXPECT_FALSE(encode(Tree(Dictionary{{"\xE4", 1}}), GetParam()));
}

TEST_P(RoundTrip, WritesNothingThatIsTooDeepToRead) {
  Tree tree = Array{};
  for (std::size_t depth = 1; depth < kMaxDepth; ++depth) tree = Array{std::move(tree)};
  const Result<std::string> bytes = encode(tree, GetParam());
  ASSERT_TRUE(bytes);
  EXPECT_TRUE(Document::parse(*bytes));
  EXPECT_FALSE(encode(Tree(Array{std::move(tree)}), GetParam()));
}

TEST_P(RoundTrip, WritesNothingThatIsTooLargeToRead) {
  EXPECT_FALSE(encode(Tree(std::string(kMaxFileSize, 'x')), GetParam()));
}

TEST(RoundTrip, KeepsControlCharactersInBinaryAndRefusesThemInXml) {
  std::string text;
  for (char c = 0; c < ' '; ++c) text.push_back(c);
  text += "\xEF\xBF\xBE\xEF\xBF\xBF";
  const Tree tree(Dictionary{{"k", text}});
  EXPECT_EQ(tree_of(*encode(tree, Format::Binary)), tree);
  EXPECT_EQ(encode(tree, Format::Xml).error().message, "XML cannot hold the character U+0000");
  EXPECT_FALSE(encode(Tree(Dictionary{{"\x1B", true}}), Format::Xml));
  EXPECT_FALSE(encode(Tree(Array{Date{1e300}}), Format::Xml));
}

TEST(RoundTrip, KeepsFractionsOfASecondInBinaryOnly) {
  EXPECT_EQ(tree_of(*encode(Date{0.75}, Format::Binary)), Tree(Date{0.75}));
  EXPECT_EQ(tree_of(*encode(Date{0.75}, Format::Xml)), Tree(Date{0}));
}

TEST(RoundTrip, WritesAUidAsTheDictionaryThatStandsForItInXml) {
  EXPECT_EQ(tree_of(*encode(Uid{7}, Format::Binary)), Tree(Uid{7}));
  EXPECT_EQ(tree_of(*encode(Uid{7}, Format::Xml)), Tree(Dictionary{{"CF$UID", 7}}));
}

TEST(RoundTrip, WritesEqualStringsOnceInBinary) {
  const std::string text(100, 'x');
  const Result<std::string> bytes = encode(Tree(Array(50, Tree(text))), Format::Binary);
  EXPECT_LT(bytes->size(), 300U);
}

TEST(RoundTrip, LaysXmlOutAsThePlatformDoes) {
  const Tree tree(Dictionary{{"a", Array{1, Dictionary{}}}, {"d", Data{1, 2, 3}}, {"e", Array{}}});
  EXPECT_EQ(*encode(tree, Format::Xml),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "<dict>\n"
            "\t<key>a</key>\n"
            "\t<array>\n"
            "\t\t<integer>1</integer>\n"
            "\t\t<dict/>\n"
            "\t</array>\n"
            "\t<key>d</key>\n"
            "\t<data>\n"
            "\tAQID\n"
            "\t</data>\n"
            "\t<key>e</key>\n"
            "\t<array/>\n"
            "</dict>\n"
            "</plist>\n");
}

}  // namespace
}  // namespace wispen::plist
