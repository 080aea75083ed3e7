// host/uikit/controls/button.hpp: UIButton: words or a picture to press.
#pragma once

#include <map>

#include "host/graphics/font.hpp"
#include "host/uikit/controls/control.hpp"
#include "host/uikit/controls/image_view.hpp"
#include "host/uikit/controls/label.hpp"

namespace wispen::uikit {

/// The platform's values.
enum class ButtonType : NSInteger {
  Custom = 0,
  System = 1,
  DetailDisclosure = 2,
  InfoLight = 3,
  InfoDark = 4,
  ContactAdd = 5,
  Close = 7,
};

struct ButtonState {
  ButtonType type = ButtonType::Custom;
  Label title_label;
  ImageView image_view;
  // By control state; what a state lacks is the normal one's.
  std::map<NSUInteger, NSString> titles;
  std::map<NSUInteger, NSAttributedString> attributed_titles;
  std::map<NSUInteger, UIColor> title_colours;
  std::map<NSUInteger, UIImage> images;
  std::map<NSUInteger, UIImage> backgrounds;
  EdgeInsets content_insets;
  EdgeInsets title_insets;
  EdgeInsets image_insets;
};

class Button : public objc::Authored<Button, Control> {
 public:
  static constexpr objc::FixedString kClass{"UIButton"};
  using Authored::Authored;

  static void define();
  static Button make(ButtonType type);
  ButtonState& button() const { return state<ButtonState>(); }

  void set_title(const NSString& title) const;
  void set_image(const UIImage& image) const;
  void set_font(const graphics::Font& font) const;
  NSString current_title() const;

 private:
  friend struct ButtonMethods;
};

}  // namespace wispen::uikit
