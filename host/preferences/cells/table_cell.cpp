// host/preferences/cells/table_cell.cpp: PSTableCell: a row that shows a specifier.

#include "host/preferences/cells/table_cell.hpp"

#include <string>

#include "host/foundation/problems.hpp"
#include "host/preferences/specifier.hpp"
#include "host/preferences/specifier_list.hpp"
#include "host/uikit/containers/tables/table_cell.hpp"
#include "host/uikit/values/color.hpp"

namespace wispen::preferences {

namespace {

constexpr double kGiantHeight = 64;

const char* stock_class(CellType type) {
  switch (type) {
    case CellType::Slider:
      return "PSSliderTableCell";
    case CellType::Switch:
      return "PSSwitchTableCell";
    case CellType::Segment:
      return "PSSegmentTableCell";
    case CellType::EditText:
    case CellType::SecureEditText:
    case CellType::EditTextView:
      return "PSEditableTableCell";
    case CellType::Spinner:
      return "PSSpinnerTableCell";
    default:
      return "PSTableCell";
  }
}

UITableViewCellStyle style_of(CellType type) {
  switch (type) {
    case CellType::LinkList:
    case CellType::TitleValue:
    case CellType::Link:
      return UITableViewCellStyle::Value1;
    default:
      return UITableViewCellStyle::Default;
  }
}

bool shows_chevron(CellType type) {
  return type == CellType::Link || type == CellType::LinkList || type == CellType::Giant ||
         type == CellType::GiantIcon;
}

}  // namespace

bool is_set(const PSSpecifier& specifier, const NSString& key) {
  const NSObject value = specifier.propertyForKey(key);
  return value && objc::responds_to(value, objc::selector<"boolValue">()) &&
         objc::send<"boolValue", bool>(value);
}

NSString displayed_value(const PSSpecifier& specifier, const NSObject& value) {
  if (!value) return NSString();
  for (const auto& titles : {specifier.shortTitleDictionary(), specifier.titleDictionary()}) {
    if (const auto title = objc::cast_or_nil<NSString>(titles.objectForKey(value))) return title;
  }
  if (const auto text = objc::cast_or_nil<NSString>(value)) return shortened(text);
  return shortened(value.description());
}

NSBundle bundle_of(const PSSpecifier& specifier) {
  const NSObject page = specifier.target();
  if (!objc::responds_to(page, objc::selector<"bundle">())) return NSBundle();
  return objc::send<"bundle", NSBundle>(page);
}

UIImage image_named_by(const PSSpecifier& specifier, const NSString& key) {
  const auto name = objc::cast_or_nil<NSString>(specifier.propertyForKey(key));
  const NSBundle bundle = name ? bundle_of(specifier) : NSBundle();
  if (!bundle) return UIImage();
  std::string base = name.utf8();
  if (base.ends_with(".png")) base.resize(base.size() - 4);
  return objc::send<"imageNamed:inBundle:compatibleWithTraitCollection:", UIImage>(
      objc::class_for<UIImage>(), NSString(base.c_str()), bundle, NSObject());
}

UIImage icon_of(const PSSpecifier& specifier) {
  if (const auto image = objc::cast_or_nil<UIImage>(specifier.propertyForKey("iconImage"_ns))) return image;
  if (!specifier.propertyForKey("icon"_ns) && is_set(specifier, "hasIcon"_ns)) {
    specifier.setProperty("icon.png"_ns, "icon"_ns);
  }
  return image_named_by(specifier, "icon"_ns);
}

objc::ClassRef cell_class_for(const PSSpecifier& specifier) {
  const objc::ClassRef base = objc::class_for<PSTableCell>();
  const auto own = specifier.cellClass();
  if (own && own.is_subclass_of(base)) return own;
  if (const auto name = objc::cast_or_nil<NSString>(specifier.propertyForKey("cellClass"_ns))) {
    report_problem(own ? "the class " + name.utf8() + " is no cell of a settings page"
                       : "there is no cell class " + name.utf8());
  }
  return objc::ClassRef::named(stock_class(type_of(specifier)));
}

NSString reuse_identifier(const PSSpecifier& specifier) {
  std::string name = cell_class_for(specifier).name();
  name += ":" + std::string(cell_type_name(type_of(specifier)));
  if (specifier.propertyForKey("cellClass"_ns)) name += ":" + specifier.identifier().utf8();
  return NSString(name.c_str());
}

PSTableCell make_cell(const PSSpecifier& specifier) {
  const objc::ClassRef cls = cell_class_for(specifier);
  objc::Allocated<PSTableCell> blank = objc::allocate<PSTableCell>(cls);
  // A class that has an initialiser for headers only is made by that one also in a row.
  if (cls.instances_respond_to(objc::selector<"initWithSpecifier:">())) {
    return std::move(blank).initialize<"initWithSpecifier:">(specifier);
  }
  return std::move(blank).initialize<"initWithStyle:reuseIdentifier:specifier:">(
      style_of(type_of(specifier)), reuse_identifier(specifier), specifier);
}

PSTableCell Cell::initWithStyle(objc::Allocated<PSTableCell> self, UITableViewCellStyle style,
                                const NSString& identifier, const PSSpecifier& specifier) {
  PSTableCell cell = super_init<"initWithStyle:reuseIdentifier:">(std::move(self), style, identifier);
  if (!cell) return cell;
  cell.setSpecifier(specifier);
  // A row that is all control has no title to show.
  const CellType type = of(cell).type_;
  if (type != CellType::Slider && type != CellType::Segment) cell.textLabel();
  of(cell).apply_colours();
  return cell;
}

PSTableCell Cell::initPlain(objc::Allocated<PSTableCell> self, UITableViewCellStyle style,
                            const NSString& identifier) {
  return std::move(self).initialize<"initWithStyle:reuseIdentifier:specifier:">(style, identifier,
                                                                                PSSpecifier());
}

NSInteger Cell::cell_type_from_string(objc::ClassRef, const NSString& name) {
  const auto type = name ? cell_type_from_name(name.utf8()) : std::nullopt;
  return static_cast<NSInteger>(type.value_or(CellType::Group));
}

void Cell::setType(NSInteger type) {
  type_ = static_cast<CellType>(type);
  apply_colours();
}

void Cell::setIcon(const UIImage& icon) {
  if (icon_ == icon) return;
  icon_ = icon;
  self().imageView().setImage(icon);
  self().setNeedsLayout();
  self().setNeedsDisplay();
}

Size Cell::sizeThatFits(const Size& size) {
  Size fitting = super<"sizeThatFits:", Size>(size);
  const CellType type = type_;
  if (type == CellType::Giant || type == CellType::GiantIcon) {
    fitting.height = std::max(fitting.height, kGiantHeight);
  }
  return fitting;
}

void Cell::tintColorDidChange() {
  super<"tintColorDidChange">();
  if (type_ == CellType::Button) apply_colours();
}

void Cell::reload(const PSSpecifier& specifier, bool) { self().refreshCellContentsWithSpecifier(specifier); }

void Cell::setSpecifier(const PSSpecifier& specifier) {
  specifier_ = specifier;
  if (!specifier) return;
  type_ = type_of(specifier);
  target_ = specifier.target();
  action_ = specifier.action();
}

void Cell::setTitle(const NSString& title) {
  self().textLabel().setText(title);
  self().setNeedsLayout();
}

void Cell::setValue(const NSObject& value) {
  value_ = value;
  const CellType type = type_;
  if (type != CellType::LinkList && type != CellType::TitleValue && type != CellType::Link) return;
  const UILabel label = self().detailTextLabel();
  if (!label) return;
  label.setText(displayed_value(specifier_, value));
  self().setNeedsLayout();
}

void Cell::setCellEnabled(bool enabled) {
  enabled_ = enabled;
  self().setSelectionStyle(enabled ? UITableViewCellSelectionStyle::Default
                                   : UITableViewCellSelectionStyle::None);
  apply_colours();
}

void Cell::setChecked(bool checked) {
  checked_ = checked;
  self().setAccessoryType(checked ? UITableViewCellAccessoryType::Checkmark
                                  : UITableViewCellAccessoryType::None);
}

void Cell::apply_colours() {
  if (!uikit::TableCell::of(self()).text_label_if_made()) return;
  UIColor title = UIColor::labelColor();
  if (type_ == CellType::Button) {
    title = is_set(specifier_, "isDestructive"_ns) ? UIColor::systemRedColor() : self().tintColor();
  }
  if (!enabled_) title = UIColor::tertiaryLabelColor();
  self().textLabel().setTextColor(title);
}

void Cell::refresh(const PSSpecifier& specifier) {
  self().setSpecifier(specifier);
  const NSObject enabled = specifier.propertyForKey("enabled"_ns);
  self().setCellEnabled(!enabled || is_set(specifier, "enabled"_ns));
  // After the colours, which a subclass sets anew when it is given a title.
  self().setTitle(specifier.name());
  self().setIcon(icon_of(specifier));
  if (shows_chevron(type_)) self().setAccessoryType(UITableViewCellAccessoryType::DisclosureIndicator);
  if (type_ == CellType::LinkList || type_ == CellType::TitleValue) {
    self().setValue(specifier.performGetter());
  }
}

void define_table_cell() {
  auto cell = objc::Class<PSTableCell>::implemented_by<Cell>();
  cell.initializer<"initWithStyle:reuseIdentifier:specifier:", &Cell::initWithStyle>()
      .initializer<"initWithStyle:reuseIdentifier:", &Cell::initPlain>()
      .class_method<"cellTypeFromString:", &Cell::cell_type_from_string>()
      .class_method<"cellClassForSpecifier:", &Cell::cell_class>()
      .class_method<"reuseIdentifierForSpecifier:", &Cell::identifier_for>()
      .getter<"specifier", &Cell::specifier_>()
      .method<"setSpecifier:", &Cell::setSpecifier>()
      .method<"refreshCellContentsWithSpecifier:", &Cell::refresh>()
      .method<"reloadWithSpecifier:animated:", &Cell::reload>()
      .method<"canReload", &Cell::canReload>()
      .method<"type", &Cell::type>()
      .method<"setType:", &Cell::setType>()
      .method<"target", &Cell::target>()
      .method<"setTarget:", &Cell::setTarget>()
      .method<"cellTarget", &Cell::target>()
      .method<"setCellTarget:", &Cell::setTarget>()
      .property<"action", "setAction:", &Cell::action_>()
      .property<"cellAction", "setCellAction:", &Cell::action_>();
  cell.method<"title", &Cell::title>()
      .method<"setTitle:", &Cell::setTitle>()
      .method<"titleLabel", &Cell::titleLabel>()
      .method<"titleTextLabel", &Cell::titleLabel>()
      .method<"valueLabel", &Cell::valueLabel>()
      .getter<"value", &Cell::value_>()
      .method<"setValue:", &Cell::setValue>()
      .getter<"icon", &Cell::icon_>()
      .getter<"getIcon", &Cell::icon_>()
      .method<"setIcon:", &Cell::setIcon>()
      .method<"iconImageView", &Cell::iconImageView>()
      .getter<"cellEnabled", &Cell::enabled_>()
      .method<"setCellEnabled:", &Cell::setCellEnabled>()
      .getter<"isChecked", &Cell::checked_>()
      .method<"setChecked:", &Cell::setChecked>()
      .method<"sizeThatFits:", &Cell::sizeThatFits>()
      .method<"tintColorDidChange", &Cell::tintColorDidChange>()
      .register_class();
}

}  // namespace wispen::preferences
