// cells/XXXSegmentTableImageCell.hpp: segments that show pictures, each named by its value's title.
#pragma once

#include "platform/Preferences.hpp"

namespace wispen {

class XXXSegmentTableImageCell : public objc::Authored<XXXSegmentTableImageCell, PSSegmentTableCell> {
 public:
  static constexpr objc::FixedString kClass{"XXXSegmentTableImageCell"};
  using Authored::Authored;

  static void define();

  static XXXSegmentTableImageCell initWithStyle(objc::Allocated<XXXSegmentTableImageCell> self,
                                                NSInteger style, const NSString& identifier,
                                                const PSSpecifier& specifier);
  /// A title that names no image of the bundle stays a word.
  void refreshCellContentsWithSpecifier(const PSSpecifier& specifier) const;

 private:
  static constexpr objc::InstanceVariable<"_bundle", NSBundle> kBundle{};

  NSBundle& image_bundle() const { return variable(kBundle); }
};

}  // namespace wispen
