// tests/colour/slow_colours.hpp: the colour operations a second time, slowly and straight from their
// description, to compare with.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace wispen::testing::slow {

struct Rgba {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;
  friend bool operator==(const Rgba&, const Rgba&) = default;
};

/// ASCII only.
inline Rgba from_hex(const std::string& text) {
  if (text.empty()) return {0, 0, 0, 1};
  double alpha = 1;
  const std::size_t colon = text.find(':');
  if (colon != std::string::npos) {
    static const std::regex number(R"(^\s*([+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([eE][+-]?[0-9]+)?))");
    const std::string rest = text.substr(colon + 1);
    std::smatch match;
    alpha = std::regex_search(rest, match, number) ? std::strtof(match[1].str().c_str(), nullptr) : 0;
  }
  const bool hash = text.substr(0, colon).find('#') == 0;
  static const std::regex digits(R"(^\s*(0[xX])?([0-9a-fA-F]*))");
  const std::string scanned = hash ? text.substr(1) : text;
  std::smatch match;
  std::string run = std::regex_search(scanned, match, digits) ? match[2].str() : "";
  while (run.size() > 1 && run.front() == '0') run.erase(run.begin());
  unsigned long value = run.empty() ? 0 : 0xFFFFFFFF;
  if (!run.empty() && run.size() <= 8) value = std::stoul(run, nullptr, 16);
  return {static_cast<double>((value / 0x10000) % 0x100) / 255.0,
          static_cast<double>((value / 0x100) % 0x100) / 255.0, static_cast<double>(value % 0x100) / 255.0,
          alpha};
}

/// A group as an object of its own.
struct Bucket {
  int r = 0;
  int g = 0;
  int b = 0;
  int d = 0;
};
using Buckets = std::vector<std::shared_ptr<Bucket>>;

inline Buckets group(const std::vector<std::uint8_t>& rgba, int threshold) {
  Buckets buckets;
  for (std::size_t at = 0; at < rgba.size(); at += 4) {
    if (rgba[at + 3] < 128) continue;
    const Bucket pixel{rgba[at], rgba[at + 1], rgba[at + 2], 0};
    const auto found = std::find_if(buckets.begin(), buckets.end(), [&](const auto& each) {
      return std::abs(each->r - pixel.r) + std::abs(each->g - pixel.g) + std::abs(each->b - pixel.b) <
             threshold;
    });
    if (found == buckets.end()) {
      buckets.push_back(std::make_shared<Bucket>(pixel));
      continue;
    }
    Bucket& bucket = **found;
    bucket = {(bucket.r + pixel.r) / 2, (bucket.g + pixel.g) / 2, (bucket.b + pixel.b) / 2, bucket.d + 1};
  }
  return buckets;
}

inline Buckets sorted(Buckets buckets) {
  std::stable_sort(buckets.begin(), buckets.end(), [](const auto& a, const auto& b) { return a->d > b->d; });
  return buckets;
}

inline Rgba color_of(const Bucket& bucket) {
  return {static_cast<double>(static_cast<float>(bucket.r) / 255.0f),
          static_cast<double>(static_cast<float>(bucket.g) / 255.0f),
          static_cast<double>(static_cast<float>(bucket.b) / 255.0f), 1};
}

inline double score(const Rgba& c) {
  const double most = std::max({c.red, c.green, c.blue});
  const double least = std::min({c.red, c.green, c.blue});
  const double saturation = most > 0 ? (most - least) / most : 0;
  return most * 0.5 + saturation;
}

inline Rgba dominant(const std::vector<std::uint8_t>& rgba) {
  const Buckets ranked = sorted(group(rgba, 27));
  if (ranked.size() < 2) return {1, 0, 0, 1};
  const Rgba leader = color_of(*ranked[0]);
  if (!(static_cast<double>(ranked[1]->d) > 0.125 * ranked[0]->d)) return leader;
  const Rgba runner_up = color_of(*ranked[1]);
  return score(runner_up) > score(leader) ? runner_up : leader;
}

/// Nothing where the operation raises.
inline std::optional<Rgba> second(const std::vector<std::uint8_t>& rgba) {
  const Buckets buckets = group(rgba, 50);
  std::map<const Bucket*, int> counts;
  for (const auto& bucket : buckets) counts[bucket.get()] = bucket->d + 1;
  const Buckets ranked = sorted(buckets);
  if (ranked.empty()) return std::nullopt;
  const bool dominates = counts[ranked[0].get()] > 0.6 * static_cast<double>(rgba.size() / 4);
  return color_of(*ranked[dominates && ranked.size() > 1 ? 1 : 0]);
}

}  // namespace wispen::testing::slow
