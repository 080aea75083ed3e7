// host/layout/solver.hpp: an incremental solver of linear constraints with priorities.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/core/result.hpp"
#include "host/layout/tableau.hpp"

namespace wispen::layout {

enum class Relation { LessOrEqual = -1, Equal = 0, GreaterOrEqual = 1 };

/// 1 to 1000; fractions count. 1000 must hold, all else gives way to whatever is higher.
using Priority = double;
inline constexpr Priority kRequired = 1000;

/// Names a constraint of one solver; never used again after the constraint is removed.
enum class ConstraintId : std::uint64_t {};

/// A required constraint that could not be kept, and those that it contradicts.
struct Conflict {
  ConstraintId broken{};
  /// All that cannot hold together, `broken` included, in the order in which they were added. Empty but for
  /// `broken` where the solver gave up before it knew.
  std::vector<ConstraintId> together;
};

struct SolveReport {
  /// What was broken by this call and was not before.
  std::vector<Conflict> conflicts;
  /// False where the work allowed for one call ran out: what is required holds, weaker wishes may not.
  bool optimal = true;
};

/// Finds values for which every required constraint holds, and of the others the sum of violations is least,
/// first at the highest priority, then among what is left at the next, and so on (a strict order: no number
/// of weak constraints outweighs a stronger one).
///
/// The method is Cassowary (Badros, Borning, Stuckey: "The Cassowary Linear Arithmetic Constraint Solving
/// Algorithm", ACM TOCHI 8(4), 2001), with one cost a priority in place of a weighted sum, and Bland's rule
/// for every choice, so that the same calls give the same answer. Changes are collected for solve(): values
/// count after it alone, and contradictions that do not last until then are not reported.
///
/// A required constraint that contradicts those added before it is broken: it counts for nothing until a
/// later solve() finds that it can hold, or it is removed.
class Solver {
 public:
  /// Magnitudes that constants and multipliers are brought down to.
  static constexpr double kLargestConstant = 1e7;
  static constexpr double kLargestMultiplier = 1e4;

  Var add_variable();
  /// No constraint may name the variable any more.
  void remove_variable(Var variable);

  /// Adds `sum of terms  relation  constant`. A variable may occur more than once. Refuses numbers that are
  /// not finite and priorities outside of (0, 1000].
  Result<ConstraintId> add(Terms terms, Relation relation, double constant, Priority priority = kRequired);
  /// Unknown and removed constraints are ignored here and below.
  void remove(ConstraintId id);
  /// Refuses a number that is not finite, and changes nothing then.
  Result<void> set_constant(ConstraintId id, double constant);
  Result<void> set_priority(ConstraintId id, Priority priority);
  /// Makes it another constraint of the same age, priority and name.
  Result<void> replace(ConstraintId id, Terms terms, Relation relation, double constant);

  SolveReport solve();

  /// As of the last solve(); a variable that nothing determines is 0.
  double value(Var variable) const { return tableau_.value(variable); }
  bool is_broken(ConstraintId id) const;
  std::size_t constraint_count() const { return count_; }
  std::size_t row_count() const { return tableau_.row_count(); }

 private:
  enum class State : std::uint8_t { Absent, Waiting, Active, Broken };
  struct Constraint {
    Terms terms;
    Relation relation = Relation::Equal;
    double constant = 0;
    Priority priority = kRequired;
    State state = State::Absent;
    bool reported = false;
    std::uint32_t generation = 0;
    std::uint64_t order = 0;
    // terms - constant = plus - minus, both not negative; kNoVar where a relation leaves one out.
    Var plus = kNoVar;
    Var minus = kNoVar;
  };
  static constexpr Var kNoVar = ~Var{0};

  using Index = std::uint32_t;
  static ConstraintId id_of(Index index, std::uint32_t generation);
  Constraint* find(ConstraintId id);
  const Constraint* find(ConstraintId id) const;
  ConstraintId id_of(Index index) const { return id_of(index, constraints_[index].generation); }

  Terms residual_of(Constraint& constraint);
  double shift_variable(Constraint& constraint, Var& variable) const;
  bool activate(Index index, std::vector<Index>* against);
  bool reach_zero(Index index, Terms terms, double excess, std::vector<Index>* against);
  static Result<void> check(Terms& terms, double constant);
  void set_waiting(Constraint& constraint);
  void retire(Constraint& constraint);
  void deactivate(Constraint& constraint);
  Slot row_to_leave(Var marker);
  void activate_waiting(SolveReport& report);
  void break_constraint(Index index, std::vector<Index> against, SolveReport& report);
  bool apply_edits();
  void rebuild();

  struct Reduced;
  Reduced reduced_cost(Var variable);
  std::optional<Slot> leaving_row(Var entering);
  bool optimise();
  bool restore_feasibility();
  bool spent() const { return tableau_.work() > allowed_; }

  Tableau tableau_;
  std::vector<Constraint> constraints_;
  std::vector<Index> free_;
  std::vector<Index> owners_;  // by variable: the constraint whose residual it is part of
  std::vector<Index> waiting_;
  std::vector<Index> edited_;
  std::vector<Index> broken_;
  std::size_t count_ = 0;
  std::uint64_t next_order_ = 1;
  std::uint64_t allowed_ = 0;
  bool loosened_ = false;  // something went or moved, so that what is broken may hold now
};

}  // namespace wispen::layout
