// host/uikit/layout/layout_guide.hpp: UILayoutGuide: a rectangle that takes part in layout and is no view.
#pragma once

#include "host/uikit/views/geometry.hpp"
#include "platform/Foundation.hpp"

namespace wispen::uikit {

class View;

enum class GuideKind { Free, SafeArea, LayoutMargins };

/// The host's UILayoutGuide. A view's safe area and margins are guides whose edges follow the view's.
class LayoutGuide : public objc::Authored<LayoutGuide, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"UILayoutGuide"};
  using Authored::Authored;

  static void define();
  /// The view's own guide of that kind, made when first asked for.
  static LayoutGuide of(const View& view, GuideKind kind);
  View owner() const;
  void set_owner(const View& view) const;
  GuideKind kind() const;
  /// Distances from the owner's edges; none for a free guide.
  EdgeInsets insets() const;
  /// In the owner's coordinates.
  Rect layoutFrame() const;
  void set_layout_frame(const Rect& frame) const;

 private:
  struct State;
  State& parts() const;
};

}  // namespace wispen::uikit
