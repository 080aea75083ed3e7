// tests/host/layout/solver_test.cpp: an incremental solver of linear constraints with priorities.

#include "host/layout/solver.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace wispen::layout {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SolverTest : public testing::Test {
 protected:
  ConstraintId add(Terms terms, Relation relation, double constant, Priority priority = kRequired) {
    const Result<ConstraintId> added = solver.add(std::move(terms), relation, constant, priority);
    EXPECT_TRUE(added.ok());
    return *added;
  }
  ConstraintId equal(Terms terms, double constant, Priority priority = kRequired) {
    return add(std::move(terms), Relation::Equal, constant, priority);
  }
  ConstraintId at_least(Terms terms, double constant, Priority priority = kRequired) {
    return add(std::move(terms), Relation::GreaterOrEqual, constant, priority);
  }
  ConstraintId at_most(Terms terms, double constant, Priority priority = kRequired) {
    return add(std::move(terms), Relation::LessOrEqual, constant, priority);
  }
  double value(Var variable) const { return solver.value(variable); }

  Solver solver;
  Var x = solver.add_variable();
  Var y = solver.add_variable();
  Var z = solver.add_variable();
};

TEST_F(SolverTest, GivesZeroToWhatNothingDetermines) {
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_EQ(value(x), 0);
}

TEST_F(SolverTest, SolvesEqualitiesWhateverTheirOrder) {
  equal({{x, 1}, {y, 1}, {z, 1}}, 60);
  equal({{x, 2}, {y, -1}}, 0);
  equal({{z, 1}, {y, -1}}, 10);
  EXPECT_TRUE(solver.solve().optimal);
  EXPECT_DOUBLE_EQ(value(x), 10);
  EXPECT_DOUBLE_EQ(value(y), 20);
  EXPECT_DOUBLE_EQ(value(z), 30);
}

TEST_F(SolverTest, AddsUpAVariableThatOccursTwice) {
  equal({{x, 1}, {x, 2}}, 9);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 3);
}

TEST_F(SolverTest, KeepsInequalitiesAndLeavesSlackToWishes) {
  at_least({{x, 1}}, 10);
  at_most({{x, 1}}, 50);
  const ConstraintId wish = equal({{x, 1}}, 70, 250);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 50);
  ASSERT_TRUE(solver.set_constant(wish, 30).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 30);
  ASSERT_TRUE(solver.set_constant(wish, -5).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 10);
}

TEST_F(SolverTest, LetsOneStrongerWishOutweighAnyNumberOfWeakerOnes) {
  equal({{x, 1}}, 100, 251);
  for (int i = 0; i < 50; ++i) equal({{x, 1}}, 0, 250);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 100);
}

TEST_F(SolverTest, TellsFractionsOfAPriorityApart) {
  equal({{x, 1}}, 1, 500.25);
  equal({{x, 1}}, 2, 500.5);
  equal({{y, 1}}, 1, 999.9);
  equal({{y, 1}}, 2, 999.8);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 2);
  EXPECT_DOUBLE_EQ(value(y), 1);
}

TEST_F(SolverTest, TakesTheMedianOfEqualWishes) {
  equal({{x, 1}}, 0, 500);
  equal({{x, 1}}, 10, 500);
  equal({{x, 1}}, 70, 500);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 10);
}

TEST_F(SolverTest, ViolatesAWeakInequalityOnlyAsFarAsItMust) {
  at_most({{x, 1}}, 10, 300);
  at_least({{x, 1}}, 25, 700);
  equal({{x, 1}}, 100, 200);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 25);
}

TEST_F(SolverTest, NamesExactlyThoseThatContradict) {
  const ConstraintId unrelated = equal({{z, 1}}, 4);
  const ConstraintId sum = equal({{x, 1}, {y, 1}}, 100);
  const ConstraintId small = at_most({{x, 1}}, 20);
  at_most({{x, 1}}, 30);
  const ConstraintId other = at_most({{y, 1}}, 50);
  const SolveReport report = solver.solve();
  ASSERT_THAT(report.conflicts, SizeIs(1));
  EXPECT_EQ(report.conflicts[0].broken, other);
  EXPECT_THAT(report.conflicts[0].together, ElementsAre(sum, small, other));
  EXPECT_TRUE(solver.is_broken(other));
  EXPECT_FALSE(solver.is_broken(unrelated));
  EXPECT_LE(value(x), 20);
  EXPECT_DOUBLE_EQ(value(x) + value(y), 100);
}

TEST_F(SolverTest, ReportsABrokenConstraintOnceAndKeepsItsElders) {
  equal({{x, 1}}, 10);
  equal({{x, 1}}, 20);
  EXPECT_THAT(solver.solve().conflicts, SizeIs(1));
  equal({{y, 1}}, 1);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_DOUBLE_EQ(value(x), 10);
}

TEST_F(SolverTest, TakesABrokenConstraintBackWhenItsOpponentGoes) {
  const ConstraintId elder = equal({{x, 1}}, 10);
  const ConstraintId newcomer = equal({{x, 1}}, 20);
  solver.solve();
  solver.remove(elder);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_FALSE(solver.is_broken(newcomer));
  EXPECT_DOUBLE_EQ(value(x), 20);
}

TEST_F(SolverTest, TakesABrokenConstraintBackWhenItsOpponentMoves) {
  const ConstraintId elder = equal({{x, 1}}, 10);
  const ConstraintId newcomer = equal({{x, 1}}, 20);
  solver.solve();
  ASSERT_TRUE(solver.set_constant(elder, 20).ok());
  solver.solve();
  EXPECT_FALSE(solver.is_broken(newcomer));
}

TEST_F(SolverTest, AllowsOneConstraintTwiceAndKeepsEitherWhenTheOtherGoes) {
  const ConstraintId first = equal({{x, 1}, {y, -1}}, 0);
  const ConstraintId second = equal({{y, 2}, {x, -2}}, 0);
  equal({{x, 1}}, 8);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  solver.remove(first);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(y), 8);
  solver.remove(second);
  equal({{y, 1}}, 3);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_DOUBLE_EQ(value(x), 8);
  EXPECT_DOUBLE_EQ(value(y), 3);
}

TEST_F(SolverTest, BreaksTheEditedOneWhenAnEditContradicts) {
  const ConstraintId first = equal({{x, 1}}, 5);
  const ConstraintId second = equal({{x, 1}}, 5);
  solver.solve();
  ASSERT_TRUE(solver.set_constant(first, 9).ok());
  const SolveReport report = solver.solve();
  ASSERT_THAT(report.conflicts, SizeIs(1));
  EXPECT_EQ(report.conflicts[0].broken, first);
  EXPECT_THAT(report.conflicts[0].together, ElementsAre(second, first));
  EXPECT_DOUBLE_EQ(value(x), 5);
}

TEST_F(SolverTest, AcceptsEditsThatContradictOnlyHalfWay) {
  const ConstraintId first = equal({{x, 1}}, 5);
  const ConstraintId second = equal({{x, 1}}, 5);
  solver.solve();
  ASSERT_TRUE(solver.set_constant(first, 9).ok());
  ASSERT_TRUE(solver.set_constant(second, 9).ok());
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_DOUBLE_EQ(value(x), 9);
}

TEST_F(SolverTest, RestoresTheOldAnswerWhenAConstraintIsRemoved) {
  equal({{x, 1}}, 40, 300);
  equal({{y, 1}, {x, -1}}, 10);
  const ConstraintId limit = at_most({{y, 1}}, 30);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 20);
  solver.remove(limit);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 40);
  EXPECT_DOUBLE_EQ(value(y), 50);
  EXPECT_EQ(solver.constraint_count(), 2u);
}

TEST_F(SolverTest, FollowsAChangedPriority) {
  const ConstraintId low = equal({{x, 1}}, 1, 100);
  equal({{x, 1}}, 2, 200);
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 2);
  ASSERT_TRUE(solver.set_priority(low, 201).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 1);
  ASSERT_TRUE(solver.set_priority(low, 50).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 2);
}

TEST_F(SolverTest, IgnoresIdsOfConstraintsThatAreGone) {
  const ConstraintId gone = equal({{x, 1}}, 1);
  solver.remove(gone);
  const ConstraintId there = equal({{x, 1}}, 2);
  EXPECT_NE(gone, there);
  solver.remove(gone);
  EXPECT_TRUE(solver.set_constant(gone, 7).ok());
  EXPECT_TRUE(solver.set_priority(gone, 7).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 2);
}

TEST_F(SolverTest, RefusesNumbersThatAreNone) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double number : {kNan, kInfinity, -kInfinity}) {
    EXPECT_FALSE(solver.add({{x, 1}}, Relation::Equal, number).ok());
    EXPECT_FALSE(solver.add({{x, number}}, Relation::Equal, 0).ok());
    EXPECT_FALSE(solver.add({{x, 1}}, Relation::Equal, 0, number).ok());
  }
  EXPECT_FALSE(solver.add({{x, 1}}, Relation::Equal, 0, 0).ok());
  EXPECT_FALSE(solver.add({{x, 1}}, Relation::Equal, 0, 1000.5).ok());
  const ConstraintId id = equal({{x, 1}}, 3);
  EXPECT_FALSE(solver.set_constant(id, kNan).ok());
  EXPECT_FALSE(solver.set_priority(id, kNan).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(value(x), 3);
}

TEST_F(SolverTest, BringsHugeNumbersDownToWhatItCanKeep) {
  at_most({{x, 1}}, std::numeric_limits<double>::max());
  equal({{x, 1}}, 12, 10);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_DOUBLE_EQ(value(x), 12);
}

TEST_F(SolverTest, SaysOfAConstraintWithoutVariablesWhetherItHolds) {
  at_least({}, -1);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  const ConstraintId never = equal({}, 3);
  const SolveReport report = solver.solve();
  ASSERT_THAT(report.conflicts, SizeIs(1));
  EXPECT_THAT(report.conflicts[0].together, ElementsAre(never));
  equal({}, 3, 500);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
}

}  // namespace
}  // namespace wispen::layout
