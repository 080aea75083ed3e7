// host/uikit/controllers/trait_collection.hpp: UITraitCollection: idiom, appearance, size classes, text size.
#pragma once

#include "host/graphics/text_style.hpp"
#include "platform/Foundation.hpp"

namespace wispen::uikit {

/// The platform's values; 0 is unspecified for style and size classes, -1 for idiom and direction.
struct Traits {
  NSInteger idiom = -1;
  NSInteger style = 0;                  // 1 light, 2 dark
  NSInteger horizontal_size_class = 0;  // 1 compact, 2 regular
  NSInteger vertical_size_class = 0;
  NSInteger layout_direction = -1;
  double display_scale = 0;
  NSString content_size;
};

class TraitCollection : public objc::Authored<TraitCollection, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UITraitCollection"};
  using Authored::Authored;

  static void define();
  /// Of the display as it is now.
  static TraitCollection current();

 private:
  friend struct TraitMethods;
};

}  // namespace wispen::uikit
