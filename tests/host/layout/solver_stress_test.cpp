// tests/host/layout/solver_stress_test.cpp: long lives, large systems and systems made to do harm.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "host/layout/solver.hpp"

namespace wispen::layout {
namespace {

using ::testing::IsEmpty;

double seconds_of(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

ConstraintId added(Solver& solver, Terms terms, Relation relation, double constant,
                   Priority priority = kRequired) {
  const Result<ConstraintId> id = solver.add(std::move(terms), relation, constant, priority);
  EXPECT_TRUE(id.ok());
  return id.ok() ? *id : ConstraintId{};
}

TEST(SolverStress, StaysExactOverTenThousandEdits) {
  Solver solver;
  const Var whole = solver.add_variable();
  const Var third = solver.add_variable();
  const Var rest = solver.add_variable();
  const ConstraintId size = added(solver, {{whole, 1}}, Relation::Equal, 0);
  added(solver, {{third, 1}, {whole, -1.0 / 3}}, Relation::Equal, 0.1);
  added(solver, {{third, 1}, {rest, 1}, {whole, -1}}, Relation::Equal, 0);
  added(solver, {{rest, 1}}, Relation::LessOrEqual, 500);
  added(solver, {{rest, 1}}, Relation::GreaterOrEqual, 1000, 10);
  solver.solve();
  for (int i = 0; i < 10'000; ++i) {
    ASSERT_TRUE(solver.set_constant(size, (i * 7919 % 7000) / 10.0).ok());
    ASSERT_THAT(solver.solve().conflicts, IsEmpty());
  }
  ASSERT_TRUE(solver.set_constant(size, 300).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(solver.value(whole), 300);
  EXPECT_DOUBLE_EQ(solver.value(third), 100.1);
  EXPECT_DOUBLE_EQ(solver.value(rest), 199.9);
}

TEST(SolverStress, StaysExactWhereEveryEditMovesTheBasis) {
  Solver solver;
  const Var x = solver.add_variable();
  const Var y = solver.add_variable();
  const ConstraintId wish = added(solver, {{x, 1}}, Relation::Equal, 0, 300);
  added(solver, {{x, 3}, {y, 7}}, Relation::LessOrEqual, 100);
  added(solver, {{x, 1}}, Relation::GreaterOrEqual, 0);
  added(solver, {{y, 1}}, Relation::GreaterOrEqual, 1.0 / 7);
  added(solver, {{y, 1}, {x, -1.0 / 3}}, Relation::Equal, 0, 200);
  for (int i = 0; i < 10'000; ++i) {
    ASSERT_TRUE(solver.set_constant(wish, (i % 2) * 1000 - 300 + i % 17).ok());
    solver.solve();
  }
  ASSERT_TRUE(solver.set_constant(wish, 900).ok());
  solver.solve();
  EXPECT_NEAR(solver.value(x), 33, 1e-10);
  EXPECT_NEAR(solver.value(y), 1.0 / 7, 1e-12);
}

TEST(SolverStress, HoldsNoMoreAfterTenThousandComingsAndGoings) {
  Solver solver;
  const Var x = solver.add_variable();
  added(solver, {{x, 1}}, Relation::GreaterOrEqual, 0);
  solver.solve();
  const std::size_t rows = solver.row_count();
  for (int i = 0; i < 10'000; ++i) {
    const Var y = solver.add_variable();
    const ConstraintId a = added(solver, {{x, 1}, {y, -1}}, Relation::Equal, i % 7);
    const ConstraintId b = added(solver, {{y, 1}}, Relation::LessOrEqual, i % 5, 700);
    const ConstraintId c = added(solver, {{y, 1}}, Relation::Equal, 10, 250);
    solver.solve();
    ASSERT_NEAR(solver.value(x), i % 5 + i % 7, 1e-9);
    solver.remove(i % 2 == 0 ? a : b);
    solver.remove(c);
    solver.solve();
    solver.remove(i % 2 == 0 ? b : a);
    solver.remove_variable(y);
  }
  solver.solve();
  EXPECT_EQ(solver.row_count(), rows);
  EXPECT_LT(solver.add_variable(), 16u);
}

TEST(SolverStress, SolvesAChainOfAThousandRequiredConstraints) {
  Solver solver;
  std::vector<Var> variables(1001);
  for (Var& variable : variables) variable = solver.add_variable();
  for (std::size_t i = 0; i < 1000; ++i) {
    added(solver, {{variables[i + 1], 1}, {variables[i], -1}}, Relation::Equal, 1);
  }
  const ConstraintId start = added(solver, {{variables[0], 1}}, Relation::Equal, 5);
  EXPECT_THAT(solver.solve().conflicts, IsEmpty());
  EXPECT_DOUBLE_EQ(solver.value(variables[1000]), 1005);
  ASSERT_TRUE(solver.set_constant(start, 6).ok());
  solver.solve();
  EXPECT_DOUBLE_EQ(solver.value(variables[1000]), 1006);
}

TEST(SolverStress, FindsTheOneContradictionInACycleOfAThousand) {
  Solver solver;
  std::vector<Var> variables(1000);
  for (Var& variable : variables) variable = solver.add_variable();
  ConstraintId last{};
  for (std::size_t i = 0; i < 1000; ++i) {
    last = added(solver, {{variables[(i + 1) % 1000], 1}, {variables[i], -1}}, Relation::GreaterOrEqual, 1);
  }
  SolveReport report;
  const double seconds = seconds_of([&] { report = solver.solve(); });
  std::printf("a cycle of 1,000: %.3f s\n", seconds);
  ASSERT_EQ(report.conflicts.size(), 1u);
  EXPECT_EQ(report.conflicts[0].broken, last);
  EXPECT_EQ(report.conflicts[0].together.size(), 1000u);
}

TEST(SolverStress, ComesBackFromAThousandConstraintsOnEverything) {
  std::mt19937 random(7);
  Solver solver;
  std::vector<Var> variables(60);
  for (Var& variable : variables) variable = solver.add_variable();
  std::uniform_real_distribution<double> number(-10, 10);
  for (int i = 0; i < 1000; ++i) {
    Terms terms;
    for (const Var variable : variables) terms.push_back({variable, number(random)});
    const auto relation = static_cast<Relation>(i % 3 - 1);
    added(solver, std::move(terms), relation, number(random), i % 10 == 0 ? kRequired : 1 + i % 999);
  }
  bool optimal = false;
  const double seconds = seconds_of([&] { optimal = solver.solve().optimal; });
  std::printf("1,000 constraints on 60 variables each: %.2f s, %s\n", seconds,
              optimal ? "solved" : "given up");
  EXPECT_LT(seconds, 60);
  for (const Var variable : variables) EXPECT_TRUE(std::isfinite(solver.value(variable)));
}

TEST(SolverStress, GivesFiniteNumbersWhereMultipliersGrowWithoutEnd) {
  for (const bool growing : {false, true}) {
    Solver solver;
    std::vector<Var> variables(300);
    for (Var& variable : variables) variable = solver.add_variable();
    const Var bystander = solver.add_variable();
    added(solver, {{bystander, 1}}, Relation::Equal, 12);
    for (std::size_t i = 0; i + 1 < variables.size(); ++i) {
      const Var large = variables[growing ? i : i + 1];
      const Var small = variables[growing ? i + 1 : i];
      added(solver, {{large, 1}, {small, -9999}}, Relation::Equal, 1);
    }
    added(solver, {{variables.back(), 1}}, Relation::Equal, 1);
    const SolveReport report = solver.solve();
    EXPECT_EQ(report.conflicts.empty(), !growing);
    for (const Var variable : variables) EXPECT_TRUE(std::isfinite(solver.value(variable)));
    EXPECT_DOUBLE_EQ(solver.value(bystander), 12);
  }
}

TEST(SolverStress, GivesTheSameAnswerToTheSameCalls) {
  std::vector<double> answers[2];
  for (std::vector<double>& answer : answers) {
    std::mt19937 random(11);
    Solver solver;
    std::vector<Var> variables(40);
    for (Var& variable : variables) variable = solver.add_variable();
    std::vector<ConstraintId> ids;
    for (int i = 0; i < 200; ++i) {
      const Terms terms{{variables[random() % 40], 1}, {variables[random() % 40], -1}};
      ids.push_back(added(solver, terms, static_cast<Relation>(i % 3 - 1), i % 13,
                          i % 4 == 0 ? kRequired : 100 * (1 + i % 9)));
      if (i % 10 == 9) {
        solver.solve();
        solver.remove(ids[random() % ids.size()]);
      }
    }
    solver.solve();
    for (const Var variable : variables) answer.push_back(solver.value(variable));
  }
  EXPECT_EQ(answers[0], answers[1]);
}

}  // namespace
}  // namespace wispen::layout
