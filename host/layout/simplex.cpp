// host/layout/simplex.cpp: how the solver lets a constraint in, takes it out, and finds the best values.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "host/layout/solver.hpp"

namespace wispen::layout {

namespace {

constexpr double kNoCost = 1e-9;
constexpr double kSameRatio = 1e-12;

}  // namespace

/// What the objective would gain or lose a unit of one variable: a cost a priority, the highest first.
struct Solver::Reduced {
  std::vector<std::pair<Priority, double>> costs;

  void add(Priority priority, double cost) {
    auto place = costs.begin();
    while (place != costs.end() && place->first > priority) ++place;
    if (place != costs.end() && place->first == priority) {
      place->second += cost;
    } else {
      costs.insert(place, {priority, cost});
    }
  }
  int sign() const {
    for (const auto& [priority, cost] : costs) {
      if (std::abs(cost) > kNoCost) return cost < 0 ? -1 : 1;
    }
    return 0;
  }
  /// The sign of *this / own - other / others, priority by priority.
  int compare_ratio(double own, const Reduced& other, double others) const {
    Reduced difference = *this;
    for (auto& [priority, cost] : difference.costs) cost /= own;
    for (const auto& [priority, cost] : other.costs) difference.add(priority, -cost / others);
    return difference.sign();
  }
};

Terms Solver::residual_of(Constraint& constraint) {
  const bool required = constraint.priority >= kRequired;
  const bool equal = constraint.relation == Relation::Equal;
  if (required && equal) {
    constraint.plus = tableau_.add_variable(Kind::Fixed, constraint.constant);
  } else {
    const double cost = required ? 0 : constraint.priority;
    const bool too_much_costs = constraint.relation != Relation::GreaterOrEqual;
    const bool too_little_costs = constraint.relation != Relation::LessOrEqual;
    if (!required || !too_much_costs) {
      constraint.plus =
          tableau_.add_variable(Kind::Restricted, constraint.constant, too_much_costs ? cost : 0);
    }
    if (!required || !too_little_costs) {
      const double shift = constraint.plus == kNoVar ? -constraint.constant : 0;
      constraint.minus = tableau_.add_variable(Kind::Restricted, shift, too_little_costs ? cost : 0);
    }
  }
  Terms residual;
  if (constraint.plus != kNoVar) residual.push_back({constraint.plus, -1});
  if (constraint.minus != kNoVar) residual.push_back({constraint.minus, 1});
  std::sort(residual.begin(), residual.end(),
            [](const Term& a, const Term& b) { return a.variable < b.variable; });
  const auto owner = static_cast<Index>(&constraint - constraints_.data());
  for (const Term& term : residual) {
    if (owners_.size() <= term.variable) owners_.resize(term.variable + 1);
    owners_[term.variable] = owner;
  }
  return residual;
}

bool Solver::activate(Index index, std::vector<Index>* against) {
  Constraint& constraint = constraints_[index];
  const Terms own = tableau_.without_basics(constraint.terms);
  const double excess = tableau_.constant_of(own) - constraint.constant;
  const bool required = constraint.priority >= kRequired;
  for (const Term& term : own) {
    if (!(std::abs(term.coefficient) < 1e8)) return false;
  }

  const Terms residual = residual_of(constraint);
  Terms all = own;
  all.insert(all.end(), residual.begin(), residual.end());
  std::sort(all.begin(), all.end(), [](const Term& a, const Term& b) { return a.variable < b.variable; });

  // all = 0. Solved for the term that gives way most easily.
  const auto solve_for = [&](Var subject) {
    const auto place =
        std::find_if(all.begin(), all.end(), [&](const Term& t) { return t.variable == subject; });
    const double divisor = -place->coefficient;
    all.erase(place);
    for (Term& term : all) term.coefficient /= divisor;
    tableau_.insert_row(subject, std::move(all));
  };
  constraint.state = State::Active;
  for (const Term& term : own) {
    if (tableau_.kind(term.variable) != Kind::Free || std::abs(term.coefficient) <= kSmallPivot) continue;
    solve_for(term.variable);
    if (!tableau_.poisoned()) return true;
    retire(constraint);
    return false;
  }
  if (!required) {
    solve_for(excess >= 0 ? constraint.plus : constraint.minus);
    return true;
  }
  if (constraint.relation != Relation::Equal) {
    const Var slack = constraint.plus != kNoVar ? constraint.plus : constraint.minus;
    if ((slack == constraint.plus ? excess : -excess) >= -kSlightExcess) {
      solve_for(slack);
      return true;
    }
  }
  return reach_zero(index, std::move(all), excess, against);
}

bool Solver::reach_zero(Index index, Terms terms, double excess, std::vector<Index>* against) {
  Constraint& constraint = constraints_[index];
  if (excess < 0) {
    for (Term& term : terms) term.coefficient = -term.coefficient;
  }
  const Var distance = tableau_.add_variable(Kind::Restricted);
  const Slot slot = tableau_.insert_row(distance, std::move(terms));

  // Brings the distance between the two sides down to nothing, all others kept within their bounds.
  bool stuck = false;
  while (tableau_.is_basic(distance) && tableau_.row(slot).constant > kSlightExcess && !stuck) {
    const Terms& row = tableau_.row(slot).terms;
    const auto place = std::find_if(row.begin(), row.end(), [this](const Term& term) {
      return term.coefficient < -kSmallPivot && tableau_.kind(term.variable) == Kind::Restricted;
    });
    if (place == row.end() || spent() || tableau_.poisoned()) {
      stuck = true;
    } else {
      const Var entering = place->variable;
      const double own_ratio = tableau_.row(slot).constant / -place->coefficient;
      const std::optional<Slot> leaving = leaving_row(entering);
      const bool own_is_first =
          !leaving || own_ratio <= std::max(tableau_.row(*leaving).constant, 0.0) /
                                           std::abs(tableau_.coefficient(*leaving, entering)) +
                                       kSameRatio;
      tableau_.pivot(own_is_first ? slot : *leaving, entering);
    }
  }
  if (!stuck && tableau_.is_basic(distance)) {
    // Already zero: any of its terms can take its place, one that may move rather than one that may not.
    const Terms& row = tableau_.row(slot).terms;
    auto place = std::find_if(row.begin(), row.end(), [this](const Term& term) {
      return std::abs(term.coefficient) > kSmallPivot && tableau_.kind(term.variable) == Kind::Restricted;
    });
    const Var instead = place != row.end() ? place->variable : constraint.plus;
    tableau_.pivot(slot, instead);
  }
  if (!stuck && !tableau_.poisoned()) {
    tableau_.remove_variable(distance);
    return true;
  }
  // Nothing more can give: the row itself is the proof, and names whom it rests on.
  if (!spent() && !tableau_.poisoned()) {
    for (const Term& term : tableau_.row(slot).terms) {
      if (std::abs(term.coefficient) > kSmallPivot) against->push_back(owners_[term.variable]);
    }
  }
  tableau_.remove_variable(distance);
  retire(constraint);
  return false;
}

void Solver::retire(Constraint& constraint) {
  if (constraint.plus != kNoVar) tableau_.remove_variable(constraint.plus);
  if (constraint.minus != kNoVar) tableau_.remove_variable(constraint.minus);
  constraint.plus = kNoVar;
  constraint.minus = kNoVar;
}

void Solver::deactivate(Constraint& constraint) {
  const bool held = (constraint.plus != kNoVar && tableau_.is_basic(constraint.plus)) ||
                    (constraint.minus != kNoVar && tableau_.is_basic(constraint.minus));
  if (!held) {
    // The residual becomes one row's own variable, and goes with the row; elsewhere plus and minus cancel.
    const Var marker = constraint.plus != kNoVar ? constraint.plus : constraint.minus;
    const Slot slot = row_to_leave(marker);
    if (slot != Tableau::kNone) tableau_.pivot(slot, marker);
  }
  retire(constraint);
}

Slot Solver::row_to_leave(Var marker) {
  Slot best = Tableau::kNone;
  int best_rank = 4;
  double best_ratio = std::numeric_limits<double>::infinity();
  for (const Slot slot : tableau_.column(marker)) {
    const double coefficient = tableau_.coefficient(slot, marker);
    if (std::abs(coefficient) <= kSmallPivot) continue;
    const Kind kind = tableau_.kind(tableau_.row(slot).basic);
    const double constant = std::max(tableau_.row(slot).constant, 0.0);
    const int rank = kind == Kind::Fixed ? 0 : kind == Kind::Free ? 3 : coefficient < 0 ? 1 : 2;
    const double ratio = rank == 1 || rank == 2 ? constant / std::abs(coefficient) : 0;
    if (rank < best_rank || (rank == best_rank && ratio < best_ratio)) {
      best = slot;
      best_rank = rank;
      best_ratio = ratio;
    }
  }
  return best;
}

Solver::Reduced Solver::reduced_cost(Var variable) {
  Reduced reduced;
  if (tableau_.cost_priority(variable) > 0) reduced.add(tableau_.cost_priority(variable), 1);
  for (const Slot slot : tableau_.column(variable)) {
    const Priority priority = tableau_.cost_priority(tableau_.row(slot).basic);
    if (priority > 0) reduced.add(priority, tableau_.coefficient(slot, variable));
  }
  return reduced;
}

std::optional<Slot> Solver::leaving_row(Var entering) {
  std::optional<Slot> best;
  double best_ratio = std::numeric_limits<double>::infinity();
  for (const Slot slot : tableau_.column(entering)) {
    const Var basic = tableau_.row(slot).basic;
    const double coefficient = tableau_.coefficient(slot, entering);
    double ratio = 0;
    if (tableau_.kind(basic) == Kind::Fixed) {
      if (std::abs(coefficient) <= kSmallPivot) continue;
    } else {
      if (tableau_.kind(basic) == Kind::Free || coefficient >= -kSmallPivot) continue;
      ratio = std::max(tableau_.row(slot).constant, 0.0) / -coefficient;
    }
    const bool tie = best && std::abs(ratio - best_ratio) <= kSameRatio;
    if (tie ? basic < tableau_.row(*best).basic : ratio < best_ratio) {
      best = slot;
      best_ratio = ratio;
    }
  }
  return best;
}

bool Solver::optimise() {
  std::set<Var>& candidates = tableau_.candidates();
  while (!candidates.empty()) {
    if (spent() || tableau_.poisoned()) return false;
    const Var entering = *candidates.begin();
    candidates.erase(candidates.begin());
    if (tableau_.is_basic(entering) || reduced_cost(entering).sign() >= 0) continue;
    // No row in the way would mean a gain without end, which only rounding can pretend.
    const std::optional<Slot> leaving = leaving_row(entering);
    if (leaving) tableau_.pivot(*leaving, entering);
  }
  return true;
}

bool Solver::restore_feasibility() {
  std::set<Slot>& suspects = tableau_.suspects();
  while (!suspects.empty()) {
    if (spent() || tableau_.poisoned()) return false;
    const Slot slot = *suspects.begin();
    suspects.erase(suspects.begin());
    if (!tableau_.is_violated(slot)) continue;
    // The row must grow (or shrink, where it is to be zero and is above).
    const double wanted = tableau_.row(slot).constant < 0 ? 1 : -1;
    Var best = kNoVar;
    double best_coefficient = 0;
    Reduced best_cost;
    const Terms terms = tableau_.row(slot).terms;
    for (const Term& term : terms) {
      const double coefficient = wanted * term.coefficient;
      if (coefficient <= kSmallPivot || tableau_.kind(term.variable) != Kind::Restricted) continue;
      Reduced cost = reduced_cost(term.variable);
      if (best == kNoVar || cost.compare_ratio(coefficient, best_cost, best_coefficient) < 0) {
        best = term.variable;
        best_coefficient = coefficient;
        best_cost = std::move(cost);
      }
    }
    if (best == kNoVar) return false;
    tableau_.pivot(slot, best);
  }
  return true;
}

}  // namespace wispen::layout
