// host/layout/stack.cpp: views in a row or a column, arranged by constraints.

#include "host/layout/stack.hpp"

#include <algorithm>
#include <utility>

namespace wispen::layout {

namespace {

constexpr Priority kProportion = 999;
// Below every hugging: equal distances are a wish about the gaps, not about the views.
constexpr Priority kEqualCentres = 149;
// Just above the pull of fitting_size(), so that an expanded fitting does not tear a stack apart across its
// axis.
constexpr Priority kFitAcross = 51;
constexpr Priority kBaselineSnug = 50.5;
constexpr Priority kFitAlong = 25;

struct AxisAttributes {
  Attribute near;
  Attribute far;
  Attribute centre;
  Attribute length;
};

AxisAttributes attributes_along(Axis axis) {
  if (axis == Axis::Horizontal) {
    return {Attribute::Leading, Attribute::Trailing, Attribute::CenterX, Attribute::Width};
  }
  return {Attribute::Top, Attribute::Bottom, Attribute::CenterY, Attribute::Height};
}

Axis across(Axis axis) { return axis == Axis::Horizontal ? Axis::Vertical : Axis::Horizontal; }

double near_margin(const EdgeInsets& margins, Axis axis) {
  return axis == Axis::Horizontal ? margins.left : margins.top;
}

double far_margin(const EdgeInsets& margins, Axis axis) {
  return axis == Axis::Horizontal ? margins.right : margins.bottom;
}

}  // namespace

void Stack::arrange(const StackStyle& style, std::vector<ArrangedItem> items) {
  std::erase_if(items,
                [this](const ArrangedItem& each) { return each.hidden || !model_.has_item(each.item); });
  clear();
  style_ = style;
  shown_ = std::move(items);
  if (!model_.has_item(item_)) return;

  for (std::size_t i = 0; i < shown_.size(); ++i) {
    model_.set_tie_rank(shown_[i].item, style_.axis, static_cast<int>(i));
  }
  connect_ends();
  connect_neighbours();
  for (const ArrangedItem& each : shown_) align(each);
  switch (style_.distribution) {
    case StackDistribution::Fill:
      break;
    case StackDistribution::FillEqually:
      share_equally();
      break;
    case StackDistribution::FillProportionally:
      share_proportionally();
      break;
    case StackDistribution::EqualSpacing:
    case StackDistribution::EqualCentering:
      place_gaps();
      break;
  }
  fit();
}

void Stack::clear() {
  for (const ConstraintId id : std::exchange(constraints_, {})) model_.remove_constraint(id);
  for (const ItemId gap : std::exchange(gaps_, {})) model_.remove_item(gap);
  for (const ArrangedItem& each : shown_) model_.set_tie_rank(each.item, style_.axis, 0);
  shown_.clear();
}

void Stack::constrain(const char* identifier, ItemId first, Attribute first_attribute, Relation relation,
                      ItemId second, Attribute second_attribute, double constant, Priority priority,
                      double multiplier) {
  const auto added = model_.add_constraint({.first = first,
                                            .first_attribute = first_attribute,
                                            .relation = relation,
                                            .second = second,
                                            .second_attribute = second_attribute,
                                            .multiplier = multiplier,
                                            .constant = constant,
                                            .priority = priority,
                                            .identifier = identifier});
  if (added) constraints_.push_back(*added);
}

void Stack::connect_ends() {
  if (shown_.empty()) return;
  const AxisAttributes along = attributes_along(style_.axis);
  constrain("stack-edge", shown_.front().item, along.near, Relation::Equal, item_, along.near,
            near_margin(style_.margins, style_.axis));
  constrain("stack-edge", shown_.back().item, along.far, Relation::Equal, item_, along.far,
            -far_margin(style_.margins, style_.axis));
}

double Stack::spacing_after(const ArrangedItem& arranged) const {
  return arranged.spacing_after.value_or(style_.spacing);
}

void Stack::connect_neighbours() {
  const AxisAttributes along = attributes_along(style_.axis);
  const bool gaps_may_grow = style_.distribution == StackDistribution::EqualSpacing ||
                             style_.distribution == StackDistribution::EqualCentering;
  const bool by_baseline = style_.baseline_relative && style_.axis == Axis::Vertical;
  for (std::size_t i = 1; i < shown_.size(); ++i) {
    constrain("stack-spacing", shown_[i].item, by_baseline ? Attribute::FirstBaseline : along.near,
              gaps_may_grow ? Relation::GreaterOrEqual : Relation::Equal, shown_[i - 1].item,
              by_baseline ? Attribute::LastBaseline : along.far, spacing_after(shown_[i - 1]));
  }
}

bool Stack::aligns_baselines() const {
  return style_.axis == Axis::Horizontal && (style_.alignment == StackAlignment::FirstBaseline ||
                                             style_.alignment == StackAlignment::LastBaseline);
}

void Stack::align(const ArrangedItem& arranged) {
  const Axis other = across(style_.axis);
  const AxisAttributes cross = attributes_along(other);
  const double near = near_margin(style_.margins, other);
  const double far = -far_margin(style_.margins, other);
  const bool baselines = aligns_baselines();
  StackAlignment alignment = style_.alignment;
  if (!baselines &&
      (alignment == StackAlignment::FirstBaseline || alignment == StackAlignment::LastBaseline)) {
    alignment = StackAlignment::Fill;
  }
  const bool at_near = alignment == StackAlignment::Fill || alignment == StackAlignment::Leading;
  const bool at_far = alignment == StackAlignment::Fill || alignment == StackAlignment::Trailing;
  constrain("stack-align", arranged.item, cross.near, at_near ? Relation::Equal : Relation::GreaterOrEqual,
            item_, cross.near, near);
  constrain("stack-align", arranged.item, cross.far, at_far ? Relation::Equal : Relation::LessOrEqual, item_,
            cross.far, far);
  if (alignment == StackAlignment::Center) {
    constrain("stack-align", arranged.item, cross.centre, Relation::Equal, item_, cross.centre,
              (near + far) / 2);
  }
  if (!baselines) return;
  const bool first = alignment == StackAlignment::FirstBaseline;
  const Attribute baseline = first ? Attribute::FirstBaseline : Attribute::LastBaseline;
  if (arranged.item != shown_.front().item) {
    constrain("stack-align", arranged.item, baseline, Relation::Equal, shown_.front().item, baseline);
  }
  // The whole line moves as one until the tallest view touches its edge.
  constrain("stack-align", arranged.item, first ? cross.near : cross.far, Relation::Equal, item_,
            first ? cross.near : cross.far, first ? near : far, kBaselineSnug);
}

void Stack::fit() {
  const Axis other = across(style_.axis);
  const bool stretches = style_.alignment == StackAlignment::Fill ||
                         (!aligns_baselines() && (style_.alignment == StackAlignment::FirstBaseline ||
                                                  style_.alignment == StackAlignment::LastBaseline));
  const auto pull = [this](Axis axis, Priority priority) {
    constrain("stack-fit", item_, attributes_along(axis).length, Relation::Equal, kNoItem,
              Attribute::NotAnAttribute, near_margin(style_.margins, axis) + far_margin(style_.margins, axis),
              priority);
  };
  pull(style_.axis, kFitAlong);
  pull(other, stretches ? kFitAlong : kFitAcross);
}

void Stack::share_equally() {
  const Attribute length = attributes_along(style_.axis).length;
  for (std::size_t i = 1; i < shown_.size(); ++i) {
    constrain("stack-equal", shown_[i].item, length, Relation::Equal, shown_.front().item, length);
  }
}

double Stack::proportion_of(ItemId item) const {
  if (const auto length = model_.intrinsic_length(item, style_.axis)) return *length;
  const Size fitting = model_.fitting_size(item, kFittingCompressed);
  return style_.axis == Axis::Horizontal ? fitting.width : fitting.height;
}

void Stack::share_proportionally() {
  const Attribute length = attributes_along(style_.axis).length;
  double taken = near_margin(style_.margins, style_.axis) + far_margin(style_.margins, style_.axis);
  double total = 0;
  std::vector<double> lengths;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    if (i + 1 < shown_.size()) taken += spacing_after(shown_[i]);
    lengths.push_back(proportion_of(shown_[i].item));
    total += lengths.back();
  }
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    const double share = total > 0 ? lengths[i] / total : 1 / static_cast<double>(shown_.size());
    constrain("stack-proportion", shown_[i].item, length, Relation::Equal, item_, length, -share * taken,
              kProportion, share);
  }
}

void Stack::place_gaps() {
  const AxisAttributes along = attributes_along(style_.axis);
  const bool centres = style_.distribution == StackDistribution::EqualCentering;
  // One gap alone is equal to itself.
  for (std::size_t i = 1; shown_.size() > 2 && i < shown_.size(); ++i) {
    const ItemId gap = model_.add_item("gap", item_);
    gaps_.push_back(gap);
    constrain("stack-gap", gap, along.near, Relation::Equal, shown_[i - 1].item,
              centres ? along.centre : along.far);
    constrain("stack-gap", gap, along.far, Relation::Equal, shown_[i].item,
              centres ? along.centre : along.near);
    if (i == 1) continue;
    constrain("stack-gap", gap, along.length, Relation::Equal, gaps_.front(), along.length, 0,
              centres ? kEqualCentres : kRequired);
  }
}

}  // namespace wispen::layout
