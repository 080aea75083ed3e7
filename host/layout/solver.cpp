// host/layout/solver.cpp: constraints come, change and go.

#include "host/layout/solver.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wispen::layout {

namespace {

// Terms that one solve() may touch: about a second, and a thousand times what a long page needs.
constexpr std::uint64_t kWorkPerSolve = 200'000'000;

bool is_priority(double priority) { return priority > 0 && priority <= kRequired; }

double clamped(double number, double largest) { return std::clamp(number, -largest, largest); }

/// Sorted, each variable once, without zeros.
Terms normalised(Terms terms) {
  std::stable_sort(terms.begin(), terms.end(),
                   [](const Term& a, const Term& b) { return a.variable < b.variable; });
  Terms result;
  for (const Term& term : terms) {
    if (!result.empty() && result.back().variable == term.variable) {
      result.back().coefficient += term.coefficient;
    } else {
      result.push_back(term);
    }
  }
  std::erase_if(result, [](const Term& term) { return std::abs(term.coefficient) < kSmallPivot; });
  return result;
}

}  // namespace

ConstraintId Solver::id_of(Index index, std::uint32_t generation) {
  return static_cast<ConstraintId>((std::uint64_t{generation} << 32) | (std::uint64_t{index} + 1));
}

const Solver::Constraint* Solver::find(ConstraintId id) const {
  const auto bits = static_cast<std::uint64_t>(id);
  const std::uint64_t index = (bits & 0xFFFFFFFF) - 1;
  if (index >= constraints_.size()) return nullptr;
  const Constraint& constraint = constraints_[index];
  return constraint.state != State::Absent && constraint.generation == bits >> 32 ? &constraint : nullptr;
}

Solver::Constraint* Solver::find(ConstraintId id) {
  return const_cast<Constraint*>(std::as_const(*this).find(id));
}

Var Solver::add_variable() { return tableau_.add_variable(Kind::Free); }

void Solver::remove_variable(Var variable) { tableau_.remove_variable(variable); }

Result<void> Solver::check(Terms& terms, double constant) {
  if (!std::isfinite(constant)) return Error{"a constraint's constant must be finite"};
  for (Term& term : terms) {
    if (!std::isfinite(term.coefficient)) return Error{"a constraint's multiplier must be finite"};
    term.coefficient = clamped(term.coefficient, kLargestMultiplier);
  }
  return {};
}

Result<ConstraintId> Solver::add(Terms terms, Relation relation, double constant, Priority priority) {
  if (!is_priority(priority)) return Error{"a priority must be above 0 and at most 1000"};
  if (Result<void> checked = check(terms, constant); !checked) return checked.error();
  Index index = 0;
  if (free_.empty()) {
    index = static_cast<Index>(constraints_.size());
    constraints_.emplace_back();
  } else {
    index = free_.back();
    free_.pop_back();
  }
  Constraint& made = constraints_[index];
  made.terms = normalised(std::move(terms));
  made.relation = relation;
  made.constant = clamped(constant, kLargestConstant);
  made.priority = priority;
  made.state = State::Waiting;
  made.reported = false;
  made.order = next_order_++;
  waiting_.push_back(index);
  ++count_;
  return id_of(index);
}

void Solver::remove(ConstraintId id) {
  Constraint* const constraint = find(id);
  if (constraint == nullptr) return;
  const auto index = static_cast<Index>(constraint - constraints_.data());
  if (constraint->state == State::Active) {
    deactivate(*constraint);
    loosened_ = true;
  }
  if (constraint->state == State::Waiting) std::erase(waiting_, index);
  if (constraint->state == State::Broken) std::erase(broken_, index);
  std::erase(edited_, index);
  const std::uint32_t generation = constraint->generation + 1;
  *constraint = Constraint{};
  constraint->generation = generation;
  free_.push_back(index);
  --count_;
}

Result<void> Solver::set_constant(ConstraintId id, double constant) {
  if (!std::isfinite(constant)) return Error{"a constraint's constant must be finite"};
  Constraint* const constraint = find(id);
  if (constraint == nullptr) return {};
  const double wanted = clamped(constant, kLargestConstant);
  if (wanted == constraint->constant) return {};
  constraint->constant = wanted;
  if (constraint->state == State::Active) {
    edited_.push_back(static_cast<Index>(constraint - constraints_.data()));
  } else if (constraint->state == State::Broken) {
    loosened_ = true;
  }
  return {};
}

Result<void> Solver::set_priority(ConstraintId id, Priority priority) {
  if (!is_priority(priority)) return Error{"a priority must be above 0 and at most 1000"};
  Constraint* const constraint = find(id);
  if (constraint == nullptr || constraint->priority == priority) return {};
  set_waiting(*constraint);
  constraint->priority = priority;
  return {};
}

Result<void> Solver::replace(ConstraintId id, Terms terms, Relation relation, double constant) {
  if (Result<void> checked = check(terms, constant); !checked) return checked;
  Constraint* const constraint = find(id);
  if (constraint == nullptr) return {};
  set_waiting(*constraint);
  constraint->terms = normalised(std::move(terms));
  constraint->relation = relation;
  constraint->constant = clamped(constant, kLargestConstant);
  return {};
}

void Solver::set_waiting(Constraint& constraint) {
  const auto index = static_cast<Index>(&constraint - constraints_.data());
  if (constraint.state == State::Active) {
    deactivate(constraint);
    loosened_ = true;
  }
  std::erase(edited_, index);
  std::erase(broken_, index);
  constraint.reported = false;
  if (constraint.state != State::Waiting) waiting_.push_back(index);
  constraint.state = State::Waiting;
}

bool Solver::is_broken(ConstraintId id) const {
  const Constraint* const constraint = find(id);
  return constraint != nullptr && constraint->state == State::Broken;
}

SolveReport Solver::solve() {
  SolveReport report;
  allowed_ = tableau_.work() + kWorkPerSolve;
  if (!edited_.empty()) {
    loosened_ = true;
    if (!apply_edits()) rebuild();
  }
  if (loosened_) {
    for (const Index index : std::exchange(broken_, {})) {
      constraints_[index].state = State::Waiting;
      waiting_.push_back(index);
    }
    loosened_ = false;
  }
  activate_waiting(report);
  optimise();
  // Rounding can leave a row a little below its bound; what cannot be mended is built anew, once.
  if (tableau_.poisoned() || !restore_feasibility()) {
    rebuild();
    activate_waiting(report);
  }
  report.optimal = optimise();
  return report;
}

void Solver::activate_waiting(SolveReport& report) {
  std::vector<Index> waiting = std::exchange(waiting_, {});
  std::sort(waiting.begin(), waiting.end(),
            [this](Index a, Index b) { return constraints_[a].order < constraints_[b].order; });
  for (std::size_t i = 0; i < waiting.size(); ++i) {
    std::vector<Index> against;
    if (activate(waiting[i], &against)) continue;
    break_constraint(waiting[i], std::move(against), report);
    if (!tableau_.poisoned()) continue;
    // The numbers grew out of hand while this one was let in: start again without it.
    rebuild();
    waiting.insert(waiting.end(), waiting_.begin(), waiting_.end());
    waiting_.clear();
  }
}

void Solver::break_constraint(Index index, std::vector<Index> against, SolveReport& report) {
  Constraint& constraint = constraints_[index];
  constraint.state = State::Broken;
  broken_.push_back(index);
  if (std::exchange(constraint.reported, true)) return;
  against.push_back(index);
  std::sort(against.begin(), against.end(),
            [this](Index a, Index b) { return constraints_[a].order < constraints_[b].order; });
  against.erase(std::unique(against.begin(), against.end()), against.end());
  Conflict conflict{.broken = id_of(index), .together = {}};
  for (const Index each : against) conflict.together.push_back(id_of(each));
  report.conflicts.push_back(std::move(conflict));
}

double Solver::shift_variable(Constraint& constraint, Var& variable) const {
  variable = constraint.plus != kNoVar ? constraint.plus : constraint.minus;
  return constraint.plus != kNoVar ? constraint.constant : -constraint.constant;
}

bool Solver::apply_edits() {
  // The dual simplex starts from an optimum; without one it could not keep what it does not look at.
  if (!optimise()) return false;
  for (const Index index : edited_) {
    Var variable = kNoVar;
    const double shift = shift_variable(constraints_[index], variable);
    tableau_.set_shift(variable, shift);
  }
  if (!restore_feasibility()) return false;
  edited_.clear();
  return true;
}

void Solver::rebuild() {
  // Without fresh means, what was kept until now would be given up for want of work alone.
  allowed_ = tableau_.work() + kWorkPerSolve;
  // What was edited into a contradiction is the newcomer of it.
  std::sort(edited_.begin(), edited_.end(),
            [this](Index a, Index b) { return constraints_[a].order < constraints_[b].order; });
  edited_.erase(std::unique(edited_.begin(), edited_.end()), edited_.end());
  for (const Index index : std::exchange(edited_, {})) constraints_[index].order = next_order_++;
  tableau_.clear_rows();
  for (Index index = 0; index < constraints_.size(); ++index) {
    Constraint& constraint = constraints_[index];
    if (constraint.state != State::Active) continue;
    constraint.plus = kNoVar;
    constraint.minus = kNoVar;
    constraint.state = State::Waiting;
    waiting_.push_back(index);
  }
}

}  // namespace wispen::layout
