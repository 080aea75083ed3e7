// tests/wispen/package/shipped_package.hpp: the phone's package, taken apart to be broken.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.hpp"
#include "tests/wispen/package/deb_maker.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/package/deb_file.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::testing {

inline const std::string kBundle = "./var/jb/Library/PreferenceBundles/3dvitrelleprefs.bundle/";

inline package::DebFile package_at(const std::string& path) {
  auto deb = package::read_deb(contents_of(path));
  EXPECT_TRUE(deb.ok()) << deb.error().message;
  return *deb;
}

inline package::Entry& entry_at(package::DebFile& deb, const std::string& path) {
  const auto found = std::ranges::find(deb.entries, path, &package::Entry::path);
  EXPECT_NE(found, deb.entries.end()) << path;
  return *found;
}

inline package::Entry& code_of(package::DebFile& deb) { return entry_at(deb, kBundle + "3dvitrelleprefs"); }

/// Whoever changes the code leaves its sum out: a package may come without.
inline void forget_sum_of_code(package::DebFile& deb) {
  for (package::Entry& file : deb.control_files) {
    const auto end = file.bytes.find("3dvitrelleprefs.bundle/3dvitrelleprefs\n");
    if (!file.path.ends_with("md5sums") || end == std::string::npos) continue;
    const auto start = file.bytes.rfind('\n', end) + 1;  // 0 for the first line
    file.bytes.erase(start, file.bytes.find('\n', end) + 1 - start);
  }
}

/// The package with the slice for phones up to A11 and no other.
inline package::DebFile with_arm64_alone(package::DebFile deb) {
  std::string& code = code_of(deb).bytes;
  const auto slices = macho::slices_of(code);
  EXPECT_TRUE(slices.ok());
  for (const macho::Slice& slice : *slices) {
    if (macho::parse_image(slice.bytes)->architecture() != "arm64") continue;
    code = std::string(slice.bytes);
    forget_sum_of_code(deb);
    return deb;
  }
  ADD_FAILURE() << "there is no arm64 slice";
  return deb;
}

/// The checks that did not pass.
inline std::vector<package::Check> faults(const package::Report& report) {
  std::vector<package::Check> found;
  std::ranges::copy_if(report.checks, std::back_inserter(found),
                       [](const package::Check& check) { return !check.passed; });
  return found;
}

struct Breakage {
  const char* what;
  const char* check;   // the one that must name it
  const char* detail;  // a part of what it says
  std::function<void(package::DebFile&)> breaks;
};

/// Breaks the package and looks for the fault under the right name.
inline void expect_named(const Breakage& breakage, package::DebFile deb) {
  breakage.breaks(deb);
  const auto found = faults(package::verify_package(make_deb(deb)));
  const auto named = std::ranges::find_if(found, [&](const package::Check& fault) {
    return fault.name == breakage.check && fault.detail.find(breakage.detail) != std::string::npos;
  });
  std::string all;
  for (const package::Check& fault : found)
    all += fault.subject + ", " + fault.name + ": " + fault.detail + "\n";
  EXPECT_NE(named, found.end()) << "found only:\n" << all;
}

}  // namespace wispen::testing
