// tests/host/plist/scalars_test.cpp
#include "host/plist/scalars.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <random>

namespace wispen::plist {
namespace {

TEST(Scalars, RoundTripsDoublesToTheLastBit) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 100000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (value != value) continue;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(*parse_real(format_real(value))),
              std::bit_cast<std::uint64_t>(value));
  }
}

TEST(Scalars, RoundTripsDatesOverTenThousandYears) {
  constexpr double kDay = 86400;
  int count = 0;
  for (double day = -730851; day < 2921574; day += 13.37) {
    const double seconds = static_cast<double>(static_cast<std::int64_t>(day * kDay));
    const std::optional<std::string> text = format_date(seconds);
    ASSERT_TRUE(text) << seconds;
    ASSERT_EQ(parse_date(*text), seconds) << *text;
    ++count;
  }
  EXPECT_GT(count, 200000);
}

TEST(Scalars, KnowsWhereTheCalendarBegins) {
  EXPECT_EQ(format_date(0), "2001-01-01T00:00:00Z");
  EXPECT_EQ(format_date(-1), "2000-12-31T23:59:59Z");
  EXPECT_EQ(format_date(-0.5), "2000-12-31T23:59:59Z") << "fractions are rounded down";
  EXPECT_EQ(format_date(-978307200), "1970-01-01T00:00:00Z");
  EXPECT_EQ(parse_date("2000-02-29T12:34:56Z"), -26479504.0);
  EXPECT_EQ(parse_date("0000-12-30T00:00:00Z"), -63114076800.0);
  EXPECT_FALSE(format_date(1e300));
  EXPECT_FALSE(format_date(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_FALSE(format_date(-63145526401.0)) << "before the year 0";
  EXPECT_FALSE(format_date(252423993600.0)) << "after the year 9999";
}

TEST(Scalars, RoundTripsDataOfEveryLength) {
  std::vector<std::uint8_t> bytes;
  for (int i = 0; i < 300; ++i) {
    const std::string text = format_base64(bytes);
    ASSERT_TRUE(is_base64(text));
    ASSERT_EQ(parse_base64(text), bytes);
    bytes.push_back(static_cast<std::uint8_t>(i * 37));
  }
  EXPECT_EQ(format_base64({'M', 'a'}), "TWE=");
}

}  // namespace
}  // namespace wispen::plist
