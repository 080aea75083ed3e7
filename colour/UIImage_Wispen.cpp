// colour/UIImage_Wispen.cpp: UIImage(Wispen).

#include "colour/UIImage_Wispen.hpp"

#include <cstdint>
#include <memory>
#include <vector>

#include "colour/RGBPixel.hpp"
#include "colour/pixel_groups.hpp"
#include "colour/sample_size.hpp"
#include "platform/CoreGraphics.hpp"
#include "platform/UIKit/UIColor.hpp"
#include "platform/UIKit/UIImage.hpp"

namespace wispen {

namespace {

using colour::Group;

constexpr int kDominantThreshold = 27;
constexpr int kSecondThreshold = 50;
constexpr double kRunnerUpShare = 0.125;
constexpr double kBrightnessWeight = 0.5;
constexpr double kDominanceShare = 0.6;

struct ContextRelease {
  void operator()(CGContextRef context) const { CGContextRelease(context); }
};
using Context = std::unique_ptr<CGContext, ContextRelease>;

struct Sample {
  std::vector<std::uint8_t> pixels;  // red, green, blue, alpha, premultiplied
  std::size_t positions = 0;
};

/// Empty where there is nothing to look at: no width, as of a large portrait image, or a size beyond what any
/// image has, whose product of sides came out small only because it wrapped.
Sample sample_of(const UIImage& image) {
  const CGSize points = image.size();
  const colour::SampleSize size = colour::sample_size(points.width, points.height);
  Sample sample;
  if (size.width <= 0 || size.height <= 0) return sample;
  const auto width = static_cast<std::size_t>(size.width);
  const auto height = static_cast<std::size_t>(size.height);
  if (width * height > static_cast<std::size_t>(colour::kSamplingBudget)) return sample;
  sample.positions = width * height;
  sample.pixels.resize(4 * sample.positions);

  const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  const Context context(CGBitmapContextCreate(sample.pixels.data(), width, height, 8, 4 * width, space,
                                              kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big));
  CGColorSpaceRelease(space);
  CGContextDrawImage(context.get(), CGRectMake(0, 0, size.width, size.height), image.CGImage());
  return sample;
}

std::vector<Group> groups_of(const Sample& sample, int threshold) {
  return colour::group_pixels(sample.pixels.data(), sample.positions, threshold);
}

UIColor color_of(const Group& group) {
  const auto component = [](std::int32_t byte) {
    return static_cast<double>(static_cast<float>(byte) / 255.0F);
  };
  return UIColor::colorWithRed(component(group.r), component(group.g), component(group.b), 1.0);
}

double vividness_of(const UIColor& color) {
  CGFloat saturation = 0;
  CGFloat brightness = 0;
  color.getHue(nullptr, &saturation, &brightness, nullptr);
  return brightness * kBrightnessWeight + saturation;
}

UIColor dominant_color(const UIImage& self) {
  const std::vector<Group> groups = groups_of(sample_of(self), kDominantThreshold);
  const auto [leader, runner_up] = colour::leaders(groups);
  if (runner_up == nullptr) return UIColor::redColor();
  const UIColor leading = color_of(*leader);
  if (!(runner_up->d > kRunnerUpShare * leader->d)) return leading;
  const UIColor following = color_of(*runner_up);
  return vividness_of(following) > vividness_of(leading) ? following : leading;
}

UIColor second_dominant_color(const UIImage& self) {
  const Sample sample = sample_of(self);
  const std::vector<Group> groups = groups_of(sample, kSecondThreshold);
  const auto [leader, runner_up] = colour::leaders(groups);
  // Where there is no group at all, the platform's own exception says so: callers rely on it.
  if (leader == nullptr) return NSArray::array().objectAtIndex<UIColor>(0);
  const bool dominates = leader->d + 1 > kDominanceShare * static_cast<double>(sample.positions);
  return color_of(dominates && runner_up != nullptr ? *runner_up : *leader);
}

int colour_distance(const UIImage& /*self*/, const NSObject& a, const NSObject& b) {
  const auto difference = [](int x, int y) {  // wraps, as 32 bits do
    const auto apart = static_cast<std::uint32_t>(x) - static_cast<std::uint32_t>(y);
    return static_cast<std::int32_t>(apart) < 0 ? 0U - apart : apart;
  };
  return static_cast<int>(difference(objc::send<"r", int>(a), objc::send<"r", int>(b)) +
                          difference(objc::send<"g", int>(a), objc::send<"g", int>(b)) +
                          difference(objc::send<"b", int>(a), objc::send<"b", int>(b)));
}

}  // namespace

void define_image_category() {
  RGBPixel::define();
  objc::Category<UIImage>()
      .method<"wispDominantColor", &dominant_color>()
      .method<"wispSecondDominantColor", &second_dominant_color>()
      .method<"colourDistance:andB:", &colour_distance>();
}

}  // namespace wispen
