// host/layout/model.cpp: items, and their attributes as sums of variables.

#include "host/layout/model.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/layout/autoresizing.hpp"

namespace wispen::layout {

namespace {

std::uint64_t key(ConstraintId id) { return static_cast<std::uint64_t>(id); }

Relation reversed(Relation relation) { return static_cast<Relation>(-static_cast<int>(relation)); }

}  // namespace

ItemId Model::add_item(std::string name, ItemId parent) {
  std::uint32_t index = 0;
  if (free_items_.empty()) {
    index = static_cast<std::uint32_t>(items_.size());
    items_.emplace_back();
  } else {
    index = free_items_.back();
    free_items_.pop_back();
  }
  Item& made = items_[index];
  const ItemId item{(std::uint64_t{made.generation} << 32) | index};
  made.alive = true;
  made.name = std::move(name);
  made.left = solver_.add_variable();
  made.top = solver_.add_variable();
  made.width = solver_.add_variable();
  made.height = solver_.add_variable();
  if (has_item(parent)) {
    made.parent = parent;
    at(parent).children.push_back(item);
  }
  for (const Attribute size : {Attribute::Width, Attribute::Height}) {
    ConstraintSpec spec{.first = item, .first_attribute = size, .relation = Relation::GreaterOrEqual};
    Equation bound = equation(spec);
    (void)enter(Origin::Bound, std::move(spec), std::move(bound));
  }
  return item;
}

void Model::remove_item(ItemId item) {
  if (!has_item(item)) return;
  const std::vector<ItemId> leaving = subtree(item);
  for (const ItemId each : leaving) {
    for (const ConstraintId id : std::vector<ConstraintId>(at(each).constraints)) remove_constraint(id);
  }
  if (at(item).parent != kNoItem) std::erase(at(at(item).parent).children, item);
  for (const ItemId each : leaving) {
    Item& gone = at(each);
    for (const Var variable : {gone.left, gone.top, gone.width, gone.height}) {
      solver_.remove_variable(variable);
    }
    const std::uint32_t generation = gone.generation + 1;
    gone = Item{};
    gone.generation = generation;
    free_items_.push_back(index_of(each));
  }
}

bool Model::has_item(ItemId item) const {
  return index_of(item) < items_.size() && at(item).alive &&
         at(item).generation == static_cast<std::uint64_t>(item) >> 32;
}

void Model::Expression::add(const Expression& other, double factor) {
  for (const Term& term : other.terms) terms.push_back({term.variable, term.coefficient * factor});
  constant += other.constant * factor;
}

Model::Expression Model::expression(ItemId id, Attribute attribute, ItemId holder) const {
  const Item& item = at(id);
  const auto place = [&](Var Item::*edge, double length_share, Var Item::*length, double constant) {
    Expression sum{{}, constant};
    if (length_share != 0) sum.terms.push_back({item.*length, length_share});
    for (ItemId each = id; each != holder && each != kNoItem; each = at(each).parent) {
      sum.terms.push_back({at(each).*edge, 1});
    }
    return sum;
  };
  const auto across = [&](double share) { return place(&Item::left, share, &Item::width, 0); };
  const auto down = [&](double share, double constant = 0) {
    return place(&Item::top, share, &Item::height, constant);
  };
  const bool left_to_right = direction_ == Direction::LeftToRight;
  switch (attribute) {
    case Attribute::Left:
      return across(0);
    case Attribute::Right:
      return across(1);
    case Attribute::Leading:
      return across(left_to_right ? 0 : 1);
    case Attribute::Trailing:
      return across(left_to_right ? 1 : 0);
    case Attribute::CenterX:
      return across(0.5);
    case Attribute::Top:
      return down(0);
    case Attribute::Bottom:
      return down(1);
    case Attribute::CenterY:
      return down(0.5);
    case Attribute::FirstBaseline:
      return down(0, item.first_baseline);
    case Attribute::LastBaseline:
      return down(1, -item.last_baseline);
    case Attribute::Width:
      return {{{item.width, 1}}, 0};
    case Attribute::Height:
      return {{{item.height, 1}}, 0};
    case Attribute::NotAnAttribute:
      break;
  }
  return {};
}

ItemId Model::common_ancestor(ItemId one, ItemId other) const {
  const auto depth = [this](ItemId item) {
    int count = 0;
    for (; item != kNoItem; item = at(item).parent) ++count;
    return count;
  };
  int first = depth(one);
  int second = depth(other);
  for (; first > second; --first) one = at(one).parent;
  for (; second > first; --second) other = at(other).parent;
  while (one != other) {
    one = at(one).parent;
    other = at(other).parent;
  }
  return one;
}

Model::Equation Model::equation(const ConstraintSpec& spec) const {
  const bool mirrored = direction_ == Direction::RightToLeft &&
                        (is_directional(spec.first_attribute) || is_directional(spec.second_attribute));
  const ItemId holder = spec.second == kNoItem ? kNoItem : common_ancestor(spec.first, spec.second);
  Expression sum = expression(spec.first, spec.first_attribute, holder);
  if (spec.second != kNoItem) {
    sum.add(expression(spec.second, spec.second_attribute, holder), -spec.multiplier);
    // A place is multiplied as a distance from the edge, left or right, of what holds both items.
    if (mirrored && spec.multiplier != 1 && holder != kNoItem) {
      sum.add(expression(holder, Attribute::Width, holder), spec.multiplier - 1);
    }
  }
  const double constant = (mirrored ? -spec.constant : spec.constant) - sum.constant;
  return {std::move(sum.terms), mirrored ? reversed(spec.relation) : spec.relation, constant};
}

Result<ConstraintId> Model::enter(Origin origin, ConstraintSpec spec, Equation equation) {
  Result<ConstraintId> id =
      solver_.add(std::move(equation.terms), equation.relation, equation.constant, spec.priority);
  if (!id) return id;
  at(spec.first).constraints.push_back(*id);
  if (spec.second != kNoItem && spec.second != spec.first) at(spec.second).constraints.push_back(*id);
  records_.emplace(key(*id), Record{origin, std::move(spec)});
  return id;
}

void Model::set_direction(Direction direction) {
  if (std::exchange(direction_, direction) == direction) return;
  std::vector<ConstraintId> turning;
  for (const auto& [id, record] : records_) {
    const ConstraintSpec& spec = record.spec;
    if (is_directional(spec.first_attribute) || is_directional(spec.second_attribute)) {
      turning.push_back(ConstraintId{id});
    }
  }
  // The table's order is the hash function's; changes in an order of our own give the same answer every time.
  std::sort(turning.begin(), turning.end());
  for (const ConstraintId id : turning) write_again(id);
}

Result<ConstraintId> Model::add_constraint(ConstraintSpec spec) {
  if (!has_item(spec.first) || (spec.second != kNoItem && !has_item(spec.second))) {
    return Error{"a constraint names an item that is not there"};
  }
  if (Result<void> paired = check_pairing(spec); !paired) return paired.error();
  if (!std::isfinite(spec.multiplier)) return Error{"a constraint's multiplier must be finite"};
  Equation written = equation(spec);
  return enter(Origin::Authored, std::move(spec), std::move(written));
}

void Model::remove_constraint(ConstraintId id) {
  const auto place = records_.find(key(id));
  if (place == records_.end()) return;
  const ConstraintSpec& spec = place->second.spec;
  std::erase(at(spec.first).constraints, id);
  if (spec.second != kNoItem) std::erase(at(spec.second).constraints, id);
  solver_.remove(id);
  records_.erase(place);
}

void Model::write_again(ConstraintId id) {
  const ConstraintSpec& spec = records_.at(key(id)).spec;
  Equation written = equation(spec);
  (void)solver_.replace(id, std::move(written.terms), written.relation, written.constant);
}

Result<void> Model::set_constant(ConstraintId id, double constant) {
  if (!std::isfinite(constant)) return Error{"a constraint's constant must be finite"};
  const auto place = records_.find(key(id));
  if (place == records_.end()) return {};
  place->second.spec.constant = constant;
  return solver_.set_constant(id, equation(place->second.spec).constant);
}

Result<void> Model::set_priority(ConstraintId id, Priority priority) {
  Result<void> set = solver_.set_priority(id, priority);
  const auto place = records_.find(key(id));
  if (set && place != records_.end()) place->second.spec.priority = priority;
  return set;
}

void Model::set_baselines(ItemId item, double first_from_top, double last_from_bottom) {
  if (!has_item(item) || !std::isfinite(first_from_top) || !std::isfinite(last_from_bottom)) return;
  at(item).first_baseline = first_from_top;
  at(item).last_baseline = last_from_bottom;
  for (const ConstraintId id : at(item).constraints) {
    const Record& record = records_.at(key(id));
    if (record.origin == Origin::Authored) {
      (void)solver_.set_constant(id, equation(record.spec).constant);
    }
  }
}

}  // namespace wispen::layout
