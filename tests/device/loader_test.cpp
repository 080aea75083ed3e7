// tests/device/loader_test.cpp: images in memory: bound, run, refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/device/loader/compact_unwind.hpp"
#include "tests/device/loader/image_loader.hpp"
#include "tests/device/loader/loaded_bundles.hpp"
#include "tests/device/loader/phone_symbols.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

#if defined(__aarch64__)
const std::string kMachine = "arm64";
const std::string kOther = "x86_64";
#else
const std::string kMachine = "x86_64";
const std::string kOther = "arm64";
#endif

std::string seed_path(const std::string& name) { return std::string(WISPEN_TEST_SEEDS) + "/loader/" + name; }

class LoadedImage : public ::testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Forms, LoadedImage, ::testing::Values("fixup_chains", "no_fixup_chains"),
                         [](const auto& test) {
                           return std::string(test.index == 0 ? "Chains" : "Opcodes");
                         });

TEST_P(LoadedImage, IsBoundRunAndFoundByItsAddresses) {
  const std::string path = seed_path(kMachine + "-exceptions-" + GetParam());
  EXPECT_TRUE(loader::is_macho_file(path));
  const auto handle = loader::load_bundle(path);
  ASSERT_TRUE(handle.ok()) << handle.error().message;
  EXPECT_EQ(*loader::load_bundle(path), *handle) << "a second time, the first one is given";
  int** const pointer = static_cast<int**>(loader::symbol_of(*handle, "other_shown"));
  ASSERT_NE(pointer, nullptr);
  EXPECT_EQ(*pointer, loader::symbol_of(*handle, "shown"))
      << "a pointer inside the image did not move with it";
  EXPECT_EQ(**pointer, 4);
  const auto place = loader::bundle_around(*pointer);
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->path, path);
  EXPECT_FALSE(loader::bundle_around(&path).has_value());
  EXPECT_EQ(loader::symbol_of(*handle, "nothing"), nullptr);
}

TEST_P(LoadedImage, GetsFramesForItsFunctions) {
  const std::string bytes = contents_of(seed_path(kMachine + "-exceptions-" + GetParam()));
  const auto image = macho::parse_image(bytes);
  ASSERT_TRUE(image.ok());
  const auto mapping = loader::map_image(*image, loader::phone_symbol);
  ASSERT_TRUE(mapping.ok()) << mapping.error().message;
  const auto frames = loader::dwarf_frames(*image, mapping->base());
  ASSERT_TRUE(frames.ok()) << frames.error().message;
  EXPECT_GT(frames->size(), 100U);
  EXPECT_EQ(frames->substr(frames->size() - 4), std::string(4, '\0'));
}

TEST_P(LoadedImage, AMissingImportIsNamed) {
  const std::string bytes = contents_of(seed_path(kMachine + "-" + GetParam()));
  const auto image = macho::parse_image(bytes);
  const auto mapping = loader::map_image(*image, [](const macho::Import& import, std::string_view library) {
    return import.name == "_malloc" ? nullptr : loader::phone_symbol(import, library);
  });
  ASSERT_FALSE(mapping.ok());
  EXPECT_THAT(mapping.error().message, HasSubstr("_malloc of /usr/lib/libSystem.B.dylib"));
}

TEST_P(LoadedImage, AnInitialiserOutsideTheCodeIsNotRun) {
  const std::string bytes = contents_of(seed_path(kMachine + "-" + GetParam()));
  auto image = macho::parse_image(bytes);
  auto mapping = loader::map_image(*image, loader::phone_symbol);
  ASSERT_TRUE(mapping.ok());
  ASSERT_TRUE(loader::run_initialisers(*image, *mapping).ok());
  for (macho::Segment& segment : image->segments) segment.protection &= ~macho::kProtectionExecute;
  const auto ran = loader::run_initialisers(*image, *mapping);
  EXPECT_FALSE(ran.ok());
}

TEST(Loader, RefusesWhatIsNoBundleForThisMachine) {
  const TemporaryFolder folder;
  write_file(folder / "text", "not an image");
  EXPECT_FALSE(loader::is_macho_file(folder / "text"));
  EXPECT_FALSE(loader::is_macho_file(folder / "missing"));
  EXPECT_FALSE(loader::load_bundle(folder / "text").ok());
  EXPECT_FALSE(loader::load_bundle(folder / "missing").ok());
  const auto other =
      loader::load_bundle(std::string(WISPEN_TEST_SEEDS) + "/macho/" + kOther + "-fixup_chains");
  ASSERT_FALSE(other.ok());
  EXPECT_THAT(other.error().message, HasSubstr("no code for this processor"));
}

}  // namespace
}  // namespace wispen::testing
