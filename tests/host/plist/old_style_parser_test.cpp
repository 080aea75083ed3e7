// tests/host/plist/old_style_parser_test.cpp: lists from before XML.

#include "host/plist/old_style_parser.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/plist/limits.hpp"
#include "host/plist/splice.hpp"
#include "tests/host/plist/samples.hpp"

namespace wispen::plist::testing {
namespace {

using ::testing::HasSubstr;

TEST(OldStyleParser, ReadsEveryKindOfValue) {
  EXPECT_EQ(tree_of(R"(// a comment
{ bare = old; "quoted \"key\"" = "a\nb"; number = 12; flag; list = (a, (b), {c = d;},); bytes = <0fBD 77>; /* end */ })"),
            Tree(Dictionary{{"bare", "old"},
                            {"quoted \"key\"", "a\nb"},
                            {"number", "12"},
                            {"flag", "flag"},
                            {"list", Array{"a", Array{"b"}, Dictionary{{"c", "d"}}}},
                            {"bytes", Data{0x0F, 0xBD, 0x77}}}));
  EXPECT_EQ(tree_of("()"), Tree(Array{}));
  EXPECT_EQ(tree_of("\xEF\xBB\xBF{ a = \"\xC3\xA9\"; }"), Tree(Dictionary{{"a", "\xC3\xA9"}}));
  EXPECT_EQ(tree_of(std::string_view("\xFF\xFE{\0a\0;\0}\0", 10)), Tree(Dictionary{{"a", "a"}}));
}

TEST(OldStyleParser, KeepsTheLastOfEqualKeys) {
  EXPECT_EQ(Document::parse("{ a = 1; a = 2; }")->root().find("a")->string(), "2");
}

TEST(OldStyleParser, KeepsWhatXmlCannotHold) {
  EXPECT_EQ(Document::parse(R"({ a = "\001"; })")->root().find("a")->string(), "\x01");
}

TEST(OldStyleParser, SaysWhereAListIsBroken) {
  EXPECT_EQ(error_of("{ a = 1"),
            "line 1: expected \";\" after the value of \"a\", found the end of the file");
  EXPECT_EQ(error_of("{\n a = ; }"), "line 2: expected a value, found ';'");
  EXPECT_EQ(error_of("{ = 1; }"), "line 1: expected a key, found '='");
  EXPECT_EQ(error_of("( a b )"), "line 1: expected \",\" or \")\", found 'b'");
  EXPECT_EQ(error_of("{ a = <0f1>; }"), "line 1: expected two hexadecimal digits or \">\", found '1'");
  EXPECT_EQ(error_of("{ a = <*I5>; }"), "line 1: expected two hexadecimal digits or \">\", found '*'");
  EXPECT_EQ(error_of("{} {}"), "line 1: expected the end of the file, found '{'");
  EXPECT_EQ(error_of("{ /* a = 1; }"), "line 1: expected \"*/\" at the end of the comment that begins here");
  EXPECT_THAT(error_of("{ a = \"\xFF\"; }"), HasSubstr("UTF-8"));
}

TEST(OldStyleParser, RefusesTextThatIsNotAListInItself) {
  EXPECT_NE(error_of("hello"), "");
  EXPECT_NE(error_of("a = b;"), "");
}

TEST(OldStyleParser, RefusesDeeperNestingThanAReaderTakes) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '(') + std::string(depth, ')'); };
  EXPECT_EQ(error_of(nested(kMaxDepth)), "");
  EXPECT_EQ(error_of(nested(kMaxDepth + 1)), "line 1: containers are nested more than 512 deep");
  EXPECT_EQ(error_of(std::string(1'000'000, '(')), "line 1: containers are nested more than 512 deep");
}

TEST(OldStyleParser, TheNextWriteKeepsTheKeysAsXml) {
  const Result<std::string> bytes = splice(*Document::parse("{ k = old; n = (1); }"), {{"new", Tree(true)}});
  ASSERT_TRUE(bytes);
  EXPECT_TRUE(bytes->starts_with("<?xml")) << *bytes;
  EXPECT_EQ(tree_of(*bytes), Tree(Dictionary{{"k", "old"}, {"n", Array{"1"}}, {"new", true}}));
}

}  // namespace
}  // namespace wispen::plist::testing
