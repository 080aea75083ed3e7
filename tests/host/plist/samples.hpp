// tests/host/plist/samples.hpp: lists that several tests read.
#pragma once

#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "host/plist/document.hpp"
#include "host/plist/tree.hpp"

namespace wispen::plist::testing {

/// A value between the tags of an XML list.
inline std::string xml(std::string_view value) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" + std::string(value) +
         "\n</plist>\n";
}

inline std::string xml_dictionary(std::string_view entries) {
  return xml("<dict>\n" + std::string(entries) + "</dict>");
}

inline Tree tree_of(std::string_view bytes) { return Tree::of(Document::parse(bytes)->root()); }

inline std::string error_of(std::string_view bytes) {
  const Result<Document> document = Document::parse(bytes);
  return document ? "" : document.error().message;
}

/// One of everything that both formats hold.
inline Tree everything() {
  constexpr double kDenormal = std::numeric_limits<double>::denorm_min();
  return Tree(Dictionary{
      {"true", true},
      {"false", false},
      {"one", 1},
      {"zero", 0},
      {"minus", -1},
      {"smallest", Integer::of(std::numeric_limits<std::int64_t>::min())},
      {"largest signed", Integer::of(std::numeric_limits<std::int64_t>::max())},
      {"largest", Integer::of_unsigned(std::numeric_limits<std::uint64_t>::max())},
      {"above signed", Integer::of_unsigned(std::uint64_t{1} << 63)},
      {"255", 255},
      {"256", 256},
      {"65536", 65536},
      {"a third", 1.0 / 3},
      {"minus zero", -0.0},
      {"tiny", kDenormal},
      {"huge", std::numeric_limits<double>::max()},
      {"infinity", std::numeric_limits<double>::infinity()},
      {"minus infinity", -std::numeric_limits<double>::infinity()},
      {"not a number", std::numeric_limits<double>::quiet_NaN()},
      {"whole real", 3.0},
      {"empty", ""},
      {"plain", "some text"},
      {"marked up", "<&>\"' &amp; ]]> <!-- -->"},
      {"backslash", "\\U00e4 \\n"},
      {"lines", " a\r\nb\rc\nd\t "},
      {"umlauts \xC3\xA4\xC3\xB6", "\xC3\xA4\xC3\xB6\xC3\xBC"},
      {"emoji \xF0\x9F\x98\x80", "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80"},
      {"long", std::string(300, 'x')},
      {"data", Data{0, 1, 2, 253, 254, 255}},
      {"no data", Data{}},
      {"more data", Data(200, 0xA5)},
      {"date", Date{0}},
      {"early date", Date{-63114076800.0}},
      {"late date", Date{252423993599.0}},
      {"array", Array{1, true, "two", 3.5, Array{}, Dictionary{}}},
      {"dictionary", Dictionary{{"inner", Dictionary{{"innermost", 7}}}, {"", "empty key"}}},
  });
}

}  // namespace wispen::plist::testing
