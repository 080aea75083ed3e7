// host/uikit/values/cg_color.cpp: colour spaces and colours of CoreGraphics.

#include "host/uikit/values/core_graphics.hpp"

using wispen::graphics::Components;
using wispen::uikit::Counted;

namespace {

// The device spaces live as long as the process, so that counting references to them is needless.
CGColorSpace device_rgb{kCGColorSpaceModelRGB, 3};
CGColorSpace device_grey{kCGColorSpaceModelMonochrome, 1};

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

CGColorSpaceRef CGColorSpaceCreateDeviceRGB() { return &device_rgb; }
CGColorSpaceRef CGColorSpaceCreateDeviceGray() { return &device_grey; }
CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space) { return space; }
void CGColorSpaceRelease(CGColorSpaceRef /*space*/) {}

CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space) {
  return space != nullptr ? space->model : kCGColorSpaceModelUnknown;
}
std::size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space) {
  return space != nullptr ? space->components : 0;
}

CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* c) {
  if (space == nullptr || c == nullptr) return nullptr;
  return Counted::make<CGColor>(space == &device_grey ? Components::grey(c[0], c[1])
                                                      : Components::rgb(c[0], c[1], c[2], c[3]));
}
CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha) {
  return color != nullptr ? Counted::make<CGColor>(color->components.with_alpha(alpha)) : nullptr;
}
CGColorRef CGColorRetain(CGColorRef color) { return Counted::retain(color); }
void CGColorRelease(CGColorRef color) { Counted::release(color); }

const CGFloat* CGColorGetComponents(CGColorRef color) {
  return color != nullptr ? color->components.values().data() : nullptr;
}
std::size_t CGColorGetNumberOfComponents(CGColorRef color) {
  return color != nullptr ? static_cast<std::size_t>(color->components.count()) : 0;
}
CGFloat CGColorGetAlpha(CGColorRef color) { return color != nullptr ? color->components.alpha() : 0; }
CGColorSpaceRef CGColorGetColorSpace(CGColorRef color) {
  if (color == nullptr) return nullptr;
  return color->components.space() == wispen::graphics::ColourSpace::Grey ? &device_grey : &device_rgb;
}
bool CGColorEqualToColor(CGColorRef a, CGColorRef b) {
  return a == b || (a != nullptr && b != nullptr && a->components == b->components);
}

}  // extern "C"
#pragma GCC visibility pop
