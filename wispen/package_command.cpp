// wispen/package_command.cpp: wispen package.

#include <cstdio>
#include <filesystem>

#include "host/core/device_root.hpp"
#include "wispen/commands.hpp"
#include "wispen/output.hpp"
#include "wispen/package/installer.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::program {

namespace {

int verify(const CommonOptions& options, const std::string& file, const BundleFacts& facts) {
  const auto bytes = package::read_package_file(file);
  if (!bytes) return fail(bytes.error().message);
  const package::Report report = package::verify_package(*bytes, facts);
  std::size_t faults = 0;
  Json all = Json::array();
  for (const package::Check& check : report.checks) {
    faults += check.passed ? 0 : 1;
    if (options.json) {
      all.push_back({{"subject", check.subject},
                     {"check", check.name},
                     {"passed", check.passed},
                     {"detail", check.detail}});
    } else {
      std::printf("%s  %s  %s  %s\n", check.passed ? "ok   " : "FAULT", padded(check.subject, 8).c_str(),
                  padded(check.name, 22).c_str(), shown(check.detail).c_str());
    }
  }
  if (options.json) {
    std::printf("%s\n", all.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
  } else {
    std::printf("%zu checks, %zu faults\n", report.checks.size(), faults);
  }
  return faults == 0 ? kDone : kFailed;
}

int print_version(const CommonOptions& options, const std::string& version) {
  if (options.json) {
    std::printf("%s\n", Json({{"version", version.empty() ? Json(nullptr) : Json(version)}}).dump(2).c_str());
  } else {
    std::printf("%s\n", version.empty() ? "not installed" : version.c_str());
  }
  return kDone;
}

}  // namespace

int package(const CommonOptions& options, const PackageOptions& what) {
  const auto facts = bundle_facts(options);
  if (!facts) return fail(facts.error().message);
  if (what.operation == "verify") return verify(options, what.file, *facts);
  std::string folder = options.root;
  if (folder.empty()) {
    auto usual = DeviceRoot::default_folder();
    if (!usual) return fail(usual.error().message);
    folder = *std::move(usual);
  }
  const auto root = DeviceRoot::open(folder, layout_from_name(options.layout));
  if (!root) return fail(root.error().message);

  if (what.operation == "install") {
    std::string file = what.file;
    if (file.empty()) {
      auto own = package::desktop_package(program_folder() + "/packages", root->layout(), *facts);
      if (!own) return fail(own.error().message);
      file = *std::move(own);
    }
    if (const auto done = package::install(*root, file, *facts); !done) return fail(done.error().message);
  } else if (what.operation == "remove") {
    if (const auto done = package::remove(*root, *facts); !done) return fail(done.error().message);
  }
  const auto version = package::installed_version(*root, *facts);
  if (!version) return fail(version.error().message);
  return print_version(options, *version);
}

}  // namespace wispen::program
