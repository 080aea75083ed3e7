// host/uikit/containers/controllers/presentation.hpp: how one controller's page comes up over another's.
#pragma once

#include "host/uikit/containers/controllers/view_controller.hpp"
#include "host/uikit/view/events/gesture_recognizer.hpp"

namespace wispen::uikit {

enum class PresentationKind {
  Full,   // covers the presenter, which disappears
  Card,   // a sheet from the bottom of a phone
  Box,    // a sheet in the middle of a pad
  Alert,  // in the middle, as large as it wants to be
  ActionSheet,
};

/// Owned by the presenter while it presents.
class Presentation {
 public:
  Presentation(const UIViewController& presenter, UIViewController presented);
  Presentation(const Presentation&) = delete;
  Presentation& operator=(const Presentation&) = delete;
  ~Presentation();

  void show(bool animated, const objc::Block<void()>& completion);
  void hide(bool animated, const objc::Block<void()>& completion);
  /// The presenter is going away.
  void abandon();

 private:
  PresentationKind kind_of() const;
  Rect resting_frame() const;
  Rect hidden_frame() const;
  void pose(double shown);
  void start_writing();
  void dress();
  /// A card becomes a box, and back, when the screen becomes another.
  void adapt();
  void dragged(const UIPanGestureRecognizer& pan);
  void tapped_outside();

  friend class PresentationArea;
  void resized();
  objc::Unowned<UIViewController> presenter_;
  UIViewController presented_;
  PresentationKind kind_;
  UIView area_;  // over all of the window
  UIView dim_;
  UIView sheet_;  // holds the presented view
  Size laid_out_size_;
  bool hiding_ = false;
};

void define_presentation();

}  // namespace wispen::uikit
