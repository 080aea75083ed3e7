// wispen/package/verify.hpp: whether a package would install, load and work, as far as that can be known
// without the device.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wispen/macho/fixups.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/package/deb_file.hpp"

namespace wispen::package {

struct Check {
  std::string subject;  // "package", "bundle", or a slice: "arm64"
  std::string name;     // what was looked at, in a few words
  bool passed = false;
  std::string detail;  // a figure where it passed, else the fault
};

struct Report {
  std::vector<Check> checks;

  bool clean() const;
  void pass(std::string subject, std::string name, std::string detail = {});
  void fail(std::string subject, std::string name, std::string fault);
  /// Passes with the detail where there is no fault.
  void judge(std::string subject, std::string name, const std::string& fault, std::string detail);
};

/// Everything: the package itself, its tree, the bundle's data, the code.
Report verify_package(std::string_view bytes);

/// Only what decides where its files go and who runs at its installation: names, types, owners, modes,
/// scripts. A package that is clean here cannot write outside a root.
void check_tree(const DebFile& deb, Report& report);

/// Info.plist, the entry on the front page, the icon, and that every class that a list names is in the code.
void check_bundle_data(const DebFile& deb, Report& report);

/// Every slice of the executable: one for phones up to A11, and, unless it was left out, one for newer ones.
void check_code(std::string_view file, Report& report);

/// What only signed code must have: see wispen/macho/signed_code.hpp.
void check_arm64e(const macho::Image& image, const macho::Fixups& fixups, Report& report);

/// Where a package of this architecture keeps the jailbreak's files: "", "/var/jb", or null for one that is
/// not the phone's.
const char* prefix_of(std::string_view architecture);
inline constexpr std::string_view kPackageName = "com.brightmoss.wispen";
inline constexpr std::string_view kBundleFolder = "/Library/PreferenceBundles/3dvitrelleprefs.bundle";
inline constexpr std::string_view kEntryFile = "/Library/PreferenceLoader/Preferences/3dvitrelleprefs.plist";

/// The bytes of a file of the tree, by its place on the device, or null.
const std::string* file_at(const DebFile& deb, std::string_view path);

}  // namespace wispen::package
