// tests/host/uikit/view/painting/random_tree.hpp: a tree of views of all kinds that is changed at random.
#pragma once

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/controls/label.hpp"
#include "host/uikit/view/session.hpp"
#include "host/uikit/view/window.hpp"

namespace wispen::uikit {

/// A tree of views of all kinds, changed at random: the picture that is kept must stay what a new one would
/// be.
class RandomTree {
 public:
  RandomTree(const UIWindow& window, unsigned seed, bool turns)
      : window_(window), random_(seed), turns_(turns) {
    for (int i = 0; i < 12; ++i) insert();
  }

  void change() {
    AnimationEngine& animations = Session::current()->animations();
    if (one_in(3)) {
      animations.animate({.duration = number(0.05, 0.4), .delay = one_in(4) ? 0.05 : 0.0}, [&] { step(); });
    } else {
      step();
    }
  }

 private:
  bool one_in(int count) { return std::uniform_int_distribution<>(1, count)(random_) == 1; }
  double number(double least, double most) { return std::uniform_real_distribution<>(least, most)(random_); }
  /// On whole points mostly, where neighbours meet.
  double place(double most) { return one_in(3) ? number(-20, most) : std::round(number(-20, most)); }
  Rect frame() { return {{place(300), place(600)}, {std::abs(place(200)), std::abs(place(200))}}; }
  UIColor colour() {
    switch (std::uniform_int_distribution<>(0, 5)(random_)) {
      case 0:
        return UIColor::redColor();
      case 1:
        return UIColor::blueColor();
      case 2:
        return UIColor::yellowColor();
      case 3:
        return UIColor::greenColor();
      case 4:
        return UIColor::tertiarySystemFillColor();  // half transparent
      default:
        return UIColor();
    }
  }
  UIView any() { return views_[std::uniform_int_distribution<std::size_t>(0, views_.size() - 1)(random_)]; }

  UIView made() {
    switch (std::uniform_int_distribution<>(0, 9)(random_)) {
      case 0: {
        const UILabel label = objc::make<UILabel>();
        label.setText("Some words of some length"_ns);
        label.setNumberOfLines(one_in(2) ? 0 : 1);
        return label;
      }
      case 1:
        return objc::make<UISwitch>();
      case 2:
        return UIVisualEffectView::alloc().initWithEffect(
            UIBlurEffect::effectWithStyle(UIBlurEffectStyle::SystemUltraThinMaterial));
      case 3:
        return UIScrollView::alloc().initWithFrame(Rect{});
      default:
        return objc::make<UIView>();
    }
  }
  void insert() {
    const UIView view = made();
    view.setFrame(frame());
    if (!objc::cast_or_nil<UIVisualEffectView>(view)) view.setBackgroundColor(colour());
    if (one_in(4)) view.layer().setCornerRadius(number(1, 40));
    if (one_in(4)) view.setClipsToBounds(true);
    put(view);
    views_.push_back(view);
  }
  void put(const UIView& view) {
    const UIView above = views_.empty() || one_in(2) ? UIView(window_) : any();
    const UIView place = above.isDescendantOfView(view) ? UIView(window_) : above;
    place.insertSubview(view, std::uniform_int_distribution<>(0, 5)(random_));
  }
  AffineTransform turned() {
    if (one_in(3)) return {};
    if (!turns_) return AffineTransform::scaling(number(0.5, 1.5), number(0.5, 1.5));
    return AffineTransform::rotation(number(-1, 1)).then(AffineTransform::scaling(number(0.5, 1.5), 1));
  }

  void step() {
    const UIView view = any();
    switch (std::uniform_int_distribution<>(0, 14)(random_)) {
      case 0:
      case 1:
        return view.setFrame(frame());
      case 2:
        return view.setAlpha(one_in(3) ? 1 : number(0, 1));
      case 3:
        return view.setHidden(!view.isHidden());
      case 4:
        return view.setBackgroundColor(colour());
      case 5:
        return view.setTransform(turned());
      case 6:
        return view.setClipsToBounds(!view.clipsToBounds());
      case 7:
        return view.layer().setCornerRadius(one_in(2) ? 0 : number(1, 40));
      case 8:
        view.layer().setShadowOpacity(one_in(2) ? 0.0F : 0.5F);
        return;
      case 9:
        return view.removeFromSuperview();
      case 10:
        return put(view);
      case 11:
        return view.setBounds(Rect{{place(40), place(40)}, view.bounds().size});
      case 12:
        objc::send<"setBorderWidth:">(view.layer(), one_in(2) ? 0.0 : 3.0);
        return;
      case 13:
        if (const auto label = objc::cast_or_nil<UILabel>(view)) {
          return label.setText(one_in(2) ? "Others"_ns : "Some words, and some that are quite long"_ns);
        }
        return AnimationEngine::remove_all(view);
      default:
        return view.setCenter({place(300), place(600)});
    }
  }

  UIWindow window_;
  std::mt19937 random_;
  bool turns_;
  std::vector<UIView> views_;
};

}  // namespace wispen::uikit
