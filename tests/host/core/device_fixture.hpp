// tests/host/core/device_fixture.hpp: a test that stands on a device root of its own.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>
#include <string>

#include "host/core/current_root.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::testing {

class OnADevice : public ::testing::Test {
 protected:
  OnADevice() {
    root_ = std::make_shared<const DeviceRoot>(*DeviceRoot::open(folder_ / "root", Layout::Rootless));
    set_current_root(root_);
  }
  ~OnADevice() override { set_current_root(nullptr); }

  const DeviceRoot& root() const { return *root_; }

  /// A shell script at a path of the phone, and a file of the test's own folder for it to write to.
  void install_script(const std::string& device_path, const std::string& body) const {
    const std::string file = root_->path() + device_path;
    folder_.write("root" + device_path, "#!/bin/sh\n" + body + "\n");
    EXPECT_EQ(chmod(file.c_str(), 0755), 0);
  }
  std::string output() const { return folder_ / "output"; }
  std::string written() const {
    std::ifstream file(output());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  TemporaryFolder folder_;

 private:
  std::shared_ptr<const DeviceRoot> root_;
};

}  // namespace wispen::testing
