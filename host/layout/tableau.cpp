// host/layout/tableau.cpp: the simplex tableau under the solver: sparse rows, their columns, and the pivot.

#include "host/layout/tableau.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace wispen::layout {

namespace {

constexpr double kCancelled = 1e-12;  // relative: what is left of a sum that should have been zero
constexpr double kVanishing = 1e-14;  // absolute
constexpr double kLargestTrusted = 1e12;

Terms::const_iterator find(const Terms& terms, Var variable) {
  const auto place = std::lower_bound(terms.begin(), terms.end(), variable,
                                      [](const Term& term, Var v) { return term.variable < v; });
  return place != terms.end() && place->variable == variable ? place : terms.end();
}

/// a + factor * b into `out`; `skip` is left out of both.
void add_terms(const Terms& a, double factor, const Terms& b, Var skip, Terms& out) {
  out.clear();
  out.reserve(a.size() + b.size());
  auto left = a.begin();
  auto right = b.begin();
  while (left != a.end() || right != b.end()) {
    Term term{};
    if (right == b.end() || (left != a.end() && left->variable < right->variable)) {
      term = *left++;
    } else if (left == a.end() || right->variable < left->variable) {
      term = {right->variable, factor * right->coefficient};
      ++right;
    } else {
      const double added = factor * right->coefficient;
      const double sum = left->coefficient + added;
      const double scale = std::max(std::abs(left->coefficient), std::abs(added));
      term = {left->variable, std::abs(sum) <= kCancelled * scale ? 0 : sum};
      ++left;
      ++right;
    }
    if (term.variable != skip && std::abs(term.coefficient) > kVanishing) out.push_back(term);
  }
}

constexpr Var kNoVariable = ~Var{0};

}  // namespace

Var Tableau::add_variable(Kind kind, double shift, double cost_priority) {
  Var variable = 0;
  if (free_variables_.empty()) {
    variable = static_cast<Var>(variables_.size());
    variables_.emplace_back();
  } else {
    variable = free_variables_.back();
    free_variables_.pop_back();
  }
  Variable& made = variables_[variable];
  made.kind = kind;
  made.alive = true;
  made.shift = shift;
  made.cost_priority = cost_priority;
  return variable;
}

void Tableau::remove_variable(Var variable) {
  Variable& gone = variables_[variable];
  if (gone.slot != kNone) drop_row(gone.slot);
  tidy(variable);
  for (const Slot slot : std::exchange(gone.column, {})) {
    Terms& terms = rows_[slot].terms;
    terms.erase(find(terms, variable));
    refresh(slot);
  }
  candidates_.erase(variable);
  gone = Variable{};
  free_variables_.push_back(variable);
}

void Tableau::clear_rows() {
  rows_.clear();
  free_slots_.clear();
  free_variables_.clear();
  candidates_.clear();
  suspects_.clear();
  poisoned_ = false;
  // From the last to the first, so that low numbers are handed out first again.
  for (std::size_t i = variables_.size(); i-- > 0;) {
    Variable& variable = variables_[i];
    const bool stays = variable.alive && variable.kind == Kind::Free;
    variable = Variable{};
    variable.alive = stays;
    if (!stays) free_variables_.push_back(static_cast<Var>(i));
  }
}

double Tableau::coefficient(Slot slot, Var variable) const {
  const Terms& terms = rows_[slot].terms;
  const auto place = find(terms, variable);
  return place == terms.end() ? 0 : place->coefficient;
}

const std::vector<Slot>& Tableau::column(Var variable) {
  tidy(variable);
  return variables_[variable].column;
}

void Tableau::tidy(Var variable) {
  Variable& owner = variables_[variable];
  work_ += owner.column.size();
  std::erase_if(owner.column, [&](Slot slot) {
    const Terms& terms = rows_[slot].terms;
    return find(terms, variable) == terms.end();
  });
  std::sort(owner.column.begin(), owner.column.end());
  owner.column.erase(std::unique(owner.column.begin(), owner.column.end()), owner.column.end());
  owner.live = static_cast<std::uint32_t>(owner.column.size());
}

void Tableau::gained(Var variable, Slot slot) {
  Variable& owner = variables_[variable];
  owner.column.push_back(slot);
  // Keeps the list within twice of what it was when it was last in order.
  if (owner.column.size() > 2 * static_cast<std::size_t>(owner.live) + 16) tidy(variable);
}

Terms Tableau::without_basics(const Terms& terms) {
  Terms result;
  for (const Term& term : terms) {
    if (is_basic(term.variable)) {
      add_terms(result, term.coefficient, row(slot_of(term.variable)).terms, kNoVariable, merged_);
    } else {
      add_terms(result, term.coefficient, {{term.variable, 1}}, kNoVariable, merged_);
    }
    work_ += merged_.size();
    std::swap(result, merged_);
  }
  return result;
}

double Tableau::constant_of(const Terms& terms) const {
  double sum = 0;
  for (const Term& term : terms) sum += term.coefficient * variables_[term.variable].shift;
  return sum;
}

void Tableau::refresh(Slot slot) {
  Row& row = rows_[slot];
  row.constant = constant_of(row.terms) - variables_[row.basic].shift;
  if (is_violated(slot)) suspects_.insert(slot);
}

bool Tableau::is_violated(Slot slot) const {
  const Row& row = rows_[slot];
  switch (variables_[row.basic].kind) {
    case Kind::Free:
      return false;
    case Kind::Restricted:
      return row.constant < -kSlightExcess;
    case Kind::Fixed:
      return std::abs(row.constant) > kSlightExcess;
  }
  return false;
}

void Tableau::note_candidates(const Row& row) {
  for (const Term& term : row.terms) {
    if (variables_[term.variable].kind == Kind::Restricted) candidates_.insert(term.variable);
  }
}

Slot Tableau::insert_row(Var basic, Terms terms) {
  Slot slot = 0;
  if (free_slots_.empty()) {
    slot = static_cast<Slot>(rows_.size());
    rows_.emplace_back();
  } else {
    slot = free_slots_.back();
    free_slots_.pop_back();
  }
  Row& row = rows_[slot];
  row.basic = basic;
  row.terms = std::move(terms);
  variables_[basic].slot = slot;
  for (const Term& term : row.terms) gained(term.variable, slot);
  refresh(slot);
  if (variables_[basic].cost_priority > 0) note_candidates(row);
  replace_elsewhere(basic, slot);
  return slot;
}

void Tableau::drop_row(Slot slot) {
  Row& row = rows_[slot];
  if (variables_[row.basic].cost_priority > 0) note_candidates(row);
  variables_[row.basic].slot = kNone;
  row.terms.clear();
  row.constant = 0;
  suspects_.erase(slot);
  free_slots_.push_back(slot);
}

void Tableau::pivot(Slot slot, Var entering) {
  Row& row = rows_[slot];
  const Var leaving = row.basic;
  const double pivot = coefficient(slot, entering);
  Terms solved;
  solved.reserve(row.terms.size());
  bool placed = false;
  for (const Term& term : row.terms) {
    if (!placed && leaving < term.variable) {
      solved.push_back({leaving, 1 / pivot});
      placed = true;
    }
    if (term.variable != entering) solved.push_back({term.variable, -term.coefficient / pivot});
  }
  if (!placed) solved.push_back({leaving, 1 / pivot});
  row.terms = std::move(solved);
  row.basic = entering;
  variables_[leaving].slot = kNone;
  variables_[entering].slot = slot;
  gained(leaving, slot);
  suspects_.erase(slot);
  refresh(slot);
  note_candidates(row);
  candidates_.erase(entering);
  replace_elsewhere(entering, slot);
}

void Tableau::replace_elsewhere(Var variable, Slot slot) {
  tidy(variable);
  const std::vector<Slot> column = std::exchange(variables_[variable].column, {});
  variables_[variable].live = 0;
  for (const Slot other : column) {
    if (other != slot) add_multiple(other, coefficient(other, variable), rows_[slot], variable);
  }
}

void Tableau::add_multiple(Slot slot, double factor, const Row& other, Var replaced) {
  Row& row = rows_[slot];
  add_terms(row.terms, factor, other.terms, replaced, merged_);
  work_ += merged_.size() + other.terms.size();
  std::swap(row.terms, merged_);
  for (const Term& term : row.terms) poisoned_ |= !(std::abs(term.coefficient) < kLargestTrusted);
  // Only what came with the other row can be new here; a row that held it already is listed twice at worst.
  auto before = merged_.begin();
  for (const Term& term : other.terms) {
    while (before != merged_.end() && before->variable < term.variable) ++before;
    const bool known = before != merged_.end() && before->variable == term.variable;
    if (!known) gained(term.variable, slot);
  }
  refresh(slot);
}

void Tableau::set_shift(Var variable, double shift) {
  variables_[variable].shift = shift;
  if (is_basic(variable)) refresh(slot_of(variable));
  for (const Slot slot : column(variable)) refresh(slot);
}

}  // namespace wispen::layout
