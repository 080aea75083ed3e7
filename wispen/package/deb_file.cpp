// wispen/package/deb_file.cpp

#include "wispen/package/deb_file.hpp"

#include <archive.h>
#include <archive_entry.h>
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include "host/core/unique_fd.hpp"

namespace wispen::package {

namespace {

struct CloseArchive {
  void operator()(archive* opened) const { archive_read_free(opened); }
};
using Archive = std::unique_ptr<archive, CloseArchive>;

std::string reason(archive* opened) {
  const char* const text = archive_error_string(opened);
  return text != nullptr ? text : "it is damaged";
}

std::string text(const char* value) { return value != nullptr ? value : ""; }

EntryType type_of(archive_entry* entry) {
  if (archive_entry_hardlink(entry) != nullptr) return EntryType::HardLink;
  switch (archive_entry_filetype(entry)) {
    case AE_IFREG:
      return EntryType::File;
    case AE_IFDIR:
      return EntryType::Folder;
    case AE_IFLNK:
      return EntryType::Link;
    default:
      return EntryType::Other;
  }
}

/// All entries of an archive in memory. `budget` is what may still be unpacked of the whole package.
Result<std::vector<Entry>> read_entries(archive* opened, std::string_view bytes, const std::string& name,
                                        std::size_t& budget) {
  if (archive_read_open_memory(opened, bytes.data(), bytes.size()) != ARCHIVE_OK) {
    return Error{name + " cannot be read: " + reason(opened)};
  }
  std::vector<Entry> entries;
  archive_entry* header = nullptr;
  for (;;) {
    const int status = archive_read_next_header(opened, &header);
    if (status == ARCHIVE_EOF) return entries;
    if (status != ARCHIVE_OK) return Error{name + " cannot be read: " + reason(opened)};
    if (entries.size() == DebFile::kMostEntries) return Error{name + " has too many entries"};
    Entry entry;
    entry.path = text(archive_entry_pathname(header));
    entry.type = type_of(header);
    entry.mode = static_cast<unsigned>(archive_entry_perm(header));
    entry.uid = archive_entry_uid(header);
    entry.gid = archive_entry_gid(header);
    entry.target = text(entry.type == EntryType::HardLink ? archive_entry_hardlink(header)
                                                          : archive_entry_symlink(header));
    if (entry.type == EntryType::File) {
      const std::int64_t size = archive_entry_size(header);
      if (size < 0 || static_cast<std::uint64_t>(size) > budget) return Error{name + " holds too much"};
      budget -= static_cast<std::size_t>(size);
      entry.bytes.resize(static_cast<std::size_t>(size));
      std::size_t filled = 0;
      while (filled < entry.bytes.size()) {
        const la_ssize_t got =
            archive_read_data(opened, entry.bytes.data() + filled, entry.bytes.size() - filled);
        if (got < 0) return Error{name + " cannot be read: " + reason(opened)};
        if (got == 0) return Error{name + " ends in the middle of " + entry.path};
        filled += static_cast<std::size_t>(got);
      }
    }
    entries.push_back(std::move(entry));
  }
}

Result<std::vector<Entry>> read_tar(const Entry& member, std::size_t& budget) {
  const Archive opened(archive_read_new());
  archive_read_support_format_tar(opened.get());
  archive_read_support_filter_gzip(opened.get());
  archive_read_support_filter_xz(opened.get());
  return read_entries(opened.get(), member.bytes, member.path, budget);
}

/// "Name: value" lines; lines that begin with a blank continue the value.
Result<std::map<std::string, std::string>> parse_control(std::string_view text) {
  std::map<std::string, std::string> fields;
  std::string* last = nullptr;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    if (line.empty()) continue;
    if (line.front() == ' ' || line.front() == '\t') {
      if (last == nullptr) return Error{"the control file begins with a continued line"};
      *last += '\n';
      *last += line;
      continue;
    }
    const std::size_t colon = line.find(':');
    if (colon == 0 || colon == std::string_view::npos)
      return Error{"the control file has a line without a field"};
    std::string_view value = line.substr(colon + 1);
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
    const std::string name(line.substr(0, colon));
    // The names' case does not count for dpkg, and so must not here.
    const auto same = std::ranges::find_if(
        fields, [&](const auto& field) { return ::strcasecmp(field.first.c_str(), name.c_str()) == 0; });
    if (same != fields.end()) return Error{"the control file has the field " + name + " twice"};
    last = &fields.emplace(name, value).first->second;
  }
  for (const auto& [name, value] : fields) {
    if (name.size() + value.size() > DebFile::kLongestField) {
      return Error{"the field " + name.substr(0, 40) + " of the control file is longer than " +
                   std::to_string(DebFile::kLongestField) + " bytes"};
    }
  }
  return fields;
}

}  // namespace

std::string DebFile::field(const std::string& name) const {
  const auto found = control.find(name);
  return found != control.end() ? found->second : "";
}

Result<DebFile> read_deb(std::string_view bytes) {
  constexpr std::string_view kMagic = "!<arch>\n";
  if (!bytes.starts_with(kMagic)) return Error{"this is no package: the archive's first bytes are missing"};
  std::size_t budget = DebFile::kMostBytes;
  const Archive outer(archive_read_new());
  archive_read_support_format_ar(outer.get());
  auto members = read_entries(outer.get(), bytes, "the package", budget);
  if (!members) return members.error();

  DebFile deb;
  for (const Entry& member : *members) deb.members.push_back(member.path);
  if (members->size() != 3) {
    return Error{"the package has " + std::to_string(members->size()) + " members; it should have three"};
  }
  const Entry& version = (*members)[0];
  if (version.path != "debian-binary" || version.bytes != "2.0\n") {
    return Error{"the package does not begin with debian-binary, version 2.0"};
  }
  if (!(*members)[1].path.starts_with("control.tar"))
    return Error{"the package's second member is no control.tar"};
  if (!(*members)[2].path.starts_with("data.tar")) return Error{"the package's third member is no data.tar"};

  auto control = read_tar((*members)[1], budget);
  if (!control) return control.error();
  deb.control_files = *std::move(control);
  auto data = read_tar((*members)[2], budget);
  if (!data) return data.error();
  deb.entries = *std::move(data);

  for (const Entry& file : deb.control_files) {
    if (device_path(file.path) != "/control") continue;
    auto fields = parse_control(file.bytes);
    if (!fields) return fields.error();
    deb.control = *std::move(fields);
    return deb;
  }
  return Error{"the package has no control file"};
}

Result<std::string> read_package_file(const std::string& path) {
  const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
    return Error{"cannot open " + path + ": " + std::strerror(errno)};
  }
  if (!S_ISREG(status.st_mode)) return Error{path + " is not a file"};
  if (static_cast<std::uint64_t>(status.st_size) > DebFile::kMostBytes) return Error{path + " is too large"};
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = ::read(file.get(), bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return Error{"cannot read " + path};
    filled += static_cast<std::size_t>(got);
  }
  return bytes;
}

std::string device_path(std::string_view written) {
  if (written == "." || written == "./" || written == "/") return "/";
  if (written.starts_with("./")) {
    written.remove_prefix(2);
  } else if (written.starts_with('/')) {
    written.remove_prefix(1);
  }
  if (written.ends_with('/')) written.remove_suffix(1);
  std::string path;
  while (true) {
    const std::size_t slash = written.find('/');
    const std::string_view part = written.substr(0, slash);
    if (part.empty() || part == "." || part == "..") return "";
    if (std::ranges::any_of(part, [](unsigned char byte) { return byte < ' ' || byte == 0x7F; })) return "";
    path += '/';
    path += part;
    if (slash == std::string_view::npos) return path;
    written.remove_prefix(slash + 1);
  }
}

}  // namespace wispen::package
