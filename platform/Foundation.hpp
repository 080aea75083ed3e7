// platform/Foundation.hpp: Foundation's classes, as far as the bundle and the host use them. Names, and
// what they do, are Foundation's own.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/objc/objc.hpp"

using NSInteger = long;
using NSUInteger = unsigned long;
using NSTimeInterval = double;

inline constexpr NSUInteger NSNotFound = 0x7FFFFFFFFFFFFFFF;

struct NSRange {
  NSUInteger location;
  NSUInteger length;
  bool operator==(const NSRange&) const = default;
};
template <>
struct objc::Encoding<NSRange> {
  static constexpr FixedString value{"{_NSRange=QQ}"};
};

class NSString;

class NSObject : public objc::Object {
 public:
  static constexpr objc::FixedString kClass{"NSObject"};
  using objc::Object::Object;
  NSObject() = default;
  NSObject(const objc::Object& object) : objc::Object(object) {}  // NOLINT(google-explicit-constructor)

  static objc::Allocated<NSObject> alloc() { return objc::allocate<NSObject>(); }

  bool isEqual(const objc::Object& other) const { return objc::send<"isEqual:", bool>(*this, other); }
  bool isKindOfClass(objc::ClassRef cls) const { return objc::send<"isKindOfClass:", bool>(*this, cls); }
  bool respondsToSelector(objc::Selector selector) const { return objc::responds_to(*this, selector); }
  /// Calls a method without arguments that gives an object; raises where the object does not answer it.
  template <class R>
  R performSelector(objc::Selector selector) const {
    return objc::send<"performSelector:", R>(*this, selector);
  }
  NSUInteger hash() const { return objc::send<"hash", NSUInteger>(*this); }
  NSUInteger retainCount() const { return objc::send<"retainCount", NSUInteger>(*this); }
  NSString description() const;
};

class NSString : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSString"};
  using NSObject::NSObject;
  NSString() = default;
  /// A UTF-8 string; nil for null and for bytes that are not UTF-8.
  NSString(const char* utf8) : NSString(stringWithUTF8String(utf8)) {}  // NOLINT(google-explicit-constructor)

  static NSString stringWithUTF8String(const char* utf8) {
    if (utf8 == nullptr) return NSString();
    return objc::send<"stringWithUTF8String:", NSString>(objc::class_for<NSString>(), utf8);
  }

  /// The UTF-8 bytes; they live as long as the autorelease pool of the caller. Null for nil.
  const char* UTF8String() const { return objc::send<"UTF8String", const char*>(*this); }
  /// The bytes that the file system's interfaces take; the same life.
  const char* fileSystemRepresentation() const {
    return objc::send<"fileSystemRepresentation", const char*>(*this);
  }
  /// UTF-16 units.
  NSUInteger length() const { return objc::send<"length", NSUInteger>(*this); }
  bool isEqualToString(const NSString& other) const {
    return objc::send<"isEqualToString:", bool>(*this, other);
  }
  double doubleValue() const { return objc::send<"doubleValue", double>(*this); }
  float floatValue() const { return objc::send<"floatValue", float>(*this); }

  /// A copy of the UTF-8 bytes; "" for nil.
  NSString copy() const { return objc::send<"copy", NSString>(*this); }
  std::string utf8() const {
    // The ordinary string fits, and then no object has to be made that holds its bytes for the caller.
    constexpr NSUInteger kUtf8 = 4, kRoom = 512;
    char buffer[kRoom];
    if (objc::send<"getCString:maxLength:encoding:", bool>(*this, &buffer[0], kRoom, kUtf8)) return buffer;
    const objc::AutoreleasePool pool;
    const char* bytes = UTF8String();
    return bytes != nullptr ? std::string(bytes) : std::string();
  }
};

namespace objc::detail {
template <FixedString Text>
inline constinit std::atomic<abi::id> string_cache{nullptr};
}  // namespace objc::detail

/// The string object of a literal, made once and kept: `"key"_ns`.
template <objc::FixedString Text>
inline NSString operator""_ns() {
  auto& cache = objc::detail::string_cache<Text>;
  objc::abi::id cached = cache.load(std::memory_order_acquire);
  if (cached == nullptr) [[unlikely]] {
    objc::abi::id made = objc::leak(NSString::stringWithUTF8String(Text.value));
    if (cache.compare_exchange_strong(cached, made, std::memory_order_acq_rel)) {
      cached = made;
    } else {
      objc::abi::release(made);  // another thread was first
    }
  }
  return objc::retain<NSString>(cached);
}

inline NSString NSObject::description() const { return objc::send<"description", NSString>(*this); }

class NSException : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSException"};
  using NSObject::NSObject;

  /// Leaves the caller by an exception of that name, which Foundation's handlers catch.
  [[noreturn]] static void raise(const NSString& name, const NSString& reason) {
    objc::send<"raise">(objc::send<"exceptionWithName:reason:userInfo:", NSException>(
        objc::class_for<NSException>(), name, reason, nullptr));
    __builtin_unreachable();
  }
};

class NSNumber : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSNumber"};
  using NSObject::NSObject;

  static NSNumber numberWithBool(bool value) { return from<"numberWithBool:">(value); }
  static NSNumber numberWithInteger(NSInteger value) { return from<"numberWithInteger:">(value); }
  static NSNumber numberWithInt(int value) { return from<"numberWithInt:">(value); }
  static NSNumber numberWithLongLong(long long value) { return from<"numberWithLongLong:">(value); }
  static NSNumber numberWithUnsignedLongLong(unsigned long long value) {
    return from<"numberWithUnsignedLongLong:">(value);
  }
  static NSNumber numberWithFloat(float value) { return from<"numberWithFloat:">(value); }
  static NSNumber numberWithDouble(double value) { return from<"numberWithDouble:">(value); }

  bool boolValue() const { return objc::send<"boolValue", bool>(*this); }
  int intValue() const { return objc::send<"intValue", int>(*this); }
  NSInteger integerValue() const { return objc::send<"integerValue", NSInteger>(*this); }
  long long longLongValue() const { return objc::send<"longLongValue", long long>(*this); }
  unsigned long long unsignedLongLongValue() const {
    return objc::send<"unsignedLongLongValue", unsigned long long>(*this);
  }
  float floatValue() const { return objc::send<"floatValue", float>(*this); }
  double doubleValue() const { return objc::send<"doubleValue", double>(*this); }
  /// The type encoding of the number as it was made.
  const char* objCType() const { return objc::send<"objCType", const char*>(*this); }
  NSString stringValue() const { return objc::send<"stringValue", NSString>(*this); }

 private:
  template <objc::FixedString Sel, class V>
  static NSNumber from(V value) {
    return objc::send<Sel, NSNumber>(objc::class_for<NSNumber>(), value);
  }
};

class NSData : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSData"};
  using NSObject::NSObject;

  static NSData dataWithBytes(const void* bytes, NSUInteger length) {
    return objc::send<"dataWithBytes:length:", NSData>(objc::class_for<NSData>(), bytes, length);
  }
  const void* bytes() const { return objc::send<"bytes", const void*>(*this); }
  NSUInteger length() const { return objc::send<"length", NSUInteger>(*this); }
};

class NSDate : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSDate"};
  using NSObject::NSObject;

  /// Seconds since the first instant of 1 January 2001, GMT.
  static NSDate dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
    return objc::send<"dateWithTimeIntervalSinceReferenceDate:", NSDate>(objc::class_for<NSDate>(), seconds);
  }
  NSTimeInterval timeIntervalSinceReferenceDate() const {
    return objc::send<"timeIntervalSinceReferenceDate", NSTimeInterval>(*this);
  }
};

class NSEnumerator : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSEnumerator"};
  using NSObject::NSObject;

  /// Nil at the end.
  template <class T = NSObject>
  T nextObject() const {
    return objc::send<"nextObject", T>(*this);
  }
};

class NSMutableArray;

class NSArray : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSArray"};
  using NSObject::NSObject;

  static NSArray array() { return objc::send<"array", NSArray>(objc::class_for<NSArray>()); }
  static NSArray arrayWithArray(const NSArray& other) {
    return objc::send<"arrayWithArray:", NSArray>(objc::class_for<NSArray>(), other);
  }

  NSUInteger count() const { return objc::send<"count", NSUInteger>(*this); }
  /// Raises the platform's out-of-range exception.
  template <class T = NSObject>
  T objectAtIndex(NSUInteger index) const {
    return objc::send<"objectAtIndex:", T>(*this, index);
  }
  template <class T = NSObject>
  T firstObject() const {
    return count() > 0 ? objectAtIndex<T>(0) : T();
  }
  template <class T = NSObject>
  T lastObject() const {
    return objc::send<"lastObject", T>(*this);
  }
  bool containsObject(const objc::Object& object) const {
    return objc::send<"containsObject:", bool>(*this, object);
  }
  /// NSNotFound where there is none.
  NSUInteger indexOfObject(const objc::Object& object) const {
    return objc::send<"indexOfObject:", NSUInteger>(*this, object);
  }
  NSEnumerator objectEnumerator() const { return objc::send<"objectEnumerator", NSEnumerator>(*this); }
  NSEnumerator reverseObjectEnumerator() const {
    return objc::send<"reverseObjectEnumerator", NSEnumerator>(*this);
  }
  NSMutableArray mutableCopy() const;
  NSArray copy() const { return objc::send<"copy", NSArray>(*this); }
};

class NSMutableArray : public NSArray {
 public:
  using Base = NSArray;
  static constexpr objc::FixedString kClass{"NSMutableArray"};
  using NSArray::NSArray;

  static NSMutableArray array() {
    return objc::send<"array", NSMutableArray>(objc::class_for<NSMutableArray>());
  }
  void addObject(const objc::Object& object) const { objc::send<"addObject:">(*this, object); }
  void insertObject(const objc::Object& object, NSUInteger index) const {
    objc::send<"insertObject:atIndex:">(*this, object, index);
  }
  void replaceObjectAtIndex(NSUInteger index, const objc::Object& object) const {
    objc::send<"replaceObjectAtIndex:withObject:">(*this, index, object);
  }
  void removeObject(const objc::Object& object) const { objc::send<"removeObject:">(*this, object); }
  void removeObjectAtIndex(NSUInteger index) const { objc::send<"removeObjectAtIndex:">(*this, index); }
  void removeObjectsInRange(NSRange range) const { objc::send<"removeObjectsInRange:">(*this, range); }
};

inline NSMutableArray NSArray::mutableCopy() const {
  return objc::send<"mutableCopy", NSMutableArray>(*this);
}

class NSMutableDictionary;

class NSDictionary : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSDictionary"};
  using NSObject::NSObject;

  static NSDictionary dictionary() {
    return objc::send<"dictionary", NSDictionary>(objc::class_for<NSDictionary>());
  }
  /// The dictionary that a property-list file holds; nil where the file cannot be read as one.
  static NSDictionary dictionaryWithContentsOfFile(const NSString& path) {
    return objc::send<"dictionaryWithContentsOfFile:", NSDictionary>(objc::class_for<NSDictionary>(), path);
  }

  NSUInteger count() const { return objc::send<"count", NSUInteger>(*this); }
  /// Nil for a missing key.
  template <class T = NSObject>
  T objectForKey(const objc::Object& key) const {
    return objc::send<"objectForKey:", T>(*this, key);
  }
  template <class T = NSObject>
  T objectForKeyedSubscript(const objc::Object& key) const {
    return objc::send<"objectForKeyedSubscript:", T>(*this, key);
  }
  NSArray allKeys() const { return objc::send<"allKeys", NSArray>(*this); }
  NSEnumerator keyEnumerator() const { return objc::send<"keyEnumerator", NSEnumerator>(*this); }
  /// Writes the whole dictionary as a property list; false where that failed.
  bool writeToFile(const NSString& path, bool atomically) const {
    return objc::send<"writeToFile:atomically:", bool>(*this, path, atomically);
  }
  NSMutableDictionary mutableCopy() const;
};

class NSMutableDictionary : public NSDictionary {
 public:
  using Base = NSDictionary;
  static constexpr objc::FixedString kClass{"NSMutableDictionary"};
  using NSDictionary::NSDictionary;

  static NSMutableDictionary dictionary() {
    return objc::send<"dictionary", NSMutableDictionary>(objc::class_for<NSMutableDictionary>());
  }
  static NSMutableDictionary dictionaryWithContentsOfFile(const NSString& path) {
    return objc::send<"dictionaryWithContentsOfFile:", NSMutableDictionary>(
        objc::class_for<NSMutableDictionary>(), path);
  }
  /// Raises the platform's invalid-argument exception for a nil object or key.
  void setObject(const objc::Object& object, const objc::Object& key) const {
    objc::send<"setObject:forKey:">(*this, object, key);
  }
  void removeObjectForKey(const objc::Object& key) const { objc::send<"removeObjectForKey:">(*this, key); }
};

inline NSMutableDictionary NSDictionary::mutableCopy() const {
  return objc::send<"mutableCopy", NSMutableDictionary>(*this);
}

class NSMutableSet : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSMutableSet"};
  using NSObject::NSObject;

  static NSMutableSet setWithArray(const NSArray& objects) {
    return objc::send<"setWithArray:", NSMutableSet>(objc::class_for<NSMutableSet>(), objects);
  }
  bool containsObject(const objc::Object& object) const {
    return objc::send<"containsObject:", bool>(*this, object);
  }
  void addObject(const objc::Object& object) const { objc::send<"addObject:">(*this, object); }
  void removeObject(const objc::Object& object) const { objc::send<"removeObject:">(*this, object); }
};

class NSUserDefaults : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSUserDefaults"};
  using NSObject::NSObject;

  bool boolForKey(const NSString& key) const { return objc::send<"boolForKey:", bool>(*this, key); }
  NSObject valueForKey(const NSString& key) const { return objc::send<"valueForKey:", NSObject>(*this, key); }
};

class NSBundle : public NSObject {
 public:
  using Base = NSObject;
  static constexpr objc::FixedString kClass{"NSBundle"};
  using NSObject::NSObject;

  /// The bundle whose code defines the class.
  static NSBundle bundleForClass(objc::ClassRef cls) {
    return objc::send<"bundleForClass:", NSBundle>(objc::class_for<NSBundle>(), cls);
  }
  static NSBundle bundleWithPath(const NSString& path) {
    return objc::send<"bundleWithPath:", NSBundle>(objc::class_for<NSBundle>(), path);
  }

  /// Of the Info.plist, in the language that is read; nil where it says nothing.
  template <class T = NSObject>
  T objectForInfoDictionaryKey(const NSString& key) const {
    return objc::send<"objectForInfoDictionaryKey:", T>(*this, key);
  }
  NSString bundlePath() const { return objc::send<"bundlePath", NSString>(*this); }
  NSString bundleIdentifier() const { return objc::send<"bundleIdentifier", NSString>(*this); }
  NSDictionary infoDictionary() const { return objc::send<"infoDictionary", NSDictionary>(*this); }
  objc::ClassRef principalClass() const { return objc::send<"principalClass", objc::ClassRef>(*this); }
  /// Nil where the bundle has no such file.
  NSString pathForResource(const NSString& name, const NSString& type) const {
    return objc::send<"pathForResource:ofType:", NSString>(*this, name, type);
  }
  /// The key's text in the table (nil: "Localizable") and the chosen language, else value, else the key.
  NSString localizedString(const NSString& key, const NSString& value, const NSString& table) const {
    return objc::send<"localizedStringForKey:value:table:", NSString>(*this, key, value, table);
  }
};
