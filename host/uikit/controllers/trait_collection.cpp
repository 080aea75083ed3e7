// host/uikit/controllers/trait_collection.cpp: UITraitCollection: idiom, appearance, size classes, text size.

#include "host/uikit/controllers/trait_collection.hpp"

#include "host/uikit/session.hpp"
#include "host/uikit/values/display_settings.hpp"

namespace wispen::uikit {

namespace {

NSString content_size_category(graphics::ContentSize size) {
  const std::string name = "UICTContentSizeCategory" + std::string(graphics::content_size_name(size));
  return NSString(name.c_str());
}

}  // namespace

struct TraitMethods {
  static Traits& parts(const TraitCollection& self) { return self.state<Traits>(); }
  static TraitCollection currentTraitCollection(objc::ClassRef) { return TraitCollection::current(); }
  static TraitCollection withStyle(objc::ClassRef, NSInteger style) {
    TraitCollection traits = objc::make<TraitCollection>();
    parts(traits).style = style;
    return traits;
  }
  static TraitCollection withIdiom(objc::ClassRef, NSInteger idiom) {
    TraitCollection traits = objc::make<TraitCollection>();
    parts(traits).idiom = idiom;
    return traits;
  }
  static NSInteger idiom(const TraitCollection& self) { return parts(self).idiom; }
  static NSInteger style(const TraitCollection& self) { return parts(self).style; }
  static NSInteger horizontal(const TraitCollection& self) { return parts(self).horizontal_size_class; }
  static NSInteger vertical(const TraitCollection& self) { return parts(self).vertical_size_class; }
  static NSInteger direction(const TraitCollection& self) { return parts(self).layout_direction; }
  static double scale(const TraitCollection& self) { return parts(self).display_scale; }
  static NSString contentSize(const TraitCollection& self) { return parts(self).content_size; }
  static bool differs(const TraitCollection& self, const TraitCollection& other) {
    return !other || parts(self).style != parts(other).style;
  }
};

TraitCollection TraitCollection::current() {
  TraitCollection traits = objc::make<TraitCollection>();
  Traits& parts = TraitMethods::parts(traits);
  const DisplaySettings settings = display_settings();
  parts.idiom = settings.idiom == graphics::Idiom::Pad ? 1 : 0;
  parts.style = graphics::is_dark(settings.appearance) ? 2 : 1;
  parts.layout_direction = settings.right_to_left ? 1 : 0;
  parts.display_scale = settings.scale;
  parts.content_size = content_size_category(settings.content_size);
  if (const Session* const session = Session::current()) {
    const DeviceModel& device = session->device();
    const bool flat = !device.is_pad() && device.orientation == Orientation::Landscape;
    parts.horizontal_size_class = device.is_regular_width() ? 2 : 1;
    parts.vertical_size_class = flat ? 1 : 2;
  }
  return traits;
}

void TraitCollection::define() {
  using M = TraitMethods;
  objc::Class<TraitCollection>()
      .state<Traits>()
      .class_method<"currentTraitCollection", &M::currentTraitCollection>()
      .class_method<"traitCollectionWithUserInterfaceStyle:", &M::withStyle>()
      .class_method<"traitCollectionWithUserInterfaceIdiom:", &M::withIdiom>()
      .method<"userInterfaceIdiom", &M::idiom>()
      .method<"userInterfaceStyle", &M::style>()
      .method<"horizontalSizeClass", &M::horizontal>()
      .method<"verticalSizeClass", &M::vertical>()
      .method<"layoutDirection", &M::direction>()
      .method<"displayScale", &M::scale>()
      .method<"preferredContentSizeCategory", &M::contentSize>()
      .method<"hasDifferentColorAppearanceComparedToTraitCollection:", &M::differs>()
      .register_class();
}

}  // namespace wispen::uikit
