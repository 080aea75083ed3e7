// host/uikit/view/trait_collection.cpp: UITraitCollection: idiom, appearance, size classes, text size.

#include "host/uikit/view/trait_collection.hpp"

#include <string>

#include "host/graphics/text_style.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/view/session.hpp"
#include "platform/UIKit.hpp"

namespace wispen::uikit {

namespace {

/// What a collection does not say is unspecified; the platform's numbers for that are 0 and -1.
class TraitCollection : public objc::Implementation<TraitCollection, UITraitCollection> {
 public:
  static UITraitCollection current(objc::ClassRef) { return current_trait_collection(); }
  static UITraitCollection with_style(objc::ClassRef, UIUserInterfaceStyle style) {
    UITraitCollection traits = objc::make<UITraitCollection>();
    of(traits).style = style;
    return traits;
  }
  static UITraitCollection with_idiom(objc::ClassRef, UIUserInterfaceIdiom idiom) {
    UITraitCollection traits = objc::make<UITraitCollection>();
    of(traits).idiom = idiom;
    return traits;
  }
  bool differs(const UITraitCollection& other) const { return !other || style != of(other).style; }

  UIUserInterfaceIdiom idiom = UIUserInterfaceIdiom::Unspecified;
  UIUserInterfaceStyle style = UIUserInterfaceStyle::Unspecified;
  UIUserInterfaceSizeClass horizontal_size_class = UIUserInterfaceSizeClass::Unspecified;
  UIUserInterfaceSizeClass vertical_size_class = UIUserInterfaceSizeClass::Unspecified;
  NSInteger layout_direction = -1;
  double display_scale = 0;
  NSString content_size;
};

}  // namespace

UITraitCollection current_trait_collection() {
  using enum UIUserInterfaceSizeClass;
  UITraitCollection collection = objc::make<UITraitCollection>();
  TraitCollection& traits = TraitCollection::of(collection);
  const DisplaySettings settings = display_settings();
  traits.idiom =
      settings.idiom == graphics::Idiom::Pad ? UIUserInterfaceIdiom::Pad : UIUserInterfaceIdiom::Phone;
  traits.style =
      graphics::is_dark(settings.appearance) ? UIUserInterfaceStyle::Dark : UIUserInterfaceStyle::Light;
  traits.layout_direction = settings.right_to_left ? 1 : 0;
  traits.display_scale = settings.scale;
  const std::string size(graphics::content_size_name(settings.content_size));
  traits.content_size = NSString(("UICTContentSizeCategory" + size).c_str());
  if (const Session* const session = Session::current()) {
    const DeviceModel& device = session->device();
    const bool flat = !device.is_pad() && device.orientation == Orientation::Landscape;
    traits.horizontal_size_class = device.is_regular_width() ? Regular : Compact;
    traits.vertical_size_class = flat ? Compact : Regular;
  }
  return collection;
}

void define_trait_collection() {
  using T = TraitCollection;
  objc::Class<UITraitCollection>::implemented_by<T>()
      .class_method<"currentTraitCollection", &T::current>()
      .class_method<"traitCollectionWithUserInterfaceStyle:", &T::with_style>()
      .class_method<"traitCollectionWithUserInterfaceIdiom:", &T::with_idiom>()
      .getter<"userInterfaceIdiom", &T::idiom>()
      .getter<"userInterfaceStyle", &T::style>()
      .getter<"horizontalSizeClass", &T::horizontal_size_class>()
      .getter<"verticalSizeClass", &T::vertical_size_class>()
      .getter<"layoutDirection", &T::layout_direction>()
      .getter<"displayScale", &T::display_scale>()
      .getter<"preferredContentSizeCategory", &T::content_size>()
      .method<"hasDifferentColorAppearanceComparedToTraitCollection:", &T::differs>()
      .register_class();
}

}  // namespace wispen::uikit
