// tests/platform/objc/block_test.cpp: lambdas as blocks.

#include <gtest/gtest.h>

#include <memory>

#include "platform/Foundation.hpp"
#include "tests/platform/objc/counted.hpp"

namespace wispen::testing {
namespace {

class BlockTest : public ::testing::Test {
 protected:
  void SetUp() override { Counted::define(); }
  void TearDown() override { EXPECT_EQ(Counted::alive, 0); }
};

TEST_F(BlockTest, ABlockCallsItsLambda) {
  int sum = 0;
  const objc::Block<int(int, double)> block([&sum](int a, double b) {
    sum += a;
    return static_cast<int>(b) + sum;
  });
  EXPECT_EQ(block(1, 10.5), 11);
  EXPECT_EQ(block(2, 10.5), 13);
}

TEST_F(BlockTest, CopiesShareOneLambdaWhichDiesOnceWithTheLast) {
  auto probe = std::make_shared<int>(0);
  {
    const objc::Block<void()> block([probe] { ++*probe; });
    EXPECT_EQ(probe.use_count(), 2);
    {
      const objc::Block<void()> copy = block;
      copy();
      EXPECT_EQ(probe.use_count(), 2);
    }
    block();
    EXPECT_EQ(*probe, 2);
  }
  EXPECT_EQ(probe.use_count(), 1);
}

TEST_F(BlockTest, ABlockKeepsTheObjectsThatItCapturesAlive) {
  objc::Block<NSUInteger()> block;
  {
    const Counted object = Counted::make();
    block = [object] { return object.retainCount(); };
  }
  EXPECT_EQ(Counted::alive, 1);
  EXPECT_EQ(block(), 1u);
  block = nullptr;
  EXPECT_EQ(Counted::alive, 0);
}

TEST_F(BlockTest, NilIsEmptyAndAnswersZero) {
  const objc::Block<int(int)> nil;
  EXPECT_FALSE(nil);
  EXPECT_EQ(nil(3), 0);
}

TEST_F(BlockTest, FoundationCallsABlock) {
  const objc::AutoreleasePool pool;
  NSMutableArray numbers = NSMutableArray::array();
  for (int i = 1; i <= 4; ++i) numbers.addObject(NSNumber::numberWithInt(i));
  int sum = 0;
  const objc::Block<void(NSNumber, NSUInteger, unsigned char*)> block(
      [&sum](const NSNumber& number, NSUInteger index, unsigned char* stop) {
        sum += number.intValue();
        if (index == 2) *stop = 1;
      });
  objc::send<"enumerateObjectsUsingBlock:">(numbers, block);
  EXPECT_EQ(sum, 6);
}

TEST_F(BlockTest, ABlockHandedOverAndKeptByTheReceiverLivesOn) {
  auto probe = std::make_shared<int>(0);
  objc::Block<void()> kept;
  {
    const objc::Block<void()> made([probe] { ++*probe; });
    kept = objc::Block<void()>::retain(made.borrow());
  }
  kept();
  EXPECT_EQ(*probe, 1);
  kept = nullptr;
  EXPECT_EQ(probe.use_count(), 1);
}

}  // namespace
}  // namespace wispen::testing
