// host/uikit/containers/tables/index_path.cpp: UIKit's rows and sections on Foundation's index paths.

#include "host/uikit/containers/tables/index_path.hpp"

#include <array>

namespace wispen::uikit {

namespace {

NSInteger at(const NSIndexPath& path, NSUInteger position) {
  if (objc::send<"length", NSUInteger>(path) <= position) return -1;
  return static_cast<NSInteger>(objc::send<"indexAtPosition:", NSUInteger>(path, position));
}
NSInteger section(const NSIndexPath& path) { return at(path, 0); }
NSInteger row(const NSIndexPath& path) { return at(path, 1); }
NSIndexPath for_row(objc::ClassRef, NSInteger row, NSInteger section) { return index_path({section, row}); }

}  // namespace

NSIndexPath index_path(RowPath path) {
  const std::array<NSUInteger, 2> indexes{static_cast<NSUInteger>(path.section),
                                          static_cast<NSUInteger>(path.row)};
  return objc::send<"indexPathWithIndexes:length:", NSIndexPath>(objc::class_for<NSIndexPath>(),
                                                                 indexes.data(), NSUInteger{2});
}

RowPath row_path(const NSIndexPath& path) {
  return path ? RowPath{at(path, 0), at(path, 1)} : RowPath{-1, -1};
}

void define_index_path() {
  objc::Category<NSIndexPath>()
      .method<"section", &section>()
      .method<"row", &row>()
      .method<"item", &row>()
      .class_method<"indexPathForRow:inSection:", &for_row>();
}

}  // namespace wispen::uikit
