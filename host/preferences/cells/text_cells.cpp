// host/preferences/cells/text_cells.cpp: rows to write in, and a row that waits.

#include "host/preferences/cells/text_cells.hpp"

#include <algorithm>
#include <string>

#include "host/graphics/text_style.hpp"
#include "host/uikit/values/display_settings.hpp"

namespace wispen::preferences {

namespace {

constexpr double kGap = 12;
constexpr double kLeastFieldWidth = 90;

/// The platform's values.
namespace keyboard_type {
constexpr NSInteger kDefault = 0;
constexpr NSInteger kNumbersAndPunctuation = 2;
constexpr NSInteger kUrl = 3;
constexpr NSInteger kNumberPad = 4;
constexpr NSInteger kPhonePad = 5;
constexpr NSInteger kEmail = 7;
constexpr NSInteger kDecimalPad = 8;
}  // namespace keyboard_type

std::string text_of(const PSSpecifier& specifier, const NSString& key) {
  const auto text = objc::cast_or_nil<NSString>(specifier.propertyForKey(key));
  return text ? text.utf8() : std::string();
}

NSInteger keyboard_for(const PSSpecifier& specifier) {
  const std::string keyboard = text_of(specifier, "keyboard"_ns);
  if (keyboard == "numbers") return keyboard_type::kNumberPad;
  if (keyboard == "phone") return keyboard_type::kPhonePad;
  if (is_set(specifier, "isIP"_ns)) return keyboard_type::kNumbersAndPunctuation;
  if (is_set(specifier, "isURL"_ns)) return keyboard_type::kUrl;
  if (is_set(specifier, "isEmail"_ns)) return keyboard_type::kEmail;
  if (is_set(specifier, "isNumeric"_ns)) return keyboard_type::kDecimalPad;
  return keyboard_type::kDefault;
}

NSInteger capitalization_for(const PSSpecifier& specifier) {
  const std::string caps = text_of(specifier, "autoCaps"_ns);
  if (caps == "words") return 1;
  if (caps == "sentences") return 2;
  if (caps == "all") return 3;
  return 0;
}

}  // namespace

struct EditCellMethods {
  using Self = EditCell;

  static Self initWithStyle(objc::Allocated<Self> self, NSInteger style, const NSString& identifier,
                            const PSSpecifier& specifier) {
    Self cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
        style, identifier, specifier);
    if (!cell) return cell;
    const uikit::TextField field = uikit::TextField::make();
    cell.state<EditCellState>().field = field;
    objc::send<"setDelegate:">(field, cell);
    objc::send<"setClearButtonMode:">(field, NSInteger{1});  // while editing
    cell.contentView().addSubview(field);
    return cell;
  }

  static void refresh(const Self& self, const PSSpecifier& specifier) {
    objc::send_super<"refreshCellContentsWithSpecifier:">(self, objc::class_for<Cell>(), specifier);
    const uikit::TextField field = self.text_field();
    objc::send<"setPlaceholder:">(field,
                                  objc::cast_or_nil<NSString>(specifier.propertyForKey("placeholder"_ns)));
    objc::send<"setKeyboardType:">(field, keyboard_for(specifier));
    objc::send<"setAutocapitalizationType:">(field, capitalization_for(specifier));
    objc::send<"setAutocorrectionType:">(field, NSInteger{is_set(specifier, "noAutoCorrect"_ns) ? 1 : 0});
    objc::send<"setSecureTextEntry:">(field, self.parts().type == CellType::SecureEditText);
    objc::send<"setSelectionStyle:">(self, NSInteger{0});
    objc::send<"setValue:">(self, specifier.performGetter());
  }
  static void setValue(const Self& self, const NSObject& value) {
    self.parts().value = value;
    // What is being written wins over what is read meanwhile.
    if (self.text_field().is_editing()) return;
    objc::send<"setText:">(self.text_field(), displayed_value(self.specifier(), value));
  }
  static void setCellEnabled(const Self& self, bool enabled) {
    objc::send_super<"setCellEnabled:">(self, objc::class_for<Cell>(), enabled);
    objc::send<"setEnabled:">(self.text_field(), enabled);
    objc::send<"setTextColor:">(self.text_field(),
                                enabled ? UIColor::labelColor() : UIColor::tertiaryLabelColor());
  }
  static void textFieldDidEndEditing(const Self& self, const NSObject&) {
    const NSString text = self.text_field().text();
    const NSString before = displayed_value(self.specifier(), self.parts().value);
    if (before ? before.isEqual(text) : text.length() == 0) return;
    self.parts().value = text;
    self.specifier().performSetterWithValue(text);
  }
  static bool textFieldShouldReturn(const Self& self, const NSObject&) {
    objc::send<"resignFirstResponder", bool>(self.text_field());
    return true;
  }
  static bool becomeFirstResponder(const Self& self) {
    return objc::send<"becomeFirstResponder", bool>(self.text_field());
  }

  // Its field is, which is one stop of the keyboard for one row.
  static bool canBecomeFocused(const Self&) { return false; }

  static void layoutSubviews(const Self& self) {
    objc::send_super<"layoutSubviews">(self, objc::class_for<Cell>());
    const Rect content = self.contentView().bounds();
    const uikit::Label title = self.textLabel();
    const bool named = title.text() && title.text().length() > 0;
    const bool turned = self.is_right_to_left();
    const Rect place = title.frame();
    const double leading = turned ? content.width() - place.max_x() : place.min_x();
    const double room = content.width() - leading - uikit::kCellMargin;
    double title_width = 0;
    if (named) {
      title_width =
          std::min(title.sizeThatFits({room, 0}).width, std::max(0.0, room - kGap - kLeastFieldWidth));
    }
    const double start = leading + (named ? title_width + kGap : 0);
    const double width = std::max(0.0, content.width() - start - uikit::kCellMargin);
    const auto put = [&](const uikit::View& view, double from, double wide) {
      view.setFrame({{turned ? content.width() - from - wide : from, 0}, {wide, content.height()}});
    };
    put(title, leading, title_width);
    put(self.text_field(), start, width);
    self.text_field().set_font(
        graphics::text_style_font(graphics::TextStyle::Body, uikit::display_settings().content_size));
  }
};

void EditCell::define() {
  using M = EditCellMethods;
  objc::Class<EditCell>()
      .state<EditCellState>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &M::initWithStyle>()
      .method<"textField", &EditCell::text_field>()
      .method<"refreshCellContentsWithSpecifier:", &M::refresh>()
      .method<"setValue:", &M::setValue>()
      .method<"setCellEnabled:", &M::setCellEnabled>()
      .method<"textFieldDidEndEditing:", &M::textFieldDidEndEditing>()
      .method<"textFieldShouldReturn:", &M::textFieldShouldReturn>()
      .method<"becomeFirstResponder", &M::becomeFirstResponder>()
      .method<"canBecomeFocused", &M::canBecomeFocused>()
      .method<"layoutSubviews", &M::layoutSubviews>()
      .register_class();
}

struct SpinnerCellMethods {
  using Self = SpinnerCell;

  static Self initWithStyle(objc::Allocated<Self> self, NSInteger style, const NSString& identifier,
                            const PSSpecifier& specifier) {
    Self cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:specifier:">(
        style, identifier, specifier);
    if (!cell) return cell;
    objc::send<"setSelectionStyle:">(cell, NSInteger{0});
    const auto indicator = objc::send<"new", uikit::View>(objc::class_named<"UIActivityIndicatorView">());
    if (!indicator) return cell;
    cell.state<SpinnerCellState>().indicator = indicator;
    indicator.sizeToFit();
    objc::send<"setAccessoryView:">(cell, indicator);
    objc::send<"startAnimating">(indicator);
    return cell;
  }
};

void SpinnerCell::define() {
  objc::Class<SpinnerCell>()
      .state<SpinnerCellState>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &SpinnerCellMethods::initWithStyle>()
      .register_class();
}

}  // namespace wispen::preferences
