// host/preferences/cells/text_cells.cpp: rows to write in, and a row that waits.

#include "host/preferences/cells/text_cells.hpp"

#include <algorithm>
#include <string>

#include "host/preferences/cells/table_cell.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/view/metrics.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen::preferences {

namespace {

using namespace uikit::metrics::row;

std::string text_of(const PSSpecifier& specifier, const NSString& key) {
  const auto text = objc::cast_or_nil<NSString>(specifier.propertyForKey(key));
  return text ? text.utf8() : std::string();
}

UIKeyboardType keyboard_for(const PSSpecifier& specifier) {
  const std::string keyboard = text_of(specifier, "keyboard"_ns);
  if (keyboard == "numbers") return UIKeyboardType::NumberPad;
  if (keyboard == "phone") return UIKeyboardType::PhonePad;
  if (is_set(specifier, "isIP"_ns)) return UIKeyboardType::NumbersAndPunctuation;
  if (is_set(specifier, "isURL"_ns)) return UIKeyboardType::URL;
  if (is_set(specifier, "isEmail"_ns)) return UIKeyboardType::EmailAddress;
  if (is_set(specifier, "isNumeric"_ns)) return UIKeyboardType::DecimalPad;
  return UIKeyboardType::Default;
}

UITextAutocapitalizationType capitalization_for(const PSSpecifier& specifier) {
  const std::string caps = text_of(specifier, "autoCaps"_ns);
  if (caps == "words") return UITextAutocapitalizationType::Words;
  if (caps == "sentences") return UITextAutocapitalizationType::Sentences;
  if (caps == "all") return UITextAutocapitalizationType::AllCharacters;
  return UITextAutocapitalizationType::None;
}

}  // namespace

/// The host's PSEditableTableCell: a text field beside the title. What is written is stored when writing
/// ends.
class EditCell : public objc::Implementation<EditCell, PSEditableTableCell> {
 public:
  static PSEditableTableCell initWithStyle(objc::Allocated<PSEditableTableCell> self,
                                           UITableViewCellStyle style, const NSString& identifier,
                                           const PSSpecifier& specifier) {
    PSEditableTableCell cell =
        super_init<"initWithStyle:reuseIdentifier:specifier:">(std::move(self), style, identifier, specifier);
    if (!cell) return cell;
    const UITextField field = objc::make<UITextField>();
    of(cell).field_ = field;
    field.setDelegate(cell);
    field.setClearButtonMode(UITextFieldViewMode::WhileEditing);
    cell.contentView().addSubview(field);
    return cell;
  }
  void refresh(const PSSpecifier& specifier) {
    super<"refreshCellContentsWithSpecifier:">(specifier);
    const UITextField field = field_;
    field.setPlaceholder(objc::cast_or_nil<NSString>(specifier.propertyForKey("placeholder"_ns)));
    field.setKeyboardType(keyboard_for(specifier));
    field.setAutocapitalizationType(capitalization_for(specifier));
    field.setAutocorrectionType(is_set(specifier, "noAutoCorrect"_ns) ? UITextAutocorrectionType::No
                                                                      : UITextAutocorrectionType::Default);
    field.setSecureTextEntry(Cell::of(self()).kind() == CellType::SecureEditText);
    self().setSelectionStyle(UITableViewCellSelectionStyle::None);
    self().setValue(specifier.performGetter());
  }
  void setValue(const NSObject& value) {
    Cell::of(self()).keep_value(value);
    // What is being written wins over what is read meanwhile.
    if (field_.isEditing()) return;
    field_.setText(displayed_value(self().specifier(), value));
  }
  void setCellEnabled(bool enabled) {
    super<"setCellEnabled:">(enabled);
    field_.setEnabled(enabled);
    field_.setTextColor(enabled ? UIColor::labelColor() : UIColor::tertiaryLabelColor());
  }
  void textFieldDidEndEditing(const NSObject&) {
    const NSString text = field_.text();
    const NSString before = displayed_value(self().specifier(), self().value());
    if (before ? before.isEqual(text) : text.length() == 0) return;
    Cell::of(self()).keep_value(text);
    self().specifier().performSetterWithValue(text);
  }
  bool textFieldShouldReturn(const NSObject&) {
    field_.resignFirstResponder();
    return true;
  }
  bool becomeFirstResponder() { return field_.becomeFirstResponder(); }
  // Its field is, which is one stop of the keyboard for one row.
  bool canBecomeFocused() { return false; }
  /// How wide the title is that begins at `leading`: as wide as it wants, as long as the field keeps some
  /// room.
  double title_width(double content_width, double leading) {
    const UILabel title = self().textLabel();
    if (!title.text() || title.text().length() == 0) return 0;
    const double room = content_width - leading - uikit::metrics::kCellMargin;
    return std::min(title.sizeThatFits(Size{room, 0}).width, std::max(0.0, room - kGap - kLeastFieldWidth));
  }
  Size sizeThatFits(const Size& size) {
    Size fitting = super<"sizeThatFits:", Size>(size);
    const Rect title = self().textLabel().frame();
    const double leading =
        std::max(uikit::metrics::kCellMargin,
                 uikit::is_right_to_left(self()) ? size.width - title.max_x() : title.min_x());
    const double width = title_width(size.width, leading);
    const double height = self().textLabel().sizeThatFits(Size{width, 0}).height;
    fitting.height = std::max(fitting.height, height + 2 * uikit::metrics::kCellVerticalPadding);
    return fitting;
  }
  void layoutSubviews() {
    super<"layoutSubviews">();
    const Rect content = self().contentView().bounds();
    const UILabel title = self().textLabel();
    const bool named = title.text() && title.text().length() > 0;
    const bool turned = uikit::is_right_to_left(self());
    const Rect place = title.frame();
    const double leading = turned ? content.width() - place.max_x() : place.min_x();
    const double title_width = this->title_width(content.width(), leading);
    const double start = leading + (named ? title_width + kGap : 0);
    const double width = std::max(0.0, content.width() - start - uikit::metrics::kCellMargin);
    const auto put = [&](const UIView& view, double from, double wide) {
      view.setFrame(Rect{{turned ? content.width() - from - wide : from, 0}, {wide, content.height()}});
    };
    put(title, leading, title_width);
    put(field_, start, width);
    field_.setFont(UIFont::preferredFontForTextStyle(UIFontTextStyleBody));
  }

 private:
  friend void define_edit_cell();

  UITextField field_;
};

void define_edit_cell() {
  objc::Class<PSEditableTableCell>::implemented_by<EditCell>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &EditCell::initWithStyle>()
      .getter<"textField", &EditCell::field_>()
      .method<"refreshCellContentsWithSpecifier:", &EditCell::refresh>()
      .method<"setValue:", &EditCell::setValue>()
      .method<"sizeThatFits:", &EditCell::sizeThatFits>()
      .method<"setCellEnabled:", &EditCell::setCellEnabled>()
      .method<"textFieldDidEndEditing:", &EditCell::textFieldDidEndEditing>()
      .method<"textFieldShouldReturn:", &EditCell::textFieldShouldReturn>()
      .method<"becomeFirstResponder", &EditCell::becomeFirstResponder>()
      .method<"canBecomeFocused", &EditCell::canBecomeFocused>()
      .method<"layoutSubviews", &EditCell::layoutSubviews>()
      .register_class();
}

/// The host's PSSpinnerTableCell: a title with an indicator that turns.
class SpinnerCell : public objc::Implementation<SpinnerCell, PSSpinnerTableCell> {
 public:
  static PSSpinnerTableCell initWithStyle(objc::Allocated<PSSpinnerTableCell> self,
                                          UITableViewCellStyle style, const NSString& identifier,
                                          const PSSpecifier& specifier) {
    PSSpinnerTableCell cell =
        super_init<"initWithStyle:reuseIdentifier:specifier:">(std::move(self), style, identifier, specifier);
    if (!cell) return cell;
    const auto indicator = objc::make<UIActivityIndicatorView>();
    indicator.sizeToFit();
    cell.setAccessoryView(indicator);
    indicator.startAnimating();
    return cell;
  }
};

void define_spinner_cell() {
  objc::Class<PSSpinnerTableCell>::implemented_by<SpinnerCell>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &SpinnerCell::initWithStyle>()
      .register_class();
}

}  // namespace wispen::preferences
