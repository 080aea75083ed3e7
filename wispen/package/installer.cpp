// wispen/package/installer.cpp: packages in device roots, through the real dpkg and the root's own database.

#include "wispen/package/installer.hpp"

#include <elf.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <string_view>
#include <vector>

#include "host/core/unique_fd.hpp"
#include "wispen/package/command.hpp"
#include "wispen/package/deb_file.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::package {

namespace {

namespace fs = std::filesystem;

std::string database_of(const DeviceRoot& root) {
  return root.resolve_or_nowhere(std::string(root.device_jbroot()) + "/var/lib/dpkg");
}

const char* architecture_of(Layout layout) {
  return layout == Layout::Rootless ? "iphoneos-arm64" : "iphoneos-arm";
}

/// What keeps the desktop's code from being a library of this machine's; "" where nothing does.
std::string elf_fault(std::string_view code) {
#if defined(__x86_64__)
  constexpr Elf64_Half kMachine = EM_X86_64;
#elif defined(__aarch64__)
  constexpr Elf64_Half kMachine = EM_AARCH64;
#else
#error "name the machine"
#endif
  Elf64_Ehdr header{};
  if (code.size() < sizeof header) return "the code ends in its header";
  std::memcpy(&header, code.data(), sizeof header);
  if (header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_machine != kMachine) {
    return "the code is for another machine";
  }
  if (header.e_type != ET_DYN) return "the code is not a library";
  const auto is_inside = [&](std::uint64_t at, std::uint64_t size) {
    return at <= code.size() && size <= code.size() - at;
  };
  // Whoever maps a file that ends too early is ended by a signal.
  constexpr const char* kCutOff = "the code is cut off";
  if (!is_inside(header.e_shoff, std::uint64_t{header.e_shnum} * sizeof(Elf64_Shdr))) return kCutOff;
  for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
    Elf64_Phdr segment{};
    if (!is_inside(header.e_phoff, (i + 1) * sizeof segment)) return kCutOff;
    std::memcpy(&segment, code.data() + header.e_phoff + i * sizeof segment, sizeof segment);
    if (segment.p_type == PT_INTERP) return "the code is a program, not a library";
    if (!is_inside(segment.p_offset, segment.p_filesz)) return kCutOff;
  }
  return {};
}

/// dpkg on the root's own database. It must not ask who runs it or which machine this is, nor write the
/// machine's log.
Result<CommandResult> run_dpkg(const DeviceRoot& root, const std::vector<std::string>& words) {
  std::vector<std::string> all = {"dpkg",
                                  "--instdir=" + root.path(),
                                  "--admindir=" + database_of(root),
                                  "--log=/dev/null",
                                  "--force-architecture",
                                  "--force-not-root",
                                  "--force-bad-path",
                                  "--force-depends"};
  all.insert(all.end(), words.begin(), words.end());
  return run_command(all);
}

Error dpkg_error(const CommandResult& result) {
  std::string text = result.output;
  while (!text.empty() && text.back() == '\n') text.pop_back();
  std::ranges::replace(text, '\n', ' ');
  return Error{"dpkg failed (" + std::to_string(result.status) + "): " + text};
}

/// The first folder on the way to `path` (as the device sees it) that is a link, or "". dpkg would follow it
/// out of the root.
std::string link_on_the_way(const DeviceRoot& root, const std::string& path) {
  std::string place = root.path();
  for (std::size_t at = 0; at != std::string::npos;) {
    const std::size_t next = path.find('/', at + 1);
    place = root.path() + path.substr(0, next);
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(place, error))) return place;
    at = next;
  }
  return {};
}

/// The files that the installed package brought, by their place on the device.
Result<std::set<std::string>> files_of_installed(const DeviceRoot& root, const BundleFacts& facts) {
  const auto listed = run_dpkg(root, {"--listfiles", facts.package});
  if (!listed) return listed.error();
  std::set<std::string> files;
  std::string_view rest;
  if (listed->status == 0) rest = listed->output;
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    files.emplace(line);
  }
  return files;
}

Result<void> check_place(const DeviceRoot& root, const DebFile& deb, const BundleFacts& facts) {
  const auto own = files_of_installed(root, facts);
  if (!own) return own.error();
  const std::string database = std::string(root.device_jbroot()) + "/var/lib/dpkg";
  if (const std::string link = link_on_the_way(root, database); !link.empty())
    return Error{link + " is a link"};
  for (const Entry& entry : deb.entries) {
    const std::string path = device_path(entry.path);
    if (path == "/") continue;
    if (const std::string link = link_on_the_way(root, path); !link.empty()) {
      return Error{link + " is a link, and the package would be installed through it"};
    }
    std::error_code error;
    const fs::file_status there = fs::symlink_status(root.path() + path, error);
    if (!fs::exists(there) || own->contains(path)) continue;
    if (entry.type == EntryType::Folder && fs::is_directory(there)) continue;
    return Error{root.path() + path + " is there already and no package brought it; move it away first"};
  }
  return {};
}

/// A package that was judged, and the bytes that were.
struct CleanPackage {
  DebFile deb;
  std::string bytes;
};

/// The desktop's own code is a library of this machine's, the phone's is judged as a phone would.
void check_installed_code(const DebFile& deb, Layout layout, const BundleFacts& facts, Report& report) {
  const char* const prefix = prefix_of(architecture_of(layout));
  const std::string* const code = file_at(deb, prefix + facts.executable());
  if (code == nullptr) return;  // said already
  if (code->starts_with(ELFMAG)) {
    report.judge("code", "library", elf_fault(*code), "of this machine");
  } else {
    check_code(*code, facts, report);
  }
}

Result<CleanPackage> read_clean(const std::string& file, Layout layout, const BundleFacts& facts) {
  auto bytes = read_package_file(file);
  if (!bytes) return bytes.error();
  auto deb = read_deb(*bytes);
  if (!deb) return Error{file + ": " + deb.error().message};
  Report report;
  check_tree(*deb, facts, report);
  if (deb->field("Architecture") == architecture_of(layout))
    check_installed_code(*deb, layout, facts, report);
  const auto fault = std::ranges::find(report.checks, false, &Check::passed);
  if (fault != report.checks.end()) return Error{file + " is not installed: " + fault->detail};
  if (deb->field("Architecture") != architecture_of(layout)) {
    return Error{file + " is for " + deb->field("Architecture") + ", and this root is " +
                 std::string(layout_name(layout))};
  }
  return CleanPackage{*std::move(deb), *std::move(bytes)};
}

/// A file without a name that holds the bytes and never others. dpkg is given this one: what has the
/// package's name may be something else by now.
Result<UniqueFd> sealed_file(const std::string& bytes) {
  UniqueFd file(::memfd_create("package.deb", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  std::size_t written = 0;
  while (file && written < bytes.size()) {
    const ssize_t count = ::write(file.get(), bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    written += static_cast<std::size_t>(count);
  }
  constexpr int kSeals = F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
  if (!file || written != bytes.size() || ::fcntl(file.get(), F_ADD_SEALS, kSeals) != 0) {
    return Error{std::string("the package cannot be kept for its installation: ") + std::strerror(errno)};
  }
  return file;
}

Result<void> install_clean(const DeviceRoot& root, const CleanPackage& package, const BundleFacts& facts) {
  if (auto free = check_place(root, package.deb, facts); !free) return free;
  const auto file = sealed_file(package.bytes);
  if (!file) return file.error();
  const std::string path = "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(file->get());
  const auto done = run_dpkg(root, {"--install", path});
  if (!done) return done.error();
  if (done->status != 0) return dpkg_error(*done);
  return {};
}

}  // namespace

Result<void> install(const DeviceRoot& root, const std::string& file, const BundleFacts& facts) {
  const auto package = read_clean(file, root.layout(), facts);
  return package ? install_clean(root, *package, facts) : package.error();
}

Result<bool> install_when_changed(const DeviceRoot& root, const std::string& file, const BundleFacts& facts) {
  // dpkg writes the list of a package's files when it installs it.
  std::error_code error;
  const auto installed = fs::last_write_time(database_of(root) + "/info/" + facts.package + ".list", error);
  if (!error && fs::last_write_time(file, error) <= installed && !error) return false;
  if (auto done = install(root, file, facts); !done) return done.error();
  return true;
}

Result<void> remove(const DeviceRoot& root, const BundleFacts& facts) {
  const auto installed = installed_version(root, facts);
  if (!installed) return installed.error();
  if (installed->empty()) return {};
  const auto files = files_of_installed(root, facts);
  if (!files) return files.error();
  for (const std::string& path : *files) {
    if (path == "/." || path.empty()) continue;
    if (const std::string link = link_on_the_way(root, path); !link.empty()) {
      return Error{link + " is a link, and the package would be removed through it"};
    }
  }
  const auto done = run_dpkg(root, {"--purge", facts.package});
  if (!done) return done.error();
  if (done->status != 0) return dpkg_error(*done);
  return {};
}

Result<std::string> installed_version(const DeviceRoot& root, const BundleFacts& facts) {
  const auto asked = run_command({"dpkg-query", "--admindir=" + database_of(root),
                                  "--showformat=${db:Status-Status} ${Version}", "--show", facts.package});
  if (!asked) return asked.error();
  constexpr std::string_view kInstalled = "installed ";
  if (asked->status != 0 || !asked->output.starts_with(kInstalled)) return std::string();
  return asked->output.substr(kInstalled.size());
}

Result<std::string> desktop_package(const std::string& folder, Layout layout, const BundleFacts& facts) {
  const std::string ending = std::string("_") + architecture_of(layout) + "_desktop.deb";
  std::vector<std::string> found;
  std::error_code error;
  for (const auto& file : fs::directory_iterator(folder, error)) {
    const std::string name = file.path().filename().string();
    if (name.starts_with(facts.package + "_") && name.ends_with(ending))
      found.push_back(file.path().string());
  }
  if (found.empty()) return Error{"there is no package of the desktop's bundle in " + folder};
  std::ranges::sort(found);
  return found.back();
}

}  // namespace wispen::package
