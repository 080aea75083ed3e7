// host/graphics/font.hpp: which font, how large, and the measures that the platform gives for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wispen::graphics {

/// The platform's numbers for weights.
namespace font_weight {
inline constexpr double kUltraLight = -0.8;
inline constexpr double kThin = -0.6;
inline constexpr double kLight = -0.4;
inline constexpr double kRegular = 0;
inline constexpr double kMedium = 0.23;
inline constexpr double kSemibold = 0.3;
inline constexpr double kBold = 0.4;
inline constexpr double kHeavy = 0.56;
inline constexpr double kBlack = 0.62;
}  // namespace font_weight

enum class FontFamily : std::uint8_t { System, HelveticaNeue };

/// All in points. The platform's signs: what lies below the baseline is negative.
struct FontMetrics {
  double ascender = 0;
  double descender = 0;
  double line_height = 0;
  double cap_height = 0;
  double x_height = 0;
  double leading = 0;
};

/// A font as it is asked for. What it is drawn with is the text engine's business.
class Font {
 public:
  /// The size of the system font where none is given.
  static constexpr double kSystemSize = 17;

  /// The system font, regular, at kSystemSize.
  Font() = default;
  /// A size that is not above 0 gives kSystemSize, as on the platform.
  static Font system(double size, double weight = font_weight::kRegular);
  static Font bold_system(double size) { return system(size, font_weight::kBold); }
  static Font italic_system(double size);
  /// The system font with digits of one width.
  static Font monospaced_digits(double size, double weight = font_weight::kRegular);
  /// By a face's name ("HelveticaNeue", "HelveticaNeue-Light", "HelveticaNeue-BoldItalic") or the family's
  /// ("Helvetica Neue"). Nothing for a name that the platform stand-in has no font for.
  static std::optional<Font> named(std::string_view name, double size);

  FontFamily family() const { return family_; }
  double size() const { return size_; }
  double weight() const { return weight_; }
  bool italic() const { return italic_; }
  bool has_monospaced_digits() const { return monospaced_digits_; }

  Font with_size(double size) const;
  Font with_weight(double weight) const;
  Font with_italic(bool italic) const;

  /// "HelveticaNeue-Light"; the system font's names begin with a dot.
  std::string face_name() const;
  std::string family_name() const;
  FontMetrics metrics() const;

  friend bool operator==(const Font&, const Font&) = default;

 private:
  FontFamily family_ = FontFamily::System;
  double size_ = kSystemSize;
  double weight_ = font_weight::kRegular;
  bool italic_ = false;
  bool monospaced_digits_ = false;
};

}  // namespace wispen::graphics
