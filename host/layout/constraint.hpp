// host/layout/constraint.hpp: a constraint between attributes of items, as its author writes it.
#pragma once

#include <cstdint>
#include <string>

#include "host/core/result.hpp"
#include "host/layout/solver.hpp"

namespace wispen::layout {

/// A view or a layout guide of one model; never used again after the item is removed.
enum class ItemId : std::uint64_t {};
inline constexpr ItemId kNoItem{~std::uint64_t{0}};

/// The platform's values.
enum class Attribute {
  NotAnAttribute = 0,
  Left = 1,
  Right = 2,
  Top = 3,
  Bottom = 4,
  Leading = 5,
  Trailing = 6,
  Width = 7,
  Height = 8,
  CenterX = 9,
  CenterY = 10,
  LastBaseline = 11,
  FirstBaseline = 12,
};

/// first.attribute  relation  multiplier * second.attribute + constant
struct ConstraintSpec {
  ItemId first = kNoItem;
  Attribute first_attribute = Attribute::NotAnAttribute;
  Relation relation = Relation::Equal;
  /// kNoItem, with NotAnAttribute, for a size that is compared with the constant alone.
  ItemId second = kNoItem;
  Attribute second_attribute = Attribute::NotAnAttribute;
  double multiplier = 1;
  double constant = 0;
  Priority priority = kRequired;
  /// Stands before the constraint itself in reports.
  std::string identifier = {};
};

bool is_size(Attribute attribute);
bool is_horizontal(Attribute attribute);
/// Leading or trailing: an edge whose side depends on the direction of reading.
bool is_directional(Attribute attribute);
/// The platform's spelling: "centerX".
const char* name_of(Attribute attribute);

/// Refuses the pairs that the platform refuses: a size with a place, an axis with the other, left or right
/// with leading or trailing, a place without a second item.
Result<void> check_pairing(const ConstraintSpec& spec);

}  // namespace wispen::layout
