// host/uikit/containers/tables/index_path.hpp: UIKit's rows and sections on Foundation's index paths.
#pragma once

#include "platform/UIKit/UITableView.hpp"

namespace wispen::uikit {

struct RowPath {
  NSInteger section = 0;
  NSInteger row = 0;
  friend auto operator<=>(const RowPath&,
                          const RowPath&) = default;  // NOLINT(modernize-use-nullptr): there is none
};

/// Adds row, section and indexPathForRow:inSection: to NSIndexPath.
void define_index_path();
NSIndexPath index_path(RowPath path);
/// Section and row -1 for nil.
RowPath row_path(const NSIndexPath& index_path);

}  // namespace wispen::uikit
