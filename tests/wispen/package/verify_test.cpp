// tests/wispen/package/verify_test.cpp: the phone's packages are clean, and every way to break one is named.

#include "wispen/package/verify.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "tests/device/image_patches.hpp"
#include "tests/wispen/package/shipped_package.hpp"

namespace wispen::testing {
namespace {

using package::DebFile;
using package::Entry;
using package::EntryType;
using ::testing::HasSubstr;

/// The package as it was before there were two slices, which is a good one too: the breakages below are of
/// its code.
DebFile shipped() { return with_arm64_alone(package_at(WISPEN_TEST_ROOTLESS_PACKAGE)); }

void replace(std::string& text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
}

/// Where the table of exports begins in the file.
std::size_t exports_at(const std::string& code) {
  const auto image = macho::parse_image(code);
  EXPECT_TRUE(image.ok());
  return image->exports_trie ? image->exports_trie->offset : image->dyld_info->exports.offset;
}

class ShippedPackage : public ::testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Layouts, ShippedPackage,
                         ::testing::Values(WISPEN_TEST_ROOTLESS_PACKAGE, WISPEN_TEST_ROOTFUL_PACKAGE),
                         [](const auto& test) {
                           return std::string(test.index == 0 ? "Rootless" : "Rootful");
                         });

TEST_P(ShippedPackage, IsClean) {
  const package::Report report = package::verify_package(contents_of(GetParam()), shipped_facts());
  EXPECT_GT(report.checks.size(), 15U);
  for (const package::Check& fault : faults(report)) {
    ADD_FAILURE() << fault.subject << ", " << fault.name << ": " << fault.detail;
  }
}

std::vector<Breakage> breakages() {
  return {
      {"AnotherName", "control fields", "com.example.other",
       [](DebFile& deb) { deb.control["Package"] = "com.example.other"; }},
      {"NoLoader", "control fields", "preferenceloader",
       [](DebFile& deb) { deb.control["Depends"] = "firmware"; }},
      {"AnotherMachine", "architecture", "amd64",
       [](DebFile& deb) { deb.control["Architecture"] = "amd64"; }},
      {"AScript", "no scripts", "postinst",
       [](DebFile& deb) {
         deb.control_files.push_back({"./postinst", EntryType::File, 0755, 0, 0, "", "#!/bin/sh\n"});
       }},
      {"ALastingPackage", "removable", "essential: Yes",
       [](DebFile& deb) { deb.control["essential"] = "Yes"; }},
      {"AWrongSum", "checksums", "is not what md5sums says",
       [](DebFile& deb) {
         deb.control_files.push_back({"./md5sums", EntryType::File, 0644, 0, 0, "",
                                      std::string(32, '0') + "  " + kBundle.substr(2) + "Info.plist\n"});
       }},
      {"ASumOfNothing", "checksums", "which is missing",
       [](DebFile& deb) {
         deb.control_files.push_back(
             {"./md5sums", EntryType::File, 0644, 0, 0, "", std::string(32, '0') + "  no/such/file\n"});
       }},
      {"AFileForAFolder", "install paths", "is not a folder",
       [](DebFile& deb) {
         Entry& bundle = entry_at(deb, kBundle);
         bundle.type = EntryType::File;
         bundle.path.pop_back();
       }},
      {"AFileInAFile", "install paths", "lies in a file",
       [](DebFile& deb) {
         deb.entries.push_back({kBundle + "Info.plist/x", EntryType::File, 0644, 0, 0, "", "x"});
       }},
      {"ANameTooLong", "install paths", "a name of 256 bytes",
       [](DebFile& deb) {
         deb.entries.push_back({kBundle + std::string(256, 'x'), EntryType::File, 0644, 0, 0, "", "x"});
       }},
      {"APathOutOfTheTree", "install paths", "leads out",
       [](DebFile& deb) {
         deb.entries.push_back({kBundle + "../../../../../../etc/x", EntryType::File, 0644, 0, 0, "", "x"});
       }},
      {"ALink", "install paths", "neither a file nor a folder",
       [](DebFile& deb) {
         deb.entries.push_back({kBundle + "link", EntryType::Link, 0644, 0, 0, "/etc", ""});
       }},
      {"AHardLink", "install paths", "neither a file nor a folder",
       [](DebFile& deb) {
         deb.entries.push_back(
             {kBundle + "link", EntryType::HardLink, 0644, 0, 0, kBundle + "Info.plist", ""});
       }},
      {"AForeignPlace", "install paths", "/usr/bin/x",
       [](DebFile& deb) {
         deb.entries.push_back({"./usr/bin/x", EntryType::File, 0755, 0, 0, "", "x"});
       }},
      {"TheOtherLayout", "install paths", "not a place",
       [](DebFile& deb) { deb.control["Architecture"] = "iphoneos-arm"; }},
      {"AWrongOwner", "owner and modes", "does not belong to root",
       [](DebFile& deb) { entry_at(deb, kBundle + "icon.png").uid = 501; }},
      {"AWrongMode", "owner and modes", "0600", [](DebFile& deb) { code_of(deb).mode = 0600; }},
      {"ADamagedInfo", "Info.plist", "cannot be read",
       [](DebFile& deb) { entry_at(deb, kBundle + "Info.plist").bytes.resize(200); }},
      {"AnotherExecutable", "Info.plist", "CFBundleExecutable",
       [](DebFile& deb) {
         replace(entry_at(deb, kBundle + "Info.plist").bytes, "<string>3dvitrelleprefs</string>",
                 "<string>x</string>");
       }},
      {"AnEntryOfAnotherBundle", "front page entry", "another bundle",
       [](DebFile& deb) {
         replace(entry_at(deb, "./var/jb/Library/PreferenceLoader/Preferences/3dvitrelleprefs.plist").bytes,
                 "<string>3dvitrelleprefs</string>", "<string>others</string>");
       }},
      {"AClassThatIsNotThere", "classes of the lists", "NoSuchPage",
       [](DebFile& deb) {
         replace(entry_at(deb, kBundle + "Root.plist").bytes, "<string>SepSettingsCell</string>",
                 "<string>NoSuchPage</string>");
       }},
      {"AFlippedBit", "signature", "does not fit page",
       [](DebFile& deb) { code_of(deb).bytes[0x5000] ^= 1; }},
      {"ACutFile", "load commands", "ends within",
       [](DebFile& deb) { code_of(deb).bytes.resize(code_of(deb).bytes.size() / 2); }},
      {"TheSimulatorsPlatform", "platform", "platform 7",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         put(code, command_at(code, macho::kCommandBuildVersion) + 8, macho::kPlatformIosSimulator);
       }},
      {"ANewerSystem", "platform", "another system",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         put(code, command_at(code, macho::kCommandBuildVersion) + 12, std::uint32_t{17U << 16});
       }},
      {"ASegmentOffItsPage", "segments", "16 KB",
       [](DebFile& deb) {
         // The last segment, which nothing else measures.
         std::string& code = code_of(deb).bytes;
         const std::size_t at = command_at(code, macho::kCommandSegment64, 3);
         put(code, at + 24, *macho::read_at<std::uint64_t>(code, at + 24) + 0x1000);
       }},
      {"WritableCode", "segments", "writable and executable",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         put(code, command_at(code, macho::kCommandSegment64) + 60, std::uint32_t{7});
       }},
      {"AnImportThatThePhoneHasNot", "imports", "_sel_registerNamX",
       [](DebFile& deb) { replace(code_of(deb).bytes, "_sel_registerName", "_sel_registerNamX"); }},
      {"ALibraryThatMustBeThere", "libraries", "cannot be loaded without @rpath/libcolorpicker.dylib",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         const std::size_t name = code.find("@rpath/libcolorpicker.dylib");
         put(code, name - sizeof(macho::LibraryCommand), macho::kCommandLoadLibrary);
       }},
      {"ALibraryThatIsNotLoaded", "libraries", "does not load libcolorpicker",
       [](DebFile& deb) {
         replace(code_of(deb).bytes, "@rpath/libcolorpicker.dylib", "@rpath/libgcuniversal.dylib");
       }},
      {"AnotherExport", "exports", "it exports _prefx",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         code.replace(code.find("_prefs", exports_at(code)), 6, "_prefx");
       }},
      {"NoExport", "exports", "does not export _prefs",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         code[exports_at(code) + 1] = 0;  // how many children the root has
       }},
      {"AnUnknownCommand", "load commands", "0x7f",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         put(code, command_at(code, macho::kCommandFunctionStarts), std::uint32_t{0x7F});
       }},
      {"AChainThatLeavesItsPage", "fixups", "leaves",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         const auto image = macho::parse_image(code);
         const std::uint64_t at = image->segment("__DATA_CONST")->file_offset;
         put(code, at, *macho::read_at<std::uint64_t>(code, at) | std::uint64_t{0xFFF} << 51);
       }},
      {"AnImportOutOfRange", "fixups", "name an import",
       [](DebFile& deb) {
         std::string& code = code_of(deb).bytes;
         const auto image = macho::parse_image(code);
         const std::uint64_t at = image->segment("__DATA_CONST")->file_offset;
         put(code, at, *macho::read_at<std::uint64_t>(code, at) | 0xFFFFFF);
       }},
      {"AnotherProcessor", "slices", "no arm64 slice",
       [](DebFile& deb) { put(code_of(deb).bytes, 4, macho::kCpuX86_64); }},
      {"NoCode", "install paths", "3dvitrelleprefs is missing",
       [](DebFile& deb) {
         std::erase_if(deb.entries, [](const Entry& e) { return e.path == kBundle + "3dvitrelleprefs"; });
       }},
      {"TheDesktopsCode", "load commands", "does not begin",
       [](DebFile& deb) {
         code_of(deb).bytes =
             "\x7F"
             "ELF" +
             std::string(100, '\0');
       }},
  };
}

class BrokenPackage : public ::testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(Each, BrokenPackage, ::testing::Range(std::size_t{0}, breakages().size()),
                         [](const auto& test) { return std::string(breakages()[test.param].what); });

TEST_P(BrokenPackage, IsNamedByTheRightCheck) { expect_named(breakages()[GetParam()], shipped()); }

TEST(Package, OneThatIsMadeAnewIsAsCleanAsTheShippedOne) {
  // Otherwise the broken ones above could be broken by their maker.
  EXPECT_EQ(
      faults(package::verify_package(make_deb(shipped()), shipped_facts())).size(),
      faults(package::verify_package(contents_of(WISPEN_TEST_ROOTLESS_PACKAGE), shipped_facts())).size());
}

TEST(Package, WithoutTheSliceForNewerPhonesIsCleanAndSaysSo) {
  const auto report = package::verify_package(make_deb(shipped()), shipped_facts());
  EXPECT_TRUE(report.clean());
  const auto slices = std::ranges::find(report.checks, "slices", &package::Check::name);
  ASSERT_NE(slices, report.checks.end());
  EXPECT_EQ(slices->detail, "arm64 alone: not for phones from A12 on");
}

TEST(Package, CutAnywhereIsAFaultAndNoCrash) {
  const std::string whole = contents_of(WISPEN_TEST_ROOTLESS_PACKAGE);
  for (std::size_t size = 0; size < whole.size(); size += 1 + size / 20) {
    EXPECT_FALSE(package::verify_package(std::string_view(whole).substr(0, size), shipped_facts()).clean())
        << size;
  }
}

TEST(Package, TheShippedCodeCutAnywhereIsAFault) {
  DebFile deb = shipped();
  const std::string whole = code_of(deb).bytes;
  for (std::size_t size = 0; size < whole.size(); size += 1 + size / 10) {
    package::Report report;
    package::check_code(std::string_view(whole).substr(0, size), shipped_facts(), report);
    EXPECT_FALSE(report.clean()) << size;
  }
}

TEST(DevicePath, RefusesWhatCouldLeadElsewhere) {
  EXPECT_EQ(package::device_path("./var/jb/x"), "/var/jb/x");
  EXPECT_EQ(package::device_path("var/jb/"), "/var/jb");
  EXPECT_EQ(package::device_path("./"), "/");
  for (const char* bad : {"../x", "./a/../x", "a//b", "a/./b", "", "./a\nb", "..", "//etc"}) {
    EXPECT_EQ(package::device_path(bad), "") << bad;
  }
}

}  // namespace
}  // namespace wispen::testing
