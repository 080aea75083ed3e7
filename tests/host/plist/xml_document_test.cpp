// tests/host/plist/xml_document_test.cpp
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "host/plist/document.hpp"
#include "host/plist/utf.hpp"
#include "tests/host/plist/samples.hpp"

namespace wispen::plist {
namespace {

using testing::error_of;
using ::testing::HasSubstr;
using testing::tree_of;
using testing::xml;
using testing::xml_dictionary;

TEST(XmlDocument, FindsValuesOfEveryType) {
  const Result<Document> document = Document::parse(
      xml_dictionary("<key>b</key><true/><key>i</key><integer>-42</integer><key>r</key><real>2.5</real>"
                     "<key>s</key><string>text</string><key>d</key><data>AAEC\n\t/w==</data>"
                     "<key>t</key><date>2001-01-01T00:01:00Z</date><key>a</key><array><true/><false/></array>"
                     "<key>m</key><dict><key>x</key><integer>1</integer></dict>"));
  ASSERT_TRUE(document);
  const Value root = document->root();
  EXPECT_EQ(root.count(), 8U);
  EXPECT_TRUE(root.find("b")->boolean());
  EXPECT_EQ(root.find("i")->integer(), Integer::of(-42));
  EXPECT_EQ(root.find("r")->real(), 2.5);
  EXPECT_EQ(root.find("s")->string(), "text");
  EXPECT_EQ(root.find("d")->data(), (Data{0, 1, 2, 255}));
  EXPECT_EQ(root.find("t")->date(), 60);
  EXPECT_EQ(root.find("a")->count(), 2U);
  EXPECT_EQ(root.find("m")->find("x")->integer(), Integer::of(1));
  EXPECT_FALSE(root.find("missing"));
  EXPECT_FALSE(root.find("x")) << "keys of inner dictionaries are not the root's";
}

TEST(XmlDocument, AnswersWrongQuestionsWithNothing) {
  const Result<Document> document = Document::parse(xml("<string>7</string>"));
  const Value root = document->root();
  EXPECT_FALSE(root.boolean());
  EXPECT_EQ(root.integer(), Integer{});
  EXPECT_EQ(root.real(), 0);
  EXPECT_EQ(root.date(), 0);
  EXPECT_EQ(root.uid(), 0U);
  EXPECT_TRUE(root.data().empty());
  EXPECT_EQ(root.count(), 0U);
  EXPECT_FALSE(root.find("7"));
  EXPECT_EQ(root.elements().begin(), root.elements().end());
  EXPECT_EQ(root.entries().begin(), root.entries().end());
}

TEST(XmlDocument, KeepsTheOrderOfTheFile) {
  const Result<Document> document =
      Document::parse(xml_dictionary("<key>z</key><true/><key>a</key><true/><key>m</key><true/>"));
  std::string keys;
  for (const Entry entry : document->root().entries()) keys += entry.key.string();
  EXPECT_EQ(keys, "zam");
}

TEST(XmlDocument, LetsTheLastOfEqualKeysWin) {
  const std::string bytes =
      xml_dictionary("<key>k</key><integer>1</integer><key>&#107;</key><integer>2</integer>");
  const Result<Document> document = Document::parse(bytes);
  EXPECT_EQ(document->root().find("k")->integer(), Integer::of(2));
  EXPECT_EQ(tree_of(bytes), Tree(Dictionary{{"k", 2}}));
}

TEST(XmlDocument, ReadsReferencesCommentsAndSections) {
  EXPECT_EQ(tree_of(xml("<string>&lt;&gt;&amp;&apos;&quot;&#65;&#x42;&#x1F600;</string>")),
            Tree("<>&'\"AB\xF0\x9F\x98\x80"));
  EXPECT_EQ(tree_of(xml("<string>a<!-- no -->b<?no no?>c<![CDATA[<&d]]>e</string>")), Tree("abc<&de"));
  EXPECT_EQ(tree_of(xml("<integer><!-- four -->4<![CDATA[2]]></integer>")), Tree(42));
  EXPECT_EQ(tree_of(xml("<dict><!-- a --><key>k</key><!-- b --><?c?><true/><!-- d --></dict>")),
            Tree(Dictionary{{"k", true}}));
}

TEST(XmlDocument, ReadsLineEndsAsLineFeeds) {
  EXPECT_EQ(tree_of(xml("<string>a\r\nb\rc&#13;d</string>")), Tree("a\nb\nc\rd"));
}

TEST(XmlDocument, ReadsTagsWithExtras) {
  EXPECT_EQ(tree_of(xml("<string xml:space=\"preserve\" >a</string >")), Tree("a"));
  EXPECT_EQ(tree_of(xml("<true></true>")), Tree(true));
  EXPECT_EQ(tree_of(xml("<false />")), Tree(false));
  EXPECT_EQ(tree_of(xml("<string/>")), Tree(""));
  EXPECT_EQ(tree_of(xml("<array/>")), Tree(Array{}));
  EXPECT_EQ(tree_of(xml("<dict ></dict >")), Tree(Dictionary{}));
  EXPECT_EQ(tree_of(xml("<data></data>")), Tree(Data{}));
  const std::string long_tag = "<string a='" + std::string(70000, '>') + "'>b</string>";
  EXPECT_EQ(tree_of(xml(long_tag)), Tree("b"));
}

TEST(XmlDocument, ReadsNumbersInTheirForms) {
  EXPECT_EQ(tree_of(xml("<integer> +7 </integer>")), Tree(7));
  EXPECT_EQ(tree_of(xml("<integer>0x1F</integer>")), Tree(31));
  EXPECT_EQ(tree_of(xml("<integer>-9223372036854775808</integer>")),
            Tree(Integer::of(std::numeric_limits<std::int64_t>::min())));
  EXPECT_EQ(tree_of(xml("<integer>18446744073709551615</integer>")),
            Tree(Integer::of_unsigned(std::numeric_limits<std::uint64_t>::max())));
  EXPECT_EQ(tree_of(xml("<real>-1.5e3</real>")), Tree(-1500.0));
  EXPECT_EQ(tree_of(xml("<real>.5</real>")), Tree(0.5));
  EXPECT_EQ(tree_of(xml("<real>5.</real>")), Tree(5.0));
  EXPECT_EQ(tree_of(xml("<real>1e999</real>")), Tree(std::numeric_limits<double>::infinity()));
  EXPECT_EQ(tree_of(xml("<real>-1e-999</real>")), Tree(-0.0));
  EXPECT_EQ(tree_of(xml("<real>-INF</real>")), Tree(-std::numeric_limits<double>::infinity()));
  EXPECT_TRUE(std::isnan(*tree_of(xml("<real>nan</real>")).as<double>()));
}

TEST(XmlDocument, AcceptsWhatMayStandAroundTheList) {
  const std::string body = "<plist version=\"1.0\"><true/></plist>";
  const std::string doctype = "<!DOCTYPE plist PUBLIC \"-//X//DTD [1]>//EN\" 'http://x/y.dtd'>";
  for (const std::string& bytes :
       {body, "\xEF\xBB\xBF" + body, "<?xml version='1.0'?>" + body, "\n\n<!-- x -->" + doctype + body,
        "<?xml version='1.0' encoding='utf-8'?><?pi?>" + doctype + "<!-- y -->" + body +
            "<!-- z -->\n<?pi?>\n",
        std::string("<true/>")}) {
    EXPECT_EQ(error_of(bytes), "") << bytes;
  }
}

TEST(XmlDocument, ReadsUtf16InBothOrders) {
  const std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist><string>\xC3\xA4\xF0\x9F\x98\x80</string></plist>";
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
    std::string bytes;
    append_utf16(bytes, "\xEF\xBB\xBF" + text, order);
    EXPECT_EQ(tree_of(bytes), Tree("\xC3\xA4\xF0\x9F\x98\x80"));
    bytes.pop_back();
    EXPECT_EQ(error_of(bytes), "the file is not well-formed UTF-16");
  }
}

TEST(XmlDocument, RefusesAnInternalSubset) {
  EXPECT_THAT(
      error_of("<?xml version=\"1.0\"?>\n<!DOCTYPE plist [<!ENTITY a \"b\">]>\n<plist><string>&a;</string>"
               "</plist>"),
      HasSubstr("line 2: a document type with an internal subset"));
  EXPECT_THAT(error_of(xml("<string>&a;</string>")), HasSubstr("character reference"));
}

TEST(XmlDocument, RefusesOtherEncodings) {
  EXPECT_THAT(error_of("<?xml version='1.0' encoding='ISO-8859-1'?><plist><true/></plist>"),
              HasSubstr("the encoding ISO-8859-1 is not supported"));
  EXPECT_THAT(error_of("<?xml version='1.0' encoding='UTF-16'?><plist><true/></plist>"),
              HasSubstr("declares UTF-16"));
}

TEST(XmlDocument, NamesTheLineOfAMistake) {
  EXPECT_EQ(error_of(xml("<dict>\n<key>a</key>\n<true/>\n<key>b</key>\n<integer>zz</integer>\n</dict>")),
            "line 7: \"zz\" is no whole number from -2^63 to 2^64-1");
  EXPECT_EQ(error_of(xml("<dict>\n<key>a</key>\n</dict>")), "line 5: the key before </dict> has no value");
  EXPECT_EQ(error_of(xml("<string>\n\xE4</string>")), "line 4: the byte 0xE4 is not UTF-8");
}

TEST(XmlDocument, RefusesWhatIsMalformed) {
  for (const char* value : {"<dict><key>a</key><key>b</key><true/></dict>",
                            "<dict><true/></dict>",
                            "<dict><string>a</string><true/></dict>",
                            "<array><key>a</key></array>",
                            "<key>a</key>",
                            "<array></dict>",
                            "<dict></array>",
                            "<dict>text</dict>",
                            "<array>text</array>",
                            "<true>text</true>",
                            "<true/><false/>",
                            "",
                            "<plist><true/></plist>",
                            "<integer/>",
                            "<integer></integer>",
                            "<integer>1.5</integer>",
                            "<integer>12345678901234567890123</integer>",
                            "<integer>-9223372036854775809</integer>",
                            "<integer>18446744073709551616</integer>",
                            "<integer>--1</integer>",
                            "<integer>0x</integer>",
                            "<real>1.2.3</real>",
                            "<real>e5</real>",
                            "<real></real>",
                            "<real>1e</real>",
                            "<date>2001-02-29T00:00:00Z</date>",
                            "<date>2001-01-01 00:00:00</date>",
                            "<date>2001-01-01T24:00:00Z</date>",
                            "<data>A</data>",
                            "<data>AA=A</data>",
                            "<data>AA</data>",
                            "<data>A*==</data>",
                            "<string>&#0;</string>",
                            "<string>&#xD800;</string>",
                            "<string>&#x110000;</string>",
                            "<string>&;</string>",
                            "<string>& </string>",
                            "<string>\x01</string>",
                            "<string>\xC0\x80</string>",
                            "<string>\xED\xA0\x80</string>",
                            "<string>\xEF\xBF\xBF</string>",
                            "<string>\xF4\x90\x80\x80</string>",
                            "<string>a<b</string>",
                            "<string>a</integer>",
                            "<strings>a</strings>",
                            "<string a=b>a</string>",
                            "<string a='b>a</string>",
                            "<string <>a</string>",
                            "<unknown/>",
                            "< true/>",
                            "<![CDATA[x]]>",
                            "<!-- never closed",
                            "</dict>"}) {
    EXPECT_NE(error_of(xml(value)), "") << value;
  }
  EXPECT_NE(error_of("<plist/>"), "");
  EXPECT_NE(error_of("<plist><true/></plist><plist><true/></plist>"), "");
  EXPECT_NE(error_of("<plist><true/></plist>more"), "");
  EXPECT_NE(error_of("<plist><true/>"), "");
  EXPECT_NE(error_of("<!DOCTYPE a><!DOCTYPE b><plist><true/></plist>"), "");
}

}  // namespace
}  // namespace wispen::plist
