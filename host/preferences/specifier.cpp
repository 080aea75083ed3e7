// host/preferences/specifier.cpp: PSSpecifier: one row of a page.

#include "host/preferences/specifier.hpp"

#include <algorithm>

#include "host/preferences/named_method.hpp"

namespace wispen::preferences {

struct SpecifierState {
  NSString name;
  objc::Weak<NSObject> target;  // the page, which owns its specifiers
  NSMutableDictionary properties = NSMutableDictionary::dictionary();
  NSInteger cell_type = static_cast<NSInteger>(CellType::Group);
  objc::Selector getter;
  objc::Selector setter;
  objc::Selector action;
  NSArray values;
  NSDictionary titles;
  NSDictionary short_titles;
};

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

Specifier preference_specifier_named(objc::ClassRef, const NSString& name, const NSObject& target,
                                     objc::Selector setter, objc::Selector getter, objc::ClassRef detail,
                                     NSInteger cell, objc::ClassRef /*edit*/) {
  Specifier specifier = Specifier::make(name, static_cast<CellType>(cell));
  specifier.setTarget(target);
  specifier.setAccessors(getter, setter);
  if (detail) specifier.setPropertyForKey(NSString(detail.name()), "detail"_ns);
  if (name) specifier.setPropertyForKey(name, "label"_ns);
  return specifier;
}

Specifier group_specifier_with_name(objc::ClassRef, const NSString& name) {
  Specifier specifier = Specifier::make(name, CellType::Group);
  if (name) specifier.setPropertyForKey(name, "label"_ns);
  return specifier;
}

Specifier empty_group_specifier(objc::ClassRef) { return Specifier::make(NSString(), CellType::Group); }

}  // namespace

SpecifierState& Specifier::parts() const { return state<SpecifierState>(); }

Specifier Specifier::make(const NSString& name, CellType type) {
  Specifier specifier = alloc().init();
  specifier.setName(name);
  specifier.setCellType(static_cast<NSInteger>(type));
  return specifier;
}

NSString Specifier::name() const { return parts().name; }
void Specifier::setName(const NSString& name) const { parts().name = name; }

NSString Specifier::identifier() const {
  for (const NSString& key : {"id"_ns, "key"_ns, "label"_ns}) {
    if (const auto text = objc::cast_or_nil<NSString>(propertyForKey(key))) return text;
  }
  return name();
}

NSObject Specifier::target() const { return parts().target.lock(); }
void Specifier::setTarget(const NSObject& target) const { parts().target = target; }
NSMutableDictionary Specifier::properties() const { return parts().properties; }
void Specifier::setProperties(const NSDictionary& properties) const {
  parts().properties = properties ? properties.mutableCopy() : NSMutableDictionary::dictionary();
}
NSObject Specifier::propertyForKey(const NSString& key) const { return parts().properties.objectForKey(key); }
void Specifier::setPropertyForKey(const NSObject& value, const NSString& key) const {
  if (!value) return removePropertyForKey(key);
  parts().properties.setObject(value, key);
}
void Specifier::removePropertyForKey(const NSString& key) const {
  parts().properties.removeObjectForKey(key);
}

NSInteger Specifier::cellType() const { return parts().cell_type; }
void Specifier::setCellType(NSInteger type) const { parts().cell_type = type; }
objc::ClassRef Specifier::detailControllerClass() const { return class_in(parts().properties, "detail"_ns); }
objc::ClassRef Specifier::cellClass() const { return class_in(parts().properties, "cellClass"_ns); }

objc::Selector Specifier::getter() const { return parts().getter; }
objc::Selector Specifier::setter() const { return parts().setter; }
objc::Selector Specifier::action() const { return parts().action; }
void Specifier::setAccessors(objc::Selector getter, objc::Selector setter) const {
  parts().getter = getter;
  parts().setter = setter;
}
void Specifier::setAction(objc::Selector action) const { parts().action = action; }

NSObject Specifier::performGetter() const {
  const NSObject page = target();
  if (!may_perform(page, getter(), MethodRole::Getter)) return NSObject();
  return objc::perform<NSObject>(page, getter(), *this);
}

void Specifier::performSetterWithValue(const NSObject& value) const {
  const NSObject page = target();
  if (may_perform(page, setter(), MethodRole::Setter)) objc::perform(page, setter(), value, *this);
}

NSArray Specifier::values() const { return parts().values; }
NSDictionary Specifier::titleDictionary() const { return parts().titles; }
NSDictionary Specifier::shortTitleDictionary() const { return parts().short_titles; }

void Specifier::setValuesTitles(const NSArray& values, const NSArray& titles) const {
  parts().values = values;
  parts().titles = dictionary_of(values, titles);
}

void Specifier::setValuesTitlesShortTitles(const NSArray& values, const NSArray& titles,
                                           const NSArray& short_titles) const {
  setValuesTitles(values, titles);
  parts().short_titles = dictionary_of(values, short_titles);
}

void Specifier::define() {
  objc::Class<Specifier>()
      .state<SpecifierState>()
      .class_method<"preferenceSpecifierNamed:target:set:get:detail:cell:edit:",
                    &preference_specifier_named>()
      .class_method<"groupSpecifierWithName:", &group_specifier_with_name>()
      .class_method<"emptyGroupSpecifier", &empty_group_specifier>()
      .method<"name", &Specifier::name>()
      .method<"setName:", &Specifier::setName>()
      .method<"identifier", &Specifier::identifier>()
      .method<"target", &Specifier::target>()
      .method<"setTarget:", &Specifier::setTarget>()
      .method<"properties", &Specifier::properties>()
      .method<"setProperties:", &Specifier::setProperties>()
      .method<"propertyForKey:", &Specifier::propertyForKey>()
      .method<"setProperty:forKey:", &Specifier::setPropertyForKey>()
      .method<"removePropertyForKey:", &Specifier::removePropertyForKey>()
      .method<"cellType", &Specifier::cellType>()
      .method<"setCellType:", &Specifier::setCellType>()
      .method<"detailControllerClass", &Specifier::detailControllerClass>()
      .method<"cellClass", &Specifier::cellClass>()
      .method<"getter", &Specifier::getter>()
      .method<"setter", &Specifier::setter>()
      .method<"action", &Specifier::action>()
      .method<"setAction:", &Specifier::setAction>()
      .method<"performGetter", &Specifier::performGetter>()
      .method<"performSetterWithValue:", &Specifier::performSetterWithValue>()
      .method<"values", &Specifier::values>()
      .method<"titleDictionary", &Specifier::titleDictionary>()
      .method<"shortTitleDictionary", &Specifier::shortTitleDictionary>()
      .method<"setValues:titles:", &Specifier::setValuesTitles>()
      .method<"setValues:titles:shortTitles:", &Specifier::setValuesTitlesShortTitles>()
      .register_class();
}

}  // namespace wispen::preferences
