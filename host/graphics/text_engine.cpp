// host/graphics/text_engine.cpp: the fonts that text is drawn with, the same on every machine.

#include "host/graphics/text_engine.hpp"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string_view>
#include <vector>

namespace wispen::graphics {

namespace {

struct FontFile {
  std::string_view package;
  std::string_view path;
};

constexpr std::string_view kInterFolder = "/usr/share/fonts/opentype/inter/";

// Beside Inter's faces, whose names are regular. The order is the order of preference for a character that
// several have.
constexpr std::array<FontFile, 14> kFiles{{
    {"fonts-texgyre", "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreheros-regular.otf"},
    {"fonts-texgyre", "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreheros-italic.otf"},
    {"fonts-texgyre", "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreheros-bold.otf"},
    {"fonts-texgyre", "/usr/share/texmf/fonts/opentype/public/tex-gyre/texgyreheros-bolditalic.otf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansArabic-Regular.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansArabic-Bold.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansHebrew-Regular.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansHebrew-Bold.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansDevanagari-Regular.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansThai-Regular.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansSymbols-Regular.ttf"},
    {"fonts-noto-core", "/usr/share/fonts/truetype/noto/NotoSansSymbols2-Regular.ttf"},
    {"fonts-noto-color-emoji", "/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf"},
    {"fonts-droid-fallback", "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf"},
}};

// Emoji come as bitmaps of one size, which have to be told to scale; text that asks for emoji asks by this
// name.
constexpr std::string_view kRules = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="pattern">
    <test name="family"><string>emoji</string></test>
    <edit name="family" mode="prepend" binding="strong"><string>Noto Color Emoji</string></edit>
  </match>
  <match target="font">
    <test name="outline" compare="eq"><bool>false</bool></test>
    <edit name="pixelsizefixupfactor" mode="assign">
      <divide><name target="pattern">pixelsize</name><name target="font">pixelsize</name></divide>
    </edit>
    <edit name="matrix" mode="assign">
      <times>
        <name>matrix</name>
        <matrix>
          <name>pixelsizefixupfactor</name><double>0</double>
          <double>0</double><name>pixelsizefixupfactor</name>
        </matrix>
      </times>
    </edit>
  </match>
</fontconfig>)";

constexpr std::string_view kFallbackFamilies =
    ",Noto Sans Arabic,Noto Sans Hebrew,Noto Sans Devanagari,Noto Sans Thai,Noto Color Emoji,Droid Sans "
    "Fallback,Noto Sans Symbols,Noto Sans Symbols2";

struct InterWeight {
  double weight;
  std::string_view face;
  PangoWeight pango;
};

constexpr std::array<InterWeight, 9> kInterWeights{
    {{font_weight::kUltraLight, "Thin", PANGO_WEIGHT_THIN},
     {font_weight::kThin, "ExtraLight", PANGO_WEIGHT_ULTRALIGHT},
     {font_weight::kLight, "Light", PANGO_WEIGHT_LIGHT},
     {font_weight::kRegular, "Regular", PANGO_WEIGHT_NORMAL},
     {font_weight::kMedium, "Medium", PANGO_WEIGHT_MEDIUM},
     {font_weight::kSemibold, "SemiBold", PANGO_WEIGHT_SEMIBOLD},
     {font_weight::kBold, "Bold", PANGO_WEIGHT_BOLD},
     {font_weight::kHeavy, "ExtraBold", PANGO_WEIGHT_ULTRABOLD},
     {font_weight::kBlack, "Black", PANGO_WEIGHT_HEAVY}}};

// From this size on the platform's system font changes to its cut for display.
constexpr double kDisplaySize = 20;

const InterWeight& nearest_weight(double weight) {
  return *std::min_element(kInterWeights.begin(), kInterWeights.end(),
                           [weight](const InterWeight& a, const InterWeight& b) {
                             return std::abs(a.weight - weight) < std::abs(b.weight - weight);
                           });
}

/// A set of fonts of its own, so that neither the machine's nor the user's configuration is read.
class FontSet {
 public:
  static const FontSet& shared() {
    // Engines of threads that still draw while the process ends hold references of their own.
    static const FontSet set;
    return set;
  }

  FcConfig* config() const { return config_.get(); }
  const std::vector<std::string>& missing_packages() const { return missing_packages_; }

 private:
  FontSet() : config_(FcConfigCreate()) {
    FcConfigParseAndLoadFromMemory(config(), reinterpret_cast<const FcChar8*>(kRules.data()), FcTrue);
    for (const std::string_view cut : {"Inter", "InterDisplay"}) {
      for (const InterWeight& weight : kInterWeights) {
        const std::string upright =
            std::string(kInterFolder) + std::string(cut) + "-" + std::string(weight.face);
        add("fonts-inter", upright + ".otf");
        const bool regular = weight.face == "Regular";
        add("fonts-inter",
            (regular ? std::string(kInterFolder) + std::string(cut) + "-" : upright) + "Italic.otf");
      }
    }
    for (const FontFile& file : kFiles) add(file.package, std::string(file.path));
  }

  void add(std::string_view package, const std::string& path) {
    if (FcConfigAppFontAddFile(config(), reinterpret_cast<const FcChar8*>(path.c_str())) != FcFalse) return;
    if (std::find(missing_packages_.begin(), missing_packages_.end(), package) == missing_packages_.end()) {
      missing_packages_.emplace_back(package);
    }
  }

  std::unique_ptr<FcConfig, Releaser<&FcConfigDestroy>> config_;
  std::vector<std::string> missing_packages_;
};

GObjectRef<PangoContext> make_context(PangoFontMap* font_map, PangoDirection direction) {
  GObjectRef<PangoContext> context(pango_font_map_create_context(font_map));
  const CairoFontOptions options(cairo_font_options_create());
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  pango_cairo_context_set_font_options(context.get(), options.get());
  pango_context_set_round_glyph_positions(context.get(), FALSE);
  pango_context_set_base_dir(context.get(), direction);
  // Not the machine's language: it would decide which fallback font and which forms are taken.
  pango_context_set_language(context.get(), pango_language_from_string("en"));
  return context;
}

}  // namespace

TextEngine::TextEngine() : font_map_(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT)) {
  pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(font_map_.get()), FontSet::shared().config());
  left_to_right_ = make_context(font_map_.get(), PANGO_DIRECTION_LTR);
  right_to_left_ = make_context(font_map_.get(), PANGO_DIRECTION_RTL);
}

TextEngine& TextEngine::current() {
  thread_local TextEngine engine;
  return engine;
}

Result<void> TextEngine::check_fonts() {
  const std::vector<std::string>& missing = FontSet::shared().missing_packages();
  if (missing.empty()) return {};
  std::string packages;
  for (const std::string& package : missing) packages += (packages.empty() ? "" : ", ") + package;
  return Error{"fonts are missing; install the Debian packages " + packages};
}

PangoContext* TextEngine::context(PangoDirection direction) const {
  return direction == PANGO_DIRECTION_RTL ? right_to_left_.get() : left_to_right_.get();
}

PangoDescription TextEngine::description(const Font& font) {
  PangoDescription description(pango_font_description_new());
  std::string families = "Inter";
  PangoWeight weight = nearest_weight(font.weight()).pango;
  if (font.family() == FontFamily::HelveticaNeue) {
    families = "TeX Gyre Heros,Inter";
    weight = font.weight() >= font_weight::kSemibold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL;
  } else if (font.size() >= kDisplaySize) {
    families = "Inter Display,Inter";
  }
  families += kFallbackFamilies;
  pango_font_description_set_family(description.get(), families.c_str());
  pango_font_description_set_weight(description.get(), weight);
  pango_font_description_set_style(description.get(),
                                   font.italic() ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_absolute_size(description.get(),
                                           font.size() * adjustment(font).size * PANGO_SCALE);
  return description;
}

FaceAdjustment TextEngine::adjustment(const Font& font) {
  if (font.family() == FontFamily::HelveticaNeue) {
    // Heros is drawn after the same model but larger in its box, and comes in two weights only; the others
    // are made by moving the outline in or out.
    constexpr double kStemPerWeight = 0.055;
    const double nearest =
        font.weight() >= font_weight::kSemibold ? font_weight::kBold : font_weight::kRegular;
    return {0.979, 0, (font.weight() - nearest) * kStemPerWeight};
  }
  // Letters as high as the platform's are as wide too, but for a little: reading sizes run closer there, and
  // the display cut less so.
  constexpr double kCapHeightRatio = 0.704590 / 0.727273;
  constexpr double kDisplayTracking = 0.015;
  constexpr double kTextTracking = -0.0075;
  if (font.size() >= kDisplaySize) return {kCapHeightRatio, kDisplayTracking, 0};
  return {kCapHeightRatio, kTextTracking * std::clamp((font.size() - 12) / 5, 0.0, 1.0), 0};
}

}  // namespace wispen::graphics
