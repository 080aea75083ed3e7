// host/layout/constraint.cpp: a constraint between attributes of items, as its author writes it.

#include "host/layout/constraint.hpp"

#include <iterator>

namespace wispen::layout {

bool is_size(Attribute attribute) { return attribute == Attribute::Width || attribute == Attribute::Height; }

bool is_horizontal(Attribute attribute) {
  switch (attribute) {
    case Attribute::Left:
    case Attribute::Right:
    case Attribute::Leading:
    case Attribute::Trailing:
    case Attribute::Width:
    case Attribute::CenterX:
      return true;
    default:
      return false;
  }
}

bool is_directional(Attribute attribute) {
  return attribute == Attribute::Leading || attribute == Attribute::Trailing;
}

const char* name_of(Attribute attribute) {
  static constexpr const char* kNames[] = {
      "notAnAttribute", "left",   "right",   "top",     "bottom",       "leading",      "trailing",
      "width",          "height", "centerX", "centerY", "lastBaseline", "firstBaseline"};
  const auto index = static_cast<unsigned>(attribute);
  return index < std::size(kNames) ? kNames[index] : "unknown";
}

Result<void> check_pairing(const ConstraintSpec& spec) {
  const Attribute one = spec.first_attribute;
  const Attribute two = spec.second_attribute;
  const auto known = [](Attribute attribute) {
    return attribute >= Attribute::NotAnAttribute && attribute <= Attribute::FirstBaseline;
  };
  if (!known(one) || !known(two)) return Error{"there is no such layout attribute"};
  if (spec.first == kNoItem || one == Attribute::NotAnAttribute) {
    return Error{"a constraint needs a first item and an attribute of it"};
  }
  if ((spec.second == kNoItem) != (two == Attribute::NotAnAttribute)) {
    return Error{"a constraint needs a second item and an attribute of it, or neither"};
  }
  if (spec.second == kNoItem) {
    if (is_size(one)) return {};
    return Error{std::string("a constraint of ") + name_of(one) +
                 " needs a second item to be placed against"};
  }
  const std::string pair = std::string(name_of(one)) + " cannot be constrained to " + name_of(two);
  if (is_size(one) != is_size(two)) return Error{pair + ": one is a size and the other a place"};
  if (!is_size(one) && is_horizontal(one) != is_horizontal(two)) {
    return Error{pair + ": they lie along different axes"};
  }
  const auto is_side = [](Attribute a) { return a == Attribute::Left || a == Attribute::Right; };
  if ((is_side(one) && is_directional(two)) || (is_directional(one) && is_side(two))) {
    return Error{pair + ": only one of them turns with the direction of reading"};
  }
  return {};
}

}  // namespace wispen::layout
