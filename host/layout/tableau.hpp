// host/layout/tableau.hpp: the simplex tableau under the solver: sparse rows, their columns, and the pivot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace wispen::layout {

/// What a variable may be: any number, not negative, or always zero.
enum class Kind : std::uint8_t { Free, Restricted, Fixed };

using Var = std::uint32_t;
using Slot = std::uint32_t;

struct Term {
  Var variable;
  double coefficient;
};

/// Sorted by variable, each variable once, no zero.
using Terms = std::vector<Term>;

/// Smaller coefficients do not carry a pivot; smaller excesses do not count as violations.
inline constexpr double kSmallPivot = 1e-9;
inline constexpr double kSlightExcess = 1e-8;

/// Rows `basic = constant + sum of coefficient * other`, where every other variable stands at zero.
///
/// A row's constant is never carried along through the pivots. Each constraint's constant is kept as the
/// `shift` of the one variable that stands for its residual, and a row's constant is summed up anew from the
/// shifts of its terms: ten thousand edits leave no more rounding behind than the last one.
class Tableau {
 public:
  static constexpr Slot kNone = ~Slot{0};

  struct Row {
    Var basic = 0;
    double constant = 0;
    Terms terms;
  };

  Var add_variable(Kind kind, double shift = 0, double cost_priority = 0);
  /// Takes the variable out of every row, and forgets it; its number is used again.
  void remove_variable(Var variable);
  /// Drops every row and every variable that is not free. What is left keeps its number.
  void clear_rows();

  Kind kind(Var variable) const { return variables_[variable].kind; }
  /// The priority at which a positive value of this variable costs; 0 where it costs nothing.
  double cost_priority(Var variable) const { return variables_[variable].cost_priority; }
  bool is_basic(Var variable) const { return variables_[variable].slot != kNone; }
  Slot slot_of(Var variable) const { return variables_[variable].slot; }
  double value(Var variable) const { return is_basic(variable) ? row(slot_of(variable)).constant : 0; }
  const Row& row(Slot slot) const { return rows_[slot]; }
  std::size_t row_count() const { return rows_.size() - free_slots_.size(); }

  /// The coefficient in that row, or 0.
  double coefficient(Slot slot, Var variable) const;
  /// The rows in which the variable occurs, ascending. Valid until the next change.
  const std::vector<Slot>& column(Var variable);

  /// `terms` with every basic variable replaced by its row.
  Terms without_basics(const Terms& terms);
  /// What the terms come to as a row's constant (every variable at zero), without a basic variable's shift.
  double constant_of(const Terms& terms) const;

  /// Adds the row `basic = terms`; neither `basic` nor a basic variable occurs in `terms`. Where `basic`
  /// occurs in other rows it is replaced there.
  Slot insert_row(Var basic, Terms terms);
  void drop_row(Slot slot);
  /// Solves the row for `entering`, and replaces it everywhere.
  void pivot(Slot slot, Var entering);
  /// Moves the variable's shift and the constants that hang on it.
  void set_shift(Var variable, double shift);

  /// Variables whose reduced cost may have fallen below zero since they were last taken from here.
  std::set<Var>& candidates() { return candidates_; }
  /// Rows whose constant was seen to break the bounds of their basic variable.
  std::set<Slot>& suspects() { return suspects_; }
  bool is_violated(Slot slot) const;

  /// Terms touched so far: a measure of work that is the same on every machine.
  std::uint64_t work() const { return work_; }
  /// True once a number became too large to trust; only clear_rows() helps.
  bool poisoned() const { return poisoned_; }

 private:
  struct Variable {
    Kind kind = Kind::Free;
    bool alive = false;
    double shift = 0;
    double cost_priority = 0;
    Slot slot = kNone;
    // Rows that hold the variable. Rows that lost it stay listed until the list is next put in order.
    std::vector<Slot> column;
    std::uint32_t live = 0;
  };

  void gained(Var variable, Slot slot);
  void tidy(Var variable);
  void refresh(Slot slot);
  void add_multiple(Slot slot, double factor, const Row& other, Var replaced);
  void replace_elsewhere(Var variable, Slot slot);
  void note_candidates(const Row& row);

  std::vector<Variable> variables_;
  std::vector<Var> free_variables_;
  std::vector<Row> rows_;
  std::vector<Slot> free_slots_;
  std::set<Var> candidates_;
  std::set<Slot> suspects_;
  Terms merged_;
  std::uint64_t work_ = 0;
  bool poisoned_ = false;
};

}  // namespace wispen::layout
