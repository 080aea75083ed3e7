// tests/host/plist/corruption_test.cpp: damaged, hostile and enormous files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>

#include "host/plist/limits.hpp"
#include "host/plist/splice.hpp"
#include "tests/host/plist/binary_maker.hpp"
#include "tests/host/plist/samples.hpp"

namespace wispen::plist {
namespace {

using testing::binary;
using testing::error_of;
using testing::everything;
using ::testing::HasSubstr;
using testing::tree_of;
using testing::xml;
using testing::xml_dictionary;
using namespace std::string_literals;

std::string hundred_keys(Format format) {
  Dictionary members;
  for (int i = 0; i < 100; ++i) members.push_back({"key" + std::to_string(i), "text " + std::to_string(i)});
  return *encode(Tree(members), format);
}

double seconds_for(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Sanitizers slow everything down several times; the bounds are about orders of magnitude.
constexpr double kPatience = 10;

TEST(Corruption, MakesAFileUnreadableAndNothingWorse) {
  const std::string text = hundred_keys(Format::Xml);
  const std::string binary_list = hundred_keys(Format::Binary);
  EXPECT_NE(error_of(""), "");
  EXPECT_NE(error_of(text.substr(0, text.size() / 2)), "");
  EXPECT_NE(error_of(text.substr(0, text.size() - 20)), "");
  EXPECT_NE(error_of(" \n\t \r\n"), "") << "white space only";
  EXPECT_NE(error_of(std::string(4096, '\0')), "");
  EXPECT_NE(error_of(binary_list.substr(0, binary_list.size() / 2)), "");
  EXPECT_NE(error_of(binary_list.substr(0, binary_list.size() - 1)), "");
  EXPECT_NE(error_of(binary({"\xA1\x09"s})), "") << "a reference to nothing";
  EXPECT_NE(error_of(binary({"\xA1\x01"s, "\xA1\x00"s})), "") << "a cycle";
  EXPECT_NE(error_of(binary({"\xA1\x00"s})), "") << "a cycle of one";
  EXPECT_NE(error_of(binary({"\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})), "") << "a huge count";
  EXPECT_NE(error_of(binary({"\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s})), "") << "a huge length";
  EXPECT_NE(error_of("bplist00"), "");
  EXPECT_NE(error_of(binary({"\xA1\x01"s, "\x33\x7F\xF8\0\0\0\0\0\0"s})), "") << "a date of NaN";
  EXPECT_NE(error_of(binary({"\x33\xFF\xF0\0\0\0\0\0\0"s})), "") << "a date of minus infinity";
  EXPECT_FALSE(encode(Tree(Date{std::nan("")}), Format::Binary)) << "nor is it written";
  std::string trailer = binary_list;
  trailer[trailer.size() - 16] = '\x7F';
  EXPECT_NE(error_of(trailer), "") << "a root that is not there";
  trailer = binary_list;
  trailer[trailer.size() - 24] = '\x7F';
  EXPECT_NE(error_of(trailer), "") << "a huge number of objects";
  EXPECT_NE(error_of("hello"), "");
  EXPECT_NE(error_of(xml("<string>\xE4</string>")), "") << "a Latin-1 byte";
  EXPECT_NE(error_of(xml_dictionary("<key>a</key><true/><key>b</key>")), "") << "a key without a value";
  EXPECT_NE(error_of(xml("<integer>zz</integer>")), "");
  EXPECT_NE(error_of(xml("<integer>12345678901234567890123</integer>")), "");
}

TEST(Corruption, LeavesRootsThatAreNoDictionaryToTheCaller) {
  EXPECT_TRUE(Document::parse(xml("<array/>"))->root().is(Type::Array));
}

TEST(Corruption, FindsNoEntityToExpandAndOpensNoFile) {
  EXPECT_NE(error_of("<!DOCTYPE plist [<!ENTITY a \"aaaa\"><!ENTITY b "
                     "\"&a;&a;&a;\">]><plist><string>&b;</string></plist>"),
            "");
  EXPECT_NE(
      error_of("<!DOCTYPE plist [<!ENTITY x SYSTEM \"file:///etc/hostname\">]><plist><string>&x;</string>"
               "</plist>"),
      "");
}

class Damage : public ::testing::TestWithParam<Format> {
 protected:
  static std::string sample() {
    return *encode(Tree(Dictionary{{"flag", true},
                                   {"count", 42},
                                   {"ratio", 0.25},
                                   {"name", "\xC3\xA4 text"},
                                   {"list", Array{Data{1, 2}, Date{0}, Dictionary{{"x", Integer::of(-1)}}}}}),
                   GetParam());
  }

  /// Visits all that a document holds, as a reader would.
  static std::size_t walk(const std::string& bytes) {
    const Result<Document> document = Document::parse(bytes);
    if (!document) return 0;
    const Tree tree = Tree::of(document->root());
    return splice(*document, {{"flag", false}}).ok() ? 1 : 0;
  }
};
INSTANTIATE_TEST_SUITE_P(Formats, Damage, ::testing::Values(Format::Xml, Format::Binary),
                         [](const auto& format) { return format.param == Format::Xml ? "Xml" : "Binary"; });

TEST_P(Damage, OfTruncationAtAnyByteIsAlwaysSeen) {
  std::string bytes = sample();
  if (GetParam() == Format::Xml) bytes.pop_back();  // the last line end means nothing
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_NE(error_of(bytes.substr(0, size)), "") << size;
  }
  std::printf("%zu truncations\n", bytes.size());
}

TEST_P(Damage, OfAnyBitGivesAnErrorOrAWholeList) {
  const std::string bytes = sample();
  std::size_t readable = 0;
  for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
    std::string damaged = bytes;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
    readable += walk(damaged);
  }
  EXPECT_GT(readable, 0U);
  EXPECT_LT(readable, bytes.size() * 8);
  std::printf("%zu bits, %zu of the lists still whole\n", bytes.size() * 8, readable);
}

TEST(Bounds, HoldForDepth) {
  const auto nested = [](std::size_t depth, const std::string& open, const std::string& close) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) text += open;
    for (std::size_t i = 0; i < depth; ++i) text += close;
    return xml(text);
  };
  EXPECT_EQ(error_of(nested(kMaxDepth, "<array>", "</array>")), "");
  EXPECT_THAT(error_of(nested(kMaxDepth + 1, "<array>", "</array>")), HasSubstr("more than 512"));
  EXPECT_THAT(error_of(nested(100000, "<array>", "</array>")), HasSubstr("more than 512"));
  EXPECT_THAT(error_of(nested(100000, "<dict><key>k</key>", "</dict>")), HasSubstr("more than 512"));
}

/// Arrays each of which holds `width` times the next, the last of them empty.
std::string nested_binary(std::size_t depth, std::size_t width) {
  std::vector<std::string> objects;
  for (std::size_t i = 1; i < depth; ++i) {
    std::string object(1, static_cast<char>(0xA0 | width));
    for (std::size_t j = 0; j < width; ++j) append_big_endian(object, i, 4);
    objects.push_back(object);
  }
  objects.push_back("\xA0");
  return binary(objects, 4);
}

TEST(Bounds, HoldForDepthInBinary) {
  EXPECT_EQ(error_of(nested_binary(kMaxDepth, 1)), "");
  EXPECT_THAT(error_of(nested_binary(kMaxDepth + 1, 1)), HasSubstr("more than 512"));
  const std::string bytes = nested_binary(100000, 1);
  EXPECT_LT(seconds_for([&] { EXPECT_THAT(error_of(bytes), HasSubstr("more than 512")); }), kPatience);
}

TEST(Bounds, HoldForObjectsThatAreNamedInManyPlaces) {
  const std::string bomb = nested_binary(10, 10);
  EXPECT_LT(bomb.size(), 600U);
  EXPECT_LT(seconds_for([&] { EXPECT_THAT(error_of(bomb), HasSubstr("too large")); }), kPatience);
  EXPECT_LT(seconds_for([&] { EXPECT_THAT(error_of(nested_binary(500, 15 - 1)), HasSubstr("too large")); }),
            kPatience);
  EXPECT_EQ(error_of(nested_binary(5, 10)), "") << "what is shared in reason is read";

  // Many numbers for the same long array, and for the same long string.
  for (const std::string& shared : {"\xAF\x12\x00\x02\x00\x00"s + std::string(4 * 0x20000, '\0'),
                                    "\x5F\x12\x00\x08\x00\x00"s + std::string(0x80000, 'x')}) {
    std::vector<std::string> objects = {"\xAF\x12\x00\x00\xC0\x00"s};
    for (std::size_t i = 0; i < 0xC000; ++i) append_big_endian(objects[0], 1 + i, 4);
    objects.push_back(shared);
    std::string bytes = binary(objects, 4);
    // Every entry of the offset table from the second on says the same.
    const std::string entry = bytes.substr(bytes.size() - 32 - 3, 3);
    std::string trailer = bytes.substr(bytes.size() - 32);
    bytes.resize(bytes.size() - 32);
    for (std::size_t i = 1; i < 0xC000; ++i) bytes += entry;
    std::string count;
    append_big_endian(count, 0xC001, 8);
    trailer.replace(8, 8, count);
    bytes += trailer;
    const double seconds = seconds_for([&] { EXPECT_NE(error_of(bytes), ""); });
    EXPECT_LT(seconds, kPatience);
    std::printf("%zu bytes that would hold gigabytes: refused in %.1f ms\n", bytes.size(), seconds * 1000);
  }
}

TEST(Bounds, HoldForSize) {
  const std::string fits(kMaxFileSize - 17, 'x');
  EXPECT_EQ(error_of("<string>" + fits + "</string>"), "");
  EXPECT_THAT(error_of("<string>" + fits + "x</string>"), HasSubstr("larger"));
}

TEST(Bounds, HoldForTimeWhateverAMegabyteHolds) {
  const auto repeated = [](std::string_view part) {
    std::string text;
    while (text.size() < 1'000'000) text += part;
    return text;
  };
  const std::vector<std::pair<const char*, std::string>> inputs = {
      {"open arrays", repeated("<array>")},
      {"open tags", repeated("<")},
      {"open comments", "<plist>" + repeated("<!-- ")},
      {"comments", "<plist>" + repeated("<!---->")},
      {"instructions", "<plist>" + repeated("<?p?>")},
      {"open sections", "<string>" + repeated("<![CDATA[")},
      {"sections", xml("<string>" + repeated("<![CDATA[x]]>") + "</string>")},
      {"references", xml("<string>" + repeated("&#x41;") + "</string>")},
      {"ampersands", xml("<string>" + repeated("&") + "</string>")},
      {"attributes", repeated("<plist a='b' ")},
      {"booleans", xml("<array>" + repeated("<true/>") + "</array>")},
      {"keys of a kind", xml_dictionary(repeated("<key>k</key><true/>"))},
      {"digits", xml("<integer>" + repeated("0") + "</integer>")},
      {"a long number", xml("<real>" + repeated("9") + "</real>")},
      {"white space", repeated(" ")},
      {"data", xml("<data>" + repeated("AAAA ") + "</data>")},
      {"control characters", xml("<string>" + repeated("\t") + "</string>")},
      {"carriage returns", xml("<string>" + repeated("\r") + "</string>")},
  };
  for (const auto& [name, bytes] : inputs) {
    const double seconds = seconds_for([&bytes = bytes] {
      const Result<Document> document = Document::parse(bytes);
      if (!document) return;
      EXPECT_EQ(Tree::of(document->root()).type(), document->root().type());
    });
    EXPECT_LT(seconds, kPatience) << name;
    std::printf("%-18s %7.2f ms\n", name, seconds * 1000);
  }
}

TEST(Bounds, FitASmallStack) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  constexpr std::size_t kStack = 4096 * 1024;  // instrumented frames are several times as big
#else
  constexpr std::size_t kStack = 512 * 1024;
#endif
  const auto work = [](void*) -> void* {
    Tree tree = Array{};
    for (std::size_t depth = 2; depth < kMaxDepth; ++depth) {
      if (depth % 8 == 0) {
        tree = Array{std::move(tree)};
      } else {
        tree = Dictionary{{"key", std::move(tree)}};
      }
    }
    const Tree root(Dictionary{{"deep", std::move(tree)}});
    for (const Format format : {Format::Xml, Format::Binary}) {
      const Result<Document> document = Document::parse(*encode(root, format));
      EXPECT_EQ(Tree::of(document->root()), root);
      EXPECT_TRUE(splice(*document, {{"deep", root.as<Dictionary>()->front().value}}));
    }
    return nullptr;
  };
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
  pthread_t thread = {};
  ASSERT_EQ(pthread_create(&thread, &attributes, work, nullptr), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(Bounds, LetThreadsReadOneDocumentTogether) {
  const Result<Document> document = Document::parse(*encode(everything(), Format::Xml));
  const auto work = [](void* shared) -> void* {
    for (int i = 0; i < 100; ++i) {
      EXPECT_EQ(Tree::of(static_cast<const Document*>(shared)->root()), everything());
    }
    return nullptr;
  };
  Document copy = *document;
  pthread_t threads[4] = {};
  for (pthread_t& thread : threads) ASSERT_EQ(pthread_create(&thread, nullptr, work, &copy), 0);
  for (pthread_t thread : threads) pthread_join(thread, nullptr);
}

}  // namespace
}  // namespace wispen::plist
