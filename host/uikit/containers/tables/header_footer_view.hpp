// host/uikit/containers/tables/header_footer_view.hpp: UITableViewHeaderFooterView: the words above and below
// a section.
#pragma once

#include "platform/UIKit.hpp"

namespace wispen::uikit {

void define_header_footer_view();

/// A header's words stand at its lower edge, a footer's at its upper.
void set_is_header(const UITableViewHeaderFooterView& view, bool is_header);

inline constexpr double kSectionTextPadding = 7;  // between a header's words and its rows
inline constexpr double kFooterTextTop = 8;       // between the rows and a footer's words

}  // namespace wispen::uikit
