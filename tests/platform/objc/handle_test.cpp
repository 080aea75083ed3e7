// tests/platform/objc/handle_test.cpp: who owns what, counted.

#include <gtest/gtest.h>

#include "platform/Foundation.hpp"
#include "tests/platform/objc/counted.hpp"

namespace wispen::testing {
namespace {

class HandleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Counted::define();
    ASSERT_EQ(Counted::alive, 0);
  }
  void TearDown() override { EXPECT_EQ(Counted::alive, 0) << "a test left an object behind"; }
};

static_assert(sizeof(NSString) == sizeof(void*), "a handle is a pointer");

TEST_F(HandleTest, ANewObjectHasOneReferenceAndDiesWithItsHandle) {
  const Counted object = Counted::make();
  EXPECT_EQ(object.retainCount(), 1u);
  EXPECT_EQ(Counted::alive, 1);
}

TEST_F(HandleTest, CopyingRetainsAndDestroyingReleases) {
  const Counted object = Counted::make();
  {
    const Counted copy = object;  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(object.retainCount(), 2u);
    EXPECT_EQ(copy, object);
  }
  EXPECT_EQ(object.retainCount(), 1u);
}

TEST_F(HandleTest, MovingLeavesNilAndTheCountAlone) {
  Counted object = Counted::make();
  const Counted moved = std::move(object);
  EXPECT_FALSE(object);  // NOLINT(bugprone-use-after-move): that is what is tested
  EXPECT_EQ(moved.retainCount(), 1u);
}

TEST_F(HandleTest, AssigningReleasesTheOldObjectAfterTheNewOneIsInPlace) {
  Counted holder = Counted::make();
  Counted& seen_by_dying = holder;
  bool new_one_was_in_place = false;
  Counted::on_death = [&] { new_one_was_in_place = static_cast<bool>(seen_by_dying) && Counted::alive == 1; };
  holder = Counted::make();
  Counted::on_death = nullptr;
  EXPECT_TRUE(new_one_was_in_place);
  EXPECT_EQ(Counted::alive, 1);
}

TEST_F(HandleTest, SelfAssignmentKeepsTheObject) {
  Counted object = Counted::make();
  const Counted& same = object;
  object = same;
  EXPECT_EQ(object.retainCount(), 1u);
}

TEST_F(HandleTest, AdoptTakesAReferenceOverAndRetainAddsOne) {
  Counted object = Counted::make();
  objc::abi::id raw = objc::leak(std::move(object));
  EXPECT_EQ(Counted::alive, 1);
  const auto adopted = objc::adopt<Counted>(raw);
  EXPECT_EQ(adopted.retainCount(), 1u);
  const auto retained = objc::retain<Counted>(objc::borrow(adopted));
  EXPECT_EQ(adopted.retainCount(), 2u);
}

TEST_F(HandleTest, AnAutoreleasedObjectLivesAsLongAsThePool) {
  {
    const objc::AutoreleasePool pool;
    objc::abi::autorelease(objc::leak(Counted::make()));
    EXPECT_EQ(Counted::alive, 1);
  }
  EXPECT_EQ(Counted::alive, 0);
}

TEST_F(HandleTest, ABorrowedHandleOwnsNothing) {
  const Counted object = Counted::make();
  {
    objc::Borrowed<Counted> borrowed(objc::borrow(object));
    EXPECT_EQ(object.retainCount(), 1u);
    EXPECT_EQ((*borrowed), object);
  }
  EXPECT_EQ(object.retainCount(), 1u);
}

TEST_F(HandleTest, AnUnownedReferenceKeepsNothingAlive) {
  objc::Unowned<Counted> reference;
  EXPECT_FALSE(reference.get());
  const Counted object = Counted::make();
  reference = objc::Unowned<Counted>(object);
  EXPECT_EQ(object.retainCount(), 1u);
  EXPECT_EQ(reference.get(), object);
}

TEST_F(HandleTest, AnAllocatedObjectThatIsNeverInitialisedIsReleased) {
  { const objc::Allocated<Counted> allocated = Counted::alloc(); }
  EXPECT_EQ(Counted::alive, 0);
}

TEST_F(HandleTest, CastGivesNilForAnotherClassAndPassesNilThrough) {
  const NSString text = "text"_ns;
  EXPECT_TRUE(objc::cast_or_nil<NSObject>(text));
  EXPECT_FALSE(objc::cast_or_nil<NSArray>(text));
  EXPECT_FALSE(objc::cast_or_nil<NSString>(NSObject()));
}

TEST_F(HandleTest, AWeakReferenceBecomesNilWhenItsObjectDies) {
  objc::Weak<Counted> weak;
  EXPECT_FALSE(weak.lock());
  {
    const Counted object = Counted::make();
    weak = object;
    EXPECT_EQ(object.retainCount(), 1u);
    EXPECT_EQ(weak.lock(), object);
    const objc::Weak<Counted> copy = weak;
    EXPECT_EQ(copy.lock(), object);
  }
  EXPECT_FALSE(weak.lock());
}

TEST_F(HandleTest, AWeakReferenceIsNilAlreadyWhileItsObjectDies) {
  objc::Weak<Counted> weak;
  int deaths = 0;
  Counted::on_death = [&] {
    ++deaths;
    EXPECT_FALSE(weak.lock());
  };
  weak = Counted::make();
  Counted::on_death = nullptr;
  EXPECT_EQ(deaths, 1);
}

TEST_F(HandleTest, AWeakReferenceMayDieFirstAndMayBePointedElsewhere) {
  const Counted first = Counted::make();
  {
    objc::Weak<Counted> weak = first;
    weak = Counted::make();  // dies at once
    EXPECT_FALSE(weak.lock());
    weak = first;
    EXPECT_EQ(weak.lock(), first);
  }
  EXPECT_EQ(first.retainCount(), 1u);
}

}  // namespace
}  // namespace wispen::testing
