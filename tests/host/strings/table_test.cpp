// tests/host/strings/table_test.cpp
#include "host/strings/table.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/plist/tree.hpp"
#include "host/plist/utf.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::strings {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;

Entries entries_of(std::string_view bytes) {
  const Table table = Table::parse(bytes, "Root.strings");
  EXPECT_FALSE(table.error()) << table.error()->message;
  return table.entries();
}

std::string error_of(std::string_view bytes) {
  const Table table = Table::parse(bytes, "Root.strings");
  return table.error() ? table.error()->message : "";
}

TEST(StringsTable, ReadsKeysAndTexts) {
  EXPECT_THAT(entries_of("\"a\" = \"A\";\n\"b\"=\"B\" ;\r\n c = d;\nplain.key-1 = \"x\";"),
              ElementsAre(Pair("a", "A"), Pair("b", "B"), Pair("c", "d"), Pair("plain.key-1", "x")));
  EXPECT_THAT(entries_of(""), ElementsAre());
  EXPECT_THAT(entries_of(" \n\t"), ElementsAre());
}

TEST(StringsTable, TakesAKeyAloneForItsOwnText) {
  EXPECT_THAT(entries_of("\"Do it\";\nnow;"), ElementsAre(Pair("Do it", "Do it"), Pair("now", "now")));
}

TEST(StringsTable, LetsTheLastOfEqualKeysWin) {
  EXPECT_THAT(entries_of("a = 1; a = 2;"), ElementsAre(Pair("a", "2")));
}

TEST(StringsTable, PassesOverComments) {
  EXPECT_THAT(
      entries_of("/* one */ // two\n\"a\" /* three */ = // four\n /**/ \"A /* no */ // no\" ; // five"),
      ElementsAre(Pair("a", "A /* no */ // no")));
  EXPECT_THAT(entries_of("// only this"), ElementsAre());
}

TEST(StringsTable, ReadsEscapes) {
  EXPECT_THAT(entries_of(R"("a" = "\n\t\r\"\\\a\b\f\v\'\%\101\7z\U00e4\u20AC\Ud83d\uDE00";)"),
              ElementsAre(Pair("a", "\n\t\r\"\\\a\b\f\v'%A\az\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80")));
  EXPECT_THAT(entries_of(R"("a" = "\Ud83dx\Ude00";)"), ElementsAre(Pair("a", "\xEF\xBF\xBDx\xEF\xBF\xBD")));
  EXPECT_THAT(entries_of("\"a\" = \"two\nlines \\\nthree\";"), ElementsAre(Pair("a", "two\nlines \nthree")));
}

TEST(StringsTable, ReadsUtf8AndUtf16) {
  const std::string text = "\"gr\xC3\xBC\xC3\x9F\" = \"\xF0\x9F\x98\x80\";";
  const auto expected = ElementsAre(Pair("gr\xC3\xBC\xC3\x9F", "\xF0\x9F\x98\x80"));
  EXPECT_THAT(entries_of(text), expected);
  EXPECT_THAT(entries_of("\xEF\xBB\xBF" + text), expected);
  for (const plist::ByteOrder order : {plist::ByteOrder::Little, plist::ByteOrder::Big}) {
    std::string bytes;
    plist::append_utf16(bytes, "\xEF\xBB\xBF" + text, order);
    EXPECT_THAT(entries_of(bytes), expected);
    EXPECT_THAT(error_of(bytes.substr(0, bytes.size() - 1)), HasSubstr("UTF-16"));
  }
}

TEST(StringsTable, ReadsPropertyLists) {
  const plist::Tree tree(plist::Dictionary{{"a", "A"}, {"gr\xC3\xBC\xC3\x9F", "\xF0\x9F\x98\x80"}});
  for (const plist::Format format : {plist::Format::Xml, plist::Format::Binary}) {
    EXPECT_THAT(entries_of(*plist::encode(tree, format)),
                ElementsAre(Pair("a", "A"), Pair("gr\xC3\xBC\xC3\x9F", "\xF0\x9F\x98\x80")));
  }
  std::string utf16;
  plist::append_utf16(utf16, "\xEF\xBB\xBF<plist><dict><key>a</key><string>A</string></dict></plist>",
                      plist::ByteOrder::Big);
  EXPECT_THAT(entries_of(utf16), ElementsAre(Pair("a", "A")));
}

TEST(StringsTable, SaysWhatAPropertyListLacks) {
  EXPECT_EQ(error_of("<plist><array/></plist>"),
            "Root.strings: expected a dictionary of strings, found an array");
  EXPECT_EQ(error_of("<plist>\n<dict>\n<key>a</key>\n</dict></plist>"),
            "Root.strings: line 4: the key before </dict> has no value");
  const Table table =
      Table::parse("<plist><dict><key>a</key><true/><key>b</key><string>B</string></dict></plist>", "x");
  EXPECT_EQ(table.error()->message, "x: expected a string for \"a\", found a boolean");
  EXPECT_THAT(table.entries(), ElementsAre(Pair("b", "B")));
}

TEST(StringsTable, NamesTheLineAndWhatWasExpectedThere) {
  EXPECT_EQ(error_of("\"a\" = \"A\"\n\"b\" = \"B\";"),
            "Root.strings: line 2: expected \";\" after the text of \"a\", found '\"'");
  EXPECT_EQ(error_of("\n\n\"a\" \"A\";"),
            "Root.strings: line 3: expected \"=\" or \";\" after \"a\", found '\"'");
  EXPECT_EQ(error_of("\n\"a\" = ;"), "Root.strings: line 2: expected a text, found ';'");
  EXPECT_EQ(error_of("= 1;"), "Root.strings: line 1: expected a key, found '='");
  EXPECT_EQ(error_of("a = 1;\n\xC3\xA4 = 2;"), "Root.strings: line 2: expected a key, found '\xC3\xA4'");
  EXPECT_EQ(error_of("a ="), "Root.strings: line 1: expected a text, found the end of the file");
  EXPECT_EQ(error_of("a"),
            "Root.strings: line 1: expected \"=\" or \";\" after \"a\", found the end of the file");
  EXPECT_EQ(error_of("a = 1;\n\"b = 2;\nc = 3;\n"),
            "Root.strings: line 2: expected '\"' at the end of the text that begins here");
  EXPECT_EQ(error_of("a = 1;\n/* b\nc = 3;"),
            "Root.strings: line 2: expected \"*/\" at the end of the comment that begins here");
  EXPECT_EQ(error_of("\"\\U12G4\" = 1;"),
            "Root.strings: line 1: expected four hexadecimal digits after \"\\U\"");
  EXPECT_EQ(error_of("\"\\U12"), "Root.strings: line 1: expected four hexadecimal digits after \"\\U\"");
  EXPECT_EQ(error_of("\"a\\"),
            "Root.strings: line 1: expected a character after \"\\\", found the end of the file");
  EXPECT_EQ(error_of("a = 1;\n\"b\" = \"\xE4\";\n"),
            "Root.strings: line 2: expected UTF-8 or, after a byte order mark, UTF-16");
  EXPECT_EQ(error_of("a = 1\nb = \xE4;\n"),
            "Root.strings: line 2: expected \";\" after the text of \"a\", found 'b'");
}

TEST(StringsTable, KeepsWhatStandsBeforeAMistake) {
  const Table table = Table::parse("a = 1;\nb = 2;\nc 3;\nd = 4;", "Root.strings");
  EXPECT_TRUE(table.error());
  EXPECT_THAT(table.entries(), ElementsAre(Pair("a", "1"), Pair("b", "2")));
  EXPECT_EQ(*table.find("b"), "2");
  EXPECT_EQ(table.find("d"), nullptr);
  EXPECT_EQ(table.complete().error().message, table.error()->message);
  EXPECT_THAT(Table::parse("a = 1;\n\"b\" = \"\xE4\";\n", "x").entries(), ElementsAre(Pair("a", "1")));
}

TEST(StringsTable, ReadsFiles) {
  const wispen::testing::TemporaryFolder folder;
  wispen::testing::write_file(folder / "Root.strings", "a = 1;");
  EXPECT_EQ(*Table::read(folder / "Root.strings").find("a"), "1");
  EXPECT_TRUE(Table::read(folder / "Root.strings").complete());
  EXPECT_THAT(Table::read(folder / "missing").error()->message, HasSubstr("No such file"));
}

TEST(StringsTable, ReadsEveryTruncationUpToWhereItEnds) {
  const std::string text = "/* c */ \"a\" = \"\\U00e4\xC3\xA4\"; // x\nb = c; \"d\";\n";
  for (std::size_t size = 0; size < text.size(); ++size) {
    const Table table = Table::parse(text.substr(0, size), "x");
    EXPECT_LE(table.entries().size(), 3U);
    EXPECT_EQ(table.find("d") != nullptr, size >= text.rfind(';') + 1) << size;
  }
}

}  // namespace
}  // namespace wispen::strings
