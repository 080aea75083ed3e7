// tests/host/files/recycled_memory_test.cpp
#include "host/files/recycled_memory.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

namespace wispen::files {
namespace {

TEST(RecycledMemory, GivesBlocksThatCanBeFilled) {
  std::vector<std::pair<void*, std::size_t>> blocks;
  for (const std::size_t size : {0U, 1U, 1023U, 1024U, 1025U, 100000U, 1U << 20, (1U << 20) + 1U, 5U << 20}) {
    for (int i = 0; i < 4; ++i) {
      void* block = take_block(size);
      std::memset(block, i, size);
      blocks.emplace_back(block, size);
    }
  }
  for (const auto& [block, size] : blocks) give_block(block, size);
  give_block(nullptr, 7);
  free_kept_blocks();
}

#if !defined(__SANITIZE_ADDRESS__)
TEST(RecycledMemory, GivesABackgivenBlockAgain) {
  void* block = take_block(5000);
  give_block(block, 5000);
  void* again = take_block(6000);
  EXPECT_EQ(again, block) << "both sizes are of one class";
  give_block(again, 6000);
  free_kept_blocks();
}
#endif

TEST(RecycledMemory, TakesBlocksOfOtherThreads) {
  void* block = nullptr;
  std::thread([&] { block = take_block(5000); }).join();
  std::memset(block, 1, 5000);
  give_block(block, 5000);
  block = take_block(5000);
  std::thread([&] { give_block(block, 5000); }).join();
}

TEST(RecycledMemory, HoldsContainers) {
  std::vector<int, RecyclingAllocator<int>> numbers;
  for (int i = 0; i < 100000; ++i) numbers.push_back(i);
  EXPECT_EQ(numbers.back(), 99999);
}

}  // namespace
}  // namespace wispen::files
