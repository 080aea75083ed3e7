// host/preferences/cell_types.hpp: the kinds of rows, by the names that specifier lists use.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace wispen::preferences {

/// The platform's numbers.
enum class CellType : long {
  Group = 0,
  Link = 1,
  LinkList = 2,
  ListItem = 3,
  TitleValue = 4,
  Slider = 5,
  Switch = 6,
  StaticText = 7,
  EditText = 8,
  Segment = 9,
  GiantIcon = 10,
  Giant = 11,
  SecureEditText = 12,
  Button = 13,
  EditTextView = 14,
  Spinner = 15,
};

struct CellTypeName {
  std::string_view name;  // as a list spells it: "PSSwitchCell"
  CellType type;
};

/// All of them.
std::span<const CellTypeName> cell_type_names();
std::optional<CellType> cell_type_from_name(std::string_view name);
std::string_view cell_type_name(CellType type);

}  // namespace wispen::preferences
