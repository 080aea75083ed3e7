// host/preferences/cells/table_cell.cpp: PSTableCell: a row that shows a specifier.

#include "host/preferences/cells/table_cell.hpp"

#include <string>

#include "host/foundation/problems.hpp"
#include "host/preferences/specifier_list.hpp"
#include "host/uikit/values/color.hpp"
#include "platform/UIKit.hpp"

namespace wispen::preferences {

namespace {

constexpr double kGiantHeight = 64;

CellType type_of(const PSSpecifier& specifier) { return static_cast<CellType>(specifier.cellType()); }

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

uikit::CellStyle style_of(CellType type) {
  switch (type) {
    case CellType::LinkList:
    case CellType::TitleValue:
    case CellType::Link:
      return uikit::CellStyle::Value1;
    default:
      return uikit::CellStyle::Default;
  }
}

bool shows_chevron(CellType type) {
  return type == CellType::Link || type == CellType::LinkList || type == CellType::Giant ||
         type == CellType::GiantIcon;
}

objc::Allocated<Cell> allocate(objc::ClassRef cls) {
  const auto raw = reinterpret_cast<objc::abi::id>(cls.borrow());
  return objc::Allocated<Cell>(objc::abi::call<objc::abi::id>(raw, objc::selector<"alloc">().borrow()));
}

}  // namespace

bool is_set(const PSSpecifier& specifier, const NSString& key) {
  const NSObject value = specifier.propertyForKey(key);
  return value && objc::responds_to(value, objc::selector<"boolValue">()) &&
         objc::send<"boolValue", bool>(value);
}

NSString displayed_value(const PSSpecifier& specifier, const NSObject& value) {
  if (!value) return NSString();
  for (const auto& titles : {objc::send<"shortTitleDictionary", NSDictionary>(specifier),
                             objc::send<"titleDictionary", NSDictionary>(specifier)}) {
    if (const auto title = objc::cast_or_nil<NSString>(titles.objectForKey(value))) return title;
  }
  if (const auto text = objc::cast_or_nil<NSString>(value)) return shortened(text);
  return shortened(objc::send<"description", NSString>(value));
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

objc::ClassRef Cell::class_for(const PSSpecifier& specifier) {
  const objc::ClassRef base = objc::class_for<Cell>();
  const auto own = objc::send<"cellClass", objc::ClassRef>(specifier);
  if (own && own.is_subclass_of(base)) return own;
  if (const auto name = objc::cast_or_nil<NSString>(specifier.propertyForKey("cellClass"_ns))) {
    report_problem(own ? "the class " + name.utf8() + " is no cell of a settings page"
                       : "there is no cell class " + name.utf8());
  }
  return objc::ClassRef::named(stock_class(type_of(specifier)));
}

NSString Cell::reuse_identifier(const PSSpecifier& specifier) {
  std::string name = class_for(specifier).name();
  name += ":" + std::string(cell_type_name(type_of(specifier)));
  if (specifier.propertyForKey("cellClass"_ns)) name += ":" + specifier.identifier().utf8();
  return NSString(name.c_str());
}

Cell Cell::make(const PSSpecifier& specifier) {
  const objc::ClassRef cls = class_for(specifier);
  objc::Allocated<Cell> blank = allocate(cls);
  // A class that has an initialiser for headers only is made by that one also in a row.
  if (cls.instances_respond_to(objc::selector<"initWithSpecifier:">())) {
    return std::move(blank).initialize<"initWithSpecifier:">(specifier);
  }
  return std::move(blank).initialize<"initWithStyle:reuseIdentifier:specifier:">(
      static_cast<NSInteger>(style_of(type_of(specifier))), reuse_identifier(specifier), specifier);
}

void Cell::setSpecifier(const PSSpecifier& specifier) const {
  CellState& state = parts();
  state.specifier = specifier;
  if (!specifier) return;
  state.type = type_of(specifier);
  state.target = specifier.target();
  state.action = objc::send<"action", objc::Selector>(specifier);
}

void Cell::setTitle(const NSString& title) const {
  textLabel().setText(title);
  setNeedsLayout();
}

void Cell::setValue(const NSObject& value) const {
  parts().value = value;
  const CellType type = parts().type;
  if (type != CellType::LinkList && type != CellType::TitleValue && type != CellType::Link) return;
  const uikit::Label label = detailTextLabel();
  if (!label) return;
  label.setText(displayed_value(parts().specifier, value));
  setNeedsLayout();
}

void Cell::setCellEnabled(bool enabled) const {
  parts().enabled = enabled;
  objc::send<"setSelectionStyle:">(*this, NSInteger{enabled ? 3 : 0});
  apply_colours();
}

void Cell::setChecked(bool checked) const {
  parts().checked = checked;
  objc::send<"setAccessoryType:">(*this, NSInteger{checked ? 3 : 0});
}

void Cell::apply_colours() const {
  const CellState& state = parts();
  if (!cell().text_label) return;
  UIColor title = UIColor::labelColor();
  if (state.type == CellType::Button) {
    title = is_set(state.specifier, "isDestructive"_ns) ? UIColor::systemRedColor() : tintColor();
  }
  if (!state.enabled) title = UIColor::tertiaryLabelColor();
  textLabel().setTextColor(title);
}

void Cell::refresh(const PSSpecifier& specifier) const {
  objc::send<"setSpecifier:">(*this, specifier);
  CellState& state = parts();
  const NSObject enabled = specifier.propertyForKey("enabled"_ns);
  objc::send<"setCellEnabled:">(*this, !enabled || is_set(specifier, "enabled"_ns));
  // After the colours, which a subclass sets anew when it is given a title.
  objc::send<"setTitle:">(*this, specifier.name());
  objc::send<"setIcon:">(*this, icon_of(specifier));
  if (shows_chevron(state.type)) objc::send<"setAccessoryType:">(*this, NSInteger{1});
  if (state.type == CellType::LinkList || state.type == CellType::TitleValue) {
    objc::send<"setValue:">(*this, specifier.performGetter());
  }
}

// What the runtime is told of; namespace scope gives it the linkage that a method needs.
struct CellMethods {
  using Self = Cell;

  static Self initWithStyle(objc::Allocated<Self> self, NSInteger style, const NSString& identifier,
                            const PSSpecifier& specifier) {
    Self cell = std::move(self).initialize_super<"initWithStyle:reuseIdentifier:">(style, identifier);
    if (!cell) return cell;
    cell.parts().type = CellType::StaticText;
    objc::send<"setSpecifier:">(cell, specifier);
    // A row that is all control has no title to show.
    const CellType type = cell.parts().type;
    if (type != CellType::Slider && type != CellType::Segment) cell.textLabel();
    cell.apply_colours();
    return cell;
  }
  static Self initPlain(objc::Allocated<Self> self, NSInteger style, const NSString& identifier) {
    return std::move(self).initialize<"initWithStyle:reuseIdentifier:specifier:">(style, identifier,
                                                                                  PSSpecifier());
  }

  static NSInteger cell_type_from_string(objc::ClassRef, const NSString& name) {
    const auto type = name ? cell_type_from_name(name.utf8()) : std::nullopt;
    return static_cast<NSInteger>(type.value_or(CellType::Group));
  }
  static objc::ClassRef cell_class(objc::ClassRef, const PSSpecifier& specifier) {
    return Cell::class_for(specifier);
  }
  static NSString identifier_for(objc::ClassRef, const PSSpecifier& specifier) {
    return Cell::reuse_identifier(specifier);
  }

  static NSInteger type(const Self& self) { return static_cast<NSInteger>(self.parts().type); }
  static void setType(const Self& self, NSInteger type) {
    self.parts().type = static_cast<CellType>(type);
    self.apply_colours();
  }
  static NSObject target(const Self& self) { return self.parts().target.lock(); }
  static void setTarget(const Self& self, const NSObject& target) { self.parts().target = target; }
  static objc::Selector action(const Self& self) { return self.parts().action; }
  static void setAction(const Self& self, objc::Selector action) { self.parts().action = action; }

  static NSString title(const Self& self) { return self.textLabel().text(); }
  static NSObject value(const Self& self) { return self.parts().value; }
  static UIImage icon(const Self& self) { return self.parts().icon; }
  static void setIcon(const Self& self, const UIImage& icon) {
    if (self.parts().icon == icon) return;
    self.parts().icon = icon;
    self.imageView().setImage(icon);
    self.setNeedsLayout();
    self.setNeedsDisplay();
  }
  static bool isChecked(const Self& self) { return self.parts().checked; }

  static Size sizeThatFits(const Self& self, const Size& size) {
    Size fitting = objc::send_super<"sizeThatFits:", Size>(self, objc::class_for<uikit::TableCell>(), size);
    const CellType type = self.parts().type;
    if (type == CellType::Giant || type == CellType::GiantIcon) {
      fitting.height = std::max(fitting.height, kGiantHeight);
    }
    return fitting;
  }
  static void tintColorDidChange(const Self& self) {
    objc::send_super<"tintColorDidChange">(self, objc::class_for<uikit::TableCell>());
    if (self.parts().type == CellType::Button) self.apply_colours();
  }
  static void reload(const Self& self, const PSSpecifier& specifier, bool) {
    objc::send<"refreshCellContentsWithSpecifier:">(self, specifier);
  }
  static bool canReload(const Self&) { return true; }
};

void Cell::define() {
  using M = CellMethods;
  objc::Class<Cell> cell;
  cell.state<CellState>()
      .initializer<"initWithStyle:reuseIdentifier:specifier:", &M::initWithStyle>()
      .initializer<"initWithStyle:reuseIdentifier:", &M::initPlain>()
      .class_method<"cellTypeFromString:", &M::cell_type_from_string>()
      .class_method<"cellClassForSpecifier:", &M::cell_class>()
      .class_method<"reuseIdentifierForSpecifier:", &M::identifier_for>()
      .method<"specifier", &Cell::specifier>()
      .method<"setSpecifier:", &Cell::setSpecifier>()
      .method<"refreshCellContentsWithSpecifier:", &Cell::refresh>()
      .method<"reloadWithSpecifier:animated:", &M::reload>()
      .method<"canReload", &M::canReload>()
      .method<"type", &M::type>()
      .method<"setType:", &M::setType>()
      .method<"target", &M::target>()
      .method<"setTarget:", &M::setTarget>()
      .method<"cellTarget", &M::target>()
      .method<"setCellTarget:", &M::setTarget>()
      .method<"action", &M::action>()
      .method<"setAction:", &M::setAction>()
      .method<"cellAction", &M::action>()
      .method<"setCellAction:", &M::setAction>();
  cell.method<"title", &M::title>()
      .method<"setTitle:", &Cell::setTitle>()
      .method<"titleLabel", &Cell::textLabel>()
      .method<"titleTextLabel", &Cell::textLabel>()
      .method<"valueLabel", &Cell::detailTextLabel>()
      .method<"value", &M::value>()
      .method<"setValue:", &Cell::setValue>()
      .method<"icon", &M::icon>()
      .method<"getIcon", &M::icon>()
      .method<"setIcon:", &M::setIcon>()
      .method<"iconImageView", &Cell::imageView>()
      .method<"cellEnabled", &Cell::is_enabled>()
      .method<"setCellEnabled:", &Cell::setCellEnabled>()
      .method<"isChecked", &M::isChecked>()
      .method<"setChecked:", &Cell::setChecked>()
      .method<"sizeThatFits:", &M::sizeThatFits>()
      .method<"tintColorDidChange", &M::tintColorDidChange>()
      .register_class();
}

}  // namespace wispen::preferences
