// host/graphics/symbol.cpp: symbols by the platform's names, in drawings of our own.

#include "host/graphics/symbol.hpp"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <list>
#include <mutex>
#include <optional>
#include <string>

#include "host/graphics/gobject_ref.hpp"
#include "host/graphics/symbol_files.hpp"

namespace wispen::graphics {

namespace {

constexpr double kUnitsPerSize = 100;
constexpr double kUnitsTall = 120;
// Capitals of the system font stand in the middle of the drawing, so this far above its lower edge.
constexpr double kBaseline = (kUnitsTall - 70.459) / 2;
constexpr double kMaximumPointSize = 2000;
constexpr std::string_view kPlaceholder = "questionmark.square.dashed";

const SymbolFile* find_file(std::string_view name) {
  const auto files = symbol_files();
  const auto file =
      std::find_if(files.begin(), files.end(), [name](const SymbolFile& each) { return each.name == name; });
  return file == files.end() ? nullptr : &*file;
}

double scale_factor(SymbolScale scale) {
  if (scale == SymbolScale::Small) return 0.78;
  if (scale == SymbolScale::Large) return 1.28;
  return 1;
}

/// The width of lines in a drawing's units, in step with the stems of the system font.
double line_width(double weight) {
  struct Known {
    double weight;
    double width;
  };
  constexpr std::array<Known, 9> kWidths{{{font_weight::kUltraLight, 3},
                                          {font_weight::kThin, 4.5},
                                          {font_weight::kLight, 7},
                                          {font_weight::kRegular, 9},
                                          {font_weight::kMedium, 10.5},
                                          {font_weight::kSemibold, 12},
                                          {font_weight::kBold, 13.5},
                                          {font_weight::kHeavy, 15.5},
                                          {font_weight::kBlack, 17.5}}};
  if (weight <= kWidths.front().weight) return kWidths.front().width;
  for (std::size_t i = 1; i < kWidths.size(); ++i) {
    if (weight > kWidths[i].weight) continue;
    const Known& low = kWidths[i - 1];
    const Known& high = kWidths[i];
    return low.width + (high.width - low.width) * (weight - low.weight) / (high.weight - low.weight);
  }
  return kWidths.back().width;
}

std::string style_sheet(double weight) {
  const std::string width = std::to_string(std::lround(line_width(weight) * 10));
  const std::string common = "fill:none;stroke-linecap:round;stroke-linejoin:round;stroke-width:" +
                             width.substr(0, width.size() - 1) + "." + width.back();
  return ".line{stroke:#000;" + common + "}.cut{stroke:#000;" + common + "}";
}

Result<Pixels> render(const SymbolFile& file, const SymbolConfiguration& configuration, bool mirrored) {
  GError* error = nullptr;
  const GObjectRef<RsvgHandle> handle(
      rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(file.svg.data()), file.svg.size(), &error));
  const std::string style = style_sheet(configuration.weight);
  RsvgRectangle box{};
  gboolean has_box = FALSE;
  if (handle == nullptr ||
      rsvg_handle_set_stylesheet(handle.get(), reinterpret_cast<const guint8*>(style.data()), style.size(),
                                 &error) == FALSE) {
    const GErrorOwner owner(error);
    return Error{"the symbol " + std::string(file.name) + " cannot be read"};
  }
  rsvg_handle_get_intrinsic_dimensions(handle.get(), nullptr, nullptr, nullptr, nullptr, &has_box, &box);
  const double size =
      configuration.point_size * scale_factor(configuration.scale) * configuration.display_scale;
  const double units = size / kUnitsPerSize;
  auto pixels = Pixels::create(static_cast<std::int64_t>(std::ceil(box.width * units)),
                               static_cast<std::int64_t>(std::ceil(kUnitsTall * units)));
  if (!pixels) return pixels;
  const MutablePixelView view = pixels->mutable_view();
  const CairoSurface surface(
      cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(view.pixels), CAIRO_FORMAT_ARGB32,
                                          view.width, view.height, view.width * 4));
  const CairoContext cairo(cairo_create(surface.get()));
  if (mirrored) {
    cairo_translate(cairo.get(), view.width, 0);
    cairo_scale(cairo.get(), -1, 1);
  }
  // The drawing sits in the middle of the pixels that it was rounded up to.
  const RsvgRectangle where{(view.width - box.width * units) / 2, (view.height - kUnitsTall * units) / 2,
                            box.width * units, kUnitsTall * units};
  if (rsvg_handle_render_document(handle.get(), cairo.get(), &where, &error) == FALSE) {
    const GErrorOwner owner(error);
    return Error{"the symbol " + std::string(file.name) + " cannot be drawn"};
  }
  cairo_surface_flush(surface.get());
  return pixels;
}

struct Entry {
  std::string name;
  SymbolConfiguration configuration;
  Symbol symbol;
};

class Cache {
 public:
  static Cache& shared() {
    static Cache cache;
    return cache;
  }

  std::optional<Symbol> find(std::string_view name, const SymbolConfiguration& configuration) {
    const std::scoped_lock lock(mutex_);
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) {
      return each.name == name && each.configuration == configuration;
    });
    if (entry == entries_.end()) return std::nullopt;
    entries_.splice(entries_.begin(), entries_, entry);
    return entry->symbol;
  }

  void keep(Entry entry) {
    constexpr std::size_t kCapacity = 128;
    const std::scoped_lock lock(mutex_);
    entries_.push_front(std::move(entry));
    if (entries_.size() > kCapacity) entries_.pop_back();
  }

 private:
  std::mutex mutex_;
  std::list<Entry> entries_;
};

}  // namespace

Result<Symbol> symbol_image(std::string_view name, const SymbolConfiguration& configuration) {
  if (!(configuration.point_size > 0 && configuration.point_size <= kMaximumPointSize) ||
      !(configuration.display_scale > 0)) {
    return Error{"a symbol of " + std::to_string(configuration.point_size) + " points cannot be drawn"};
  }
  Cache& cache = Cache::shared();
  if (auto kept = cache.find(name, configuration)) return *std::move(kept);

  const SymbolFile* file = find_file(name);
  const bool known = file != nullptr;
  if (!known) file = find_file(kPlaceholder);
  const bool turns = name.ends_with(".forward") || name.ends_with(".backward");
  auto pixels = render(*file, configuration, known && turns && configuration.right_to_left);
  if (!pixels) return pixels.error();
  const double baseline =
      kBaseline / kUnitsPerSize * configuration.point_size * scale_factor(configuration.scale);
  const Image image(std::make_shared<const Pixels>(*std::move(pixels)), configuration.display_scale);
  Symbol symbol{image.as_symbol(baseline), known};
  cache.keep({std::string(name), configuration, symbol});
  return symbol;
}

bool is_known_symbol(std::string_view name) { return find_file(name) != nullptr; }

std::vector<std::string_view> symbol_names() {
  std::vector<std::string_view> names;
  for (const SymbolFile& file : symbol_files()) names.push_back(file.name);
  return names;
}

}  // namespace wispen::graphics
