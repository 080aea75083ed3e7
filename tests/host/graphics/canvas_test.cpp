// tests/host/graphics/canvas_test.cpp: what views are painted on.

#include "host/graphics/canvas.hpp"

#include <gtest/gtest.h>

#include "host/graphics/image_file.hpp"
#include "host/graphics/symbol.hpp"
#include "host/graphics/system_colours.hpp"
#include "tests/host/graphics/pictures.hpp"

namespace wispen::graphics {
namespace {

const Colour kRed = Colour::rgb(1, 0, 0);
const Colour kBlue = Colour::rgb(0, 0, 1);
constexpr std::uint32_t kRedPixel = 0xFFFF0000;
constexpr std::uint32_t kBluePixel = 0xFF0000FF;

Canvas make(double width, double height, double scale = 1, Appearance appearance = Appearance::Light) {
  return *Canvas::create({width, height}, scale, appearance);
}

TEST(Canvases, FillWholePixelsExactly) {
  Canvas canvas = make(10, 10, 2);
  canvas.fill(Rect::make(1, 1, 2.5, 1), kRed);
  const PixelView view = canvas.pixels();
  EXPECT_EQ(view.width, 20);
  EXPECT_EQ(view.at(2, 2), kRedPixel);
  EXPECT_EQ(view.at(6, 3), kRedPixel);
  EXPECT_EQ(view.at(7, 3), 0u);
  EXPECT_EQ(view.at(2, 4), 0u);
}

TEST(Canvases, ResolveColoursWhenTheyDraw) {
  Canvas canvas = make(2, 1);
  canvas.fill(Rect::make(0, 0, 1, 1), *named_colour("systemBackground"));
  canvas.set_appearance(Appearance::Dark);
  canvas.fill(Rect::make(1, 0, 1, 1), *named_colour("systemBackground"));
  EXPECT_EQ(canvas.pixels().at(0, 0), 0xFFFFFFFFu);
  EXPECT_EQ(canvas.pixels().at(1, 0), 0xFF000000u);
}

TEST(Canvases, DrawOnlyInsideTheClipAndPutItBack) {
  Canvas canvas = make(10, 10);
  canvas.save();
  canvas.clip(Rect::make(2, 2, 3, 3));
  EXPECT_EQ(canvas.clip_bounds(), Rect::make(2, 2, 3, 3));
  EXPECT_FALSE(canvas.shows(Rect::make(6, 6, 2, 2)));
  canvas.fill(Rect::make(0, 0, 10, 10), kRed);
  canvas.restore();
  EXPECT_EQ(canvas.pixels().at(4, 4), kRedPixel);
  EXPECT_EQ(canvas.pixels().at(5, 5), 0u);
  canvas.fill(Rect::make(5, 5, 1, 1), kBlue);
  EXPECT_EQ(canvas.pixels().at(5, 5), kBluePixel);
}

TEST(Canvases, AreRepaintedInADirtyRectangleWithoutTouchingTheRest) {
  const auto paint = [](Canvas& canvas) {
    canvas.fill(Rect{{}, canvas.size()}, *named_colour("systemBackground"));
    canvas.fill(Path::rounded_rect(Rect::make(4, 4, 50, 20), 6), *named_colour("systemGray6"));
    canvas.draw(*layout_text(AttributedText("Label"), {}), {8, 4}, *named_colour("label"));
  };
  Canvas whole = make(60, 30, 2);
  paint(whole);
  Canvas patched = make(60, 30, 2);
  paint(patched);
  patched.save();
  patched.clip(Rect::make(10, 6, 20, 10));
  patched.clear();
  paint(patched);
  patched.restore();
  EXPECT_EQ(*whole.make_image()->pixels(), *patched.make_image()->pixels());
}

TEST(Canvases, LayGroupsOverTheRestAsOne) {
  Canvas canvas = make(3, 1);
  canvas.fill(Rect::make(0, 0, 3, 1), Colour::grey(1));
  canvas.begin_group();
  canvas.fill(Rect::make(0, 0, 2, 1), kRed);
  canvas.fill(Rect::make(1, 0, 2, 1), kBlue);
  canvas.end_group(0.5);
  EXPECT_EQ(canvas.pixels().at(1, 0), canvas.pixels().at(2, 0));
  EXPECT_NEAR(static_cast<double>(canvas.pixels().at(0, 0) & 0xFF), 127, 1);
}

TEST(Canvases, CopyImagesPixelByPixelWhenNothingIsScaled) {
  const auto source = noise(8, 6, 9);
  Canvas canvas = make(10, 10, 2);
  canvas.draw(Image(source, 2), Rect::make(1, 1.5, 4, 3));
  for (int y = 0; y < 6; ++y) {
    for (int x = 0; x < 8; ++x) ASSERT_EQ(canvas.pixels().at(x + 2, y + 3), source->at(x, y));
  }
}

TEST(Canvases, ShrinkImagesByArea) {
  const auto source =
      picture(20, 20, [](int x, int y) { return (x + y) % 2 == 0 ? 0xFFFFFFFFu : 0xFF000000u; });
  Canvas canvas = make(5, 5);
  canvas.draw(Image(source), Rect::make(0, 0, 5, 5));
  EXPECT_NEAR(static_cast<double>(canvas.pixels().at(2, 2) & 0xFF), 127.5, 1);
}

TEST(Canvases, TintStencilsAndLeaveOriginalsAlone) {
  const Image image(flat_picture(2, 2, 0xFF00FF00));
  Canvas canvas = make(4, 2);
  canvas.draw(image.with_rendering_mode(RenderingMode::AlwaysTemplate), Rect::make(0, 0, 2, 2), kRed);
  canvas.draw(image.with_rendering_mode(RenderingMode::AlwaysOriginal), Rect::make(2, 0, 2, 2), kRed);
  EXPECT_EQ(canvas.pixels().at(0, 0), kRedPixel);
  EXPECT_EQ(canvas.pixels().at(2, 0), 0xFF00FF00u);
}

TEST(Canvases, KeepTheCapsOfResizableImages) {
  const auto source = picture(3, 1, [](int x, int) {
    return x == 0 ? kRedPixel : x == 1 ? 0xFF00FF00u : kBluePixel;
  });
  for (const ResizingMode mode : {ResizingMode::Stretch, ResizingMode::Tile}) {
    Canvas canvas = make(10, 1);
    canvas.draw(Image(source).with_resizing(Resizing{{0, 1, 0, 1}, mode}), Rect::make(0, 0, 10, 1));
    EXPECT_EQ(canvas.pixels().at(0, 0), kRedPixel);
    for (int x = 1; x < 9; ++x) EXPECT_EQ(canvas.pixels().at(x, 0), 0xFF00FF00u);
    EXPECT_EQ(canvas.pixels().at(9, 0), kBluePixel);
  }
}

TEST(Canvases, DrawTextInItsBoxAndInItsColours) {
  AttributedText text("III");
  text.edit({0, 3},
            [](TextAttributes& attributes) { attributes.font = Font::system(40, font_weight::kBlack); });
  text.set_colour({1, 2}, kBlue);
  const auto layout = TextLayout::create(text, {});
  Canvas canvas = make(80, 60);
  canvas.draw(*layout, {0, 0}, kRed);
  int red = 0;
  int blue = 0;
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 80; ++x) {
      const std::uint32_t pixel = canvas.pixels().at(x, y);
      red += pixel == kRedPixel ? 1 : 0;
      blue += pixel == kBluePixel ? 1 : 0;
      if ((pixel >> 24) == 0xFF) {
        EXPECT_GT(y, layout->first_baseline() - 31);
        EXPECT_LT(y, layout->first_baseline() + 1);
      }
    }
  }
  EXPECT_GT(red, 50);
  EXPECT_NEAR(blue, red * 2, red);
}

double darkness(const char* font) {
  TextAttributes attributes;
  attributes.font = *Font::named(font, 34);
  Canvas canvas = make(200, 50, 2);
  canvas.draw(*TextLayout::create(AttributedText("WISPEN", attributes), {}), {5, 5}, Colour::grey(0));
  double sum = 0;
  const PixelView view = canvas.pixels();
  for (int y = 0; y < view.height; ++y) {
    for (int x = 0; x < view.width; ++x) sum += static_cast<double>(view.at(x, y) >> 24);
  }
  return sum;
}

TEST(Canvases, DrawTheLightWeightLighterAndTheBoldBolder) {
  EXPECT_LT(darkness("HelveticaNeue-Light"), darkness("HelveticaNeue") * 0.85);
  EXPECT_GT(darkness("HelveticaNeue-Medium"), darkness("HelveticaNeue") * 1.05);
  EXPECT_GT(darkness("HelveticaNeue-Bold"), darkness("HelveticaNeue-Medium") * 1.05);
}

TEST(Canvases, BlurWhatLiesBehindAMaterialAndNothingElse) {
  Canvas canvas = make(200, 100);
  for (int x = 0; x < 200; x += 4) canvas.fill(Rect::make(x, 0, 2, 100), Colour::grey(0));
  const auto before = *canvas.make_image();
  canvas.draw_material(Path::rect(Rect::make(50, 20, 100, 60)), {10, 1, Colour()});
  const PixelView view = canvas.pixels();
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 200; ++x) {
      const bool inside = x >= 50 && x < 150 && y >= 20 && y < 80;
      if (!inside) {
        ASSERT_EQ(view.at(x, y), before.pixels()->at(x, y));
      }
    }
  }
  for (int x = 60; x < 140; ++x) EXPECT_NEAR(static_cast<double>(view.at(x, 50) >> 24), 127.5, 6);
}

TEST(Canvases, KeepAFlatBackgroundUnderAClearMaterial) {
  Canvas canvas = make(100, 100, 2);
  canvas.fill(Rect::make(0, 0, 100, 100), Colour::hex(0x3366CC));
  canvas.draw_material(Path::rounded_rect(Rect::make(10.5, 10.5, 50, 50), 12), {20, 1, Colour()});
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 200; ++x) ASSERT_EQ(canvas.pixels().at(x, y), 0xFF3366CCu);
  }
}

TEST(Canvases, CastASoftShadowBesideTheShape) {
  Canvas canvas = make(100, 100);
  canvas.draw_shadow(Path::rect(Rect::make(30, 30, 40, 40)), {Colour::grey(0, 0.5), 5, {0, 10}});
  EXPECT_NEAR(static_cast<double>(canvas.pixels().at(50, 60) >> 24), 127.5, 6);
  EXPECT_GT(canvas.pixels().at(50, 84) >> 24, 5u);
  EXPECT_LT(canvas.pixels().at(50, 26) >> 24, 20u);
  EXPECT_EQ(canvas.pixels().at(2, 2), 0u);
}

TEST(Canvases, CastTheSameShadowElsewhereAndAnotherOfAnotherColour) {
  const auto shadow_at = [](Point place, const Colour& colour) {
    Canvas canvas = make(200, 200);
    canvas.draw_shadow(Path::rounded_rect(Rect{place, {30, 30}}, 8), {colour, 4, {0, 3}});
    std::vector<std::uint32_t> around;
    for (int y = -15; y < 50; ++y) {
      for (int x = -15; x < 50; ++x) {
        around.push_back(canvas.pixels().at(static_cast<int>(place.x) + x, static_cast<int>(place.y) + y));
      }
    }
    return around;
  };
  const auto first = shadow_at({20, 20}, Colour::grey(0, 0.5));
  EXPECT_EQ(shadow_at({20, 20}, Colour::grey(0, 0.5)), first);
  EXPECT_EQ(shadow_at({120, 97}, Colour::grey(0, 0.5)), first);
  EXPECT_NE(shadow_at({20, 20}, Colour::rgb(1, 0, 0, 0.5)), first);
}

TEST(Canvases, CastAsMuchOfAShadowAsTheClipShows) {
  const auto cast = [](bool clipped) {
    Canvas canvas = make(100, 100);
    if (clipped) canvas.clip(Rect::make(40, 40, 30, 30));
    canvas.draw_shadow(Path::rect(Rect::make(30, 30, 40, 40)), {Colour::grey(0, 0.5), 5, {0, 10}});
    std::vector<std::uint32_t> inside;
    for (int y = 40; y < 70; ++y) {
      for (int x = 40; x < 70; ++x) inside.push_back(canvas.pixels().at(x, y));
    }
    return inside;
  };
  EXPECT_EQ(cast(true), cast(false));
}

TEST(Canvases, DrawGroupsAlikeThatAreToldHowLargeTheyAre) {
  const auto draw = [](bool told) {
    Canvas canvas = make(60, 60, 2);
    canvas.transform(AffineTransform::rotation(0.3));
    told ? canvas.begin_group(Rect::make(10.3, 5.7, 30, 20)) : canvas.begin_group();
    canvas.fill(Path::rounded_rect(Rect::make(10.3, 5.7, 30, 20), 6), Colour::rgb(1, 0, 0));
    canvas.end_group(0.5);
    return *encode_png(canvas.pixels());
  };
  EXPECT_EQ(draw(true), draw(false));
}

TEST(Canvases, GiveTheSameBytesTwice) {
  const auto draw = [] {
    Canvas canvas = make(120, 60, 2, Appearance::Dark);
    canvas.fill(Rect::make(0, 0, 120, 60), *named_colour("systemGroupedBackground"));
    canvas.draw(*TextLayout::create(AttributedText("Gr\u00F6\u00DFe \U0001F642"), {}), {10, 10},
                *named_colour("label"));
    const Image gear = symbol_image("gear")->image;
    canvas.draw(gear, Rect{{80, 10}, gear.size()}, *named_colour("tint"));
    canvas.draw_material(Path::ellipse(Rect::make(20, 20, 60, 30)), blur_effect_material(6));
    return *encode_png(canvas.pixels());
  };
  EXPECT_EQ(draw(), draw());
}

TEST(Canvases, RefuseSizesThatCannotBeMade) {
  EXPECT_FALSE(Canvas::create({0, 10}, 2));
  EXPECT_FALSE(Canvas::create({10, 10}, 0));
  EXPECT_FALSE(Canvas::create({1e9, 10}, 2));
  EXPECT_FALSE(Canvas::create({30000, 30000}, 1));
}

TEST(Canvases, SurviveTransformsThatFlattenEverything) {
  Canvas canvas = make(10, 10);
  canvas.save();
  canvas.transform(AffineTransform::scaling(0, 1));
  canvas.fill(Rect::make(0, 0, 10, 10), kRed);
  canvas.restore();
  EXPECT_EQ(canvas.pixels().at(5, 5), 0u);
  canvas.fill(Rect::make(0, 0, 10, 10), kBlue);
  EXPECT_EQ(canvas.pixels().at(5, 5), kBluePixel);
}

}  // namespace
}  // namespace wispen::graphics
