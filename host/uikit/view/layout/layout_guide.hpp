// host/uikit/view/layout/layout_guide.hpp: UILayoutGuide: a rectangle that takes part in layout and is not a
// view.
#pragma once

#include "host/geometry/geometry.hpp"
#include "host/uikit/view/geometry.hpp"
#include "platform/UIKit/UILayoutGuide.hpp"

namespace wispen::uikit {

enum class GuideKind { Free, SafeArea, LayoutMargins };

/// The host's UILayoutGuide. A view's safe area and margins are guides whose edges follow the view's.
class LayoutGuide : public objc::Implementation<LayoutGuide, UILayoutGuide> {
 public:
  /// The view's own guide of that kind, made when first asked for.
  static UILayoutGuide guide_of(const UIView& view, GuideKind kind);

  UIView owner() const { return owner_.lock(); }
  void set_owner(const UIView& view) { owner_ = view; }
  GuideKind kind() const { return kind_; }
  /// Distances from the owner's edges; none for a free guide.
  EdgeInsets insets() const;
  Rect layoutFrame() const;
  void set_layout_frame(const Rect& frame) { frame_ = frame; }

 private:
  objc::Weak<UIView> owner_;
  GuideKind kind_ = GuideKind::Free;
  Rect frame_;
};

void define_layout_guide();

}  // namespace wispen::uikit
