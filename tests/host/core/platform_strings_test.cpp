// tests/host/core/platform_strings_test.cpp: the bounded string functions of the phone's C library.

#include "host/core/platform_strings.hpp"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(Strlcpy, CutsAndTerminatesAndSaysWhatItWanted) {
  std::array<char, 4> buffer{"zzz"};
  EXPECT_EQ(wispen_platform_strlcpy(buffer.data(), "abcdef", 4), 6u);
  EXPECT_STREQ(buffer.data(), "abc");
  EXPECT_EQ(wispen_platform_strlcpy(buffer.data(), "", 4), 0u);
  EXPECT_STREQ(buffer.data(), "");
}

TEST(Strlcpy, TouchesNothingWhenThereIsNoRoom) {
  char buffer = '#';
  EXPECT_EQ(wispen_platform_strlcpy(&buffer, "abc", 0), 3u);
  EXPECT_EQ(buffer, '#');
}

TEST(Strlcat, AppendsWithinTheWholeSize) {
  std::array<char, 6> buffer{"ab"};
  EXPECT_EQ(wispen_platform_strlcat(buffer.data(), "cdefg", 6), 7u);
  EXPECT_STREQ(buffer.data(), "abcde");
  EXPECT_EQ(wispen_platform_strlcat(buffer.data(), "", 6), 5u);
}

TEST(Strlcat, LeavesAnUnterminatedTargetAlone) {
  const std::array<char, 3> unterminated = {'a', 'b', 'c'};
  std::array<char, 3> buffer = unterminated;
  EXPECT_EQ(wispen_platform_strlcat(buffer.data(), "xy", 3), 5u);
  EXPECT_EQ(buffer, unterminated);
}

TEST(StrtofL, ReadsAPointWhateverTheUsersLocaleWrites) {
  char* end = nullptr;
  const char* const text = "0.5:";
  EXPECT_EQ(wispen_platform_strtof_l(text, &end, nullptr), 0.5F);
  EXPECT_EQ(end, text + 3);
}

}  // namespace
