// bench/colour_bench.cpp: the colour operations against plain code, and against a well-known image library
// where it is installed, in one run.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "colour/hex_text.hpp"
#include "colour/pixel_groups.hpp"
#include "host/wispen_host.h"
#include "platform/CoreGraphics.hpp"
#include "platform/UIKit.hpp"

#if defined(WISPEN_BENCH_VIPS)
#include <vips/vips.h>
#endif

namespace {

using namespace wispen;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kIcon = 256;
constexpr std::size_t kSample = 44;
constexpr CGBitmapInfo kLayout = kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big;

enum Kind { kFlat, kPhoto, kRandom };
constexpr const char* kNames[] = {"flat", "photo", "random"};

/// How much of a pixel lies inside a shape whose edge is `distance` pixels away.
double coverage(double distance) { return std::clamp(distance + 0.5, 0.0, 1.0); }

/// A rounded field of one colour with a white ring in it: three colours and soft edges.
void flat_pixel(double x, double y, std::uint8_t* out) {
  const double half = kIcon / 2.0;
  const double radius = kIcon * 0.22;
  const double dx = std::max(std::abs(x - half) - half + radius, 0.0);
  const double dy = std::max(std::abs(y - half) - half + radius, 0.0);
  const double inside = coverage(radius - std::hypot(dx, dy));
  const double away = std::hypot(x - half, y - half);
  const double white = coverage(12 - std::abs(away - half * 0.5));
  const auto mixed = [&](double field) {
    return static_cast<std::uint8_t>(std::lround((field + (255 - field) * white) * inside));
  };
  out[0] = mixed(52);
  out[1] = mixed(120);
  out[2] = mixed(246);
  out[3] = static_cast<std::uint8_t>(std::lround(255 * inside));
}

/// Soft shapes of many colours, and a little noise.
void photo_pixel(double x, double y, std::mt19937& random, std::uint8_t* out) {
  const auto wave = [&](double fx, double fy, double phase) {
    const double noise = static_cast<double>(random() % 17) - 8;
    return static_cast<std::uint8_t>(
        std::clamp(128 + 110 * std::sin(fx * x + phase) * std::cos(fy * y - phase) + noise, 0.0, 255.0));
  };
  out[0] = wave(0.021, 0.017, 0.3);
  out[1] = wave(0.013, 0.029, 1.7);
  out[2] = wave(0.034, 0.011, 2.9);
  out[3] = 255;
}

const Bytes& icon(Kind kind) {
  static Bytes icons[3];
  Bytes& bytes = icons[kind];
  if (!bytes.empty()) return bytes;
  std::mt19937 random(5);
  bytes.resize(4 * kIcon * kIcon);
  for (std::size_t y = 0; y < kIcon; ++y) {
    for (std::size_t x = 0; x < kIcon; ++x) {
      std::uint8_t* const out = &bytes[4 * (y * kIcon + x)];
      const double px = static_cast<double>(x) + 0.5;
      const double py = static_cast<double>(y) + 0.5;
      if (kind == kFlat) {
        flat_pixel(px, py, out);
      } else if (kind == kPhoto) {
        photo_pixel(px, py, random, out);
      } else {
        for (int i = 0; i < 3; ++i) out[i] = static_cast<std::uint8_t>(random());
        out[3] = 255;
      }
    }
  }
  return bytes;
}

UIImage image_of(Bytes bytes, std::size_t side) {
  const CGContextRef context =
      CGBitmapContextCreate(bytes.data(), side, side, 8, 4 * side, CGColorSpaceCreateDeviceRGB(), kLayout);
  const CGImageRef pixels = CGBitmapContextCreateImage(context);
  const UIImage image = UIImage::imageWithCGImage(pixels);
  CGImageRelease(pixels);
  CGContextRelease(context);
  return image;
}

/// What the grouping sees of an icon. Random pixels are taken as they are: shrinking would make them grey.
Bytes sample(Kind kind) {
  if (kind == kRandom) return Bytes(icon(kind).begin(), icon(kind).begin() + 4 * kSample * kSample);
  Bytes bytes(4 * kSample * kSample);
  const CGContextRef context = CGBitmapContextCreate(bytes.data(), kSample, kSample, 8, 4 * kSample,
                                                     CGColorSpaceCreateDeviceRGB(), kLayout);
  CGContextDrawImage(context, CGRectMake(0, 0, kSample, kSample), image_of(icon(kind), kIcon).CGImage());
  CGContextRelease(context);
  return bytes;
}

void grouping(benchmark::State& state, colour::GroupingKernel kernel, Kind kind, int threshold) {
  const objc::AutoreleasePool pool;
  const Bytes bytes = sample(kind);
  std::size_t groups = 0;
  for (auto _ : state) {
    groups = kernel.group(bytes.data(), kSample * kSample, threshold).size();
    benchmark::DoNotOptimize(groups);
  }
  state.counters["groups"] = static_cast<double>(groups);
}

void decoded_icon_to_colour(benchmark::State& state, Kind kind) {
  const objc::AutoreleasePool outer;
  const UIImage image = image_of(icon(kind), kIcon);
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    benchmark::DoNotOptimize(objc::send<"wispDominantColor", UIColor>(image));
  }
}

/// Where the pictures are left for other programs to be measured on; nothing where nobody asked for them.
const char* kept_folder() { return std::getenv("WISPEN_BENCH_ICONS"); }

const std::string& folder() {
  static const std::string path = [] {
    if (const char* const kept = kept_folder()) {
      std::filesystem::create_directories(kept);
      return std::string(kept);
    }
    std::string name = (std::filesystem::temp_directory_path() / "wispen-bench-XXXXXX").string();
    return std::string(::mkdtemp(name.data()));
  }();
  return path;
}

std::string png_file(Kind kind) {
  const objc::AutoreleasePool pool;
  const std::string path = folder() + "/" + kNames[kind] + ".png";
  const NSData data = UIImagePNGRepresentation(image_of(icon(kind), kIcon));
  std::ofstream(path, std::ios::binary)
      .write(static_cast<const char*>(data.bytes()), static_cast<std::streamsize>(data.length()));
  return path;
}

/// Makes a file of another moment, or its pixels would be remembered.
void change(const std::string& file) {
  static long moment = 0;
  const timespec when{.tv_sec = 1, .tv_nsec = ++moment % 1'000'000'000};
  const timespec both[]{when, when};
  ::utimensat(AT_FDCWD, file.c_str(), both, 0);
}

void png_file_to_colour(benchmark::State& state, Kind kind) {
  const objc::AutoreleasePool outer;
  const std::string file = png_file(kind);
  const NSString path(file.c_str());
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    change(file);
    const UIImage image = UIImage::imageWithContentsOfFile(path);
    benchmark::DoNotOptimize(objc::send<"wispDominantColor", UIColor>(image));
  }
}

void png_file_decoded(benchmark::State& state, Kind kind) {
  const objc::AutoreleasePool outer;
  const std::string file = png_file(kind);
  const NSString path(file.c_str());
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    change(file);
    benchmark::DoNotOptimize(UIImage::imageWithContentsOfFile(path));
  }
}

#if defined(WISPEN_BENCH_VIPS)
/// The usual way there: a thumbnail of the same size and the fullest of ten by ten by ten bins.
void png_file_to_colour_with_vips(benchmark::State& state, Kind kind) {
  const objc::AutoreleasePool outer;
  const std::string path = png_file(kind);
  vips_concurrency_set(1);
  for (auto _ : state) {
    VipsImage* thumbnail = nullptr;
    VipsImage* flat = nullptr;
    VipsImage* bins = nullptr;
    double most = 0;
    int x = 0;
    int y = 0;
    if (vips_thumbnail(path.c_str(), &thumbnail, kSample, nullptr) != 0 ||
        vips_flatten(thumbnail, &flat, nullptr) != 0 ||
        vips_hist_find_ndim(flat, &bins, "bins", 10, nullptr) != 0 ||
        vips_max(bins, &most, "x", &x, "y", &y, nullptr) != 0) {
      state.SkipWithError(vips_error_buffer());
      break;
    }
    benchmark::DoNotOptimize(most);
    g_object_unref(bins);
    g_object_unref(flat);
    g_object_unref(thumbnail);
  }
}
#endif

void hex_read(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(colour::components_from_hex(u"#FF8800"));
}
void hex_read_with_alpha(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(colour::components_from_hex(u"#FF8800:0.5"));
}
void hex_read_by_selector(benchmark::State& state) {
  const objc::AutoreleasePool outer;
  const NSString text("#FF8800");
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    benchmark::DoNotOptimize(
        objc::send<"wispRGBAColorFromHexString:", UIColor>(objc::class_for<UIColor>(), text));
  }
}
void hex_written(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(colour::hex_from_components({0.2, 0.4, 0.6, 1}));
}

void register_all() {
  for (const Kind kind : {kFlat, kPhoto, kRandom}) {
    for (const auto& kernel : colour::grouping_kernels()) {
      for (const int threshold : {27, 50}) {
        const std::string name =
            std::string("grouping/") + kNames[kind] + "/" + std::to_string(threshold) + "/" + kernel.name;
        benchmark::RegisterBenchmark(name.c_str(), grouping, kernel, kind, threshold);
      }
    }
  }
  for (const Kind kind : {kFlat, kPhoto, kRandom}) {
    const auto name = [kind](const char* what) { return std::string(what) + "/" + kNames[kind]; };
    benchmark::RegisterBenchmark(name("decoded_icon_to_colour").c_str(), decoded_icon_to_colour, kind);
    benchmark::RegisterBenchmark(name("png_file_decoded").c_str(), png_file_decoded, kind);
    benchmark::RegisterBenchmark(name("png_file_to_colour").c_str(), png_file_to_colour, kind);
#if defined(WISPEN_BENCH_VIPS)
    benchmark::RegisterBenchmark(name("png_file_to_colour_with_vips").c_str(), png_file_to_colour_with_vips,
                                 kind);
#endif
  }
  benchmark::RegisterBenchmark("hex_read", hex_read);
  benchmark::RegisterBenchmark("hex_read_with_alpha", hex_read_with_alpha);
  benchmark::RegisterBenchmark("hex_read_by_selector", hex_read_by_selector);
  benchmark::RegisterBenchmark("hex_written", hex_written);
}

}  // namespace

int main(int argc, char** argv) {
#if defined(WISPEN_BENCH_VIPS)
  if (VIPS_INIT(argv[0]) != 0) return 1;
  vips_cache_set_max(0);
#endif
  const std::string root = folder() + "/root";
  wispen_host_options options{};
  options.size = sizeof options;
  options.root = root.c_str();
  if (wispen_host_start(&options) != 1 || wispen_host_load_bundle(WISPEN_BENCH_BUNDLE) == nullptr) {
    std::fprintf(stderr, "%s\n", wispen_host_last_error());
    return 1;
  }
  const objc::AutoreleasePool pool;
  register_all();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  wispen_host_stop();
  std::error_code ignored;
  std::filesystem::remove_all(kept_folder() != nullptr ? root : folder(), ignored);
  return 0;
}
