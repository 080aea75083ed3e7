// fuzz/domain_objects_fuzz.cpp: any bytes as the domain file, up to Foundation's objects: each value is made,
// described, hashed, compared, and written again.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/wispen_host.h"
#include "platform/Foundation.hpp"

namespace {

namespace fs = std::filesystem;

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

/// A host on a root of its own; gone when the process ends.
class Setting {
 public:
  Setting() {
    std::string name = (fs::temp_directory_path() / "wispen-fuzz-XXXXXX").string();
    folder_ = ::mkdtemp(name.data());
    const std::string root = (folder_ / "root").string();
    wispen_host_options options{};
    options.size = sizeof options;
    options.root = root.c_str();
    require(wispen_host_start(&options) == 1, wispen_host_last_error());
    file_ = wispen_host_path("/var/mobile/Library/Preferences/fuzz.plist");
  }
  ~Setting() {
    wispen_host_stop();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  const std::string& file() const { return file_; }

 private:
  fs::path folder_;
  std::string file_;
};

/// A value and all inside it, each asked what programs ask.
void use(const NSObject& value) {
  require(static_cast<bool>(value), "a value of a file is an object");
  value.isEqual(value);  // not always: a NaN does not
  objc::send<"hash", NSUInteger>(value);
  if (const auto array = objc::cast_or_nil<NSArray>(value)) {
    for (NSUInteger i = 0; i < array.count(); ++i) use(array.objectAtIndex(i));
  } else if (const auto dictionary = objc::cast_or_nil<NSDictionary>(value)) {
    const NSArray keys = dictionary.allKeys();
    for (NSUInteger i = 0; i < keys.count(); ++i) use(dictionary.objectForKey(keys.objectAtIndex(i)));
  } else {
    value.description();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Setting setting;
  const objc::AutoreleasePool pool;
  std::ofstream(setting.file(), std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  const NSString path(setting.file().c_str());
  const auto dictionary = NSMutableDictionary::dictionaryWithContentsOfFile(path);
  if (!dictionary) return 0;
  const NSArray keys = dictionary.allKeys();
  for (NSUInteger i = 0; i < keys.count(); ++i) use(dictionary.objectForKey(keys.objectAtIndex(i)));
  dictionary.description();
  // Every value made into an object and back: what was read can be written.
  const NSMutableDictionary copy = NSMutableDictionary::dictionary();
  for (NSUInteger i = 0; i < keys.count(); ++i) {
    copy.setObject(dictionary.objectForKey(keys.objectAtIndex(i)), keys.objectAtIndex(i));
  }
  const bool written = copy.writeToFile(path, true);
  while (wispen_host_next_problem() != nullptr) {
  }
  require(!written || NSDictionary::dictionaryWithContentsOfFile(path), "what was written can be read");
  return 0;
}
