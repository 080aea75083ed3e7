// host/graphics/image_name.cpp: names of image files, their variants by scale and device, and the best one.

#include "host/graphics/image_name.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "host/graphics/image_file.hpp"
#include "host/graphics/image_memory.hpp"

namespace wispen::graphics {

namespace {

constexpr std::string_view kPhoneSuffix = "~iphone";
constexpr std::string_view kPadSuffix = "~ipad";

bool drop_suffix(std::string& text, std::string_view suffix) {
  if (!text.ends_with(suffix)) return false;
  text.resize(text.size() - suffix.size());
  return true;
}

std::vector<int> scales_by_preference(double wanted) {
  const int exact = std::clamp(static_cast<int>(std::lround(wanted)), 1, 3);
  std::vector<int> scales;
  for (int scale = exact; scale <= 3; ++scale) scales.push_back(scale);
  for (int scale = exact - 1; scale >= 1; --scale) scales.push_back(scale);
  return scales;
}

bool stays_inside(std::string_view name) {
  if (name.empty() || name.find('\0') != std::string_view::npos) return false;
  const std::filesystem::path path(name);
  if (path.is_absolute()) return false;
  for (const auto& part : path) {
    if (part == "..") return false;
  }
  return true;
}

}  // namespace

ImageName parse_image_name(std::string_view name) {
  ImageName result;
  result.base = name;
  const std::size_t slash = name.rfind('/');
  const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
  const std::size_t dot = name.rfind('.');
  // Names of symbols and versions hold dots that begin no extension: only known ones count.
  if (dot != std::string_view::npos && dot > start) {
    const std::string_view extension = name.substr(dot + 1);
    for (const std::string_view known : {"png", "jpg", "jpeg", "webp", "PNG", "JPG", "JPEG"}) {
      if (extension != known) continue;
      result.extension = extension;
      result.base.resize(dot);
    }
  }
  if (drop_suffix(result.base, kPadSuffix)) {
    result.idiom = Idiom::Pad;
  } else if (drop_suffix(result.base, kPhoneSuffix)) {
    result.idiom = Idiom::Phone;
  }
  for (const int scale : {1, 2, 3}) {
    if (!result.has_scale && drop_suffix(result.base, "@" + std::to_string(scale) + "x")) {
      result.scale = scale;
      result.has_scale = true;
    }
  }
  return result;
}

std::vector<std::string> image_name_candidates(std::string_view name, double scale, Idiom idiom) {
  const ImageName parsed = parse_image_name(name);
  std::vector<std::string> extensions{parsed.extension};
  if (parsed.extension.empty()) extensions = {"png", "jpg", "jpeg", "webp"};
  std::vector<std::string> candidates;
  for (const std::string& extension : extensions) {
    const std::string ending = "." + extension;
    if (parsed.has_scale || parsed.idiom) {
      candidates.push_back(parsed.extension.empty() ? std::string(name) + ending : std::string(name));
      continue;
    }
    for (const std::string_view device :
         {idiom == Idiom::Pad ? kPadSuffix : kPhoneSuffix, std::string_view()}) {
      for (const int each : scales_by_preference(scale)) {
        const std::string mark = "@" + std::to_string(each) + "x";
        if (each == 1) candidates.push_back(std::string(parsed.base).append(device).append(ending));
        candidates.push_back(std::string(parsed.base).append(mark).append(device).append(ending));
      }
    }
  }
  return candidates;
}

std::optional<std::string> find_image(const std::string& folder, std::string_view name, double scale,
                                      Idiom idiom) {
  if (!stays_inside(name)) return std::nullopt;
  for (const std::string& candidate : image_name_candidates(name, scale, idiom)) {
    std::string path = folder + "/" + candidate;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) return path;
  }
  return std::nullopt;
}

Result<Image> load_named_image(const std::string& folder, std::string_view name, double scale, Idiom idiom) {
  const auto path = find_image(folder, name, scale, idiom);
  if (!path) return Error{"there is no image named \"" + std::string(name) + "\" in " + folder};
  return load_image(*path);
}

Result<Image> load_image_variant(const std::string& path, double scale, Idiom idiom) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return load_named_image(".", path, scale, idiom);
  const auto best = find_image(path.substr(0, slash), std::string_view{path}.substr(slash + 1), scale, idiom);
  return remembered_image(best ? *best : path);
}

}  // namespace wispen::graphics
