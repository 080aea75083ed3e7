// wispen/colour_items.cpp: the colours of texts and images, asked for by selector.

#include "wispen/colour_items.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <thread>
#include <utility>

#include "host/files/read_file.hpp"
#include "platform/UIKit.hpp"

namespace wispen::program {

namespace {

constexpr std::size_t kLargestFile = std::size_t{256} << 20;

extern "C" {
// Foundation must know a thread before it is sent messages there.
unsigned char GSRegisterCurrentThread();
void GSUnregisterCurrentThread();
}

bool looks_like_image(const std::filesystem::path& path) {
  std::string extension = path.extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  constexpr std::array kKnown{".png", ".jpg", ".jpeg", ".webp"};
  return std::ranges::find(kKnown, extension) != kKnown.end();
}

ColourItem image_item(std::string path) {
  ColourItem item;
  item.input = std::move(path);
  item.is_image = true;
  return item;
}

void add_folder(const std::string& folder, std::vector<ColourItem>& items) {
  std::vector<std::string> paths;
  std::error_code error;
  for (std::filesystem::recursive_directory_iterator at(folder, error), end; !error && at != end;
       at.increment(error)) {
    std::error_code ignored;
    if (at->is_regular_file(ignored) && looks_like_image(at->path())) paths.push_back(at->path().string());
  }
  std::ranges::sort(paths);
  for (std::string& path : paths) items.push_back(image_item(std::move(path)));
  if (error) {
    items.push_back(image_item(folder));
    items.back().error = "the folder " + folder + " cannot be read to its end: " + error.message();
  } else if (paths.empty()) {
    items.push_back(image_item(folder));
    items.back().error = "there is no image in " + folder;
  }
}

NamedColour named(const UIColor& color) {
  NamedColour result;
  color.getRed(&result.red, &result.green, &result.blue, &result.alpha);
  result.hex = objc::send<"wispHexStringFromColor:", NSString>(objc::class_for<UIColor>(), color).utf8();
  result.dark = objc::send<"wispIsDarkColor", bool>(color);
  return result;
}

void find_text_colour(ColourItem& item) {
  const NSString text(item.input.c_str());
  if (!text) {
    item.error = "a text is not UTF-8";
    return;
  }
  item.colour = named(objc::send<"wispRGBAColorFromHexString:", UIColor>(objc::class_for<UIColor>(), text));
}

void find_image_colour(ColourItem& item, ImageColour wanted) {
  const auto bytes = files::read(item.input, kLargestFile);
  if (!bytes) {
    item.error = bytes.error().message;
    return;
  }
  const UIImage image = UIImage::imageWithData(NSData::dataWithBytes(bytes->data(), bytes->size()));
  if (!image) {
    item.error = item.input + " is no whole PNG, JPEG or WebP image";
    return;
  }
  try {
    item.colour =
        named(wanted == ImageColour::Dominant ? objc::send<"wispDominantColor", UIColor>(image)
                                              : objc::send<"wispSecondDominantColor", UIColor>(image));
  } catch (...) {  // the platform's exception, which says so little
    item.error = item.input + " has no opaque pixel to look at";
  }
}

void find_colour(ColourItem& item, ImageColour wanted) {
  if (!item.error.empty()) return;
  const objc::AutoreleasePool pool;
  if (item.is_image) {
    find_image_colour(item, wanted);
  } else {
    find_text_colour(item);
  }
}

}  // namespace

std::vector<ColourItem> colour_items(const std::vector<std::string>& arguments, bool texts_allowed) {
  std::vector<ColourItem> items;
  for (const std::string& argument : arguments) {
    std::error_code error;
    const auto status = std::filesystem::status(argument, error);
    if (std::filesystem::is_directory(status)) {
      add_folder(argument, items);
    } else if (std::filesystem::exists(status)) {
      items.push_back(image_item(argument));
    } else {
      items.push_back({argument, false, {}, {}});
      if (!texts_allowed) items.back().error = "there is no file " + argument;
    }
  }
  return items;
}

void find_colours(std::vector<ColourItem>& items, ImageColour wanted) {
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  const std::size_t helpers = std::min(cores, items.size() / 8 + 1) - 1;  // a thread costs more than an icon
  std::atomic<std::size_t> next{0};
  const auto work = [&] {
    for (std::size_t i = next++; i < items.size(); i = next++) find_colour(items[i], wanted);
  };
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < helpers; ++i) {
    threads.emplace_back([&work] {
      GSRegisterCurrentThread();
      work();
      GSUnregisterCurrentThread();
    });
  }
  work();
}

}  // namespace wispen::program
