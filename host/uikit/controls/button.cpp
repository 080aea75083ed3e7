// host/uikit/controls/button.cpp: UIButton: words or a picture to press.

#include <algorithm>

#include "host/uikit/controls/controls.hpp"
#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/view/animation.hpp"
#include "host/uikit/view/hooks.hpp"
#include "host/uikit/view/painting/painter.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::uikit {

namespace {

constexpr double kDefaultSize = 18;  // of a title, on the platform; system buttons have 15 by style
constexpr double kSystemTitleSize = 15;
constexpr double kImageGap = 6;
constexpr double kHighlightedAlpha = 0.2;
constexpr double kHighlightFadeSeconds = 0.25;

template <class T>
T for_state(const std::map<NSUInteger, T>& all, NSUInteger state) {
  // Disabled wins over highlighted, highlighted over selected, as on the platform.
  for (const NSUInteger one : {state, state & UIControlStateDisabled, state & UIControlStateHighlighted,
                               state & UIControlStateSelected, UIControlStateNormal}) {
    const auto found = all.find(one);
    if (found != all.end() && found->second) return found->second;
  }
  return T();
}

class Button : public objc::Implementation<Button, UIButton> {
 public:
  static UIButton buttonWithType(objc::ClassRef cls, UIButtonType type) {
    UIButton button = objc::allocate<UIButton>(cls).init();
    if (!button) return button;
    of(button).type_ = type;
    const char* symbol = nullptr;
    switch (type) {
      case UIButtonType::System:
        button.titleLabel().setFont(font_from(graphics::Font::system(kSystemTitleSize)));
        break;
      case UIButtonType::DetailDisclosure:
      case UIButtonType::InfoLight:
      case UIButtonType::InfoDark:
        symbol = "info.circle";
        break;
      case UIButtonType::ContactAdd:
        symbol = "plus.circle";
        break;
      case UIButtonType::Close:
        symbol = "xmark.circle.fill";
        break;
      default:
        break;
    }
    if (symbol != nullptr) {
      button.setImage(UIImage::systemImageNamed(NSString(symbol)), UIControlStateNormal);
      button.sizeToFit();
    }
    return button;
  }
  static UIButton initWithFrame(objc::Allocated<UIButton> self, const Rect& frame) {
    UIButton button = super_init<"initWithFrame:">(std::move(self), frame);
    if (!button) return button;
    of(button).image_view_ = objc::make<UIImageView>();
    of(button).image_view_.setContentMode(UIViewContentMode::Center);
    of(button).title_label_ = objc::make<UILabel>();
    of(button).title_label_.setFont(font_from(graphics::Font::system(kDefaultSize)));
    button.addSubview(of(button).image_view_);
    button.addSubview(of(button).title_label_);
    return button;
  }
  bool follows_tint() { return type_ != UIButtonType::Custom; }
  UIColor title_colour(NSUInteger state) {
    if (const UIColor own = for_state(title_colours_, state)) return own;
    if (!follows_tint()) return UIColor::whiteColor();
    return (state & UIControlStateDisabled) != 0 ? UIColor::tertiaryLabelColor() : self().tintColor();
  }
  void update() {
    const NSUInteger now = self().state();
    if (const auto attributed = for_state(attributed_titles_, now)) {
      title_label_.setAttributedText(attributed);
    } else {
      title_label_.setText(for_state(titles_, now));
    }
    title_label_.setTextColor(title_colour(now));
    image_view_.setImage(for_state(images_, now));
    const bool disabled = (now & UIControlStateDisabled) != 0;
    image_view_.setAlpha(disabled ? 0.5 : 1);
    self().setNeedsLayout();
    self().setNeedsDisplay();
  }
  void stateChanged() {
    update();
    // Pressed at once, and let go slowly, as the platform shows it.
    const double alpha = self().isHighlighted() ? kHighlightedAlpha : 1;
    const auto show = [&] {
      title_label_.setAlpha(alpha);
      image_view_.setAlpha(self().isEnabled() ? alpha : 0.5);
    };
    AnimationEngine* const engine = AnimationEngine::current();
    if (self().isHighlighted() || engine == nullptr) {
      show();
    } else if (title_label_.alpha() != alpha) {
      engine->animate({.duration = kHighlightFadeSeconds}, show);
    }
  }
  Size image_size() {
    const graphics::Image* const image = image_of(image_view_.image());
    return image != nullptr ? image->size() : Size{};
  }
  Size title_size() { return title_label_.sizeThatFits({}); }
  Size sizeThatFits(const Size&) {
    const Size title = title_size();
    const Size image = image_size();
    const double gap = title.width > 0 && image.width > 0 ? gap_beside_title() : 0;
    Size size{title.width + gap + image.width, std::max(title.height, image.height)};
    // A title alone keeps the platform's minimum around it.
    if (title.width > 0 && type_ == UIButtonType::System) size.height += 12;
    const EdgeInsets& insets = content_insets_;
    size.width += insets.left + insets.right;
    size.height += insets.top + insets.bottom;
    if (type_ == UIButtonType::System && size.width < 30) size.width = 30;
    return size;
  }
  Size intrinsicContentSize() { return sizeThatFits({}); }
  double gap_beside_title() const { return type_ == UIButtonType::System ? kImageGap : 0; }
  void layoutSubviews() {
    const Rect room = Rect(self().bounds()).inset(content_insets_);
    const Size image = image_size();
    Size title = title_size();
    const double gap = title.width > 0 && image.width > 0 ? gap_beside_title() : 0;
    title.width = std::min(title.width, std::max(0.0, room.width() - image.width - gap));
    const double all = image.width + gap + title.width;
    const double scale = display_settings().scale;
    double x = room.mid_x() - all / 2;
    const bool turned = is_right_to_left(self());
    using enum UIControlContentHorizontalAlignment;
    const auto side = self().contentHorizontalAlignment();
    if (side == Left || side == (turned ? Trailing : Leading)) x = room.min_x();
    if (side == Right || side == (turned ? Leading : Trailing)) x = room.max_x() - all;
    x = round_to_pixel(x, scale);
    const auto middle = [&](double height) { return round_to_pixel(room.mid_y() - height / 2, scale); };
    const double image_x = turned ? x + title.width + gap : x;
    const double title_x = turned ? x : x + image.width + gap;
    image_view_.setFrame(Rect{{image_x + image_insets_.left - image_insets_.right,
                               middle(image.height) + image_insets_.top - image_insets_.bottom},
                              image});
    title_label_.setFrame(Rect{{title_x + title_insets_.left - title_insets_.right,
                                middle(title.height) + title_insets_.top - title_insets_.bottom},
                               title});
  }
  void paint(graphics::Canvas& canvas, const Rect& bounds) {
    const UIImage background = for_state(backgrounds_, self().state());
    if (background) paint_image(background, canvas, bounds, ContentMode::ScaleToFill, self().tintColor());
  }
  void setTitle(const NSString& title, NSUInteger state) {
    titles_[state] = title;
    update();
    self().invalidateIntrinsicContentSize();
  }
  NSString titleForState(NSUInteger state) { return for_state(titles_, state); }
  void setAttributedTitle(const NSAttributedString& title, NSUInteger state) {
    attributed_titles_[state] = title;
    update();
    self().invalidateIntrinsicContentSize();
  }
  void setTitleColor(const UIColor& colour, NSUInteger state) {
    title_colours_[state] = colour;
    update();
  }
  UIColor titleColorForState(NSUInteger state) { return title_colour(state); }
  UIColor currentTitleColor() { return title_colour(self().state()); }
  void setImage(const UIImage& image, NSUInteger state) {
    images_[state] = image;
    update();
    self().invalidateIntrinsicContentSize();
  }
  UIImage imageForState(NSUInteger state) { return for_state(images_, state); }
  void setBackgroundImage(const UIImage& image, NSUInteger state) {
    backgrounds_[state] = image;
    self().setNeedsDisplay();
  }
  template <auto Member>
  void setInsets(const EdgeInsets& insets) {
    this->*Member = insets;
    self().invalidateIntrinsicContentSize();
    self().setNeedsLayout();
  }
  void tintColorDidChange() {
    super<"tintColorDidChange">();
    update();
  }
  NSString accessibilityLabel() {
    const NSString own = super<"accessibilityLabel", NSString>();
    return own ? own : currentTitle();
  }
  UIView hitTest(const Point& point, const NSObject& event) {
    const UIView hit = super<"hitTest:withEvent:", UIView>(point, event);
    return hit ? UIView(self()) : hit;  // its parts are its own
  }
  NSString currentTitle() { return title_label_.text(); }

 private:
  friend void wispen::uikit::define_button();

  UIButtonType type_ = UIButtonType::Custom;
  UILabel title_label_;
  UIImageView image_view_;
  // By control state; what a state lacks is the normal one's.
  std::map<NSUInteger, NSString> titles_;
  std::map<NSUInteger, NSAttributedString> attributed_titles_;
  std::map<NSUInteger, UIColor> title_colours_;
  std::map<NSUInteger, UIImage> images_;
  std::map<NSUInteger, UIImage> backgrounds_;
  EdgeInsets content_insets_;
  EdgeInsets title_insets_;
  EdgeInsets image_insets_;
};

}  // namespace

void define_button() {
  objc::Class<UIButton>::implemented_by<Button>()
      .class_method<"buttonWithType:", &Button::buttonWithType>()
      .initializer<"initWithFrame:", &Button::initWithFrame>()
      .getter<"buttonType", &Button::type_>()
      .getter<"titleLabel", &Button::title_label_>()
      .getter<"imageView", &Button::image_view_>()
      .method<"setTitle:forState:", &Button::setTitle>()
      .method<"titleForState:", &Button::titleForState>()
      .method<"currentTitle", &Button::currentTitle>()
      .method<"setAttributedTitle:forState:", &Button::setAttributedTitle>()
      .method<"setTitleColor:forState:", &Button::setTitleColor>()
      .method<"titleColorForState:", &Button::titleColorForState>()
      .method<"currentTitleColor", &Button::currentTitleColor>()
      .method<"setImage:forState:", &Button::setImage>()
      .method<"imageForState:", &Button::imageForState>()
      .method<"setBackgroundImage:forState:", &Button::setBackgroundImage>()
      .getter<"contentEdgeInsets", &Button::content_insets_>()
      .method<"setContentEdgeInsets:", &Button::setInsets<&Button::content_insets_>>()
      .getter<"titleEdgeInsets", &Button::title_insets_>()
      .method<"setTitleEdgeInsets:", &Button::setInsets<&Button::title_insets_>>()
      .getter<"imageEdgeInsets", &Button::image_insets_>()
      .method<"setImageEdgeInsets:", &Button::setInsets<&Button::image_insets_>>()
      .method<"sizeThatFits:", &Button::sizeThatFits>()
      .method<"intrinsicContentSize", &Button::intrinsicContentSize>()
      .method<"layoutSubviews", &Button::layoutSubviews>()
      .method<"hitTest:withEvent:", &Button::hitTest>()
      .method<"tintColorDidChange", &Button::tintColorDidChange>()
      .method<"accessibilityLabel", &Button::accessibilityLabel>()
      .method<hooks::kControlStateChanged, &Button::stateChanged>()
      .register_class();
  set_painter<&Button::paint>();
}

}  // namespace wispen::uikit
