// tests/wispen/package/deb_maker.hpp: packages made of entries, good ones and bad ones.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "wispen/package/deb_file.hpp"

namespace wispen::testing {

/// One 512-byte header of a tar archive: https://www.gnu.org/software/tar/manual/html_node/Standard.html
inline std::string tar_header(const package::Entry& entry, char special = 0) {
  std::string header(512, '\0');
  const auto put = [&](std::size_t at, std::size_t size, const std::string& text) {
    header.replace(at, std::min(size, text.size()), text.substr(0, size));
  };
  const auto octal = [](std::uint64_t number, int digits) {
    char text[32];
    std::snprintf(text, sizeof text, "%0*llo", digits, static_cast<unsigned long long>(number));
    return std::string(text);
  };
  std::string name = entry.path;
  if (name.size() > 100) {  // split at a slash, as the format wants it
    const std::size_t slash = name.rfind('/', 154);
    put(345, 155, name.substr(0, slash));
    name = name.substr(slash + 1);
  }
  put(0, 100, name);
  put(100, 8, octal(entry.mode, 7));
  put(108, 8, octal(static_cast<std::uint64_t>(entry.uid), 7));
  put(116, 8, octal(static_cast<std::uint64_t>(entry.gid), 7));
  put(124, 12, octal(entry.bytes.size(), 11));
  put(136, 12, octal(0, 11));
  const char type = entry.type == package::EntryType::File       ? '0'
                    : entry.type == package::EntryType::HardLink ? '1'
                    : entry.type == package::EntryType::Link     ? '2'
                    : entry.type == package::EntryType::Folder   ? '5'
                                                                 : '3';
  header[156] = special != 0 ? special : type;
  put(157, 100, entry.target);
  put(257, 8, std::string("ustar\00000", 8));
  std::memset(header.data() + 148, ' ', 8);
  unsigned sum = 0;
  for (const char byte : header) sum += static_cast<unsigned char>(byte);
  put(148, 7, octal(sum, 6) + '\0');
  return header;
}

inline std::string tar_of(const std::vector<package::Entry>& entries) {
  std::string tar;
  for (package::Entry entry : entries) {
    if (entry.path.size() - entry.path.rfind('/') > 100) {
      // A name that has no room in the header goes before it, as GNU tar has it.
      const package::Entry long_name{"././@LongLink",  package::EntryType::File, 0, 0, 0, "",
                                     entry.path + '\0'};
      tar += tar_header(long_name, 'L') + long_name.bytes;
      tar.resize((tar.size() + 511) / 512 * 512, '\0');
      entry.path.resize(100);
    }
    tar += tar_header(entry) + entry.bytes;
    tar.resize((tar.size() + 511) / 512 * 512, '\0');
  }
  return tar + std::string(1024, '\0');
}

inline std::string ar_member(const std::string& name, const std::string& bytes) {
  char header[61];
  std::snprintf(header, sizeof header, "%-16s%-12d%-6d%-6d%-8o%-10zu`\n", name.c_str(), 0, 0, 0, 0100644U,
                bytes.size());
  return header + bytes + (bytes.size() % 2 != 0 ? "\n" : "");
}

/// The package's bytes; the control file is written anew from the fields.
inline std::string make_deb(const package::DebFile& deb) {
  std::vector<package::Entry> control_files = deb.control_files;
  for (package::Entry& file : control_files) {
    if (package::device_path(file.path) != "/control") continue;
    file.bytes.clear();
    for (const auto& [name, value] : deb.control) file.bytes += name + ": " + value + "\n";
  }
  return "!<arch>\n" + ar_member("debian-binary", "2.0\n") + ar_member("control.tar", tar_of(control_files)) +
         ar_member("data.tar", tar_of(deb.entries));
}

}  // namespace wispen::testing
