// host/app/settings/installed_bundles.cpp: the bundles that a device root has installed.

#include "host/app/settings/installed_bundles.hpp"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

#include "host/foundation/problems.hpp"

namespace wispen {

namespace {

std::string text(const NSDictionary& dictionary, const NSString& key) {
  const auto value = objc::cast_or_nil<NSString>(dictionary.objectForKey(key));
  return value ? value.utf8() : std::string();
}

}  // namespace

std::vector<BundleEntry> installed_bundles(const DeviceRoot& root) {
  namespace fs = std::filesystem;
  const std::string library = std::string(root.device_jbroot()) + "/Library/";
  const auto lists = root.resolve(library + "PreferenceLoader/Preferences");
  std::vector<BundleEntry> entries;
  if (!lists) return entries;
  std::error_code error;
  for (const fs::directory_entry& file : fs::directory_iterator(*lists, error)) {
    if (file.path().extension() != ".plist") continue;
    const NSDictionary list = NSDictionary::dictionaryWithContentsOfFile(
        (library + "PreferenceLoader/Preferences/" + file.path().filename().string()).c_str());
    const auto entry = objc::cast_or_nil<NSDictionary>(list.objectForKey("entry"_ns));
    const std::string name = entry ? text(entry, "bundle"_ns) : std::string();
    if (name.empty()) {
      report_problem(file.path().string() + " names no bundle");
      continue;
    }
    const auto folder = root.resolve(library + "PreferenceBundles/" + name + ".bundle");
    if (!folder || !fs::is_directory(*folder, error)) {
      report_problem("the entry " + file.path().filename().string() + " names the bundle " + name +
                     ", which is not installed");
      continue;
    }
    const std::string label = text(entry, "label"_ns);
    entries.push_back({label.empty() ? name : label, *folder});
  }
  std::ranges::sort(entries, {}, &BundleEntry::label);
  return entries;
}

}  // namespace wispen
