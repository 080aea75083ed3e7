// bench/host_bench.cpp: messages, values and pages, each beside what it is compared with.
//
// Read the figures as ratios inside one run: the machine drifts between runs.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "host/wispen_host.h"
#include "platform/Preferences.hpp"
#include "rootpath/rootpath.h"
#include "tests/support/temporary_folder.hpp"

namespace {

using wispen::testing::TemporaryFolder;

// ---- calls

class Answering : public objc::Authored<Answering, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenBenchAnswering"};
  using Authored::Authored;
  int number(int value) const { return value + 1; }
  static void define() { objc::Class<Answering>().method<"number:", &Answering::number>().register_class(); }
};

struct Virtual {
  virtual ~Virtual() = default;
  virtual int number(int value) const = 0;
};
struct VirtualNumber : Virtual {
  [[gnu::noinline]] int number(int value) const override { return value + 1; }
};

void BM_VirtualCall(benchmark::State& state) {
  const std::unique_ptr<Virtual> object = std::make_unique<VirtualNumber>();
  const Virtual* receiver = object.get();
  int value = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(receiver);
    benchmark::DoNotOptimize(value = receiver->number(value));
  }
}
BENCHMARK(BM_VirtualCall);

void BM_MessageSend(benchmark::State& state) {
  Answering::define();
  const Answering object = objc::make<Answering>();
  int value = 0;
  for (auto _ : state) benchmark::DoNotOptimize(value = objc::send<"number:", int>(object, value));
}
BENCHMARK(BM_MessageSend);

/// The runtime alone: its look-up of the method, and the call. What a send cannot be faster than.
void BM_BareLookupAndCall(benchmark::State& state) {
  Answering::define();
  const Answering object = objc::make<Answering>();
  const objc::abi::id receiver = objc::borrow(object);
  const auto selector = objc::selector<"number:">().borrow();
  int value = 0;
  for (auto _ : state) {
    const auto method = reinterpret_cast<int (*)(objc::abi::id, objc::abi::SEL, int)>(
        objc::abi::objc_msg_lookup(receiver, selector));
    benchmark::DoNotOptimize(value = method(receiver, selector, value));
  }
}
BENCHMARK(BM_BareLookupAndCall);

// ---- values

/// A host on a root in memory, with a domain of some keys.
class Domain {
 public:
  explicit Domain(int keys) {
    wispen_host_options options{};
    options.size = sizeof options;
    const std::string root = folder_ / "root";
    options.root = root.c_str();
    if (wispen_host_start(&options) == 0 || wispen_host_load_bundle(WISPEN_BENCH_BUNDLE) == nullptr)
      std::abort();
    file_ = wispen_host_jailbreak_path("/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist");
    std::ofstream file(file_);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n";
    for (int i = 0; i < keys; ++i) {
      file << "\t<key>key" << i << "</key>\n";
      switch (i % 4) {
        case 0:
          file << "\t<true/>\n";
          break;
        case 1:
          file << "\t<integer>" << i << "</integer>\n";
          break;
        case 2:
          file << "\t<real>" << i << ".5</real>\n";
          break;
        default:
          file << "\t<string>a value of some length</string>\n";
      }
    }
    file << "</dict>\n</plist>\n";
    page_ = objc::adopt<PSListController>(
        reinterpret_cast<objc::abi::id>(wispen_host_open_page("SepSettingsCell")));
  }
  ~Domain() {
    page_ = nullptr;
    wispen_host_stop();
  }

  const std::string& file() const { return file_; }
  const PSListController& page() const { return page_; }
  static PSSpecifier row(const std::string& key) {
    const PSSpecifier specifier = objc::make<PSSpecifier>();
    specifier.setProperty(NSString(key.c_str()), "key"_ns);
    objc::send<"setProperties:">(specifier, specifier.properties());
    return specifier;
  }

 private:
  const objc::AutoreleasePool pool_;
  TemporaryFolder folder_;
  std::string file_;
  PSListController page_;
};

std::size_t bare_read(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status {};
  ::fstat(fd, &status);
  std::vector<char> bytes(static_cast<std::size_t>(status.st_size));
  const ssize_t count = ::read(fd, bytes.data(), bytes.size());
  ::close(fd);
  return static_cast<std::size_t>(count);
}

void BM_BareOpenAndRead(benchmark::State& state) {
  const Domain domain(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(bare_read(domain.file()));
}
BENCHMARK(BM_BareOpenAndRead)->Arg(10)->Arg(100)->Arg(1000);

void BM_PageReadsOneValue(benchmark::State& state) {
  const Domain domain(static_cast<int>(state.range(0)));
  const PSSpecifier row = Domain::row("key" + std::to_string(state.range(0) / 2));
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    benchmark::DoNotOptimize(objc::send<"readPreferenceValue:", NSObject>(domain.page(), row));
  }
}
BENCHMARK(BM_PageReadsOneValue)->Arg(10)->Arg(100)->Arg(1000);

void BM_FoundationReadsTheFile(benchmark::State& state) {
  const Domain domain(static_cast<int>(state.range(0)));
  const NSString path = domain.file().c_str();
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    const auto data = objc::send<"dataWithContentsOfFile:", NSData>(objc::class_for<NSData>(), path);
    const auto list = objc::send<"propertyListWithData:options:format:error:", NSDictionary>(
        objc::class_named<"NSPropertyListSerialization">(), data, NSUInteger{0},
        static_cast<NSUInteger*>(nullptr), static_cast<void*>(nullptr));
    benchmark::DoNotOptimize(list.objectForKey("key5"_ns));
  }
}
BENCHMARK(BM_FoundationReadsTheFile)->Arg(10)->Arg(100)->Arg(1000);

void BM_PageReadsThirtyRows(benchmark::State& state) {
  const Domain domain(100);
  std::vector<PSSpecifier> rows;
  for (int i = 0; i < 30; ++i) rows.push_back(Domain::row("key" + std::to_string(i * 3)));
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    for (const PSSpecifier& row : rows) {
      benchmark::DoNotOptimize(objc::send<"readPreferenceValue:", NSObject>(domain.page(), row));
    }
  }
}
BENCHMARK(BM_PageReadsThirtyRows)->Unit(benchmark::kMicrosecond);

void BM_PageWritesOneValue(benchmark::State& state) {
  const Domain domain(static_cast<int>(state.range(0)));
  const PSSpecifier row = Domain::row("key1");
  int value = 0;
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    objc::send<"setPreferenceValue:specifier:">(domain.page(), NSNumber::numberWithInt(++value), row);
  }
}
BENCHMARK(BM_PageWritesOneValue)->Arg(100)->Unit(benchmark::kMicrosecond);

void BM_RootPath(benchmark::State& state) {
  const Domain domain(1);
  char buffer[LIBROOT_PATH_MAX];
  for (auto _ : state) {
    benchmark::DoNotOptimize(libroot_dyn_jbrootpath("/var/mobile/Library/Preferences/x.plist", buffer));
  }
}
BENCHMARK(BM_RootPath);

// ---- pages

/// The shipped code over a list of some rows, a tenth of them hidden.
class LongPage {
 public:
  explicit LongPage(long rows) {
    wispen_host_options options{};
    options.size = sizeof options;
    const std::string root = folder_ / "root";
    options.root = root.c_str();
    if (wispen_host_start(&options) == 0) std::abort();
    const std::filesystem::path bundle = folder_ / "long.bundle";
    std::filesystem::copy(WISPEN_BENCH_BUNDLE, bundle, std::filesystem::copy_options::recursive);
    std::ofstream list(bundle / "Root.plist");
    list << "<plist version=\"1.0\"><dict><key>items</key><array>";
    for (long i = 0; i < rows; ++i) {
      list << "<dict><key>cell</key><string>PSSwitchCell</string><key>key</key><string>k" << i << "</string>";
      if (i % 10 == 5) list << "<key>depends</key><string>x</string>";
      list << "</dict>";
    }
    list << "</array></dict></plist>";
    list.close();
    if (wispen_host_load_bundle(bundle.c_str()) == nullptr) std::abort();
  }
  ~LongPage() { wispen_host_stop(); }
  static PSListController open() {
    return objc::adopt<PSListController>(reinterpret_cast<objc::abi::id>(wispen_host_open_page(nullptr)));
  }

 private:
  const objc::AutoreleasePool pool_;
  TemporaryFolder folder_;
};

void BM_PageBuildsAndFilters(benchmark::State& state) {
  const LongPage setting(state.range(0));
  for (auto _ : state) {
    const objc::AutoreleasePool pool;
    const PSListController page = LongPage::open();
    benchmark::DoNotOptimize(page.specifiers().count());
  }
}
BENCHMARK(BM_PageBuildsAndFilters)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// Every tenth row goes and comes back: rows are removed and put in all over the page.
void BM_PageRefreshes(benchmark::State& state) {
  const LongPage setting(state.range(0));
  const objc::AutoreleasePool pool;
  const PSListController page = LongPage::open();
  const NSArray saved = objc::send<"savedSpecifiers", NSArray>((page.specifiers(), page));
  std::vector<PSSpecifier> changing;
  for (NSUInteger i = 1; i < saved.count(); i += 10) changing.push_back(saved.objectAtIndex<PSSpecifier>(i));
  // The base controller's refresh alone: the root page would also load its list from the file again.
  for (auto _ : state) {
    const objc::AutoreleasePool inner;
    for (const PSSpecifier& specifier : changing) specifier.setProperty("x"_ns, "depends"_ns);
    objc::send<"updateSpecifiers">(page);
    state.PauseTiming();
    for (const PSSpecifier& specifier : changing) specifier.setProperty(NSObject(), "depends"_ns);
    page.reloadSpecifiers();
    const NSArray again = objc::send<"savedSpecifiers", NSArray>(page);
    changing.clear();
    for (NSUInteger i = 1; i < again.count(); i += 10)
      changing.push_back(again.objectAtIndex<PSSpecifier>(i));
    state.ResumeTiming();
  }
}
BENCHMARK(BM_PageRefreshes)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
