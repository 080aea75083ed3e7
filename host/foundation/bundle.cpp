// host/foundation/bundle.cpp: bundles: a folder with an Info.plist, code and localised resources.

#include "host/foundation/bundle.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>
#include <utility>

#include "host/foundation/device_paths.hpp"
#include "host/foundation/strings_tables.hpp"

namespace wispen {

namespace {

namespace fs = std::filesystem;

std::mutex languages_mutex;
std::vector<std::string>& languages() {
  static auto* const list = new std::vector<std::string>{"en"};
  return *list;
}

/// "de-AT" asks for de-AT, then for de.
std::vector<std::string> with_parents(const std::vector<std::string>& wanted) {
  std::vector<std::string> all;
  for (const std::string& language : wanted) {
    for (std::string tag = language; !tag.empty();) {
      if (std::ranges::find(all, tag) == all.end()) all.push_back(tag);
      const auto dash = tag.find_last_of("-_");
      tag = dash == std::string::npos ? std::string() : tag.substr(0, dash);
    }
  }
  return all;
}

struct BundleState {
  std::string path;
  NSDictionary info;
  std::string image;  // the loaded executable, as the dynamic loader names it
  StringsTables tables;
};

class HostBundle : public objc::Authored<HostBundle, NSBundle> {
 public:
  static constexpr objc::FixedString kClass{"WispenHostBundle"};
  using Authored::Authored;

  BundleState& parts() const { return state<BundleState>(); }

  NSString path() const { return parts().path.c_str(); }
  NSDictionary info() const { return parts().info; }
  NSString identifier() const { return info().objectForKey<NSString>("CFBundleIdentifier"_ns); }
  NSString executable() const {
    const auto name = info().objectForKey<NSString>("CFBundleExecutable"_ns);
    return name ? NSString((parts().path + "/" + name.utf8()).c_str()) : NSString();
  }
  NSObject info_value(const NSString& key) const { return info().objectForKey(key); }
  std::string development_language() const {
    const auto region = info().objectForKey<NSString>("CFBundleDevelopmentRegion"_ns);
    return region ? region.utf8() : "en";
  }

  objc::ClassRef principal_class() const {
    const auto name = info().objectForKey<NSString>("NSPrincipalClass"_ns);
    load();
    return name ? objc::ClassRef::named(name.utf8().c_str()) : objc::ClassRef();
  }
  objc::ClassRef class_named(const NSString& name) const {
    return objc::ClassRef::named(name.utf8().c_str());
  }
  bool load() const { return load_bundle_code(*this).ok(); }
  bool is_loaded() const { return !parts().image.empty(); }

  /// The folders that a resource is looked for in: the user's languages, Base, the bundle's own folder,
  /// the language that the bundle was developed in.
  std::vector<std::string> resource_folders() const {
    std::vector<std::string> folders;
    const auto add = [&](const std::string& language) {
      folders.push_back(parts().path + "/" + language + ".lproj");
    };
    for (const std::string& language : with_parents(preferred_languages())) add(language);
    add("Base");
    folders.push_back(parts().path);
    add(development_language());
    return folders;
  }

  NSString find_resource(const NSString& name, const NSString& type, const NSString& folder) const {
    if (!name) return NSString();
    std::string file = name.utf8();
    if (type && type.length() > 0) file += "." + type.utf8();
    if (folder && folder.length() > 0) file.insert(0, folder.utf8() + "/");
    for (const std::string& place : resource_folders()) {
      std::error_code error;
      if (fs::is_regular_file(place + "/" + file, error)) return (place + "/" + file).c_str();
    }
    return NSString();
  }
  NSString find_resource_anywhere(const NSString& name, const NSString& type) const {
    return find_resource(name, type, NSString());
  }

  NSString localized(const NSString& key, const NSString& value, const NSString& table) const {
    const NSString fallback = value && value.length() > 0 ? value : key;
    if (!key) return fallback ? fallback : NSString("");
    const std::string table_name = table && table.length() > 0 ? table.utf8() : "Localizable";
    for (const std::string& folder : resource_folders()) {
      const std::optional<StringsTables::Answer> answer =
          parts().tables.look_up(folder + "/" + table_name + ".strings", key.utf8());
      if (!answer) continue;  // this folder has no such table
      return answer->text ? NSString(answer->text->c_str()) : fallback;
    }
    return fallback;
  }

  NSArray localizations() const {
    NSMutableArray names = NSMutableArray::array();
    std::error_code error;
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(parts().path, error)) {
      if (entry.path().extension() == ".lproj") found.push_back(entry.path().stem());
    }
    std::ranges::sort(found);
    for (const std::string& name : found) names.addObject(NSString(name.c_str()));
    return names;
  }

  static void define() {
    objc::Class<HostBundle>()
        .state<BundleState>()
        .method<"bundlePath", &HostBundle::path>()
        .method<"resourcePath", &HostBundle::path>()
        .method<"infoDictionary", &HostBundle::info>()
        .method<"localizedInfoDictionary", &HostBundle::info>()
        .method<"objectForInfoDictionaryKey:", &HostBundle::info_value>()
        .method<"bundleIdentifier", &HostBundle::identifier>()
        .method<"executablePath", &HostBundle::executable>()
        .method<"principalClass", &HostBundle::principal_class>()
        .method<"classNamed:", &HostBundle::class_named>()
        .method<"load", &HostBundle::load>()
        .method<"isLoaded", &HostBundle::is_loaded>()
        .method<"pathForResource:ofType:", &HostBundle::find_resource_anywhere>()
        .method<"pathForResource:ofType:inDirectory:", &HostBundle::find_resource>()
        .method<"localizedStringForKey:value:table:", &HostBundle::localized>()
        .method<"localizations", &HostBundle::localizations>()
        .register_class();
  }
};

// Bundles are made and asked for on the main thread, as on the phone. The newest user of a loaded image
// owns its classes.
struct Registry {
  std::map<std::string, HostBundle> by_path;
  std::map<std::string, HostBundle> by_image;
};
Registry& registry() {
  static auto* const instance = new Registry();
  return *instance;
}

objc::Original<NSBundle(objc::ClassRef)>& original_bundle_for_class() {
  static auto* const original = new objc::Original<NSBundle(objc::ClassRef)>();
  return *original;
}

std::string canonical(const std::string& path) {
  std::error_code error;
  const fs::path found = fs::canonical(path, error);
  return error ? path : found.string();
}

std::string image_of(objc::ClassRef cls) {
  Dl_info info{};
  const void* const address = objc::code_address(cls);
  if (address == nullptr || ::dladdr(address, &info) == 0 || info.dli_fname == nullptr) return {};
  return canonical(info.dli_fname);
}

NSBundle bundle_for_class(objc::ClassRef receiver, objc::ClassRef cls) {
  const auto found = registry().by_image.find(image_of(cls));
  if (found != registry().by_image.end()) return found->second;
  return original_bundle_for_class()(receiver, cls);
}

NSBundle bundle_with_path(objc::ClassRef, const NSString& path) {
  const Result<NSBundle> bundle = bundle_at(host_path(path.utf8()));
  return bundle ? *bundle : NSBundle();
}

}  // namespace

std::vector<std::string> preferred_languages() {
  const std::lock_guard lock(languages_mutex);
  return languages();
}

void set_preferred_languages(std::vector<std::string> wanted) {
  const std::lock_guard lock(languages_mutex);
  languages() = std::move(wanted);
}

void install_bundles() {
  HostBundle::define();
  objc::Category<NSBundle>()
      .class_method<"bundleForClass:", &bundle_for_class>(original_bundle_for_class())
      .class_method<"bundleWithPath:", &bundle_with_path>();
}

Result<NSBundle> bundle_at(const std::string& folder) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) return Error{"there is no bundle at " + folder};
  const std::string path = canonical(folder);
  add_readable_folder(path);
  const std::string info_path = path + "/Info.plist";
  if (!fs::exists(info_path, error)) return Error{"the bundle " + path + " has no Info.plist"};
  const NSDictionary info = NSDictionary::dictionaryWithContentsOfFile(info_path.c_str());
  if (!info) return Error{"the bundle's " + info_path + " is not a property list that can be read"};

  HostBundle& bundle = registry().by_path[path];
  if (!bundle) bundle = HostBundle::alloc().as_initialized();
  bundle.parts().path = path;
  bundle.parts().info = info;  // read anew: the folder may hold another bundle by now
  return NSBundle(bundle);
}

Result<objc::ClassRef> load_bundle_code(const NSBundle& handle) {
  const auto bundle = objc::cast_or_nil<HostBundle>(handle);
  if (!bundle) return Error{"only a bundle that the host opened can be loaded"};
  const std::string path = bundle.parts().path;
  const auto class_name = bundle.info().objectForKey<NSString>("NSPrincipalClass"_ns);
  if (!class_name) return Error{"the Info.plist of " + path + " names no NSPrincipalClass"};
  const std::string name = class_name.utf8();
  const NSString executable = bundle.executable();
  if (!executable) return Error{"the Info.plist of " + path + " names no CFBundleExecutable"};

  objc::ClassRef principal = objc::ClassRef::named(name.c_str());
  if (!principal) {
    if (::dlopen(executable.utf8().c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) {
      return Error{"the code of " + path + " cannot be loaded: " + ::dlerror()};
    }
    principal = objc::ClassRef::named(name.c_str());
    if (!principal) return Error{"the code of " + path + " has no class " + name};
  }
  bundle.parts().image = image_of(principal);
  registry().by_image[bundle.parts().image] = bundle;
  return principal;
}

}  // namespace wispen
