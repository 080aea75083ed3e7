// tests/host/graphics/image_memory_test.cpp: the pictures decoded last, since pages ask for theirs at
// every visit.

#include "host/graphics/image_memory.hpp"

#include <gtest/gtest.h>

#include "host/graphics/image_file.hpp"
#include "tests/host/graphics/pictures.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::graphics {
namespace {

class ImageMemoryTest : public ::testing::Test {
 protected:
  std::string file(const std::string& name) const { return folder_ / name; }
  void write(const std::string& name, int size, std::uint32_t argb) const {
    ASSERT_TRUE(write_png(flat_picture(size, size, argb)->view(), file(name)));
  }
  const testing::TemporaryFolder folder_;
};

TEST_F(ImageMemoryTest, GivesTheSamePixelsWhileTheFileStays) {
  write("a.png", 4, 0xFFFF0000);
  const auto first = remembered_image(file("a.png"));
  const auto second = remembered_image(file("a.png"));
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->pixels(), second->pixels());
}

TEST_F(ImageMemoryTest, ReadsAFileAgainThatWasReplaced) {
  write("a.png", 4, 0xFFFF0000);
  ASSERT_TRUE(remembered_image(file("a.png")));
  write("a.png", 4, 0xFF00FF00);
  const auto again = remembered_image(file("a.png"));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->pixels()->at(0, 0), 0xFF00FF00U);
}

TEST_F(ImageMemoryTest, FailsForAFileThatIsGone) {
  write("a.png", 4, 0xFFFF0000);
  ASSERT_TRUE(remembered_image(file("a.png")));
  std::filesystem::remove(file("a.png"));
  EXPECT_FALSE(remembered_image(file("a.png")));
}

TEST_F(ImageMemoryTest, ForgetsTheOldestWhereAllWouldBeTooLarge) {
  constexpr int kSide = 1500;  // one fits
  for (const char* name : {"a.png", "b.png"}) write(name, kSide, 0xFF0000FF);
  const auto first = remembered_image(file("a.png"));
  ASSERT_TRUE(first && remembered_image(file("b.png")));
  const auto again = remembered_image(file("a.png"));
  EXPECT_NE(again->pixels(), first->pixels());
}

}  // namespace
}  // namespace wispen::graphics
