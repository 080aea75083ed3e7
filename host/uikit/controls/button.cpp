// host/uikit/controls/button.cpp: UIButton: words or a picture to press.

#include "host/uikit/controls/button.hpp"

#include <algorithm>

#include "host/uikit/painting/painter.hpp"
#include "host/uikit/values/color.hpp"
#include "host/uikit/values/display_settings.hpp"
#include "host/uikit/values/font.hpp"
#include "host/uikit/values/image.hpp"
#include "host/uikit/views/animation.hpp"

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
  for (const NSUInteger one : {state, state & control_state::kDisabled, state & control_state::kHighlighted,
                               state & control_state::kSelected, control_state::kNormal}) {
    const auto found = all.find(one);
    if (found != all.end() && found->second) return found->second;
  }
  return T();
}

}  // namespace

Button Button::make(ButtonType type) {
  return objc::send<"buttonWithType:", Button>(objc::class_for<Button>(), static_cast<NSInteger>(type));
}

struct ButtonMethods {
  using Self = Button;

  static Self buttonWithType(objc::ClassRef cls, NSInteger type) {
    Self button = objc::adopt<Self>(objc::abi::call<objc::abi::id>(
        reinterpret_cast<objc::abi::id>(cls.borrow()), objc::selector<"new">().borrow()));
    if (!button) return button;
    ButtonState& state = button.button();
    state.type = static_cast<ButtonType>(type);
    const char* symbol = nullptr;
    switch (state.type) {
      case ButtonType::System:
        button.set_font(graphics::Font::system(kSystemTitleSize));
        break;
      case ButtonType::DetailDisclosure:
      case ButtonType::InfoLight:
      case ButtonType::InfoDark:
        symbol = "info.circle";
        break;
      case ButtonType::ContactAdd:
        symbol = "plus.circle";
        break;
      case ButtonType::Close:
        symbol = "xmark.circle.fill";
        break;
      default:
        break;
    }
    if (symbol != nullptr) {
      button.set_image(UIImage::systemImageNamed(NSString(symbol)));
      button.sizeToFit();
    }
    return button;
  }

  static Self initWithFrame(objc::Allocated<Self> self, const Rect& frame) {
    Self button = std::move(self).initialize_super<"initWithFrame:">(frame);
    if (!button) return button;
    ButtonState& state = button.button();
    state.image_view = ImageView::make(UIImage());
    state.image_view.setContentMode(static_cast<NSInteger>(ContentMode::Centre));
    state.title_label = Label::make();
    state.title_label.setFont(font_from(graphics::Font::system(kDefaultSize)));
    button.addSubview(state.image_view);
    button.addSubview(state.title_label);
    return button;
  }

  static bool follows_tint(const Self& self) { return self.button().type != ButtonType::Custom; }

  static UIColor title_colour(const Self& self, NSUInteger state) {
    if (const UIColor own = for_state(self.button().title_colours, state)) return own;
    if (!follows_tint(self)) return UIColor::whiteColor();
    return (state & control_state::kDisabled) != 0 ? UIColor::tertiaryLabelColor() : self.tintColor();
  }

  static void update(const Self& self) {
    ButtonState& state = self.button();
    const NSUInteger now = self.control_states();
    if (const auto attributed = for_state(state.attributed_titles, now)) {
      state.title_label.setAttributedText(attributed);
    } else {
      state.title_label.setText(for_state(state.titles, now));
    }
    state.title_label.setTextColor(title_colour(self, now));
    state.image_view.setImage(for_state(state.images, now));
    const bool disabled = (now & control_state::kDisabled) != 0;
    state.image_view.setAlpha(disabled ? 0.5 : 1);
    self.setNeedsLayout();
    self.setNeedsDisplay();
  }

  static void stateChanged(const Self& self) {
    update(self);
    // Pressed at once, and let go slowly, as the platform shows it.
    ButtonState& state = self.button();
    const double alpha = self.isHighlighted() ? kHighlightedAlpha : 1;
    const auto show = [&] {
      state.title_label.setAlpha(alpha);
      state.image_view.setAlpha(self.isEnabled() ? alpha : 0.5);
    };
    AnimationEngine* const engine = AnimationEngine::current();
    if (self.isHighlighted() || engine == nullptr) {
      show();
    } else if (state.title_label.alpha() != alpha) {
      engine->animate({.duration = kHighlightFadeSeconds}, show);
    }
  }

  static Size image_size(const Self& self) {
    const graphics::Image* const image = image_of(self.button().image_view.image());
    return image != nullptr ? image->size() : Size{};
  }
  static Size title_size(const Self& self) { return self.button().title_label.sizeThatFits({}); }

  static Size sizeThatFits(const Self& self, const Size&) {
    const ButtonState& state = self.button();
    const Size title = title_size(self);
    const Size image = image_size(self);
    const double gap = title.width > 0 && image.width > 0 ? gap_of(state) : 0;
    Size size{title.width + gap + image.width, std::max(title.height, image.height)};
    // A title alone keeps the platform's minimum around it.
    if (title.width > 0 && state.type == ButtonType::System) size.height += 12;
    const EdgeInsets& insets = state.content_insets;
    size.width += insets.left + insets.right;
    size.height += insets.top + insets.bottom;
    if (state.type == ButtonType::System && size.width < 30) size.width = 30;
    return size;
  }
  static Size intrinsicContentSize(const Self& self) { return sizeThatFits(self, {}); }
  static double gap_of(const ButtonState& state) { return state.type == ButtonType::System ? kImageGap : 0; }

  static void layoutSubviews(const Self& self) {
    ButtonState& state = self.button();
    const Rect room = self.bounds().inset(state.content_insets);
    const Size image = image_size(self);
    Size title = title_size(self);
    const double gap = title.width > 0 && image.width > 0 ? gap_of(state) : 0;
    title.width = std::min(title.width, std::max(0.0, room.width() - image.width - gap));
    const double all = image.width + gap + title.width;
    const double scale = display_settings().scale;
    double x = room.mid_x() - all / 2;
    const NSInteger side = self.control().horizontal_alignment;  // 1 left, 2 right, 4 leading, 5 trailing
    const bool turned = self.is_right_to_left();
    if (side == 1 || (side == 4 && !turned) || (side == 5 && turned)) x = room.min_x();
    if (side == 2 || (side == 5 && !turned) || (side == 4 && turned)) x = room.max_x() - all;
    x = round_to_pixel(x, scale);
    const auto middle = [&](double height) { return round_to_pixel(room.mid_y() - height / 2, scale); };
    const double image_x = turned ? x + title.width + gap : x;
    const double title_x = turned ? x : x + image.width + gap;
    const EdgeInsets& image_insets = state.image_insets;
    state.image_view.setFrame({{image_x + image_insets.left - image_insets.right,
                                middle(image.height) + image_insets.top - image_insets.bottom},
                               image});
    const EdgeInsets& title_insets = state.title_insets;
    state.title_label.setFrame({{title_x + title_insets.left - title_insets.right,
                                 middle(title.height) + title_insets.top - title_insets.bottom},
                                title});
  }

  static void paint(const View& view, graphics::Canvas& canvas, const Rect& bounds) {
    const Self self = view.as<Self>();
    const UIImage background = for_state(self.button().backgrounds, self.control_states());
    if (background) paint_image(background, canvas, bounds, ContentMode::ScaleToFill, self.tintColor());
  }

  static void setTitle(const Self& self, const NSString& title, NSUInteger state) {
    self.button().titles[state] = title;
    update(self);
    self.invalidateIntrinsicContentSize();
  }
  static NSString titleForState(const Self& self, NSUInteger state) {
    return for_state(self.button().titles, state);
  }
  static void setAttributedTitle(const Self& self, const NSAttributedString& title, NSUInteger state) {
    self.button().attributed_titles[state] = title;
    update(self);
    self.invalidateIntrinsicContentSize();
  }
  static void setTitleColor(const Self& self, const UIColor& colour, NSUInteger state) {
    self.button().title_colours[state] = colour;
    update(self);
  }
  static UIColor titleColorForState(const Self& self, NSUInteger state) { return title_colour(self, state); }
  static UIColor currentTitleColor(const Self& self) { return title_colour(self, self.control_states()); }
  static void setImage(const Self& self, const UIImage& image, NSUInteger state) {
    self.button().images[state] = image;
    update(self);
    self.invalidateIntrinsicContentSize();
  }
  static UIImage imageForState(const Self& self, NSUInteger state) {
    return for_state(self.button().images, state);
  }
  static void setBackgroundImage(const Self& self, const UIImage& image, NSUInteger state) {
    self.button().backgrounds[state] = image;
    self.setNeedsDisplay();
  }
  static NSInteger buttonType(const Self& self) { return static_cast<NSInteger>(self.button().type); }
  static Label titleLabel(const Self& self) { return self.button().title_label; }
  static ImageView imageView(const Self& self) { return self.button().image_view; }
  template <auto Member>
  static EdgeInsets insets(const Self& self) {
    return self.button().*Member;
  }
  template <auto Member>
  static void setInsets(const Self& self, const EdgeInsets& insets) {
    self.button().*Member = insets;
    self.invalidateIntrinsicContentSize();
    self.setNeedsLayout();
  }
  static void tintColorDidChange(const Self& self) {
    objc::send_super<"tintColorDidChange">(self, objc::class_for<Control>());
    update(self);
  }
  static NSString accessibilityLabel(const Self& self) {
    const NSString own = objc::send_super<"accessibilityLabel", NSString>(self, objc::class_for<View>());
    return own ? own : self.current_title();
  }
  static View hitTest(const Self& self, const Point& point, const NSObject& event) {
    const View hit =
        objc::send_super<"hitTest:withEvent:", View>(self, objc::class_for<Control>(), point, event);
    return hit ? View(self) : hit;  // its parts are its own
  }
};

void Button::set_title(const NSString& title) const {
  ButtonMethods::setTitle(*this, title, control_state::kNormal);
}
void Button::set_image(const UIImage& image) const {
  ButtonMethods::setImage(*this, image, control_state::kNormal);
}
void Button::set_font(const graphics::Font& font) const { button().title_label.setFont(font_from(font)); }
NSString Button::current_title() const { return button().title_label.text(); }

void Button::define() {
  using M = ButtonMethods;
  objc::Class<Button>()
      .state<ButtonState>()
      .class_method<"buttonWithType:", &M::buttonWithType>()
      .initializer<"initWithFrame:", &M::initWithFrame>()
      .method<"buttonType", &M::buttonType>()
      .method<"titleLabel", &M::titleLabel>()
      .method<"imageView", &M::imageView>()
      .method<"setTitle:forState:", &M::setTitle>()
      .method<"titleForState:", &M::titleForState>()
      .method<"currentTitle", &Button::current_title>()
      .method<"setAttributedTitle:forState:", &M::setAttributedTitle>()
      .method<"setTitleColor:forState:", &M::setTitleColor>()
      .method<"titleColorForState:", &M::titleColorForState>()
      .method<"currentTitleColor", &M::currentTitleColor>()
      .method<"setImage:forState:", &M::setImage>()
      .method<"imageForState:", &M::imageForState>()
      .method<"setBackgroundImage:forState:", &M::setBackgroundImage>()
      .method<"contentEdgeInsets", &M::insets<&ButtonState::content_insets>>()
      .method<"setContentEdgeInsets:", &M::setInsets<&ButtonState::content_insets>>()
      .method<"titleEdgeInsets", &M::insets<&ButtonState::title_insets>>()
      .method<"setTitleEdgeInsets:", &M::setInsets<&ButtonState::title_insets>>()
      .method<"imageEdgeInsets", &M::insets<&ButtonState::image_insets>>()
      .method<"setImageEdgeInsets:", &M::setInsets<&ButtonState::image_insets>>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"intrinsicContentSize", &M::intrinsicContentSize>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .method<"hitTest:withEvent:", &M::hitTest>()
      .method<"tintColorDidChange", &M::tintColorDidChange>()
      .method<"accessibilityLabel", &M::accessibilityLabel>()
      .method<"_controlStateChanged", &M::stateChanged>()
      .register_class();
  set_painter(objc::class_for<Button>(), &M::paint);
}

}  // namespace wispen::uikit
