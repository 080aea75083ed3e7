// tests/colour/hex_text_test.cpp: colours as hexadecimal text, as plain arithmetic.

#include "colour/hex_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "colour/truncation.hpp"
#include "tests/colour/slow_colours.hpp"

namespace wispen::colour {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Components rgb(unsigned red, unsigned green, unsigned blue, double alpha = 1) {
  return {red / 255.0, green / 255.0, blue / 255.0, alpha};
}

TEST(HexText, ReadsSixDigitsOfEitherCaseWithAndWithoutAHash) {
  EXPECT_EQ(components_from_hex(u"#FF0000"), rgb(255, 0, 0));
  EXPECT_EQ(components_from_hex(u"FF0000"), rgb(255, 0, 0));
  EXPECT_EQ(components_from_hex(u"ff0000"), rgb(255, 0, 0));
  EXPECT_EQ(components_from_hex(u"#fF8800"), rgb(255, 0x88, 0));
}

TEST(HexText, OfNothingIsOpaqueBlack) {
  EXPECT_EQ(components_from_hex(u""), rgb(0, 0, 0));
  EXPECT_EQ(components_from_hex(u"#"), rgb(0, 0, 0));
  EXPECT_EQ(components_from_hex(u"no colour"), rgb(0, 0, 0));
}

TEST(HexText, ReadsTheAlphaBehindAColon) {
  EXPECT_EQ(components_from_hex(u"#FF0000:0.5"), rgb(255, 0, 0, 0.5));
  EXPECT_EQ(components_from_hex(u"FF0000: \t.25e1x"), rgb(255, 0, 0, 2.5));
  EXPECT_EQ(components_from_hex(u"FF0000:-1"), rgb(255, 0, 0, -1));
  EXPECT_EQ(components_from_hex(u"FF0000:+2"), rgb(255, 0, 0, 2));
  EXPECT_EQ(components_from_hex(u":0.5"), rgb(0, 0, 0, 0.5));
}

TEST(HexText, WithoutANumberBehindTheColonIsTransparentOnPurpose) {
  EXPECT_EQ(components_from_hex(u"FF0000:"), rgb(255, 0, 0, 0));
  EXPECT_EQ(components_from_hex(u"#FF0000:abc"), rgb(255, 0, 0, 0));
  EXPECT_EQ(components_from_hex(u"#FF0000:."), rgb(255, 0, 0, 0));
  EXPECT_EQ(components_from_hex(u"#FF0000:inf"), rgb(255, 0, 0, 0));
  EXPECT_EQ(components_from_hex(u"#FF0000:nan"), rgb(255, 0, 0, 0));
}

TEST(HexText, TakesADecimalPrefixOnly) {
  EXPECT_EQ(components_from_hex(u"0:0x10").alpha, 0);
  EXPECT_EQ(components_from_hex(u"0:1e").alpha, 1);
  EXPECT_EQ(components_from_hex(u"0:1.5.5").alpha, 1.5);
  EXPECT_EQ(components_from_hex(u"0:0,5").alpha, 0);
  EXPECT_EQ(components_from_hex(u"0:1:2").alpha, 1);
  EXPECT_EQ(components_from_hex(u"0:1e99").alpha, kInfinity);
  EXPECT_EQ(components_from_hex(u"0:1e-99").alpha, 0);
}

TEST(HexText, ReadsTheAlphaInSinglePrecision) {
  EXPECT_EQ(components_from_hex(u"0:0.1").alpha, static_cast<double>(0.1F));
  EXPECT_NE(components_from_hex(u"0:0.1").alpha, 0.1);
}

TEST(HexText, TakesTheScannersPrefix) {
  EXPECT_EQ(components_from_hex(u"0x00FF00"), rgb(0, 255, 0));
  EXPECT_EQ(components_from_hex(u"#0X00FF00"), rgb(0, 255, 0));
  EXPECT_EQ(components_from_hex(u"0xyz"), rgb(0, 0, 0));
}

TEST(HexText, HasNoShorthandOnPurpose) {
  EXPECT_EQ(components_from_hex(u"#FFF"), rgb(0, 15, 255));
  EXPECT_EQ(components_from_hex(u"#11223344"), rgb(0x22, 0x33, 0x44));
}

TEST(HexText, SaturatesBeyond32Bits) {
  EXPECT_EQ(components_from_hex(u"#1000000000000000000000000"), rgb(255, 255, 255));
  EXPECT_EQ(components_from_hex(u"#00000000000000000000102030"), rgb(16, 32, 48));
}

TEST(HexText, SkipsWhiteSpaceBeforeTheDigitsButNotBeforeTheHashOnPurpose) {
  EXPECT_EQ(components_from_hex(u" \n\u00A0\u3000FF0000"), rgb(255, 0, 0));
  EXPECT_EQ(components_from_hex(u"# FF0000"), rgb(255, 0, 0));
  EXPECT_EQ(components_from_hex(u" #FF0000"), rgb(0, 0, 0));
  EXPECT_EQ(components_from_hex(u"##FF0000"), rgb(0, 0, 0));
}

TEST(HexText, StopsAtWhatIsNoDigit) {
  EXPECT_EQ(components_from_hex(u"12G456"), rgb(0, 0, 0x12));
  EXPECT_EQ(components_from_hex(u"-FF0000"), rgb(0, 0, 0));
  EXPECT_EQ(components_from_hex(u"\uFF11\uFF12"), rgb(0, 0, 0));
}

TEST(HexText, WritesTruncatedComponents) {
  EXPECT_EQ(hex_from_components({0.5, 1, 0}), "#7FFF00");
  EXPECT_EQ(hex_from_components({0, 0, 0}), "#000000");
  EXPECT_EQ(hex_from_components({0.999, 0.0039, 0.004}), "#FE0001");
}

TEST(HexText, DoesNotClampOnPurpose) {
  EXPECT_EQ(hex_from_components({1.2, 0, 0}), "#1320000");
  EXPECT_EQ(hex_from_components({-0.5, 0, 0}), "#FFFFFF810000");
  EXPECT_EQ(hex_from_components({-0.001, 0, 0}), "#000000");
}

TEST(HexText, SaturatesWhatNoIntegerHolds) {
  EXPECT_EQ(hex_from_components({1e30, -1e30, std::nan("")}), "#7FFFFFFF8000000000");
  EXPECT_EQ(hex_from_components({kInfinity, 0, 0}), "#7FFFFFFF0000");
}

TEST(HexText, ReadsBackWhatItWrites) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const Components components = rgb(byte, 255 - byte, byte / 2);
    const std::string text = hex_from_components(components);
    EXPECT_EQ(components_from_hex(std::u16string(text.begin(), text.end())), components) << text;
  }
}

TEST(HexText, IsDarkBelowHalfTheLuminance) {
  EXPECT_TRUE(is_dark({0, 0, 1}));
  EXPECT_FALSE(is_dark({0, 1, 0}));
  EXPECT_TRUE(is_dark({1, 0, 0}));
  EXPECT_FALSE(is_dark({0.5, 0.5, 0.5}));
  EXPECT_TRUE(is_dark({0.4999, 0.4999, 0.4999}));
  EXPECT_FALSE(is_dark({std::nan(""), 0, 0}));
}

TEST(HexText, AgreesWithTheSlowReaderOverRandomTexts) {
  std::mt19937 random(1);
  const std::string usual = "0123456789abcdefABCDEF";
  const std::string odd = "#::..xX+-eEgz \t\n";
  for (int run = 0; run < 100'000; ++run) {
    std::string text;
    if (random() % 2 == 0) text += '#';
    for (std::size_t length = random() % 14; length > 0; --length) {
      const std::string& from = random() % 5 == 0 ? odd : usual;
      text += from[random() % from.size()];
    }
    if (random() % 3 == 0) text += ":0." + std::to_string(random());
    const Components fast = components_from_hex(std::u16string(text.begin(), text.end()));
    const auto slow = testing::slow::from_hex(text);
    const bool same = fast.red == slow.red && fast.green == slow.green && fast.blue == slow.blue &&
                      fast.alpha == slow.alpha;
    ASSERT_TRUE(same) << "\"" << text << "\"";
  }
}

TEST(Truncation, GoesTowardsZeroAndStopsAtTheEnds) {
  EXPECT_EQ(truncated(-1.9), -1);
  EXPECT_EQ(truncated(2147483647.9), 2147483647);
  EXPECT_EQ(truncated(-2147483648.9), -2147483648);
  EXPECT_EQ(truncated(kInfinity), 2147483647);
  EXPECT_EQ(truncated(std::numeric_limits<float>::infinity()), 2147483647);
  EXPECT_EQ(truncated(std::nanf("")), 0);
}

}  // namespace
}  // namespace wispen::colour
