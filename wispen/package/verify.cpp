// wispen/package/verify.cpp: the report, and the package around the bundle.

#include "wispen/package/verify.hpp"

#include <glib.h>
#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <set>
#include <utility>

namespace wispen::package {

namespace {

constexpr char kPackage[] = "package";

std::string control_fault(const DebFile& deb) {
  if (deb.field("Package") != kPackageName) {
    return "the package is called \"" + deb.field("Package") + "\", not " + std::string(kPackageName);
  }
  const std::string version = deb.field("Version");
  if (version.empty() ||
      version.find_first_not_of("0123456789abcdefghijklmnopqrstuvwxyz.+~-") != std::string::npos) {
    return "\"" + version + "\" is no version";
  }
  for (const char* field : {"Name", "Maintainer", "Description", "Section"}) {
    if (deb.field(field).empty()) return std::string("the field ") + field + " is missing";
  }
  for (const char* needed : {"preferenceloader", "firmware"}) {
    if (deb.field("Depends").find(needed) == std::string::npos) {
      return std::string("it does not depend on ") + needed;
    }
  }
  return {};
}

/// Fields that make dpkg refuse to remove the package again.
std::string lasting_fault(const DebFile& deb) {
  for (const auto& [name, value] : deb.control) {
    for (const char* const lasting : {"Essential", "Protected", "Important"}) {
      if (::strcasecmp(name.c_str(), lasting) == 0 && ::strcasecmp(value.c_str(), "no") != 0) {
        return "it says " + name + ": " + value + ", and could not be removed";
      }
    }
  }
  return {};
}

std::string md5_of(const std::string& bytes) {
  const std::unique_ptr<char, decltype(&g_free)> text(
      g_compute_checksum_for_data(G_CHECKSUM_MD5, reinterpret_cast<const guchar*>(bytes.data()),
                                  bytes.size()),
      g_free);
  return text.get();
}

/// "<32 digits>  path" lines; a package may come without them.
std::string checksums_fault(const DebFile& deb) {
  constexpr std::size_t kDigits = 32;
  for (const Entry& file : deb.control_files) {
    if (device_path(file.path) != "/md5sums") continue;
    for (std::string_view rest = file.bytes; !rest.empty();) {
      const std::string_view line = rest.substr(0, rest.find('\n'));
      rest.remove_prefix(std::min(rest.size(), line.size() + 1));
      if (line.empty()) continue;
      if (line.size() < kDigits + 3) return "md5sums has a line that is not a sum and a path";
      const std::string path = device_path(line.substr(kDigits + 2));
      const std::string* const bytes = file_at(deb, path);
      if (bytes == nullptr)
        return "md5sums names " + std::string(line.substr(kDigits + 2)) + ", which is missing";
      if (md5_of(*bytes) != line.substr(0, kDigits)) return path + " is not what md5sums says";
    }
  }
  return {};
}

std::string script_fault(const DebFile& deb) {
  for (const Entry& file : deb.control_files) {
    const std::string path = device_path(file.path);
    if (path != "/" && path != "/control" && path != "/md5sums") {
      return "it brings " + file.path + ", which would run or act at the installation";
    }
  }
  return {};
}

bool is_parent_of(std::string_view folder, std::string_view path) {
  return folder == "/" ||
         (path.starts_with(folder) && path.size() > folder.size() && path[folder.size()] == '/');
}

std::string path_fault(const DebFile& deb, const std::string& prefix) {
  const std::string bundle = prefix + std::string(kBundleFolder);
  const std::string entry_file = prefix + std::string(kEntryFile);
  std::set<std::string> seen;
  for (const Entry& entry : deb.entries) {
    const std::string path = device_path(entry.path);
    if (path.empty()) return "\"" + entry.path + "\" leads out of the tree";
    if (!seen.insert(path).second) return path + " is there twice";
    for (std::size_t at = 1; at < path.size();) {
      const std::size_t end = std::min(path.find('/', at), path.size());
      if (end - at > DebFile::kLongestName) {
        return "a name of " + std::to_string(end - at) + " bytes: " + path.substr(at, 40) + "...";
      }
      at = end + 1;
    }
    if (path == bundle && entry.type != EntryType::Folder) return path + " is not a folder";
    if (entry.type != EntryType::File && entry.type != EntryType::Folder) {
      return path + " is neither a file nor a folder";
    }
    const bool own = path == bundle || is_parent_of(bundle, path) || path == entry_file;
    const bool on_the_way =
        entry.type == EntryType::Folder && (is_parent_of(path, bundle) || is_parent_of(path, entry_file));
    if (!own && !on_the_way) return path + " is no place for a file of this package";
  }
  for (const Entry& entry : deb.entries) {
    if (entry.type != EntryType::File) continue;
    const std::string path = device_path(entry.path) + "/";
    const auto inside = seen.lower_bound(path);
    if (inside != seen.end() && inside->starts_with(path)) return *inside + " lies in a file";
  }
  for (const std::string& needed : {bundle + "/3dvitrelleprefs", bundle + "/Info.plist", entry_file}) {
    if (file_at(deb, needed) == nullptr) return needed + " is missing";
  }
  return {};
}

std::string mode_fault(const DebFile& deb, const std::string& executable) {
  for (const Entry& entry : deb.entries) {
    const std::string path = device_path(entry.path);
    if (entry.uid != 0 || entry.gid != 0) return path + " does not belong to root";
    const unsigned wanted = entry.type == EntryType::Folder || path == executable ? 0755 : 0644;
    if (entry.mode != wanted) {
      char text[16];
      std::snprintf(text, sizeof text, "%04o", entry.mode);
      return path + " has the mode " + text;
    }
  }
  return {};
}

}  // namespace

bool Report::clean() const { return std::ranges::all_of(checks, &Check::passed); }

void Report::pass(std::string subject, std::string name, std::string detail) {
  checks.push_back({std::move(subject), std::move(name), true, std::move(detail)});
}

void Report::fail(std::string subject, std::string name, std::string fault) {
  checks.push_back({std::move(subject), std::move(name), false, std::move(fault)});
}

void Report::judge(std::string subject, std::string name, const std::string& fault, std::string detail) {
  if (fault.empty()) {
    pass(std::move(subject), std::move(name), std::move(detail));
  } else {
    fail(std::move(subject), std::move(name), fault);
  }
}

const char* prefix_of(std::string_view architecture) {
  if (architecture == "iphoneos-arm") return "";
  if (architecture == "iphoneos-arm64") return "/var/jb";
  return nullptr;
}

const std::string* file_at(const DebFile& deb, std::string_view path) {
  for (const Entry& entry : deb.entries) {
    if (entry.type == EntryType::File && device_path(entry.path) == path) return &entry.bytes;
  }
  return nullptr;
}

void check_tree(const DebFile& deb, Report& report) {
  report.judge(kPackage, "control fields", control_fault(deb),
               deb.field("Package") + " " + deb.field("Version"));
  report.judge(kPackage, "no scripts", script_fault(deb), "");
  report.judge(kPackage, "removable", lasting_fault(deb), "");
  report.judge(kPackage, "checksums", checksums_fault(deb), "");
  const char* const prefix = prefix_of(deb.field("Architecture"));
  if (prefix == nullptr) {
    report.fail(kPackage, "architecture",
                "\"" + deb.field("Architecture") + "\" is no architecture of the phone");
    return;
  }
  report.pass(kPackage, "architecture", deb.field("Architecture"));
  report.judge(kPackage, "install paths", path_fault(deb, prefix),
               std::to_string(deb.entries.size()) + " entries");
  report.judge(kPackage, "owner and modes",
               mode_fault(deb, std::string(prefix) + std::string(kBundleFolder) + "/3dvitrelleprefs"),
               "root, 0755/0644");
}

Report verify_package(std::string_view bytes) {
  Report report;
  const auto deb = read_deb(bytes);
  if (!deb) {
    report.fail(kPackage, "archive", deb.error().message);
    return report;
  }
  report.pass(kPackage, "archive", std::to_string(deb->members.size()) + " members");
  check_tree(*deb, report);
  const char* const prefix = prefix_of(deb->field("Architecture"));
  if (prefix == nullptr) return report;
  check_bundle_data(*deb, report);
  if (const std::string* const code =
          file_at(*deb, std::string(prefix) + std::string(kBundleFolder) + "/3dvitrelleprefs")) {
    check_code(*code, report);
  }
  return report;
}

}  // namespace wispen::package
