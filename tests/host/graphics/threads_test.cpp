// tests/host/graphics/threads_test.cpp: drawing and reading images from several threads at once.

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "host/graphics/canvas.hpp"
#include "host/graphics/image_file.hpp"
#include "host/graphics/symbol.hpp"
#include "tests/host/graphics/pictures.hpp"

namespace wispen::graphics {
namespace {

std::string drawing() {
  auto canvas = Canvas::create({160, 60}, 2);
  const auto decoded = decode_image(*encode_png(noise(64, 64, 8)->view()));
  canvas->draw(*decoded, Rect::make(5, 5, 20, 20));
  canvas->draw(*layout_text(AttributedText("Gr\u00F6\u00DFe \u0627\u0644 \U0001F642"), {}), {30, 5},
               Colour::grey(0));
  const Image gear = symbol_image("gear")->image;
  canvas->draw(gear, Rect{{120, 5}, gear.size()}, Colour::rgb(0, 0, 1));
  return *encode_png(canvas->pixels());
}

TEST(Threads, DrawTheSameSideBySide) {
  const std::string expected = drawing();
  std::vector<std::string> drawn(4);
  std::vector<std::thread> threads;
  threads.reserve(drawn.size());
  for (std::string& each : drawn) {
    threads.emplace_back([&each] {
      for (int i = 0; i < 5; ++i) each = drawing();
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& each : drawn) EXPECT_TRUE(each == expected);
}

}  // namespace
}  // namespace wispen::graphics
