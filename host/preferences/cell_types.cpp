// host/preferences/cell_types.cpp: the kinds of rows, by the names that specifier lists use.

#include "host/preferences/cell_types.hpp"

#include <algorithm>
#include <array>

namespace wispen::preferences {

namespace {

constexpr std::array<CellTypeName, 16> kNames{{
    {"PSGroupCell", CellType::Group},
    {"PSLinkCell", CellType::Link},
    {"PSLinkListCell", CellType::LinkList},
    {"PSListItemCell", CellType::ListItem},
    {"PSTitleValueCell", CellType::TitleValue},
    {"PSSliderCell", CellType::Slider},
    {"PSSwitchCell", CellType::Switch},
    {"PSStaticTextCell", CellType::StaticText},
    {"PSEditTextCell", CellType::EditText},
    {"PSSegmentCell", CellType::Segment},
    {"PSGiantIconCell", CellType::GiantIcon},
    {"PSGiantCell", CellType::Giant},
    {"PSSecureEditTextCell", CellType::SecureEditText},
    {"PSButtonCell", CellType::Button},
    {"PSEditTextViewCell", CellType::EditTextView},
    {"PSSpinnerCell", CellType::Spinner},
}};

}  // namespace

std::span<const CellTypeName> cell_type_names() { return kNames; }

std::optional<CellType> cell_type_from_name(std::string_view name) {
  const auto* const found = std::ranges::find(kNames, name, &CellTypeName::name);
  if (found == kNames.end()) return std::nullopt;
  return found->type;
}

std::string_view cell_type_name(CellType type) {
  const auto* const found = std::ranges::find(kNames, type, &CellTypeName::type);
  return found == kNames.end() ? std::string_view() : found->name;
}

}  // namespace wispen::preferences
