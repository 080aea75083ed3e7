// tests/host/foundation/temporary_folder.hpp: a folder of the test's own that goes with it.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace wispen::testing {

/// Below `where`, or below $TMPDIR or /tmp.
class TemporaryFolder {
 public:
  TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
  explicit TemporaryFolder(const std::filesystem::path& where) {
    std::string pattern = (where / "wispen-test-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }
  const std::string& path() const { return path_; }

  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      names.push_back(entry.path().filename());
    return names;
  }

 private:
  std::string path_;
};

inline std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void writeFile(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace wispen::testing
