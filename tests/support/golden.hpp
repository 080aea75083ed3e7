// tests/support/golden.hpp: pictures as they are to look.
//
// A picture may differ by a little, because another version of the text library sets a glyph a fraction of a
// pixel aside: kUsual in most places, and by more in no more than kSpoiltShare of its pixels. To accept new
// pictures, run with WISPEN_ACCEPT_GOLDENS=1 and look at each before committing it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "host/graphics/image_file.hpp"

namespace wispen::testing {

inline constexpr int kUsual = 24;  // of 255, in any channel
inline constexpr double kSpoiltShare = 0.004;

inline int difference(std::uint32_t a, std::uint32_t b) {
  int most = 0;
  for (const unsigned shift : {0U, 8U, 16U, 24U}) {
    most = std::max(most,
                    std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)));
  }
  return most;
}

/// Leaves expected, actual and difference side by side for whoever looks, and gives the file.
inline std::string leave_beside(const std::filesystem::path& file, const graphics::Image& expected,
                                const graphics::Image& actual) {
  const auto a = expected.pixels()->view();
  const auto b = actual.pixels()->view();
  auto sheet = graphics::Pixels::create(std::int64_t{3} * b.width, std::max(a.height, b.height));
  if (!sheet) return {};
  const auto out = sheet->mutable_view();
  for (int y = 0; y < b.height && y < a.height; ++y) {
    for (int x = 0; x < b.width && x < a.width; ++x) {
      out.row(y)[x] = a.at(x, y);
      out.row(y)[b.width + x] = b.at(x, y);
      const int off = std::min(255, difference(a.at(x, y), b.at(x, y)) * 4);
      out.row(y)[2 * b.width + x] = 0xFF000000U | (static_cast<std::uint32_t>(off) << 16U);
    }
  }
  std::filesystem::create_directories(file.parent_path());
  return graphics::write_png(sheet->view(), file) ? file.string() : std::string();
}

/// What lies between two heights of the picture, for the message.
using WhatIsBetween = std::function<std::string(double top, double bottom)>;

/// Where a test program keeps its pictures.
struct GoldenFolders {
  std::filesystem::path goldens;
  std::filesystem::path failures;
};

/// Whether the file looks as the golden picture of that name.
inline ::testing::AssertionResult looks_like(const GoldenFolders& folders, const std::string& name,
                                             const std::string& file,
                                             const WhatIsBetween& what_is_between = {}) {
  const std::string golden = folders.goldens / (name + ".png");
  if (std::getenv("WISPEN_ACCEPT_GOLDENS") != nullptr) {
    std::filesystem::copy_file(file, golden, std::filesystem::copy_options::overwrite_existing);
    return ::testing::AssertionSuccess();
  }
  const auto expected = graphics::load_image(golden);
  if (!expected) return ::testing::AssertionFailure() << expected.error().message;
  const auto actual = graphics::load_image(file);
  if (!actual) return ::testing::AssertionFailure() << actual.error().message;
  if (!(actual->size() == expected->size())) return ::testing::AssertionFailure() << "the sizes differ";
  const auto a = expected->pixels()->view();
  const auto b = actual->pixels()->view();
  long spoilt = 0;
  int first = b.height;
  int last = 0;
  for (int y = 0; y < b.height; ++y) {
    for (int x = 0; x < b.width; ++x) {
      if (difference(a.at(x, y), b.at(x, y)) <= kUsual) continue;
      ++spoilt;
      first = std::min(first, y);
      last = std::max(last, y);
    }
  }
  const double share = static_cast<double>(spoilt) / (static_cast<double>(b.width) * b.height);
  if (share <= kSpoiltShare) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << share << " of it differs, between " << first << " and " << last
         << (what_is_between ? what_is_between(first, last) : std::string())
         << "; expected, actual and difference are in "
         << leave_beside(folders.failures / (name + ".png"), *expected, *actual);
}

}  // namespace wispen::testing
