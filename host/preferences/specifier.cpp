// host/preferences/specifier.cpp: PSSpecifier: one row of a page.

#include "host/preferences/specifier.hpp"

#include <algorithm>

#include "host/preferences/named_method.hpp"

namespace wispen::preferences {

namespace {

objc::ClassRef class_in(const NSMutableDictionary& properties, const NSString& key) {
  const NSObject name = properties.objectForKey(key);
  const auto text = objc::cast_or_nil<NSString>(name);
  return text ? objc::ClassRef::named(text.utf8().c_str()) : objc::ClassRef();
}

NSDictionary dictionary_of(const NSArray& values, const NSArray& titles) {
  NSMutableDictionary result = NSMutableDictionary::dictionary();
  const NSUInteger count = std::min(values.count(), titles.count());
  // Equal values share one title, the last one given.
  for (NSUInteger i = 0; i < count; ++i) {
    const NSObject value = values.objectAtIndex(i);
    // A data source may give anything, and a dictionary copies its keys.
    if (objc::responds_to(value, objc::selector<"copyWithZone:">()))
      result.setObject(titles.objectAtIndex(i), value);
  }
  return result;
}

}  // namespace

/// The host's PSSpecifier. Everything that a list says of the row stays readable in its properties, known or
/// not; the parts that the framework itself acts on have accessors.
class Specifier : public objc::Implementation<Specifier, PSSpecifier> {
 public:
  /// "id", else "key", else the untranslated label.
  NSString identifier() {
    for (const NSString& key : {"id"_ns, "key"_ns, "label"_ns}) {
      if (const auto text = objc::cast_or_nil<NSString>(propertyForKey(key))) return text;
    }
    return name_;
  }
  NSObject target() { return target_.lock(); }
  void setTarget(const NSObject& target) { target_ = target; }
  void setProperties(const NSDictionary& properties) {
    properties_ = properties ? properties.mutableCopy() : NSMutableDictionary::dictionary();
  }
  NSObject propertyForKey(const NSString& key) { return properties_.objectForKey(key); }
  void setPropertyForKey(const NSObject& value, const NSString& key) {
    if (!value) return removePropertyForKey(key);
    properties_.setObject(value, key);
  }
  void removePropertyForKey(const NSString& key) { properties_.removeObjectForKey(key); }
  /// The page that the row opens; looked up when asked for, since a class may be registered late.
  objc::ClassRef detailControllerClass() { return class_in(properties_, "detail"_ns); }
  objc::ClassRef cellClass() { return class_in(properties_, "cellClass"_ns); }
  void set_accessors(objc::Selector getter, objc::Selector setter) {
    getter_ = getter;
    setter_ = setter;
  }
  /// Nil, and nothing, where the target does not answer the selector.
  NSObject performGetter() {
    const NSObject page = target();
    if (!may_perform(page, getter_, MethodRole::Getter)) return NSObject();
    return objc::perform<NSObject>(page, getter_, self());
  }
  void performSetterWithValue(const NSObject& value) {
    const NSObject page = target();
    if (may_perform(page, setter_, MethodRole::Setter)) objc::perform(page, setter_, value, self());
  }
  /// A choice row's values, in order, and their titles: equal values share one title.
  void setValuesTitles(const NSArray& values, const NSArray& titles) {
    values_ = values;
    titles_ = dictionary_of(values, titles);
  }
  void setValuesTitlesShortTitles(const NSArray& values, const NSArray& titles, const NSArray& short_titles) {
    setValuesTitles(values, titles);
    short_titles_ = dictionary_of(values, short_titles);
  }

 private:
  friend void define_specifier();

  NSString name_;
  objc::Weak<NSObject> target_;  // the page, which owns its specifiers
  NSMutableDictionary properties_ = NSMutableDictionary::dictionary();
  NSInteger cell_type_ = static_cast<NSInteger>(CellType::Group);
  objc::Selector getter_;
  objc::Selector setter_;
  objc::Selector action_;
  NSArray values_;
  NSDictionary titles_;
  NSDictionary short_titles_;
};

PSSpecifier make_specifier(const NSString& name, CellType type) {
  const auto specifier = objc::make<PSSpecifier>();
  specifier.setName(name);
  specifier.setCellType(static_cast<NSInteger>(type));
  return specifier;
}

void set_accessors(const PSSpecifier& specifier, objc::Selector getter, objc::Selector setter) {
  Specifier::of(specifier).set_accessors(getter, setter);
}

CellType type_of(const PSSpecifier& specifier) { return static_cast<CellType>(specifier.cellType()); }

objc::ClassRef page_of(const PSSpecifier& specifier) {
  return specifier.propertyForKey("key"_ns) ? objc::ClassRef() : specifier.detailControllerClass();
}

// Class methods, which need linkage for the runtime's table.
namespace {

PSSpecifier preference_specifier_named(objc::ClassRef, const NSString& name, const NSObject& target,
                                       objc::Selector setter, objc::Selector getter, objc::ClassRef detail,
                                       NSInteger cell, objc::ClassRef /*edit*/) {
  const PSSpecifier specifier = make_specifier(name, static_cast<CellType>(cell));
  specifier.setTarget(target);
  set_accessors(specifier, getter, setter);
  if (detail) specifier.setProperty(NSString(detail.name()), "detail"_ns);
  if (name) specifier.setProperty(name, "label"_ns);
  return specifier;
}

PSSpecifier group_specifier_with_name(objc::ClassRef, const NSString& name) {
  const PSSpecifier specifier = make_specifier(name, CellType::Group);
  if (name) specifier.setProperty(name, "label"_ns);
  return specifier;
}

PSSpecifier empty_group_specifier(objc::ClassRef) { return make_specifier(NSString(), CellType::Group); }

}  // namespace

void define_specifier() {
  objc::Class<PSSpecifier>::implemented_by<Specifier>()
      .class_method<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:",
                    &preference_specifier_named>()
      .class_method<"groupSpecifierWithName:", &group_specifier_with_name>()
      .class_method<"emptyGroupSpecifier", &empty_group_specifier>()
      .property<"name", "setName:", &Specifier::name_>()
      .method<"identifier", &Specifier::identifier>()
      .method<"target", &Specifier::target>()
      .method<"setTarget:", &Specifier::setTarget>()
      .getter<"properties", &Specifier::properties_>()
      .method<"setProperties:", &Specifier::setProperties>()
      .method<"propertyForKey:", &Specifier::propertyForKey>()
      .method<"setProperty:forKey:", &Specifier::setPropertyForKey>()
      .method<"removePropertyForKey:", &Specifier::removePropertyForKey>()
      .property<"cellType", "setCellType:", &Specifier::cell_type_>()
      .method<"detailControllerClass", &Specifier::detailControllerClass>()
      .method<"cellClass", &Specifier::cellClass>()
      .getter<"getter", &Specifier::getter_>()
      .getter<"setter", &Specifier::setter_>()
      .property<"action", "setAction:", &Specifier::action_>()
      .method<"performGetter", &Specifier::performGetter>()
      .method<"performSetterWithValue:", &Specifier::performSetterWithValue>()
      .getter<"values", &Specifier::values_>()
      .getter<"titleDictionary", &Specifier::titles_>()
      .getter<"shortTitleDictionary", &Specifier::short_titles_>()
      .method<"setValues:titles:", &Specifier::setValuesTitles>()
      .method<"setValues:titles:shortTitles:", &Specifier::setValuesTitlesShortTitles>()
      .register_class();
}

}  // namespace wispen::preferences
