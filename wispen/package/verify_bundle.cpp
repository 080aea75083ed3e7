// wispen/package/verify_bundle.cpp: the data beside the code, and that code and data know each other.

#include <algorithm>
#include <array>
#include <optional>
#include <set>

#include "host/plist/document.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::package {

namespace {

constexpr char kBundle[] = "bundle";

// Classes that lists name and the phone's own frameworks bring.
constexpr std::array<std::string_view, 8> kPlatformClasses = {
    "PSListController",  "PSListItemsController", "PSTableCell",         "PSSwitchTableCell",
    "PSSliderTableCell", "PSSegmentTableCell",    "PSEditableTableCell", "PSControlTableCell"};

constexpr std::array<std::string_view, 4> kKeysOfClasses = {"cellClass", "detail", "headerCellClass",
                                                            "footerCellClass"};

std::optional<std::string> text_in(const plist::Value& dictionary, std::string_view key) {
  const auto value = dictionary.find(key);
  if (!value || !value->is(plist::Type::String)) return std::nullopt;
  return value->string();
}

/// Whether the code holds the name as a text of its own, as it does for every class that it registers.
bool code_names(std::string_view code, const std::string& name) {
  const std::string wanted = name + '\0';
  for (std::size_t at = code.find(wanted); at != std::string_view::npos; at = code.find(wanted, at + 1)) {
    const auto before = static_cast<unsigned char>(at > 0 ? code[at - 1] : '\0');
    const bool goes_on = before == '_' || (before >= '0' && before <= '9') ||
                         (before >= 'A' && before <= 'Z') || (before >= 'a' && before <= 'z');
    if (!goes_on) return true;
  }
  return false;
}

class BundleChecks {
 public:
  BundleChecks(const DebFile& deb, std::string prefix, Report& report)
      : deb_(deb),
        prefix_(std::move(prefix)),
        folder_(prefix_ + std::string(kBundleFolder)),
        report_(report) {}

  void run() {
    const std::string info = info_fault();
    report_.judge(kBundle, "Info.plist", info, principal_);
    report_.judge(kBundle, "front page entry", entry_fault(), "");
    const std::string* const code = file_at(deb_, folder_ + "/3dvitrelleprefs");
    report_.judge(
        kBundle, "principal class",
        code != nullptr && code_names(*code, principal_) ? "" : "the code has no class " + principal_,
        principal_);
    const std::string classes = classes_fault(code);
    report_.judge(kBundle, "classes of the lists", classes, std::to_string(classes_) + " names");
  }

 private:
  std::string info_fault() {
    const std::string* const bytes = file_at(deb_, folder_ + "/Info.plist");
    if (bytes == nullptr) return "Info.plist is missing";
    const auto document = plist::Document::parse(*bytes);
    if (!document) return "Info.plist cannot be read: " + document.error().message;
    const plist::Value info = document->root();
    principal_ = text_in(info, "NSPrincipalClass").value_or("");
    if (principal_.empty()) return "Info.plist names no NSPrincipalClass";
    if (text_in(info, "CFBundleExecutable") != "3dvitrelleprefs")
      return "Info.plist names another CFBundleExecutable";
    if (text_in(info, "CFBundlePackageType") != "BNDL") return "Info.plist is of no loadable bundle";
    if (!text_in(info, "CFBundleIdentifier")) return "Info.plist names no CFBundleIdentifier";
    if (text_in(info, "CFBundleInfoDictionaryVersion") != "6.0") return "Info.plist is of an unknown version";
    if (text_in(info, "MinimumOSVersion") != "15.0")
      return "Info.plist names another MinimumOSVersion than 15.0";
    if (text_in(info, "CFBundleShortVersionString") != deb_.field("Version")) {
      return "Info.plist has another version than the package";
    }
    return {};
  }

  std::string entry_fault() const {
    const std::string* const bytes = file_at(deb_, prefix_ + std::string(kEntryFile));
    if (bytes == nullptr) return "the entry's list is missing";
    const auto document = plist::Document::parse(*bytes);
    if (!document) return "the entry's list cannot be read: " + document.error().message;
    const auto entry = document->root().find("entry");
    if (!entry) return "the entry's list has no entry";
    if (text_in(*entry, "bundle") != "3dvitrelleprefs") return "the entry names another bundle";
    if (text_in(*entry, "detail") != principal_)
      return "the entry opens another class than the principal one";
    const auto icon = text_in(*entry, "icon");
    if (!icon || file_at(deb_, folder_ + "/" + *icon) == nullptr) return "the entry's icon is missing";
    return {};
  }

  std::string classes_fault(const std::string* code) {
    std::set<std::string> missing;
    for (const Entry& file : deb_.entries) {
      const std::string path = device_path(file.path);
      if (file.type != EntryType::File || !path.ends_with(".plist")) continue;
      const auto document = plist::Document::parse(file.bytes);
      if (!document) return path + " cannot be read: " + document.error().message;
      const auto items = document->root().find("items");
      if (!items || !items->is(plist::Type::Array)) continue;
      for (const plist::Value item : items->elements()) {
        for (const std::string_view key : kKeysOfClasses) {
          const auto name = text_in(item, key);
          if (!name) continue;
          ++classes_;
          const bool known = std::ranges::find(kPlatformClasses, *name) != kPlatformClasses.end();
          if (!known && (code == nullptr || !code_names(*code, *name))) missing.insert(*name);
        }
      }
    }
    if (missing.empty()) return {};
    std::string names;
    for (const std::string& name : missing) names += (names.empty() ? "" : ", ") + name;
    return "the code has no " + names;
  }

  const DebFile& deb_;
  std::string prefix_;
  std::string folder_;
  Report& report_;
  std::string principal_;
  std::size_t classes_ = 0;
};

}  // namespace

void check_bundle_data(const DebFile& deb, Report& report) {
  const char* const prefix = prefix_of(deb.field("Architecture"));
  if (prefix != nullptr) BundleChecks(deb, prefix, report).run();
}

}  // namespace wispen::package
