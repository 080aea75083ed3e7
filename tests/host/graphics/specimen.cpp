// tests/host/graphics/specimen.cpp: sheets of everything that this floor draws, to be looked at.
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "host/graphics/canvas.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/symbol.hpp"
#include "host/graphics/system_colours.hpp"
#include "host/graphics/text_style.hpp"

namespace {

using namespace wispen;
using namespace wispen::graphics;

constexpr double kScale = 2;

void write_text(Canvas& canvas, const std::string& text, const Font& font, Point at,
                const Colour& colour = *named_colour("label")) {
  TextAttributes attributes;
  attributes.font = font;
  canvas.draw(*layout_text(AttributedText(text, attributes), {}), at, colour);
}

void fonts(Canvas& canvas) {
  double y = 10;
  for (const double weight : {font_weight::kUltraLight, font_weight::kThin, font_weight::kLight,
                              font_weight::kRegular, font_weight::kMedium, font_weight::kSemibold,
                              font_weight::kBold, font_weight::kHeavy, font_weight::kBlack}) {
    write_text(canvas, "System 17 Settings 0123", Font::system(17, weight), {10, y});
    write_text(canvas, "Display 28 Bars", Font::system(28, weight), {230, y - 8});
    y += 30;
  }
  for (const char* name :
       {"HelveticaNeue-UltraLight", "HelveticaNeue-Thin", "HelveticaNeue-Light", "HelveticaNeue",
        "HelveticaNeue-Medium", "HelveticaNeue-Bold", "HelveticaNeue-Italic"}) {
    write_text(canvas, name, *Font::named(name, 17), {10, y});
    write_text(canvas, "WISPEN Rag 34", *Font::named(name, 34), {230, y - 12});
    y += 38;
  }
  TextAttributes light;
  light.font = *Font::named("HelveticaNeue-Light", 34);
  AttributedText title("WISPEN", light);
  title.set_font({0, 4}, *Font::named("HelveticaNeue", 34));
  canvas.draw(*layout_text(title, {}), {10, y}, Colour::rgb(0.5, 0.3, 0.55));
  write_text(canvas, "1111 1.0 / 7777 7.0 proportional", Font::system(15), {230, y});
  write_text(canvas, "1111 1.0 / 7777 7.0 monospaced", Font::monospaced_digits(15), {230, y + 20});
  write_text(canvas, "Italic of the system", Font::italic_system(17), {10, y + 44});
}

void texts(Canvas& canvas) {
  const std::string words =
      "Dynamic colour will tint the bold separators with the icon's colour, and the thin ones too.";
  double y = 10;
  const std::vector<std::pair<TextAlignment, const char*>> alignments{
      {TextAlignment::Left, "left"},
      {TextAlignment::Centre, "centre"},
      {TextAlignment::Right, "right"},
      {TextAlignment::Justified, "justified"}};
  for (const auto& [alignment, name] : alignments) {
    TextConstraints constraints;
    constraints.width = 220;
    constraints.alignment = alignment;
    const auto layout = layout_text(AttributedText(std::string(name) + ": " + words), constraints);
    canvas.fill(Rect::make(10, y, 220, layout->size().height), *named_colour("systemGray6"));
    canvas.draw(*layout, {10, y}, *named_colour("label"));
    y += layout->size().height + 10;
  }
  y = 10;
  for (const LineBreak mode :
       {LineBreak::Clip, LineBreak::TruncateHead, LineBreak::TruncateTail, LineBreak::TruncateMiddle}) {
    for (const int lines : {1, 2}) {
      TextConstraints constraints;
      constraints.width = 220;
      constraints.maximum_lines = lines;
      constraints.line_break = mode;
      const auto layout = layout_text(AttributedText(words), constraints);
      canvas.save();
      canvas.clip(Rect::make(250, y, 220, 60));
      canvas.fill(Rect::make(250, y, 220, layout->size().height), *named_colour("systemGray6"));
      canvas.draw(*layout, {250, y}, *named_colour("label"));
      canvas.restore();
      y += layout->size().height + 8;
    }
  }
  TextConstraints constraints;
  constraints.width = 220;
  for (const char* text : {"\u0627\u0644\u0625\u0639\u062F\u0627\u062F\u0627\u062A Settings 12",
                           "\u05D4\u05D2\u05D3\u05E8\u05D5\u05EA (Wispen)", "\u8BBE\u7F6E \u8A2D\u5B9A",
                           "Emoji \U0001F642 \U0001F1E9\U0001F1EA \u2764\uFE0F 123",
                           "Gr\u00F6\u00DFe \u00C5ngstr\u00F6m \u0416\u0443\u043A \u03A9"}) {
    canvas.draw(*layout_text(AttributedText(text), constraints), {250, y}, *named_colour("label"));
    y += 28;
  }
  AttributedText marked("underline strike kern colour");
  marked.edit({0, 9}, [](TextAttributes& a) { a.underline = true; });
  marked.edit({10, 6}, [](TextAttributes& a) { a.strikethrough = true; });
  marked.edit({17, 4}, [](TextAttributes& a) { a.kern = 3; });
  marked.set_colour({22, 6}, *named_colour("systemRed"));
  canvas.draw(*layout_text(marked, {}), {250, y}, *named_colour("label"));
  TextConstraints one;
  one.width = 220;
  one.maximum_lines = 1;
  one.line_break = LineBreak::TruncateTail;
  canvas.draw(*fit_text(AttributedText("Shrunk until the line fits its box"), one, 0.5), {250, y + 30},
              *named_colour("label"));
}

void styles(Canvas& canvas) {
  double y = 10;
  const std::vector<std::pair<TextStyle, const char*>> all{
      {TextStyle::LargeTitle, "Large Title"}, {TextStyle::Title1, "Title 1"},
      {TextStyle::Title2, "Title 2"},         {TextStyle::Title3, "Title 3"},
      {TextStyle::Headline, "Headline"},      {TextStyle::Body, "Body"},
      {TextStyle::Callout, "Callout"},        {TextStyle::Subheadline, "Subhead"},
      {TextStyle::Footnote, "Footnote"},      {TextStyle::Caption1, "Caption 1"},
      {TextStyle::Caption2, "Caption 2"}};
  for (const auto& [style, name] : all) {
    const Font font = text_style_font(style);
    write_text(canvas, name, font, {10, y});
    const Font large = text_style_font(style, ContentSize::AccessibilityMedium);
    write_text(canvas, name, large, {230, y});
    y += large.metrics().line_height + 2;
  }
}

void colours(Canvas& canvas) {
  double x = 10;
  double y = 10;
  for (const std::string_view name : colour_names()) {
    const Rect swatch = Rect::make(x, y, 40, 24);
    canvas.fill(Path::rounded_rect(swatch, 6), *named_colour(name));
    canvas.stroke(Path::rounded_rect(swatch.inset(0.25, 0.25), 6), *named_colour("separator"),
                  {0.5, false, {}});
    write_text(canvas, std::string(name), Font::system(11), {x + 46, y + 5});
    y += 30;
    if (y > 540) {
      y = 10;
      x += 240;
    }
  }
}

void symbols(Canvas& canvas) {
  double x = 10;
  double y = 10;
  auto names = symbol_names();
  names.push_back("no.such.symbol");
  for (const std::string_view name : names) {
    double at = x;
    for (const double size : {13.0, 17.0, 28.0}) {
      SymbolConfiguration configuration;
      configuration.point_size = size;
      configuration.weight = size == 28 ? font_weight::kSemibold : font_weight::kRegular;
      const auto symbol = symbol_image(name, configuration);
      if (!symbol) continue;
      const Size extent = symbol->image.size();
      canvas.draw(symbol->image, Rect::make(at, y + 17 - extent.height / 2, extent.width, extent.height),
                  *named_colour("tint"));
      at += extent.width + 6;
    }
    write_text(canvas, std::string(name), Font::system(10), {x + 90, y + 10},
               *named_colour("secondaryLabel"));
    y += 36;
    if (y > 580) {
      y = 10;
      x += 240;
    }
  }
}

void effects(Canvas& canvas) {
  for (int i = 0; i < 48; ++i) {
    const Colour colour = Colour::hsb(i / 48.0, 0.8, 1);
    canvas.fill(Rect::make(i * 10, 0, 5, 600), colour);
  }
  int style = 0;
  for (const int each : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 16}) {
    const Rect pane = Rect::make(15 + (style % 3) * 155, 15 + (style / 3) * 110, 140, 90);
    canvas.draw_shadow(Path::rounded_rect(pane, 14), {Colour::grey(0, 0.35), 6, {0, 3}});
    canvas.draw_material(Path::rounded_rect(pane, 14), blur_effect_material(each));
    write_text(canvas, "style " + std::to_string(each), Font::system(15, font_weight::kSemibold),
               {pane.min_x() + 10, pane.min_y() + 10});
    ++style;
  }
  canvas.begin_group();
  canvas.fill(Path::ellipse(Rect::make(40, 470, 80, 80)), Colour::rgb(1, 0, 0));
  canvas.fill(Path::ellipse(Rect::make(80, 470, 80, 80)), Colour::rgb(0, 0, 1));
  canvas.end_group(0.5);
  canvas.fill_gradient(Path::rounded_rect(Rect::make(200, 470, 120, 80), 10), {200, 470}, {320, 470},
                       {{0, *named_colour("systemBlue")}, {1, *named_colour("systemPink")}});
}

bool write_sheet(const std::string& folder, const char* name, void (*draw)(Canvas&), Appearance appearance) {
  auto canvas = Canvas::create({480, 600}, kScale, appearance);
  if (!canvas) return false;
  if (std::string(name) == "colours" || std::string(name) == "symbols")
    canvas = Canvas::create({720, 620}, kScale, appearance);
  canvas->fill(Rect{{}, canvas->size()}, *named_colour("systemBackground"));
  draw(*canvas);
  const std::string path =
      folder + "/" + name + (appearance == Appearance::Dark ? "-dark.png" : "-light.png");
  const auto written = write_png(canvas->pixels(), path);
  std::printf("%s: %s\n", path.c_str(), written ? "written" : written.error().message.c_str());
  return written.ok();
}

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : ".";
  bool done = true;
  for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
    done = write_sheet(folder, "fonts", fonts, appearance) && done;
    done = write_sheet(folder, "styles", styles, appearance) && done;
    done = write_sheet(folder, "texts", texts, appearance) && done;
    done = write_sheet(folder, "colours", colours, appearance) && done;
    done = write_sheet(folder, "symbols", symbols, appearance) && done;
    done = write_sheet(folder, "effects", effects, appearance) && done;
  }
  return done ? 0 : 1;
}
