// host/uikit/containers/tables/height_index.cpp: heights in a column, and what lies at which place.

#include "host/uikit/containers/tables/height_index.hpp"

#include <bit>

namespace wispen::uikit {

void HeightIndex::assign(std::vector<double> heights) {
  heights_ = std::move(heights);
  sums_.assign(heights_.size() + 1, 0);
  for (std::size_t i = 1; i < sums_.size(); ++i) {
    sums_[i] += heights_[i - 1];
    const std::size_t parent = i + (i & (~i + 1));
    if (parent < sums_.size()) sums_[parent] += sums_[i];
  }
}

void HeightIndex::set_height(std::size_t item, double height) {
  const double change = height - heights_[item];
  if (change == 0) return;
  heights_[item] = height;
  for (std::size_t i = item + 1; i < sums_.size(); i += i & (~i + 1)) sums_[i] += change;
}

double HeightIndex::offset(std::size_t item) const {
  double sum = 0;
  for (std::size_t i = item; i > 0; i &= i - 1) sum += sums_[i];
  return sum;
}

std::size_t HeightIndex::item_at(double place) const {
  if (heights_.empty()) return 0;
  std::size_t position = 0;
  for (std::size_t step = std::bit_floor(heights_.size()); step > 0; step /= 2) {
    const std::size_t next = position + step;
    if (next < sums_.size() && sums_[next] <= place) {
      position = next;
      place -= sums_[next];
    }
  }
  return position < heights_.size() ? position : heights_.size() - 1;
}

}  // namespace wispen::uikit
