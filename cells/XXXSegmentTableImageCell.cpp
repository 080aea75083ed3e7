// cells/XXXSegmentTableImageCell.cpp: segments that show pictures, each named by its value's title.

#include "cells/XXXSegmentTableImageCell.hpp"

namespace wispen {

XXXSegmentTableImageCell XXXSegmentTableImageCell::initWithStyle(
    objc::Allocated<XXXSegmentTableImageCell> self, NSInteger style, const NSString& identifier,
    const PSSpecifier& specifier) {
  XXXSegmentTableImageCell cell =
      std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(style, identifier,
                                                                                   specifier);
  if (!cell) return cell;
  specifier.setProperty(NSNumber::numberWithInt(60), "height"_ns);
  cell.image_bundle() = objc::send<"bundle", NSBundle>(specifier.target());
  return cell;
}

void XXXSegmentTableImageCell::refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const {
  super<"refreshCellContentsWithSpecifier:">(specifier);
  const auto values = specifier.performSelector<NSArray>(objc::selector<"values">());
  const NSDictionary titles = specifier.titleDictionary();
  for (NSUInteger i = 0, count = values.count(); i < count; ++i) {
    const NSObject value = values.objectAtIndex(i);
    const auto name = objc::send<"objectForKeyedSubscript:", NSString>(titles, value);
    const UIImage image = UIImage::imageNamed(name, image_bundle(), NSObject())
                              .imageWithRenderingMode(UIImageRenderingMode::AlwaysOriginal);
    // Of two equal values both find the first segment.
    if (image) control<UISegmentedControl>().setImage(image, values.indexOfObject(value));
  }
}

void XXXSegmentTableImageCell::define() {
  using Self = XXXSegmentTableImageCell;
  objc::Class<Self>()
      .variable(kBundle)
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &Self::initWithStyle>()
      .method<"refreshCellContentsWithSpecifier:", &Self::refreshCellContentsWithSpecifier>()
      .register_class();
}

}  // namespace wispen
