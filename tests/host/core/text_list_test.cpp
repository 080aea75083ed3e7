// tests/host/core/text_list_test.cpp: lists of words in one text.

#include "host/core/text_list.hpp"

#include <gtest/gtest.h>

namespace wispen {
namespace {

using Words = std::vector<std::string>;

TEST(TextList, DropsBlanksAroundThePartsAndEmptyParts) {
  EXPECT_EQ(split_list(" de-AT, en ,,fr", ','), (Words{"de-AT", "en", "fr"}));
  EXPECT_EQ(split_list("/one:/two words", ':'), (Words{"/one", "/two words"}));
  EXPECT_EQ(split_list("", ','), Words());
  EXPECT_EQ(split_list(" , ", ','), Words());
}

TEST(TextList, JoinsWhatItSplits) {
  EXPECT_EQ(joined({"de", "en"}, ","), "de,en");
  EXPECT_EQ(joined({"de"}, ","), "de");
  EXPECT_EQ(joined({}, ","), "");
}

}  // namespace
}  // namespace wispen
