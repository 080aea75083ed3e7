// tests/support/host_fixture.hpp: a running host on a device root of the test's own, and bundles for it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/wispen_host.h"
#include "platform/Preferences.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::testing {

/// An XML property list around the body.
inline std::string plist(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n";
}

/// A specifier list with these items.
inline std::string specifier_list(const std::string& items) {
  return plist("<dict><key>items</key><array>" + items + "</array></dict>");
}

/// One item: pairs of key and string value.
inline std::string item(std::initializer_list<std::pair<const char*, const char*>> properties,
                        const std::string& more = "") {
  std::string xml = "<dict>";
  for (const auto& [key, value] : properties) {
    xml += std::string("<key>") + key + "</key><string>" + value + "</string>";
  }
  return xml + more + "</dict>";
}

/// Starts a host on a fresh device root for each test, with a clock that stands still.
class HostTest : public ::testing::Test {
 protected:
  /// `libraries` is where "@rpath" leads; null: to the host's own libraries.
  explicit HostTest(const char* layout = "rootless", bool own_windows = false,
                    const char* libraries = nullptr)
      : layout_(layout), own_windows_(own_windows), libraries_(libraries) {}

  void SetUp() override { start(); }
  void TearDown() override { EXPECT_EQ(wispen_host_stop(), 1) << wispen_host_last_error(); }

  void start(const char* languages = "en") {
    wispen_host_options options{};
    options.size = sizeof options;
    const std::string root = folder_ / "root";
    options.root = root.c_str();
    options.layout = layout_;
    options.languages = languages;
    options.own_windows = own_windows_ ? 1 : 0;
    options.rpath = libraries_;
    ASSERT_EQ(wispen_host_start(&options), 1) << wispen_host_last_error();
  }

  /// The shipped bundle.
  void load_shipped_bundle() {
    ASSERT_NE(wispen_host_load_bundle(WISPEN_TEST_BUNDLE), nullptr) << wispen_host_last_error();
  }

  /// The shipped code with data of the test's own, made anew from `files` (name below the bundle, bytes).
  void load_bundle_with(const std::vector<std::pair<std::string, std::string>>& files) {
    const auto path = bundle_folder();
    write_file(path / "Info.plist",
               plist("<dict><key>CFBundleExecutable</key><string>3dvitrelleprefs</string>"
                     "<key>CFBundleIdentifier</key><string>test.bundle</string>"
                     "<key>NSPrincipalClass</key><string>WispRootListController</string></dict>"));
    // Only once: the code may be loaded from there, and a loaded file must not be written over.
    std::filesystem::copy_file(std::string(WISPEN_TEST_BUNDLE) + "/3dvitrelleprefs", path / "3dvitrelleprefs",
                               std::filesystem::copy_options::skip_existing);
    for (const auto& [name, bytes] : files) write_file(path / name, bytes);
    ASSERT_NE(wispen_host_load_bundle(path.c_str()), nullptr) << wispen_host_last_error();
  }
  std::filesystem::path bundle_folder() const { return folder_ / "test.bundle"; }

  template <class T = PSListController>
  static T open_page(const char* class_name) {
    T page = objc::adopt<T>(reinterpret_cast<objc::abi::id>(wispen_host_open_page(class_name)));
    EXPECT_TRUE(page) << wispen_host_last_error();
    return page;
  }

  static std::filesystem::path device_path(const std::string& path) {
    const char* const resolved = wispen_host_path(path.c_str());
    EXPECT_NE(resolved, nullptr) << wispen_host_last_error();
    return resolved != nullptr ? resolved : "";
  }
  /// Where the value store keeps its file on this layout.
  std::filesystem::path domain_file() const {
    return device_path(std::string(std::string(layout_) == "rootless" ? "/var/jb" : "") +
                       "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist");
  }

  static std::vector<std::string> problems() {
    std::vector<std::string> all;
    while (const char* problem = wispen_host_next_problem()) all.emplace_back(problem);
    return all;
  }
  static std::vector<std::string> posted() {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < wispen_host_posted_count(); ++i)
      names.emplace_back(wispen_host_posted_name(i));
    return names;
  }

  const objc::AutoreleasePool pool_;
  const TemporaryFolder folder_;
  const char* layout_;
  const bool own_windows_;
  const char* libraries_;
};

}  // namespace wispen::testing
