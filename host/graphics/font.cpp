// host/graphics/font.cpp: which font, how large, and the measures that the platform gives for it.

#include "host/graphics/font.hpp"

#include <array>
#include <cmath>

namespace wispen::graphics {

namespace {

struct NamedWeight {
  std::string_view name;
  double weight;
};

constexpr std::array<NamedWeight, 9> kWeights{{{"UltraLight", font_weight::kUltraLight},
                                               {"Thin", font_weight::kThin},
                                               {"Light", font_weight::kLight},
                                               {"Regular", font_weight::kRegular},
                                               {"Medium", font_weight::kMedium},
                                               {"Semibold", font_weight::kSemibold},
                                               {"Bold", font_weight::kBold},
                                               {"Heavy", font_weight::kHeavy},
                                               {"Black", font_weight::kBlack}}};

// Fractions of the size. The stand-in fonts have measures of their own; layouts follow the platform's, so
// that a row or a label comes out as tall as on the device.
constexpr FontMetrics kSystemMetrics{0.952148, -0.241211, 1.193359, 0.704590, 0.526367, 0};
constexpr FontMetrics kHelveticaNeueMetrics{0.952, -0.213, 1.193, 0.714, 0.523, 0.028};

std::string_view weight_name(double weight) {
  const NamedWeight* nearest = kWeights.data();
  for (const NamedWeight& each : kWeights) {
    if (std::abs(each.weight - weight) < std::abs(nearest->weight - weight)) nearest = &each;
  }
  return nearest->name;
}

}  // namespace

Font Font::system(double size, double weight) {
  Font font;
  font.size_ = size > 0 ? size : kSystemSize;
  font.weight_ = weight;
  return font;
}

Font Font::italic_system(double size) { return system(size).with_italic(true); }

Font Font::monospaced_digits(double size, double weight) {
  Font font = system(size, weight);
  font.monospaced_digits_ = true;
  return font;
}

std::optional<Font> Font::named(std::string_view name, double size) {
  std::string_view rest = name;
  for (const std::string_view family : {"HelveticaNeue", "Helvetica Neue", "Helvetica"}) {
    if (!rest.starts_with(family)) continue;
    rest.remove_prefix(family.size());
    Font font = system(size);
    font.family_ = FontFamily::HelveticaNeue;
    if (rest.empty()) return font;
    if (!rest.starts_with('-')) return std::nullopt;
    rest.remove_prefix(1);
    for (const std::string_view slanted : {"Italic", "Oblique"}) {
      if (!rest.ends_with(slanted)) continue;
      font.italic_ = true;
      rest.remove_suffix(slanted.size());
    }
    if (rest.empty()) return font;
    for (const NamedWeight& each : kWeights) {
      if (each.name == rest) return font.with_weight(each.weight);
    }
    return std::nullopt;
  }
  return std::nullopt;
}

Font Font::with_size(double size) const {
  Font copy = *this;
  copy.size_ = size > 0 ? size : kSystemSize;
  return copy;
}

Font Font::with_weight(double weight) const {
  Font copy = *this;
  copy.weight_ = weight;
  return copy;
}

Font Font::with_italic(bool italic) const {
  Font copy = *this;
  copy.italic_ = italic;
  return copy;
}

std::string Font::face_name() const {
  const std::string_view weight = weight_name(weight_);
  std::string style;
  if (weight != "Regular") style = weight;
  if (italic_) style += "Italic";
  if (family_ == FontFamily::System) return ".SystemUIFont-" + (style.empty() ? "Regular" : style);
  return style.empty() ? "HelveticaNeue" : "HelveticaNeue-" + style;
}

std::string Font::family_name() const {
  return family_ == FontFamily::System ? ".SystemUIFont" : "Helvetica Neue";
}

FontMetrics Font::metrics() const {
  const FontMetrics& unit = family_ == FontFamily::System ? kSystemMetrics : kHelveticaNeueMetrics;
  return {unit.ascender * size_,   unit.descender * size_, unit.line_height * size_,
          unit.cap_height * size_, unit.x_height * size_,  unit.leading * size_};
}

}  // namespace wispen::graphics
