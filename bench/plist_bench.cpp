// bench/plist_bench.cpp: one value of a file, read and written, as ratios to what the kernel alone takes.
//
// The machine's speed drifts; only ratios inside one run mean anything. So all contenders of a row take
// turns, and a row shows the medians and their ratio to the bare calls.
#include <fcntl.h>
#include <plist/plist.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/files/replace_file.hpp"
#include "host/plist/splice.hpp"

namespace {

using namespace wispen::plist;

/// A contender of a row.
struct Contender {
  std::string name;
  std::function<void()> run;
  std::vector<double> times = {};

  double median() {
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                     times.end());
    return times[times.size() / 2];
  }
};

/// The first contender is the measure of the others.
void measure(const std::string& row, std::vector<Contender> contenders, double seconds) {
  using Clock = std::chrono::steady_clock;
  for (const Contender& contender : contenders) contender.run();
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  do {
    for (Contender& contender : contenders) {
      const auto start = Clock::now();
      contender.run();
      contender.times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
  } while (Clock::now() < end);
  const double measure = contenders.front().median();
  std::printf("%-24s", row.c_str());
  for (Contender& contender : contenders) {
    const double median = contender.median();
    std::printf("  %s %.2f us (%.2fx)", contender.name.c_str(), median, median / measure);
  }
  std::printf("\n");
  std::fflush(stdout);
}

void require(bool condition) {
  if (!condition) std::abort();
}

Tree sample(int keys) {
  Dictionary members;
  for (int i = 0; i < keys; ++i) {
    const std::string key = "preferenceKey" + std::to_string(i);
    const std::string text = "some text of page " + std::to_string(i);
    members.push_back({key, i % 4 == 0   ? Tree(i % 8 == 0)
                            : i % 4 == 1 ? Tree(i)
                            : i % 4 == 2 ? Tree(i * 0.37)
                                         : Tree(text)});
  }
  return members;
}

std::string key_of(int keys) { return "preferenceKey" + std::to_string(keys / 2); }

void bare_read(const std::string& path, std::string& buffer) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status = {};
  require(::fstat(file, &status) == 0 &&
          ::read(file, buffer.data(), static_cast<std::size_t>(status.st_size)) > 0);
  ::close(file);
}

void read_one(const std::string& path, const std::string& key) {
  const wispen::Result<Document> document = Document::read(path);
  require(document.ok() && document->root().find(key).has_value());
}

void libplist_read(const std::string& path, const std::string& key, Format format, std::string& buffer) {
  bare_read(path, buffer);
  plist_t list = nullptr;
  const auto size = static_cast<std::uint32_t>(buffer.size());
  format == Format::Xml ? plist_from_xml(buffer.data(), size, &list)
                        : plist_from_bin(buffer.data(), size, &list);
  require(plist_dict_get_item(list, key.c_str()) != nullptr);
  plist_free(list);
}

void bench_reading(const std::string& folder) {
  for (const Format format : {Format::Xml, Format::Binary}) {
    for (const int keys : {10, 100, 1000, 10000}) {
      const std::string bytes = *encode(sample(keys), format);
      const std::string path = folder + "/read.plist";
      require(wispen::files::replace(path, bytes).ok());
      std::string buffer(bytes.size(), '\0');
      const std::string key = key_of(keys);
      const std::string row =
          std::string("read ") + (format == Format::Xml ? "XML " : "binary ") + std::to_string(keys);
      measure(row,
              {{"bare", [&] { bare_read(path, buffer); }},
               {"wispen", [&] { read_one(path, key); }},
               {"libplist", [&] { libplist_read(path, key, format, buffer); }}},
              keys < 1000 ? 1 : 2);
    }
  }
  const std::string path = folder + "/read.plist";
  require(wispen::files::replace(path, *encode(sample(100), Format::Xml)).ok());
  std::string buffer(1 << 16, '\0');
  measure("thirty rows, XML 100",
          {{"bare",
            [&] {
              for (int i = 0; i < 30; ++i) bare_read(path, buffer);
            }},
           {"wispen",
            [&] {
              for (int i = 0; i < 30; ++i) read_one(path, "preferenceKey" + std::to_string(i * 3));
            }}},
          1);
}

void bare_write(const std::string& folder, const std::string& path, const std::string& bytes, bool durable) {
  const std::string temporary = folder + "/bare.tmp";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  require(::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  if (durable) require(::fsync(file) == 0);
  ::close(file);
  require(::rename(temporary.c_str(), path.c_str()) == 0);
  if (!durable) return;
  const int parent = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  require(::fsync(parent) == 0);
  ::close(parent);
}

/// Each writer has a folder of its own, as a page has the folder of its file.
void bench_writing(const std::string& folder, const std::string& bare_folder, const std::string& where,
                   bool durable) {
  for (const Format format : {Format::Xml, Format::Binary}) {
    for (const int keys : {10, 100, 1000, 10000}) {
      const std::string bytes = *encode(sample(keys), format);
      const std::string path = folder + "/write.plist";
      const std::string bare = bare_folder + "/bare.plist";
      require(wispen::files::replace(path, bytes).ok() && wispen::files::replace(bare, bytes).ok());
      int turn = 0;
      const std::string row =
          "write " + where + (format == Format::Xml ? " XML " : " binary ") + std::to_string(keys);
      measure(row,
              {{durable ? "bare write+sync+rename+sync" : "bare write+rename",
                [&] { bare_write(bare_folder, bare, bytes, durable); }},
               {"wispen",
                [&] {
                  require(update_file(path, {{key_of(keys), ++turn}}).ok());
                }}},
              durable ? 3 : 1);
    }
  }
}

/// A folder that goes when the program ends well.
class Folder {
 public:
  explicit Folder(const std::string& where) : path_(where + "/wispen-bench-XXXXXX") {
    require(::mkdtemp(path_.data()) != nullptr);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

int main() {
  const Folder disk(".");
  bench_reading(disk.path());
  const Folder bare_disk(".");
  bench_writing(disk.path(), bare_disk.path(), "disk", true);
  if (std::filesystem::is_directory("/dev/shm")) {
    const Folder memory("/dev/shm");
    const Folder bare_memory("/dev/shm");
    bench_writing(memory.path(), bare_memory.path(), "memory", false);
  }
  return 0;
}
