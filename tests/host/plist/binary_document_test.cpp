// tests/host/plist/binary_document_test.cpp
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/plist/document.hpp"
#include "tests/host/plist/binary_maker.hpp"
#include "tests/host/plist/samples.hpp"

namespace wispen::plist {
namespace {

using testing::binary;
using testing::error_of;
using ::testing::HasSubstr;
using testing::tree_of;
using namespace std::string_literals;

TEST(BinaryDocument, ReadsEveryKindOfObject) {
  EXPECT_EQ(tree_of(binary({"\x08"s})), Tree(false));
  EXPECT_EQ(tree_of(binary({"\x09"s})), Tree(true));
  EXPECT_EQ(tree_of(binary({"\x10\xFF"s})), Tree(255));
  EXPECT_EQ(tree_of(binary({"\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"s})), Tree(-2));
  EXPECT_EQ(tree_of(binary({"\x14"s + std::string(8, '\0') + std::string(8, '\xFF')})),
            Tree(Integer::of_unsigned(std::numeric_limits<std::uint64_t>::max())));
  EXPECT_EQ(tree_of(binary({"\x14"s + std::string(16, '\xFF')})), Tree(-1));
  EXPECT_EQ(tree_of(binary({"\x22\x3F\xC0\x00\x00"s})), Tree(1.5));
  EXPECT_EQ(tree_of(binary({"\x23\x3F\xF8\x00\x00\x00\x00\x00\x00"s})), Tree(1.5));
  EXPECT_EQ(tree_of(binary({"\x33\x3F\xF8\x00\x00\x00\x00\x00\x00"s})), Tree(Date{1.5}));
  EXPECT_EQ(tree_of(binary({"\x43\x01\x02\x03"s})), Tree(Data{1, 2, 3}));
  EXPECT_EQ(tree_of(binary({"\x53"s + "abc"})), Tree("abc"));
  EXPECT_EQ(tree_of(binary({"\x5F\x10\x10"s + std::string(16, 'a')})), Tree(std::string(16, 'a')));
  EXPECT_EQ(tree_of(binary({"\x5F\x11\x01\x00"s + std::string(256, 'a')})), Tree(std::string(256, 'a')));
  EXPECT_EQ(tree_of(binary({"\x62\x00\xE4\x20\xAC"s})), Tree("\xC3\xA4\xE2\x82\xAC"));
  EXPECT_EQ(tree_of(binary({"\x81\x01\x00"s})), Tree(Uid{256}));
  EXPECT_EQ(tree_of(binary({"\xA2\x01\x01"s, "\x09"s})), Tree(Array{true, true}));
  EXPECT_EQ(tree_of(binary({"\xD1\x01\x02"s, "\x51k"s, "\x09"s})), Tree(Dictionary{{"k", true}}));
}

TEST(BinaryDocument, ShowsLoneSurrogatesAsReplacements) {
  EXPECT_EQ(tree_of(binary({"\x62\xD8\x3D\xDE\x00"s})), Tree("\xF0\x9F\x98\x80"));
  EXPECT_EQ(tree_of(binary({"\x62\xD8\x3D\x00\x41"s})), Tree("\xEF\xBF\xBD"s + "A"));
  EXPECT_EQ(tree_of(binary({"\x61\xDE\x00"s})), Tree("\xEF\xBF\xBD"));
}

TEST(BinaryDocument, GivesStringsInPlaceWhereTheyAreAscii) {
  const Result<Document> ascii = Document::parse(binary({"\x53"s + "abc"}));
  EXPECT_EQ(ascii->root().string_view(), "abc");
  const Result<Document> utf16 = Document::parse(binary({"\x61\x00\xE4"s}));
  EXPECT_FALSE(utf16->root().string_view());
}

TEST(BinaryDocument, LetsTheLastOfEqualKeysWin) {
  const Result<Document> document =
      Document::parse(binary({"\xD2\x01\x02\x03\x04"s, "\x51k"s, "\x51k"s, "\x10\x01"s, "\x10\x02"s}));
  EXPECT_EQ(document->root().find("k")->integer(), Integer::of(2));
  EXPECT_EQ(Tree::of(document->root()), Tree(Dictionary{{"k", 2}}));
}

TEST(BinaryDocument, FindsKeysThatAreNotAscii) {
  const Result<Document> document =
      Document::parse(*encode(Tree(Dictionary{{"\xC3\xA4", 1}}), Format::Binary));
  EXPECT_EQ(document->root().find("\xC3\xA4")->integer(), Integer::of(1));
}

TEST(BinaryDocument, RefusesWhatIsMalformed) {
  EXPECT_THAT(error_of("bplist00"), HasSubstr("ends too early"));
  EXPECT_THAT(error_of(binary({"\x00"s})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x0F"s})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x15"s + std::string(32, '\0')})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x21\x00\x00"s})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x32\x00\x00\x00\x00"s})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x71z"s})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x89"s + std::string(10, '\0')})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\xC0"s})), HasSubstr("unknown kind"));
  EXPECT_THAT(error_of(binary({"\x13\x00"s})), HasSubstr("cut off"));
  EXPECT_THAT(error_of(binary({"\x14\x00\x00\x00\x00\x00\x00\x00\x01"s + std::string(8, '\0')})),
              HasSubstr("more than 64 bits"));
  EXPECT_THAT(error_of(binary({"\x54"s + "abc"})), HasSubstr("reaches beyond"));
  EXPECT_THAT(error_of(binary({"\x51\xE4"s})), HasSubstr("ASCII"));
  EXPECT_THAT(error_of(binary({"\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})), HasSubstr("reaches beyond"));
  EXPECT_THAT(error_of(binary({"\x6F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})), HasSubstr("reaches beyond"));
  EXPECT_THAT(error_of(binary({"\xDF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})), HasSubstr("reaches beyond"));
  EXPECT_THAT(error_of(binary({"\x5F\x53"s + "abc"})), HasSubstr("length is malformed"));
  EXPECT_THAT(error_of(binary({"\xA1\x05"s})), HasSubstr("not there"));
  EXPECT_THAT(error_of(binary({"\xA1"s})), HasSubstr("reaches beyond"));
  EXPECT_THAT(error_of(binary({"\xD1\x01\x01"s, "\x09"s})), HasSubstr("key is not a string"));
  EXPECT_THAT(error_of(binary({"\xD1\x01\x01"s, "\xA0"s})), HasSubstr("key is not a string"));
  EXPECT_THAT(error_of(binary({"\xA1\x00"s})), HasSubstr("holds itself"));
  EXPECT_THAT(error_of(binary({"\xA1\x01"s, "\xA1\x00"s})), HasSubstr("holds itself"));
}

TEST(BinaryDocument, RefusesATrailerThatLies) {
  const std::string good = binary({"\x09"s});
  ASSERT_EQ(error_of(good), "");
  const std::size_t trailer = good.size() - 32;
  const auto with = [&](std::size_t offset, char byte) {
    std::string bytes = good;
    bytes[trailer + offset] = byte;
    return bytes;
  };
  EXPECT_THAT(error_of(with(6, 0)), HasSubstr("trailer"));
  EXPECT_THAT(error_of(with(6, 9)), HasSubstr("trailer"));
  EXPECT_THAT(error_of(with(7, 0)), HasSubstr("trailer"));
  EXPECT_THAT(error_of(with(15, 2)), HasSubstr("number of objects"));
  EXPECT_THAT(error_of(with(8, '\x7F')), HasSubstr("number of objects"));
  EXPECT_THAT(error_of(with(23, 1)), HasSubstr("root"));
  EXPECT_THAT(error_of(with(16, '\x7F')), HasSubstr("root"));
  EXPECT_THAT(error_of(with(31, 8)), HasSubstr("offset table"));
  EXPECT_THAT(error_of(with(24, '\xFF')), HasSubstr("offset table"));
}

}  // namespace
}  // namespace wispen::plist
