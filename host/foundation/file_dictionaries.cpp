// host/foundation/file_dictionaries.cpp: dictionaries that are property-list files.

#include "host/foundation/file_dictionaries.hpp"

#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "host/files/replace_file.hpp"
#include "host/foundation/device_paths.hpp"
#include "host/foundation/plist_objects.hpp"
#include "host/foundation/problems.hpp"
#include "host/plist/splice.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

namespace {

constexpr NSUInteger kUtf8 = 4;  // NSUTF8StringEncoding

/// A key's UTF-8 without a copy on the heap, for keys of ordinary letters and length.
class KeyBytes {
 public:
  explicit KeyBytes(const objc::Object& key) {
    const auto string = objc::cast_or_nil<NSString>(key);
    if (!string) return;
    if (objc::send<"getCString:maxLength:encoding:", bool>(string, buffer_.data(), NSUInteger{buffer_.size()},
                                                           kUtf8)) {
      // As many bytes as UTF-16 units: all of it is ASCII, and no zero inside has cut it short.
      const std::string_view bytes(buffer_.data());
      if (bytes.size() == string.length()) {
        view_ = bytes;
        return;
      }
    }
    if (auto bytes = utf8_of(string)) {
      heap_ = *std::move(bytes);
      view_ = heap_;
    }
  }
  KeyBytes(const KeyBytes&) = delete;
  KeyBytes& operator=(const KeyBytes&) = delete;

  /// Nothing for a key that no file can hold.
  const std::optional<std::string_view>& view() const { return view_; }

 private:
  std::array<char, 256> buffer_;
  std::string heap_;
  std::optional<std::string_view> view_;
};

NSObject value_in(const plist::Document& document, const objc::Object& key) {
  const KeyBytes bytes(key);
  if (!bytes.view()) return NSObject();
  const auto value = document.root().find(*bytes.view());
  return value ? object_of(*value) : NSObject();
}

/// The distinct keys of a document's root, in file order.
NSMutableArray keys_of(const plist::Document& document) {
  NSMutableArray keys = NSMutableArray::array();
  std::unordered_set<std::string> seen;
  for (const plist::Entry entry : document.root().entries()) {
    std::string key = entry.key.string();
    if (seen.insert(key).second) keys.addObject(string_of(key));
  }
  return keys;
}

bool write(const NSString& file, const std::optional<plist::Document>& document,
           const std::vector<plist::Change>& changes) {
  if (!file) return false;
  const std::string path = file.utf8();
  const auto bytes = plist::splice(document, changes);
  const auto written = bytes ? files::replace(path, *bytes, device_calls()) : Result<void>(bytes.error());
  if (!written) report_problem(path + " was not written: " + written.error().message);
  return written.ok();
}

struct FileDictionaryState {
  std::optional<plist::Document> document;
};

class FileDictionary : public objc::Authored<FileDictionary, NSDictionary> {
 public:
  static constexpr objc::FixedString kClass{"WispenFileDictionary"};
  using Authored::Authored;

  static FileDictionary of(plist::Document document) {
    FileDictionary dictionary = alloc().as_initialized();
    dictionary.state<FileDictionaryState>().document = std::move(document);
    return dictionary;
  }

  const plist::Document& document() const { return *state<FileDictionaryState>().document; }

  NSUInteger count() const { return keys_of(document()).count(); }
  NSObject object_for_key(const NSObject& key) const { return value_in(document(), key); }
  NSEnumerator key_enumerator() const { return keys_of(document()).objectEnumerator(); }
  bool write_to_file(const NSString& path, bool /*atomically*/) const { return write(path, document(), {}); }

  static void define() {
    objc::Class<FileDictionary>()
        .state<FileDictionaryState>()
        .method<"count", &FileDictionary::count>()
        .method<"objectForKey:", &FileDictionary::object_for_key>()
        .method<"keyEnumerator", &FileDictionary::key_enumerator>()
        .method<"writeToFile:atomically:", &FileDictionary::write_to_file>()
        .register_class();
  }
};

struct MutableFileDictionaryState {
  std::optional<plist::Document> document;
  NSMutableDictionary changed = NSMutableDictionary::dictionary();
  NSMutableArray changed_order = NSMutableArray::array();  // keys that were ever set, oldest first
  NSMutableDictionary removed = NSMutableDictionary::dictionary();
};

/// The file's bytes, and what was changed since.
class MutableFileDictionary : public objc::Authored<MutableFileDictionary, NSMutableDictionary> {
 public:
  static constexpr objc::FixedString kClass{"WispenMutableFileDictionary"};
  using Authored::Authored;

  static MutableFileDictionary of(plist::Document document) {
    MutableFileDictionary dictionary = alloc().as_initialized();
    dictionary.parts().document = std::move(document);
    return dictionary;
  }

  MutableFileDictionaryState& parts() const { return state<MutableFileDictionaryState>(); }

  NSObject object_for_key(const NSObject& key) const {
    if (!key) return NSObject();
    if (NSObject value = parts().changed.objectForKey(key)) return value;
    if (parts().removed.objectForKey(key)) return NSObject();
    return value_in(*parts().document, key);
  }

  void set_object(const NSObject& object, const NSObject& key) const {
    const bool known = key && parts().changed.objectForKey(key);
    parts().changed.setObject(object, key);  // raises the platform's exception for a nil object or key
    if (!known) parts().changed_order.addObject(objc::send<"copy", NSObject>(key));
    parts().removed.removeObjectForKey(key);
  }

  void remove_object(const NSObject& key) const {
    if (!key) return;
    parts().changed.removeObjectForKey(key);
    parts().changed_order.removeObject(key);
    parts().removed.setObject(key, key);
  }

  NSMutableArray keys() const {
    NSMutableArray all = NSMutableArray::array();
    const NSMutableArray in_file = keys_of(*parts().document);
    for (NSUInteger i = 0, count = in_file.count(); i < count; ++i) {
      const auto key = in_file.objectAtIndex(i);
      if (!parts().removed.objectForKey(key)) all.addObject(key);
    }
    for (NSUInteger i = 0, count = parts().changed_order.count(); i < count; ++i) {
      const auto key = parts().changed_order.objectAtIndex(i);
      if (!value_in(*parts().document, key)) all.addObject(key);
    }
    return all;
  }
  NSUInteger count() const { return keys().count(); }
  NSEnumerator key_enumerator() const { return keys().objectEnumerator(); }

  bool write_to_file(const NSString& path, bool /*atomically*/) const {
    std::vector<plist::Change> changes;
    const NSArray gone = parts().removed.allKeys();
    for (NSUInteger i = 0, count = gone.count(); i < count; ++i) {
      const KeyBytes key(gone.objectAtIndex(i));
      if (key.view()) changes.push_back({std::string(*key.view()), std::nullopt});
    }
    for (NSUInteger i = 0, count = parts().changed_order.count(); i < count; ++i) {
      const auto key = parts().changed_order.objectAtIndex(i);
      const KeyBytes bytes(key);
      auto tree = tree_of(parts().changed.objectForKey(key));
      if (!bytes.view() || !tree) {
        report_problem(path.utf8() + " was not written: " +
                       (tree ? "a property list's keys are strings" : tree.error().message));
        return false;
      }
      changes.push_back({std::string(*bytes.view()), *std::move(tree)});
    }
    return write(path, *parts().document, changes);
  }

  static void define() {
    objc::Class<MutableFileDictionary>()
        .state<MutableFileDictionaryState>()
        .method<"count", &MutableFileDictionary::count>()
        .method<"objectForKey:", &MutableFileDictionary::object_for_key>()
        .method<"keyEnumerator", &MutableFileDictionary::key_enumerator>()
        .method<"setObject:forKey:", &MutableFileDictionary::set_object>()
        .method<"removeObjectForKey:", &MutableFileDictionary::remove_object>()
        .method<"writeToFile:atomically:", &MutableFileDictionary::write_to_file>()
        .register_class();
  }
};

objc::Original<NSDictionary(NSString)>& original_with_contents() {
  static auto* const original = new objc::Original<NSDictionary(NSString)>();
  return *original;
}

/// Foundation's own files, which it wrote in a format of its own.
bool belongs_to_foundation(const std::string& path) {
  for (const char* const folder : {"/usr/share/GNUstep/", "/usr/lib/GNUstep/", "/etc/GNUstep/"}) {
    if (path.starts_with(folder)) return true;
  }
  return false;
}

NSDictionary read(const std::string& path, bool is_mutable) {
  auto read = plist::Document::read_for_writing(path, device_calls());
  // The platform says nothing, and the page then writes a file with its one value over what was not read.
  if (!read) report_problem(read.error().message);
  if (!read || !*read || !(*read)->root().is(plist::Type::Dictionary)) return NSDictionary();
  if (is_mutable) return MutableFileDictionary::of(**std::move(read));
  return FileDictionary::of(**std::move(read));
}

bool is_mutable(objc::ClassRef cls) { return cls.is_subclass_of(objc::class_for<NSMutableDictionary>()); }

NSDictionary with_contents_of_file(objc::ClassRef receiver, const NSString& file) {
  if (!file) return NSDictionary();
  const std::string path = file.utf8();
  if (belongs_to_foundation(path)) return original_with_contents()(receiver, file);
  return read(path, is_mutable(receiver));
}

NSDictionary init_with_contents_of_file(objc::Allocated<NSDictionary> self, const NSString& file) {
  const objc::ClassRef wanted = objc::class_of(std::move(self).as_initialized());
  return file ? read(file.utf8(), is_mutable(wanted)) : NSDictionary();
}

bool write_any_to_file(const NSDictionary& dictionary, const NSString& path, bool /*atomically*/) {
  const auto tree = tree_of(dictionary);
  if (!tree) {
    report_problem(path.utf8() + " was not written: " + tree.error().message);
    return false;
  }
  std::vector<plist::Change> all;
  for (const plist::Member& member : *tree->as<plist::Dictionary>())
    all.push_back({member.key, member.value});
  return write(path, std::nullopt, all);
}

}  // namespace

void install_file_dictionaries() {
  FileDictionary::define();
  MutableFileDictionary::define();
  objc::Category<NSDictionary>()
      .class_method<"dictionaryWithContentsOfFile:", &with_contents_of_file>(original_with_contents())
      .initializer<"initWithContentsOfFile:", &init_with_contents_of_file>()
      .method<"writeToFile:atomically:", &write_any_to_file>();
}

}  // namespace wispen
