// bench/graphics_bench.cpp: drawing against the drawing library alone, in one run.
#include <benchmark/benchmark.h>
#include <cairo.h>
#include <pango/pangocairo.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "host/graphics/bitmap_context.hpp"
#include "host/graphics/blur.hpp"
#include "host/graphics/canvas.hpp"
#include "host/graphics/canvas_state.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/resample.hpp"
#include "host/graphics/system_colours.hpp"
#include "host/graphics/text_content.hpp"

namespace {

using namespace wispen;
using namespace wispen::graphics;

constexpr double kScale = 2;
constexpr Size kPage{390, 844};

PixelsRef icon(int size) {
  auto pixels = Pixels::create(size, size);
  const MutablePixelView view = pixels->mutable_view();
  std::uint32_t state = 1;
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      state = state * 1664525u + 1013904223u;
      view.row(y)[x] = 0xFF000000u | (state >> 8);
    }
  }
  return std::make_shared<const Pixels>(*std::move(pixels));
}

void shrink_with(benchmark::State& state, ResampleKernel kernel) {
  const PixelsRef source = icon(256);
  auto target = Pixels::create(44, 44);
  for (auto _ : state) {
    resample(source->view(), Rect::make(0, 0, 44, 44), target->mutable_view(), kernel);
    benchmark::DoNotOptimize(target->view().pixels);
  }
}

void shrink_into_bitmap(benchmark::State& state) {
  const PixelsRef source = icon(256);
  std::vector<std::uint8_t> memory(44 * 44 * 4);
  for (auto _ : state) {
    std::memset(memory.data(), 0, memory.size());
    auto context = BitmapContext::over(memory.data(), 44, 44, 44 * 4);
    context->draw(source->view(), Rect::make(0, 0, 44, 44));
    benchmark::DoNotOptimize(memory.data());
  }
}

void shrink_with_cairo(benchmark::State& state) {
  const PixelsRef source = icon(256);
  auto target = Pixels::create(44, 44);
  const CairoSurface from = surface_over(source->view());
  const CairoSurface to = surface_over(target->view());
  for (auto _ : state) {
    const CairoContext cairo(cairo_create(to.get()));
    cairo_set_operator(cairo.get(), CAIRO_OPERATOR_SOURCE);
    cairo_scale(cairo.get(), 44 / 256.0, 44 / 256.0);
    cairo_set_source_surface(cairo.get(), from.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo.get()), CAIRO_FILTER_GOOD);
    cairo_paint(cairo.get());
    cairo_surface_flush(to.get());
  }
}

AttributedText row_text(int row) {
  return AttributedText("Row number " + std::to_string(row) + " of the page");
}

constexpr int kRows = 18;

void paint_page(Canvas& canvas) {
  canvas.fill(Rect{{}, kPage}, *named_colour("systemGroupedBackground"));
  for (int row = 0; row < kRows; ++row) {
    const double y = 20 + row * 45;
    canvas.fill(Path::rounded_rect(Rect::make(16, y, 358, 44), 10),
                *named_colour("secondarySystemGroupedBackground"));
    canvas.draw(*layout_text(row_text(row), {}), {32, y + 12}, *named_colour("label"));
    canvas.draw(*layout_text(AttributedText("Value"), {}), {300, y + 12}, *named_colour("secondaryLabel"));
    canvas.fill(Rect::make(32, y + 43.5, 342, 0.5), *named_colour("separator"));
  }
}

void page(benchmark::State& state) {
  auto canvas = Canvas::create(kPage, kScale);
  for (auto _ : state) {
    paint_page(*canvas);
    benchmark::DoNotOptimize(canvas->pixels().pixels);
  }
}

void one_row_of_the_page(benchmark::State& state) {
  auto canvas = Canvas::create(kPage, kScale);
  for (auto _ : state) {
    canvas->save();
    canvas->clip(Rect::make(0, 200, 390, 45));
    paint_page(*canvas);
    canvas->restore();
    benchmark::DoNotOptimize(canvas->pixels().pixels);
  }
}

// The same shapes and the same set text, without anything of ours between.
void page_with_cairo(benchmark::State& state) {
  auto pixels = Pixels::create(780, 1688);
  const CairoSurface surface = surface_over(pixels->view());
  const CairoContext cairo(cairo_create(surface.get()));
  cairo_t* c = cairo.get();
  cairo_scale(c, kScale, kScale);
  std::vector<std::shared_ptr<const TextLayout>> texts;
  for (int row = 0; row < kRows; ++row) texts.push_back(layout_text(row_text(row), {}));
  const auto value = layout_text(AttributedText("Value"), {});
  const auto show = [c](const TextLayout& text, double x, double y) {
    cairo_move_to(c, x, y + text.first_baseline());
    pango_cairo_show_layout_line(c, text.content().set_lines[0].line);
  };
  for (auto _ : state) {
    cairo_set_source_rgb(c, 0.95, 0.95, 0.97);
    cairo_rectangle(c, 0, 0, kPage.width, kPage.height);
    cairo_fill(c);
    for (int row = 0; row < kRows; ++row) {
      const double y = 20 + row * 45;
      cairo_set_source_rgb(c, 1, 1, 1);
      cairo_new_sub_path(c);
      cairo_arc(c, 16 + 10, y + 10, 10, 3.14159265, 4.71238898);
      cairo_arc(c, 374 - 10, y + 10, 10, -1.57079633, 0);
      cairo_arc(c, 374 - 10, y + 34, 10, 0, 1.57079633);
      cairo_arc(c, 16 + 10, y + 34, 10, 1.57079633, 3.14159265);
      cairo_close_path(c);
      cairo_fill(c);
      cairo_set_source_rgb(c, 0, 0, 0);
      show(*texts[static_cast<std::size_t>(row)], 32, y + 12);
      show(*value, 300, y + 12);
      cairo_set_source_rgba(c, 0.24, 0.24, 0.26, 0.29);
      cairo_rectangle(c, 32, y + 43.5, 342, 0.5);
      cairo_fill(c);
    }
    cairo_surface_flush(surface.get());
  }
}

void memory_fill(benchmark::State& state) {
  std::vector<std::uint32_t> memory(780 * 1688);
  for (auto _ : state) {
    std::fill(memory.begin(), memory.end(), static_cast<std::uint32_t>(state.iterations()));
    benchmark::DoNotOptimize(memory.data());
  }
}

void bar_material(benchmark::State& state) {
  auto canvas = Canvas::create(kPage, kScale);
  paint_page(*canvas);
  for (auto _ : state)
    canvas->draw_material(Path::rect(Rect::make(0, 0, 390, 100)), blur_effect_material(10));
}

void label_from_cache(benchmark::State& state) {
  const AttributedText text = row_text(3);
  for (auto _ : state) benchmark::DoNotOptimize(layout_text(text, {}));
}

void label_set_anew(benchmark::State& state) {
  const AttributedText text = row_text(3);
  for (auto _ : state) benchmark::DoNotOptimize(TextLayout::create(text, {}));
}

void icon_from_png(benchmark::State& state) {
  const std::string png = *encode_png(icon(256)->view());
  for (auto _ : state) benchmark::DoNotOptimize(decode_image(png));
}

BENCHMARK_CAPTURE(shrink_with, portable, ResampleKernel::Portable);
BENCHMARK_CAPTURE(shrink_with, fastest, fastest_resample_kernel());
BENCHMARK(shrink_into_bitmap);
BENCHMARK(shrink_with_cairo);
BENCHMARK(page);
BENCHMARK(page_with_cairo);
BENCHMARK(one_row_of_the_page);
BENCHMARK(memory_fill);
BENCHMARK(bar_material);
BENCHMARK(label_from_cache);
BENCHMARK(label_set_anew);
BENCHMARK(icon_from_png);

}  // namespace

BENCHMARK_MAIN();
