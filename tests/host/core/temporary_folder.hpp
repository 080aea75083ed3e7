// tests/host/core/temporary_folder.hpp: a folder of a test's own, gone when the test ends.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace wispen::testing {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "wispen-test-XXXXXX").string();
    path_ = std::filesystem::canonical(mkdtemp(name.data())).string();
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  std::string write(const std::string& name, const std::string& text) const {
    const std::string file = *this / name;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file) << text;
    return file;
  }

 private:
  std::string path_;
};

}  // namespace wispen::testing
