// tests/device/objects_test.cpp: which objects can go into an arm64e slice.

#include "device/slices/objects.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/device/image_patches.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

std::string why_not(const std::string& bytes) {
  const auto done = slices::check_object(bytes);
  return done ? "" : done.error().message;
}

const std::string good = contents_of(WISPEN_TEST_GOOD_OBJECT);
const std::string table = contents_of(WISPEN_TEST_TABLE_OBJECT);

TEST(Object, OfTheBundleIsGood) { EXPECT_EQ(why_not(good), ""); }

TEST(Object, WithASignedPointerInDataIsRefusedWithTheNameOfWhatHoldsIt) {
  EXPECT_THAT(why_not(table), HasSubstr("a signed pointer in data, in _wrong_table"));
}

TEST(Object, OfUnsignedCodeIsRefused) {
  std::string plain = good;
  put(plain, 8, std::uint32_t{0});
  EXPECT_THAT(why_not(plain), HasSubstr("no arm64e code"));
  put(plain, 8, macho::kSubtypeArm64e);
  EXPECT_THAT(why_not(plain), HasSubstr("no arm64e code")) << "an older version of the ABI";
}

TEST(Object, ThatIsNoneIsRefused) {
  EXPECT_THAT(why_not("text"), HasSubstr("no Mach-O object"));
  EXPECT_THAT(why_not(contents_of(WISPEN_TEST_SEEDS "/macho/arm64e")), HasSubstr("no Mach-O object"));
}

TEST(Object, CutAnywhereIsNoCrash) {
  for (std::size_t size = 0; size < table.size(); ++size) {
    static_cast<void>(slices::check_object(std::string_view(table).substr(0, size)));
  }
  EXPECT_NE(why_not(table.substr(0, 300)), "");
}

}  // namespace
}  // namespace wispen::testing
