// host/graphics/gobject_ref.hpp: owners of what the drawing libraries count by reference.
#pragma once

#include <cairo.h>
#include <glib-object.h>
#include <pango/pango.h>

#include <memory>

namespace wispen::graphics {

/// Calls one function on what it is given: the deleter of an owner without state.
template <auto Release>
struct Releaser {
  template <class T>
  void operator()(T* object) const {
    Release(object);
  }
};

/// Adopts the one reference that a library's constructor handed out.
template <class T>
using GObjectRef = std::unique_ptr<T, Releaser<&g_object_unref>>;

using CairoContext = std::unique_ptr<cairo_t, Releaser<&cairo_destroy>>;
using CairoSurface = std::unique_ptr<cairo_surface_t, Releaser<&cairo_surface_destroy>>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, Releaser<&cairo_pattern_destroy>>;
using CairoFontOptions = std::unique_ptr<cairo_font_options_t, Releaser<&cairo_font_options_destroy>>;
using CairoPath = std::unique_ptr<cairo_path_t, Releaser<&cairo_path_destroy>>;
using PangoAttributes = std::unique_ptr<PangoAttrList, Releaser<&pango_attr_list_unref>>;
using PangoDescription = std::unique_ptr<PangoFontDescription, Releaser<&pango_font_description_free>>;
using GErrorOwner = std::unique_ptr<GError, Releaser<&g_error_free>>;

}  // namespace wispen::graphics
