// fuzz/specifier_list_fuzz.cpp: any bytes as the root page's specifier list, through the framework and the
// page.

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/wispen_host.h"
#include "platform/Preferences.hpp"

namespace {

namespace fs = std::filesystem;

/// A host, and a bundle whose root list is rewritten for each input; gone when the process ends.
class Setting {
 public:
  Setting() {
    std::string name = (fs::temp_directory_path() / "wispen-fuzz-XXXXXX").string();
    folder_ = ::mkdtemp(name.data());
    const std::string root = (folder_ / "root").string();
    wispen_host_options options{};
    options.size = sizeof options;
    options.root = root.c_str();
    fs::copy(WISPEN_FUZZ_BUNDLE, bundle(), fs::copy_options::recursive);
    if (wispen_host_start(&options) == 0 || wispen_host_load_bundle(bundle().c_str()) == nullptr) {
      std::fprintf(stderr, "%s\n", wispen_host_last_error());
      std::abort();
    }
  }
  ~Setting() {
    wispen_host_stop();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  fs::path bundle() const { return folder_ / "fuzz.bundle"; }

 private:
  fs::path folder_;
};

void use(const PSListController& page) {
  const NSMutableArray rows = page.specifiers();
  for (NSUInteger i = 0; i < rows.count() && i < 64; ++i) {
    const auto row = rows.objectAtIndex<PSSpecifier>(i);
    row.name();
    row.identifier();
    row.values();
    row.titleDictionary();
    const NSObject value = row.performGetter();
    // A list may give a key or a notification that is not a string: the platform raises for those, on
    // purpose.
    try {
      if (value) row.performSetterWithValue(value);
    } catch (...) {
    }
    objc::send<"indexPathForSpecifier:", NSObject>(page, row);
  }
  objc::send<"numberOfGroups", NSInteger>(page);
  try {
    objc::send<"updateSpecifiers">(page);
  } catch (...) {  // a hidden first row raises
  }
  while (wispen_host_next_problem() != nullptr) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Setting setting;
  const objc::AutoreleasePool pool;
  std::ofstream(setting.bundle() / "Root.plist", std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  const auto page =
      objc::adopt<PSListController>(reinterpret_cast<objc::abi::id>(wispen_host_open_page(nullptr)));
  try {
    use(page);
  } catch (...) {  // the platform's exceptions, for texts that are numbers and the like
  }
  return 0;
}
