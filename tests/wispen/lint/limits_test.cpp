// tests/wispen/lint/limits_test.cpp: the guide's table of limits is the code's.
#include "host/plist/limits.hpp"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "host/core/device_root.hpp"
#include "host/preferences/limits.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/package/deb_file.hpp"
#include "wispen/process_room.hpp"

namespace wispen {
namespace {

/// The rows between "## Limits" and the next heading.
std::map<std::string, unsigned long long> rows_of(const std::string& guide) {
  std::map<std::string, unsigned long long> rows;
  std::istringstream lines(guide.substr(guide.find("## Limits")));
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line) && !line.starts_with("## ")) {
    const std::size_t value = line.rfind("| ", line.size() - 3);
    if (!line.starts_with("| ") || value == 0 || !std::isdigit(static_cast<unsigned char>(line[value + 2])))
      continue;
    rows[line.substr(2, line.find(" | ") - 2)] = std::stoull(line.substr(value + 2));
  }
  return rows;
}

TEST(Limits, AreWhatTheGuideSays) {
  const std::map<std::string, unsigned long long> in_the_code{
      {"containers inside one another in a property list", plist::kMaxDepth},
      {"bytes of a property list", plist::kMaxFileSize},
      {"bytes of a binary list when each place has its own copy", plist::kMaxExpandedSize},
      {"rows of a specifier list", preferences::kMostRows},
      {"characters of a text on a page", preferences::kLongestText},
      {"bytes of a package, unpacked", package::DebFile::kMostBytes},
      {"entries of a package", package::DebFile::kMostEntries},
      {"bytes of a field of a package's control file", package::DebFile::kLongestField},
      {"bytes of a name in a package", package::DebFile::kLongestName},
      {"bytes of a path buffer of the platform's", DeviceRoot::kPathBufferSize},
      {"bytes of the stack that a command needs", program::kLeastStack},
      {"descriptors that a command needs", program::kLeastDescriptors},
  };
  EXPECT_EQ(rows_of(testing::contents_of(WISPEN_GUIDE_RELIABILITY)), in_the_code);
}

}  // namespace
}  // namespace wispen
