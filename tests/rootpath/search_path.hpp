// tests/rootpath/search_path.hpp: where a test's process looks for the optional library.
#pragma once

#include <string>

#include "host/wispen_host.h"
#include "tests/support/temporary_folder.hpp"

namespace wispen::testing {

/// Starts a host whose "@rpath" is one folder, which may be empty or missing.
class HostWithLibraryIn {
 public:
  explicit HostWithLibraryIn(const std::string& library_folder) {
    wispen_host_options options{};
    options.size = sizeof options;
    const std::string root = folder_ / "root";
    options.root = root.c_str();
    options.rpath = library_folder.c_str();
    started_ = wispen_host_start(&options) == 1;
  }
  ~HostWithLibraryIn() { wispen_host_stop(); }
  bool started() const { return started_; }

 private:
  TemporaryFolder folder_;
  bool started_ = false;
};

}  // namespace wispen::testing
