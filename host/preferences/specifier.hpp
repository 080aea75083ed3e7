// host/preferences/specifier.hpp: PSSpecifier: one row of a page.
#pragma once

#include "host/preferences/cell_types.hpp"
#include "platform/Preferences.hpp"

namespace wispen::preferences {

struct SpecifierState;

/// The host's PSSpecifier. Everything that a list says of the row stays readable in its properties, known or
/// not; the parts that the framework itself acts on have accessors.
class Specifier : public objc::Authored<Specifier, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"PSSpecifier"};
  using Authored::Authored;

  static void define();
  /// The class's plain constructor: no target, no properties, a group without a name.
  static Specifier make(const NSString& name, CellType type);

  NSString name() const;
  void setName(const NSString& name) const;
  /// "id", else "key", else the untranslated label.
  NSString identifier() const;
  NSObject target() const;
  void setTarget(const NSObject& target) const;
  NSMutableDictionary properties() const;
  void setProperties(const NSDictionary& properties) const;
  NSObject propertyForKey(const NSString& key) const;
  void setPropertyForKey(const NSObject& value, const NSString& key) const;
  void removePropertyForKey(const NSString& key) const;

  NSInteger cellType() const;
  void setCellType(NSInteger type) const;
  /// The page that the row opens; looked up when asked for, since a class may be registered late.
  objc::ClassRef detailControllerClass() const;
  objc::ClassRef cellClass() const;

  objc::Selector getter() const;
  objc::Selector setter() const;
  objc::Selector action() const;
  void setAccessors(objc::Selector getter, objc::Selector setter) const;
  void setAction(objc::Selector action) const;

  /// Nil, and nothing, where the target does not answer the selector.
  NSObject performGetter() const;
  void performSetterWithValue(const NSObject& value) const;

  /// A choice row's values, in order, and their titles: equal values share one title.
  NSArray values() const;
  NSDictionary titleDictionary() const;
  NSDictionary shortTitleDictionary() const;
  void setValuesTitles(const NSArray& values, const NSArray& titles) const;
  void setValuesTitlesShortTitles(const NSArray& values, const NSArray& titles,
                                  const NSArray& short_titles) const;

 private:
  SpecifierState& parts() const;
};

}  // namespace wispen::preferences
