// tests/support/temporary_folder.hpp: a folder of a test's own, gone when the test ends, and its files.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace wispen::testing {

inline std::string contents_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Makes the folders on the way.
inline void write_file(const std::filesystem::path& path, std::string_view bytes) {
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// Below `where`, or below $TMPDIR or /tmp. The path has no links in it.
class TemporaryFolder {
 public:
  TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
  explicit TemporaryFolder(const std::filesystem::path& where) {
    std::string name = (where / "wispen-test-XXXXXX").string();
    path_ = std::filesystem::canonical(::mkdtemp(name.data())).string();
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }
  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

  /// Writes a file below the folder, and gives its path.
  std::string write(std::string_view name, std::string_view bytes) const {
    write_file(*this / name, bytes);
    return *this / name;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename());
    return names;
  }

 private:
  std::string path_;
};

}  // namespace wispen::testing
