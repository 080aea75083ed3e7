// host/layout/model_sizes.cpp: what items ask for themselves: content sizes, frames set by hand, fitting
// sizes.

#include <cmath>
#include <unordered_map>
#include <utility>

#include "host/layout/autoresizing.hpp"
#include "host/layout/model.hpp"

namespace wispen::layout {

namespace {

// Far below any difference of priorities that a person writes.
constexpr double kRankStep = 1e-9;

Attribute size_along(Axis axis) { return axis == Axis::Horizontal ? Attribute::Width : Attribute::Height; }

std::size_t number(Axis axis) { return static_cast<std::size_t>(axis); }

Priority ranked(Priority priority, int rank) {
  return priority >= kRequired ? priority : priority - kRankStep * rank;
}

}  // namespace

void Model::set_intrinsic_size(ItemId item, std::optional<double> width, std::optional<double> height) {
  if (!has_item(item)) return;
  const auto usable = [](std::optional<double> length) {
    return length && std::isfinite(*length) && *length >= 0 ? length : std::nullopt;
  };
  at(item).content[number(Axis::Horizontal)].length = usable(width);
  at(item).content[number(Axis::Vertical)].length = usable(height);
  update_content(item, Axis::Horizontal);
  update_content(item, Axis::Vertical);
}

std::optional<double> Model::intrinsic_length(ItemId item, Axis axis) const {
  return has_item(item) ? at(item).content[number(axis)].length : std::nullopt;
}

Result<void> Model::set_hugging(ItemId item, Axis axis, Priority priority) {
  if (!(priority > 0 && priority <= kRequired)) return Error{"a priority must be above 0 and at most 1000"};
  if (!has_item(item)) return {};
  at(item).content[number(axis)].hugging = priority;
  update_content(item, axis);
  return {};
}

Result<void> Model::set_compression_resistance(ItemId item, Axis axis, Priority priority) {
  if (!(priority > 0 && priority <= kRequired)) return Error{"a priority must be above 0 and at most 1000"};
  if (!has_item(item)) return {};
  at(item).content[number(axis)].resistance = priority;
  update_content(item, axis);
  return {};
}

void Model::set_tie_rank(ItemId item, Axis axis, int rank) {
  if (!has_item(item)) return;
  at(item).content[number(axis)].rank = rank;
  update_content(item, axis);
}

void Model::update_content(ItemId item, Axis axis) {
  Content& content = at(item).content[number(axis)];
  const auto update = [&](std::optional<ConstraintId>& id, Relation relation, Priority priority) {
    if (!content.length) {
      if (id) remove_constraint(*id);
      id.reset();
      return;
    }
    if (!id) {
      ConstraintSpec spec{.first = item,
                          .first_attribute = size_along(axis),
                          .relation = relation,
                          .constant = *content.length,
                          .priority = priority};
      Equation written = equation(spec);
      if (const auto entered = enter(Origin::Content, std::move(spec), std::move(written))) id = *entered;
      return;
    }
    (void)set_constant(*id, *content.length);
    (void)set_priority(*id, priority);
  };
  update(content.hugs, Relation::LessOrEqual, ranked(content.hugging, content.rank));
  update(content.resists, Relation::GreaterOrEqual, ranked(content.resistance, content.rank));
}

Result<void> Model::set_frame(ItemId item, const Rect& frame, unsigned autoresizing_mask, Size parent_size) {
  for (const double number :
       {frame.min_x(), frame.min_y(), frame.width(), frame.height(), parent_size.width, parent_size.height}) {
    if (!std::isfinite(number)) return Error{"a frame's numbers must be finite"};
  }
  if (!has_item(item)) return {};
  Item& fixed = at(item);
  const bool same_shares =
      fixed.fixed_frame && (autoresizing_mask == 0 || fixed.parent == kNoItem) && fixed.mask == 0;
  const double values[] = {frame.min_x(), frame.min_y(), frame.width(), frame.height()};
  fixed.fixed_frame = frame;
  fixed.mask = fixed.parent == kNoItem ? 0 : autoresizing_mask;
  fixed.parent_size = parent_size;
  if (same_shares) {
    for (std::size_t i = 0; i < fixed.frame_constraints.size(); ++i) {
      const ConstraintId id = fixed.frame_constraints[i];
      records_.at(static_cast<std::uint64_t>(id)).spec.constant = values[i];
      (void)solver_.set_constant(id, values[i]);
    }
    return {};
  }
  for (const ConstraintId id : std::exchange(fixed.frame_constraints, {})) remove_constraint(id);

  GrowthShares across{0, 0, 1};
  GrowthShares down{0, 0, 1};
  if (fixed.mask != 0) {
    across = growth_shares(frame, parent_size, autoresizing_mask, Axis::Horizontal);
    down = growth_shares(frame, parent_size, autoresizing_mask, Axis::Vertical);
  }
  const struct {
    Attribute attribute;
    Attribute growing;
    double share;
    double old_length;
  } parts[] = {
      {Attribute::Left, Attribute::Width, across.before, parent_size.width},
      {Attribute::Top, Attribute::Height, down.before, parent_size.height},
      {Attribute::Width, Attribute::Width, across.size, parent_size.width},
      {Attribute::Height, Attribute::Height, down.size, parent_size.height},
  };
  for (std::size_t i = 0; i < 4; ++i) {
    Expression place = expression(item, parts[i].attribute, fixed.parent);
    if (parts[i].share != 0) {
      place.add(expression(fixed.parent, parts[i].growing, fixed.parent), -parts[i].share);
    }
    enter_frame_equation(item, parts[i].attribute, std::move(place),
                         values[i] - parts[i].share * parts[i].old_length);
  }
  return {};
}

void Model::enter_frame_equation(ItemId item, Attribute attribute, Expression place, double value) {
  ConstraintSpec spec{
      .first = item, .first_attribute = attribute, .second = at(item).parent, .constant = value};
  if (const auto id =
          enter(Origin::Frame, std::move(spec), Equation{std::move(place.terms), Relation::Equal, value})) {
    at(item).frame_constraints.push_back(*id);
  }
}

void Model::clear_frame(ItemId item) {
  if (!has_item(item)) return;
  at(item).fixed_frame.reset();
  for (const ConstraintId id : std::exchange(at(item).frame_constraints, {})) remove_constraint(id);
}

std::vector<ItemId> Model::subtree(ItemId item) const {
  std::vector<ItemId> items{item};
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::vector<ItemId>& children = at(items[i]).children;
    items.insert(items.end(), children.begin(), children.end());
  }
  return items;
}

Size Model::fitting_size(ItemId item, Size target, Priority across, Priority down) const {
  if (!has_item(item)) return {};
  Model inside;
  inside.direction_ = direction_;
  std::unordered_map<std::uint32_t, ItemId> twins;  // by index
  const std::vector<ItemId> originals = subtree(item);
  for (const ItemId original : originals) {
    const Item& from = at(original);
    const ItemId parent = original == item ? kNoItem : twins.at(index_of(from.parent));
    const ItemId twin = inside.add_item({}, parent);
    twins.emplace(index_of(original), twin);
    Item& to = inside.at(twin);
    to.first_baseline = from.first_baseline;
    to.last_baseline = from.last_baseline;
    for (const Axis axis : {Axis::Horizontal, Axis::Vertical}) {
      Content& content = to.content[number(axis)];
      const Content& own = from.content[number(axis)];
      content.length = own.length;
      content.hugging = own.hugging;
      content.resistance = own.resistance;
      content.rank = own.rank;
      inside.update_content(twin, axis);
    }
    if (original != item && from.fixed_frame) {
      (void)inside.set_frame(twin, *from.fixed_frame, from.mask, from.parent_size);
    }
  }
  for (const ItemId original : originals) {
    for (const ConstraintId id : at(original).constraints) {
      const Record& record = records_.at(static_cast<std::uint64_t>(id));
      ConstraintSpec spec = record.spec;
      if (record.origin != Origin::Authored || spec.first != original) continue;
      spec.first = twins.at(index_of(original));
      if (spec.second != kNoItem) {
        const auto second = twins.find(index_of(spec.second));
        if (second == twins.end()) continue;
        spec.second = second->second;
      }
      (void)inside.add_constraint(std::move(spec));
    }
  }
  const ItemId whole = twins.at(index_of(item));
  for (const auto& [attribute, length, priority] :
       {std::tuple{Attribute::Width, target.width, across}, {Attribute::Height, target.height, down}}) {
    (void)inside.add_constraint(
        {.first = whole, .first_attribute = attribute, .constant = length, .priority = priority});
  }
  inside.solve();
  return inside.frame(whole).size;
}

}  // namespace wispen::layout
