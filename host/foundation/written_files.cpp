// host/foundation/written_files.cpp: what Foundation writes, and where.

#include "host/foundation/written_files.hpp"

#include <string>

#include "host/core/device_root.hpp"
#include "host/foundation/device_paths.hpp"
#include "platform/Foundation.hpp"
#include "platform/Foundation/NSTask.hpp"

namespace wispen {

namespace {

class NSFileManager : public NSObject {
 public:
  static constexpr objc::FixedString kClass{"NSFileManager"};
  using NSObject::NSObject;
};

using ErrorSlot = void*;

bool is_foundations_own(const std::string& path) { return path.starts_with(DeviceRoot::kNowhere); }

/// Where a file is written.
NSString placed(const NSString& path) {
  if (!path || is_foundations_own(path.utf8())) return path;
  return host_path_for_writing(path.utf8()).c_str();
}

/// The name itself, which may be a link: what is removed or moved is not what it leads to.
NSString named(const NSString& path) {
  if (!path || is_foundations_own(path.utf8())) return path;
  std::string text = path.utf8();
  while (text.size() > 1 && text.ends_with('/')) text.pop_back();
  const std::size_t slash = text.rfind('/');
  const std::string name = text.substr(slash == std::string::npos ? 0 : slash + 1);
  if (name.empty() || name == "." || name == "..") return placed(path);
  const std::string folder = slash == std::string::npos ? std::string() : text.substr(0, slash);
  return (host_path_for_writing(folder) + "/" + name).c_str();
}

NSString source(const NSString& path) { return path ? NSString(host_path(path.utf8()).c_str()) : path; }

// One function a shape of method; the selector tells the originals apart.

template <objc::FixedString Sel, class T>
objc::Original<T>& original() {
  static auto* const instance = new objc::Original<T>();
  return *instance;
}

template <objc::FixedString Sel, NSString (*Place)(const NSString&), class Self, class R, class... Rest>
R with_path(const Self& self, const NSString& path, const Rest&... rest) {
  return original<Sel, R(NSString, Rest...)>()(self, Place(path), rest...);
}

template <objc::FixedString Sel, NSString (*From)(const NSString&), NSString (*To)(const NSString&),
          class Last>
bool with_two_paths(const NSFileManager& self, const NSString& from, const NSString& to, const Last& last) {
  return original<Sel, bool(NSString, NSString, Last)>()(self, From(from), To(to), last);
}

template <objc::FixedString Sel>
NSFileHandle handle_at(objc::ClassRef self, const NSString& path) {
  return original<Sel, NSFileHandle(NSString)>()(self, placed(path));
}

template <objc::FixedString Sel, NSString (*Place)(const NSString&), class... Rest>
void replace(objc::Category<NSFileManager>& manager) {
  manager.method<Sel, &with_path<Sel, Place, NSFileManager, bool, Rest...>>(
      original<Sel, bool(NSString, Rest...)>());
}

template <objc::FixedString Sel, NSString (*From)(const NSString&), class Last>
void replace_pair(objc::Category<NSFileManager>& manager) {
  manager.method<Sel, &with_two_paths<Sel, From, &named, Last>>(
      original<Sel, bool(NSString, NSString, Last)>());
}

template <objc::FixedString Sel, class... Rest>
void replace_in_data(objc::Category<NSData>& data) {
  data.method<Sel, &with_path<Sel, &placed, NSData, bool, Rest...>>(original<Sel, bool(NSString, Rest...)>());
}

}  // namespace

void install_written_files() {
  // Strings, arrays and Foundation's other writers write themselves as data.
  objc::Category<NSData> data;
  replace_in_data<"writeToFile:atomically:", bool>(data);
  replace_in_data<"writeToFile:options:error:", NSUInteger, ErrorSlot>(data);

  objc::Category<NSFileManager> manager;
  replace<"createFileAtPath:contents:attributes:", &placed, NSData, NSDictionary>(manager);
  replace<"createDirectoryAtPath:attributes:", &placed, NSDictionary>(manager);
  replace<"createDirectoryAtPath:withIntermediateDirectories:attributes:error:", &placed, bool, NSDictionary,
          ErrorSlot>(manager);
  replace<"createSymbolicLinkAtPath:pathContent:", &named, NSString>(manager);
  replace<"createSymbolicLinkAtPath:withDestinationPath:error:", &named, NSString, ErrorSlot>(manager);
  replace<"removeFileAtPath:handler:", &named, NSObject>(manager);
  replace<"removeItemAtPath:error:", &named, ErrorSlot>(manager);
  replace_pair<"copyPath:toPath:handler:", &source, NSObject>(manager);
  replace_pair<"copyItemAtPath:toPath:error:", &source, ErrorSlot>(manager);
  replace_pair<"movePath:toPath:handler:", &named, NSObject>(manager);
  replace_pair<"moveItemAtPath:toPath:error:", &named, ErrorSlot>(manager);
  replace_pair<"linkPath:toPath:handler:", &named, NSObject>(manager);

  objc::Category<NSFileHandle> handle;
  handle
      .class_method<"fileHandleForWritingAtPath:", &handle_at<"fileHandleForWritingAtPath:">>(
          original<"fileHandleForWritingAtPath:", NSFileHandle(NSString)>())
      .class_method<"fileHandleForUpdatingAtPath:", &handle_at<"fileHandleForUpdatingAtPath:">>(
          original<"fileHandleForUpdatingAtPath:", NSFileHandle(NSString)>());
}

}  // namespace wispen
