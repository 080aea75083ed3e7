// tests/host/graphics/image_file_test.cpp: images from the bytes of PNG, JPEG and WebP files, and back
// into PNG.

#include "host/graphics/image_file.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>

#include "host/graphics/gobject_ref.hpp"
#include "host/graphics/image_header.hpp"
#include "host/graphics/image_name.hpp"
#include "tests/host/graphics/pictures.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::graphics {
namespace {

using wispen::testing::TemporaryFolder;

std::string encoded(const char* format, int width, int height) {
  const GObjectRef<GdkPixbuf> pixbuf(gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, width, height));
  gdk_pixbuf_fill(pixbuf.get(), 0xFF8000FF);
  gchar* buffer = nullptr;
  gsize size = 0;
  if (gdk_pixbuf_save_to_buffer(pixbuf.get(), &buffer, &size, format, nullptr, nullptr) == FALSE) return {};
  std::string bytes(buffer, size);
  g_free(buffer);
  return bytes;
}

std::string png() { return *encode_png(noise(20, 10, 5)->view()); }

TEST(ImageFiles, ComeBackAsTheyWereWritten) {
  const auto opaque =
      picture(7, 5, [](int x, int y) { return 0xFF000000u | static_cast<std::uint32_t>(x * 40 + y * 4000); });
  const auto bytes = encode_png(opaque->view());
  ASSERT_TRUE(bytes);
  const auto image = decode_image(*bytes, 2);
  ASSERT_TRUE(image);
  EXPECT_EQ(*image->pixels(), *opaque);
  EXPECT_EQ(image->size(), (Size{3.5, 2.5}));
}

TEST(ImageFiles, ArePremultiplied) {
  const auto bytes = encode_png(flat_picture(1, 1, 0x80402000)->view());
  const auto image = decode_image(*bytes);
  ASSERT_TRUE(image);
  EXPECT_EQ(image->pixels()->at(0, 0), 0x80402000u);
}

TEST(ImageFiles, HaveTheSameBytesForTheSamePixels) { EXPECT_EQ(png(), png()); }

TEST(ImageFiles, MayBeJpegOrWebp) {
  for (const char* format : {"jpeg", "webp"}) {
    const std::string bytes = encoded(format, 16, 8);
    ASSERT_FALSE(bytes.empty()) << format;
    const auto header = read_image_header(bytes);
    ASSERT_TRUE(header) << format;
    EXPECT_EQ(header->width, 16) << format;
    EXPECT_EQ(header->height, 8) << format;
    const auto image = decode_image(bytes);
    ASSERT_TRUE(image) << format << ": " << image.error().message;
    const std::uint32_t pixel = image->pixels()->at(8, 4);
    EXPECT_NEAR(static_cast<double>((pixel >> 8) & 0xFF), 0x80, 4) << format;
  }
}

TEST(ImageFiles, KeepWhatTheCameraSaidAboutUp) {
  std::string jpeg = encoded("jpeg", 16, 8);
  // A minimal block of the camera's notes with one entry: orientation 6.
  const std::string exif(
      "\xFF\xE1\x00\x22"
      "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
      4 + 6 + 8 + 2 + 12 + 4);
  jpeg.insert(2, exif);
  const auto image = decode_image(jpeg);
  ASSERT_TRUE(image) << image.error().message;
  EXPECT_EQ(image->orientation(), Orientation::Right);
  EXPECT_EQ(image->size(), (Size{8, 16}));
}

TEST(ImageFiles, ThatAreNoneAreRefused) {
  for (const std::string bytes : {"", "hello", "\x89PNG\r\n\x1A\n", "\xFF\xD8\xFF", "RIFFxxxxWEBP",
                                  "BM000000000000000000000000000000"}) {
    EXPECT_FALSE(decode_image(bytes)) << bytes;
  }
}

TEST(ImageFiles, ThatAreCutOrFlippedGiveAnErrorOrAnImageAndNeverMore) {
  for (const std::string& good : {png(), encoded("jpeg", 16, 8), encoded("webp", 16, 8)}) {
    for (std::size_t length = 0; length < good.size(); length += 1 + good.size() / 64) {
      EXPECT_FALSE(decode_image(good.substr(0, length))) << length;
    }
    for (std::size_t at = 0; at < good.size(); at += 1 + good.size() / 128) {
      std::string bad = good;
      bad[at] = static_cast<char>(bad[at] ^ 0x40);
      const auto image = decode_image(bad);
      EXPECT_TRUE(!image || !image->empty());
    }
  }
}

TEST(ImageFiles, ThatPromiseTooMuchAreRefusedUnseen) {
  std::string huge = png();
  huge[16] = 0x7F;
  const auto image = decode_image(huge);
  ASSERT_FALSE(image);
  EXPECT_NE(image.error().message.find("larger than can be shown"), std::string::npos);
}

TEST(ImageFiles, ThatMoveAreRefused) {
  const std::string bytes("RIFF\x16\0\0\0WEBPVP8X\x0A\0\0\0\x02\0\0\0\x07\0\0\x07\0\0", 30);
  const auto image = decode_image(bytes);
  ASSERT_FALSE(image);
  EXPECT_NE(image.error().message.find("animation"), std::string::npos);
}

TEST(ImageFiles, AreLoadedWithTheScaleOfTheirName) {
  const TemporaryFolder folder;
  ASSERT_TRUE(write_png(flat_picture(6, 6, 0xFF00FF00)->view(), folder.path() + "/dot@3x.png"));
  const auto image = load_image(folder.path() + "/dot@3x.png");
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (Size{2, 2}));
  EXPECT_FALSE(load_image(folder.path() + "/none.png"));
  EXPECT_FALSE(load_image(folder.path()));
}

TEST(ImageNames, AreTakenApart) {
  const ImageName name = parse_image_name("folder.x/icon@2x~ipad.png");
  EXPECT_EQ(name.base, "folder.x/icon");
  EXPECT_EQ(name.extension, "png");
  EXPECT_EQ(name.scale, 2);
  EXPECT_EQ(name.idiom, Idiom::Pad);
  EXPECT_EQ(parse_image_name("version.1.2").base, "version.1.2");
  EXPECT_EQ(parse_image_name(".png").base, ".png");
}

class NamedImages : public ::testing::Test {
 protected:
  void write(const std::string& name) { std::ofstream(folder_.path() + "/" + name) << png(); }
  std::string best(const std::string& name, double scale, Idiom idiom = Idiom::Phone) {
    const auto path = find_image(folder_.path(), name, scale, idiom);
    return path ? path->substr(folder_.path().size() + 1) : "";
  }

  TemporaryFolder folder_;
};

TEST_F(NamedImages, TakeTheWantedScale) {
  for (const char* name : {"icon.png", "icon@2x.png", "icon@3x.png"}) write(name);
  EXPECT_EQ(best("icon", 1), "icon.png");
  EXPECT_EQ(best("icon", 2), "icon@2x.png");
  EXPECT_EQ(best("icon.png", 3), "icon@3x.png");
}

TEST_F(NamedImages, FallBackToALargerScaleBeforeASmallerOne) {
  write("a.png");
  write("a@3x.png");
  write("b.png");
  write("b@2x.png");
  EXPECT_EQ(best("a", 2), "a@3x.png");
  EXPECT_EQ(best("b", 3), "b@2x.png");
}

TEST_F(NamedImages, PreferTheirDeviceAndNeverTakeAnothers) {
  write("icon@2x.png");
  write("icon@2x~ipad.png");
  write("only~ipad.png");
  EXPECT_EQ(best("icon", 2, Idiom::Pad), "icon@2x~ipad.png");
  EXPECT_EQ(best("icon", 2, Idiom::Phone), "icon@2x.png");
  EXPECT_EQ(best("only", 2, Idiom::Phone), "");
}

TEST_F(NamedImages, MayBeJpegs) {
  write("photo.jpg");
  EXPECT_EQ(best("photo", 2), "photo.jpg");
}

TEST_F(NamedImages, StayInTheirFolder) {
  std::filesystem::create_directory(folder_.path() + "/inside");
  write("icon.png");
  write("inside/other.png");
  EXPECT_EQ(best("inside/other", 1), "inside/other.png");
  EXPECT_FALSE(find_image(folder_.path() + "/inside", "../icon", 1, Idiom::Phone));
  EXPECT_FALSE(find_image(folder_.path(), folder_.path() + "/icon", 1, Idiom::Phone));
  EXPECT_FALSE(find_image(folder_.path(), "", 1, Idiom::Phone));
  EXPECT_FALSE(find_image(folder_.path(), "inside", 1, Idiom::Phone));
}

TEST_F(NamedImages, NameABrokenFileAndDoNotTakeTheNext) {
  write("icon.png");
  std::ofstream(folder_.path() + "/icon@2x.png") << "broken";
  const auto image = load_named_image(folder_.path(), "icon", 2, Idiom::Phone);
  ASSERT_FALSE(image);
  EXPECT_NE(image.error().message.find("icon@2x.png"), std::string::npos);
  EXPECT_TRUE(load_image_variant(folder_.path() + "/icon.png", 1, Idiom::Phone));
}

}  // namespace
}  // namespace wispen::graphics
