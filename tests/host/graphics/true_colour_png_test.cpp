// tests/host/graphics/true_colour_png_test.cpp: the kind of PNG that icons are, read fast.

#include "host/graphics/true_colour_png.hpp"

#include <gtest/gtest.h>

#include <random>

#include "host/graphics/image_file.hpp"
#include "host/graphics/image_header.hpp"
#include "host/graphics/pixbuf_decoder.hpp"
#include "tests/support/png_file.hpp"

namespace wispen::graphics {
namespace {

using wispen::testing::filtered_rows;
using wispen::testing::PngFile;

const std::string kColours("\x08\x02\0\0\0", 5);
const std::string kColoursAndAlpha("\x08\x06\0\0\0", 5);

std::string random_bytes(std::mt19937& random, std::size_t size) {
  std::string bytes(size, '\0');
  // Small steps beside wild ones: both sides of every comparison that a filter makes.
  const unsigned span = random() % 2 == 0 ? 256 : 8;
  for (char& byte : bytes) byte = static_cast<char>(random() % span);
  return bytes;
}

std::vector<std::string> in_parts(std::mt19937& random, const std::string& whole) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at < whole.size();) {
    const std::size_t size = random() % 3 == 0 ? whole.size() : random() % 50;
    parts.push_back(whole.substr(at, size));
    at += parts.back().size();
  }
  return parts;
}

PngFile random_file(std::mt19937& random, const std::function<int(std::size_t)>& filter_of) {
  PngFile file;
  file.width = 1 + static_cast<std::uint32_t>(random() % 40);
  file.height = 1 + static_cast<std::uint32_t>(random() % 20);
  const std::size_t channels = 3 + random() % 2;
  file.kind = channels == 3 ? kColours : kColoursAndAlpha;
  const std::string pixels = random_bytes(random, file.width * file.height * channels);
  const std::string rows = filtered_rows(pixels, file.width, channels, filter_of);
  file.packed = in_parts(random, PngFile::deflate(rows, static_cast<int>(random() % 10)));
  return file;
}

Result<PixbufPicture> by_the_library(const std::string& bytes) {
  const auto header = read_image_header(bytes);
  if (!header) return Error{"no header"};
  return decode_with_pixbuf(bytes, *header);
}

/// Nothing where the file was left to the library or refused.
std::optional<Pixels> taken(const std::string& bytes) {
  auto pixels = decode_true_colour_png(bytes);
  return pixels ? *std::move(pixels) : std::nullopt;
}

/// A file of four rows of three grey pixels that both ways of reading take.
PngFile sound_file() {
  PngFile file;
  file.width = 3;
  file.height = 4;
  file.packed = {PngFile::deflate(
      filtered_rows(std::string(36, '\x55'), 3, 3, [](std::size_t y) { return static_cast<int>(y); }))};
  return file;
}

TEST(TrueColourPng, HasThePixelsThatTheLibraryFinds) {
  std::mt19937 random(11);
  for (int i = 0; i < 1500; ++i) {
    const int only = i % 10;  // each filter by itself first, then any of them
    const std::string bytes = random_file(random, [&](std::size_t) {
                                return only < 5 ? only : static_cast<int>(random() % 5);
                              }).str();
    const auto pixels = taken(bytes);
    ASSERT_TRUE(pixels) << i;
    const auto expected = by_the_library(bytes);
    ASSERT_TRUE(expected) << i << ": " << expected.error().message;
    ASSERT_EQ(*pixels, expected->pixels) << i;
  }
}

TEST(TrueColourPng, OfManyPixelsIsTheSame) {
  std::mt19937 random(12);
  PngFile file;
  file.width = 1200;
  file.height = 400;
  file.kind = kColoursAndAlpha;
  const std::string pixels = random_bytes(random, file.width * file.height * 4);
  file.packed = in_parts(random, PngFile::deflate(filtered_rows(pixels, file.width, 4, [](std::size_t y) {
                           return static_cast<int>(y % 5);
                         })));
  const auto found = taken(file.str());
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, by_the_library(file.str())->pixels);
}

TEST(TrueColourPng, MayTellMoreThanPixels) {
  PngFile file = sound_file();
  file.before = PngFile::chunk("gAMA", std::string("\0\0\xB1\x8F", 4)) + PngFile::chunk("teXt", "of our own");
  file.after = PngFile::chunk("tEXt", std::string("Comment\0drawn by hand", 21));
  const auto pixels = taken(file.str());
  ASSERT_TRUE(pixels);
  EXPECT_EQ(pixels->at(2, 3), 0xFF555555u);
  EXPECT_EQ(*pixels, by_the_library(file.str())->pixels);
}

TEST(TrueColourPng, MayHoldBytesBehindItsPixels) {
  const std::string packed = sound_file().packed.front();
  for (const std::vector<std::string>& parts :
       {std::vector<std::string>{packed + "x"}, {packed, "more"}, {"", packed, "", ""}}) {
    PngFile file = sound_file();
    file.packed = parts;
    const auto pixels = taken(file.str());
    ASSERT_TRUE(pixels);
    EXPECT_EQ(*pixels, by_the_library(file.str())->pixels);
  }
}

TEST(TrueColourPng, OfOtherKindsIsLeftToTheLibrary) {
  struct Kind {
    const char* name;
    std::string kind;
    std::string rows;  // one pixel
    std::string before;
  };
  const std::string palette = PngFile::chunk("PLTE", "\x10\x20\x30");
  const Kind kinds[] = {
      {"grey", std::string("\x08\0\0\0\0", 5), std::string("\0\x40", 2), ""},
      {"grey and alpha", std::string("\x08\x04\0\0\0", 5), std::string("\0\x40\x80", 3), ""},
      {"palette", std::string("\x08\x03\0\0\0", 5), std::string("\0\0", 2), palette},
      {"deep", std::string("\x10\x02\0\0\0", 5), std::string("\0\x40\x40\x50\x50\x60\x60", 7), ""},
      {"interlaced", std::string("\x08\x02\0\0\x01", 5), std::string("\0\x40\x50\x60", 4), ""},
      {"one transparent colour", kColours, std::string("\0\x40\x50\x60", 4),
       PngFile::chunk("tRNS", std::string("\0\x40\0\x50\0\x60", 6))},
      {"a palette to fall back on", kColours, std::string("\0\x40\x50\x60", 4), palette},
  };
  for (const Kind& kind : kinds) {
    PngFile file;
    file.kind = kind.kind;
    file.before = kind.before;
    file.packed = {PngFile::deflate(kind.rows)};
    EXPECT_FALSE(taken(file.str())) << kind.name;
    const auto image = decode_image(file.str());
    ASSERT_TRUE(image) << kind.name << ": " << image.error().message;
    EXPECT_EQ(image->pixels()->width(), 1) << kind.name;
  }
}

TEST(TrueColourPng, ThatIsOddIsLeftToTheLibrary) {
  const std::string packed = sound_file().packed.front();
  const std::string rows =
      filtered_rows(std::string(36, '\x55'), 3, 3, [](std::size_t y) { return static_cast<int>(y); });
  std::string wrong_sum = packed;
  wrong_sum.back() = static_cast<char>(wrong_sum.back() ^ 1);
  std::string unknown_filter = rows;
  unknown_filter[10] = 5;
  const std::vector<std::pair<const char*, std::vector<std::string>>> bodies = {
      {"nothing", {}},
      {"nothing packed", {""}},
      {"no zlib stream", {"hello"}},
      {"a wrong sum", {wrong_sum}},
      {"a sum cut off", {packed.substr(0, packed.size() - 1)}},
      {"half", {packed.substr(0, packed.size() / 2)}},
      {"too few rows", {PngFile::deflate(rows.substr(10))}},
      {"too many rows", {PngFile::deflate(rows + rows)}},
      {"one byte too much", {PngFile::deflate(rows + "x")}},
      {"an unknown filter", {PngFile::deflate(unknown_filter)}},
  };
  for (const auto& [name, parts] : bodies) {
    PngFile file = sound_file();
    file.packed = parts;
    EXPECT_FALSE(taken(file.str())) << name;
  }

  PngFile split = sound_file();
  split.packed = {packed.substr(0, 5)};
  split.after = PngFile::chunk("tIME", "1234567") + PngFile::chunk("IDAT", packed.substr(5));
  EXPECT_FALSE(taken(split.str()));
  PngFile unknown = sound_file();
  unknown.before = PngFile::chunk("CgBI", "1234");
  EXPECT_FALSE(taken(unknown.str()));
  PngFile flat = sound_file();
  flat.width = 0;
  EXPECT_FALSE(taken(flat.str()));
}

TEST(TrueColourPng, OfWhichAnyByteIsWrongIsNeverTaken) {
  const std::string good = sound_file().str();
  ASSERT_TRUE(taken(good));
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string bad = good;
      bad[at] = static_cast<char>(bad[at] ^ 1 << bit);
      EXPECT_FALSE(taken(bad)) << at << " bit " << bit;
    }
    EXPECT_FALSE(taken(good.substr(0, at))) << at;
  }
}

TEST(TrueColourPng, WhosePixelsEndEarlyIsRefused) {
  const std::string packed = sound_file().packed.front();
  for (const std::string& part : {std::string("hello"), std::string(), packed.substr(0, packed.size() / 2),
                                  PngFile::deflate(std::string(10, '\0'))}) {
    PngFile file = sound_file();
    file.packed = {part};
    const auto image = decode_image(file.str());
    ASSERT_FALSE(image) << part;
    EXPECT_NE(image.error().message.find("its pixels end early"), std::string::npos) << image.error().message;
  }
}

TEST(TrueColourPng, ThatIsBrokenGetsTheLibrarysWords) {
  std::string bytes = sound_file().str();
  bytes[bytes.size() - 20] = static_cast<char>(bytes[bytes.size() - 20] ^ 1);  // within the packed pixels
  const auto image = decode_image(bytes);
  ASSERT_FALSE(image);
  EXPECT_NE(image.error().message.find("CRC"), std::string::npos) << image.error().message;
}

}  // namespace
}  // namespace wispen::graphics
