// host/uikit/containers/tables/height_index.hpp: heights in a column, and what lies at which place.
#pragma once

#include <cstddef>
#include <vector>

namespace wispen::uikit {

/// A binary indexed tree (Fenwick, "A new data structure for cumulative frequency tables", 1994): changing a
/// height, and finding an offset or an item, take a number of steps that grows with the logarithm.
class HeightIndex {
 public:
  void assign(std::vector<double> heights);
  std::size_t size() const { return heights_.size(); }
  double height(std::size_t item) const { return heights_[item]; }
  void set_height(std::size_t item, double height);
  /// The sum of all before it; of all for size().
  double offset(std::size_t item) const;
  double total() const { return offset(size()); }
  /// The item that covers the place; the first above all, the last (or 0) below.
  std::size_t item_at(double place) const;

 private:
  std::vector<double> heights_;
  std::vector<double> sums_;  // 1-based
};

}  // namespace wispen::uikit
