// host/uikit/tables/index_path.cpp: UIKit's rows and sections on Foundation's index paths.

#include "host/uikit/tables/index_path.hpp"

#include <array>

namespace wispen::uikit {

namespace {

class IndexPath : public NSObject {
 public:
  static constexpr objc::FixedString kClass{"NSIndexPath"};
  using NSObject::NSObject;
};

NSInteger at(const NSObject& path, NSUInteger position) {
  if (objc::send<"length", NSUInteger>(path) <= position) return -1;
  return static_cast<NSInteger>(objc::send<"indexAtPosition:", NSUInteger>(path, position));
}
NSInteger section(const IndexPath& path) { return at(path, 0); }
NSInteger row(const IndexPath& path) { return at(path, 1); }
NSObject for_row(objc::ClassRef, NSInteger row, NSInteger section) { return index_path({section, row}); }

}  // namespace

NSObject index_path(RowPath path) {
  const std::array<NSUInteger, 2> indexes{static_cast<NSUInteger>(path.section),
                                          static_cast<NSUInteger>(path.row)};
  return objc::send<"indexPathWithIndexes:length:", NSObject>(objc::class_for<IndexPath>(), indexes.data(),
                                                              NSUInteger{2});
}

RowPath row_path(const NSObject& path) { return path ? RowPath{at(path, 0), at(path, 1)} : RowPath{-1, -1}; }

void define_index_path() {
  objc::Category<IndexPath>()
      .method<"section", &section>()
      .method<"row", &row>()
      .method<"item", &row>()
      .class_method<"indexPathForRow:inSection:", &for_row>();
}

}  // namespace wispen::uikit
