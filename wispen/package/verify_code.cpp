// wispen/package/verify_code.cpp: the bundle's code, slice by slice.

#include <algorithm>
#include <array>
#include <cstdio>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/exports.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/signature.hpp"
#include "wispen/package/stubs.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::package {

namespace {

using macho::Image;

constexpr std::uint64_t kPage = 0x4000;        // of every device that runs these systems
constexpr std::uint32_t kMinimum = 15U << 16;  // 15.0.0, as a build version says it
// Of one slice; signed code is a tenth longer.
constexpr std::size_t kMostBytes = std::size_t{200} * 1024;
constexpr std::size_t kMostBytesArm64e = std::size_t{220} * 1024;

constexpr std::array<std::uint32_t, 17> kKnownCommands = {
    macho::kCommandSegment64,     macho::kCommandSymbols,         macho::kCommandDynamicSymbols,
    macho::kCommandLoadLibrary,   macho::kCommandLoadWeakLibrary, macho::kCommandRunPath,
    macho::kCommandUuid,          macho::kCommandSignature,       macho::kCommandDyldInfo,
    macho::kCommandDyldInfoOnly,  macho::kCommandFunctionStarts,  macho::kCommandDataInCode,
    macho::kCommandEncryption64,  macho::kCommandBuildVersion,    macho::kCommandExportsTrie,
    macho::kCommandChainedFixups, macho::kCommandVersionMinIos};

// What other code of the process may look for besides the classes.
constexpr std::string_view kOnlyExport = "_prefs";

// Brought by other packages, which a device may not have.
constexpr std::array<std::string_view, 2> kOptionalLibraries = {"libcolorpicker", "libgcuniversal"};

std::string hexadecimal(std::uint64_t number) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(number));
  return text;
}

std::string commands_fault(const Image& image) {
  if (image.file_type != macho::kFileBundle) return "it is of another file type than a bundle";
  constexpr std::uint32_t kWanted =
      macho::kFlagNoUndefined | macho::kFlagForDynamicLinker | macho::kFlagTwoLevel;
  if ((image.flags & kWanted) != kWanted) return "its flags are not those of a two-level, linked image";
  for (const std::uint32_t command : image.commands) {
    if (std::ranges::find(kKnownCommands, command) == kKnownCommands.end()) {
      return "it has a load command " + hexadecimal(command) + ", which the linker does not make";
    }
  }
  if (!image.uuid) return "it has no UUID";
  if (image.encryption.value_or(0) != 0) return "it says that it is encrypted";
  return {};
}

std::string platform_fault(const Image& image) {
  if (!image.platform) return "it does not say which platform it is for";
  if (*image.platform != macho::kPlatformIos)
    return "it is for platform " + std::to_string(*image.platform) + ", not for the phone";
  if (image.minimum_version != kMinimum) {
    return "it is for another system than 15.0 and later: " + hexadecimal(image.minimum_version);
  }
  return {};
}

std::string segments_fault(const Image& image) {
  for (const macho::Segment& segment : image.segments) {
    if (segment.address % kPage != 0 || segment.file_offset % kPage != 0) {
      return "the segment " + segment.name + " does not begin on a page of 16 KB";
    }
    const bool executable = (segment.protection & macho::kProtectionExecute) != 0;
    if (executable && segment.writable())
      return "the segment " + segment.name + " is writable and executable";
  }
  if (image.segment("__TEXT") == nullptr || image.segment("__LINKEDIT") == nullptr) {
    return "it has not the segments of a linked image";
  }
  return {};
}

std::string libraries_fault(const Image& image, const std::vector<Stub>& stubs) {
  for (const macho::Library& library : image.libraries) {
    if (std::ranges::find(stubs, library.name, &Stub::library) == stubs.end()) {
      return "it loads " + library.name + ", which no stub describes";
    }
    if (library.reexported) return "it exports " + library.name + " anew";
    const bool optional = std::ranges::any_of(kOptionalLibraries, [&](std::string_view name) {
      return library.name.find(name) != std::string::npos;
    });
    if (optional && !library.weak) return "it cannot be loaded without " + library.name;
  }
  // No code of ours calls them: the rows that name their classes need them loaded.
  for (const std::string_view name : kOptionalLibraries) {
    const bool loaded = std::ranges::any_of(image.libraries, [&](const macho::Library& library) {
      return library.name.find(name) != std::string::npos;
    });
    if (!loaded) return "it does not load " + std::string(name);
  }
  // Where the jailbreak's libraries are is found out on the device, never fixed here.
  for (const char* needed : {"/usr/lib", "/var/jb/usr/lib", "@loader_path/.jbroot/usr/lib"}) {
    if (std::ranges::find(image.run_paths, needed) == image.run_paths.end()) {
      return std::string("its run path lacks ") + needed;
    }
  }
  return {};
}

std::string imports_fault(const Image& image, const macho::Fixups& fixups, const std::vector<Stub>& stubs) {
  for (const macho::Import& import : fixups.imports) {
    if (import.ordinal < 1) return "the import " + import.name + " is not looked for in a library of its own";
    const std::string& library = image.libraries[static_cast<std::size_t>(import.ordinal) - 1].name;
    const auto stub = std::ranges::find(stubs, library, &Stub::library);
    if (stub == stubs.end() || !stub->symbols.contains(import.name)) {
      return library + " has no " + import.name + " for the bundle";
    }
  }
  return {};
}

std::string exports_fault(const Image& image) {
  const auto exports = macho::read_exports(image);
  if (!exports) return exports.error().message;
  for (const macho::Export& symbol : *exports) {
    if (symbol.name != kOnlyExport) return "it exports " + symbol.name;
  }
  if (exports->empty()) return "it does not export " + std::string(kOnlyExport);
  return {};
}

std::string initialisers_fault(const Image& image) {
  for (const macho::Segment& segment : image.segments) {
    for (const macho::Section& section : segment.sections) {
      const bool offsets = section.type() == macho::kSectionInitOffsets;
      const bool pointers = section.type() == macho::kSectionInitPointers;
      if (section.type() == macho::kSectionThreadVariables) return "it has variables of threads";
      if (offsets && section.size == 4) return {};
      if (pointers && section.size == 8) return {};
      if (offsets || pointers) return "it has several initialisers, whose order nothing fixes";
    }
  }
  return "it has no initialiser, so that no class is registered";
}

/// Code of this kind is not asked to authenticate anything.
std::string signing_fault(const macho::Fixups& fixups) {
  const auto form = [](const macho::ChainedSegment& segment) {
    return segment.form == macho::kChainedPointerArm64e;
  };
  return std::ranges::any_of(fixups.chained, form) ? "it has a chain of the form that signs pointers" : "";
}

/// Exactly one for phones up to A11, at most one for newer ones, each as the file's own header says.
std::string slices_fault(const std::vector<macho::Slice>& slices, std::string& names) {
  std::size_t arm64 = 0, arm64e = 0;
  std::string other;
  for (const macho::Slice& slice : slices) {
    const auto header = macho::read_at<macho::Header64>(slice.bytes, 0);
    const std::uint32_t cpu = header ? header->cpu : 0;
    const std::uint32_t subtype = header ? header->subtype : 0;
    const bool newer = (subtype & macho::kSubtypeMask) == macho::kSubtypeArm64e;
    if (cpu != macho::kCpuArm64 || (subtype != 0 && !newer)) {
      other = "there is a slice for no phone's processor";
    } else if (slice.cpu && (*slice.cpu != cpu || *slice.subtype != subtype)) {
      other = "the file says that a slice is of the subtype " + hexadecimal(*slice.subtype) +
              ", and the slice says " + hexadecimal(subtype);
    } else if (slice.offset % kPage != 0) {
      other = "a slice does not begin on a page of 16 KB";
    }
    if (cpu == macho::kCpuArm64 && newer) ++arm64e;
    if (cpu == macho::kCpuArm64 && subtype == 0) ++arm64;
  }
  if (arm64 > 1 || arm64e > 1) return "there are two slices for the same processor";
  if (arm64 == 0) return "there is no arm64 slice";
  names = arm64e != 0 ? "arm64 and arm64e" : "arm64 alone: not for phones from A12 on";
  return other;
}

void check_slice(std::string_view bytes, Report& report) {
  const auto image = macho::parse_image(bytes);
  if (!image) return report.fail("code", "load commands", image.error().message);
  const std::string name = image->architecture();
  report.judge(name, "load commands", commands_fault(*image),
               std::to_string(image->commands.size()) + " commands");
  report.judge(name, "platform", platform_fault(*image), "iOS 15.0");
  const std::size_t most = name == "arm64e" ? kMostBytesArm64e : kMostBytes;
  report.judge(name, "size", bytes.size() < most ? "" : "it has " + std::to_string(bytes.size()) + " bytes",
               std::to_string(bytes.size()) + " bytes");
  report.judge(name, "segments", segments_fault(*image),
               std::to_string(image->segments.size()) + " on pages of 16 KB");

  const std::vector<Stub> stubs = parse_stubs(stub_files());
  report.judge(name, "libraries", libraries_fault(*image, stubs),
               std::to_string(image->libraries.size()) + " libraries");
  if (const auto fixups = macho::read_fixups(*image)) {
    report.pass(
        name, "fixups",
        std::to_string(fixups->fixups.size()) + (image->chained_fixups ? " in chains" : " by opcodes"));
    report.judge(name, "imports", imports_fault(*image, *fixups, stubs),
                 std::to_string(fixups->imports.size()) + " in the stubs");
    if (name == "arm64e")
      check_arm64e(*image, *fixups, report);
    else
      report.judge(name, "signed pointers", signing_fault(*fixups), "none");
  } else {
    report.fail(name, "fixups", fixups.error().message);
  }
  report.judge(name, "exports", exports_fault(*image), std::string(kOnlyExport));
  report.judge(name, "initialisers", initialisers_fault(*image), "one");

  const auto signature = macho::check_signature(*image);
  if (!signature) return report.fail(name, "signature", signature.error().message);
  std::string fault;
  if (!signature->ad_hoc()) fault = "the code signature is not an ad hoc one";
  if (signature->identifier != "3dvitrelleprefs") fault = "the code signature is of " + signature->identifier;
  report.judge(name, "signature", fault, std::to_string(signature->pages) + " page hashes");
}

}  // namespace

void check_code(std::string_view file, Report& report) {
  const auto slices = macho::slices_of(file);
  if (!slices) return report.fail("code", "slices", slices.error().message);
  std::string names;
  const std::string fault = slices_fault(*slices, names);
  report.judge("code", "slices", fault, names);
  for (const macho::Slice& slice : *slices) check_slice(slice.bytes, report);
}

}  // namespace wispen::package
