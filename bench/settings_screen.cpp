// bench/settings_screen.cpp: the Settings application over lists of a benchmark's own.

#include "bench/settings_screen.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <regex>

namespace wispen::bench {

namespace {

constexpr double kScale = 2;
constexpr const char* kBundle = WISPEN_BENCH_BUNDLE;

std::string& plain_bundle() {
  static std::string folder;
  return folder;
}

/// A benchmark that measures something else than it says is worse than none.
void must(bool done, const char* what) {
  if (done) return;
  std::fprintf(stderr, "%s: %s\n", what, wispen_host_last_error());
  std::abort();
}

std::string property_list(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n";
}

}  // namespace

void PlainPage::define() {
  objc::Class<PlainPage>()
      .method<"bundle", &PlainPage::bundle>()
      .method<"specifiers", &PlainPage::specifiers>()
      .register_class();
}

void PlainPage::set_bundle(const std::string& folder) { plain_bundle() = folder; }

NSBundle PlainPage::bundle() const {
  return objc::send<"bundleWithPath:", NSBundle>(objc::class_for<NSBundle>(),
                                                 NSString(plain_bundle().c_str()));
}

NSMutableArray PlainPage::specifiers() const {
  NSMutableArray& shown = specifiers_variable();
  if (!shown) shown = loadSpecifiersFromPlistName("Root"_ns, *this);
  return shown;
}

std::string list_of_rows(long count, const char* cell, const char* cell_class) {
  std::string items;
  for (long i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    items += std::string("<dict><key>cell</key><string>") + cell + "</string>";
    if (cell_class != nullptr)
      items += std::string("<key>cellClass</key><string>") + cell_class + "</string>";
    items += "<key>label</key><string>Row number " + number + "</string><key>key</key><string>key" + number +
             "</string><key>defaults</key><string>com.example.bench</string>" +
             "<key>min</key><real>0</real><key>max</key><real>10</real></dict>";
  }
  return property_list("<dict><key>items</key><array>" + items + "</array></dict>");
}

std::string shipped_list_without_classes() {
  const std::string list = testing::contents_of(std::filesystem::path(kBundle) / "Root.plist");
  static const std::regex kClass("<key>cellClass</key>\\s*<string>[^<]*</string>");
  return std::regex_replace(list, kClass, "");
}

SettingsScreen::SettingsScreen(bool wall_clock) : folder_("/dev/shm") {
  wispen_host_options options{};
  options.size = sizeof options;
  const std::string root = folder_ / "root";
  options.root = root.c_str();
  options.wall_clock = wall_clock ? 1 : 0;
  must(wispen_host_start(&options) != 0, "the host");
  must(wispen_host_set_frame_scale(kScale) != 0, "the scale");
  // Rows name their pictures by where the package puts them.
  const std::filesystem::path installed =
      wispen_host_jailbreak_path("/Library/PreferenceBundles/3dvitrelleprefs.bundle");
  std::filesystem::create_directories(installed);
  std::filesystem::copy(std::filesystem::path(kBundle) / "Assets", installed / "Assets",
                        std::filesystem::copy_options::recursive);
  PlainPage::define();
}

SettingsScreen::~SettingsScreen() { must(wispen_host_stop() != 0, "the host's end"); }

void SettingsScreen::offer_shipped() const {
  must(wispen_host_offer_bundle(kBundle) != 0, "the shipped bundle");
}

void SettingsScreen::offer(const std::string& name, const std::string& list, bool plain) {
  const std::filesystem::path bundle = folder_of(name);
  std::filesystem::copy(kBundle, bundle, std::filesystem::copy_options::recursive);
  testing::write_file(
      bundle / "Info.plist",
      property_list("<dict><key>CFBundleExecutable</key><string>3dvitrelleprefs</string>"
                    "<key>CFBundleIdentifier</key><string>bench." +
                    name + "</string><key>CFBundleDisplayName</key><string>" + name +
                    "</string><key>NSPrincipalClass</key><string>" +
                    (plain ? "WispenBenchPlainPage" : "WispRootListController") + "</string></dict>"));
  testing::write_file(bundle / "Root.plist", list);
  if (plain) PlainPage::set_bundle(bundle);
  // A page's own class is not the code's: it is loaded for the cells.
  must(wispen_host_load_bundle(kBundle) != nullptr, "the shipped code");
  must(wispen_host_offer_bundle(bundle.c_str()) != 0, "a bundle of the benchmark's own");
}

void SettingsScreen::show(const char* page) { must(wispen_host_show_page(page) != 0, page); }
void SettingsScreen::settle() {
  must(wispen_host_settle(20) != 0, "settling");
  const char* const problem = wispen_host_next_problem();
  if (problem == nullptr) return;
  std::fprintf(stderr, "a page that is not what it should be: %s\n", problem);
  std::abort();
}
void SettingsScreen::advance(double seconds) { must(wispen_host_advance(seconds) != 0, "time"); }

long SettingsScreen::frame() {
  wispen_host_frame_pixels pixels{};
  must(wispen_host_frame(&pixels) != 0, "a frame");
  return static_cast<long>(pixels.changed_width) * pixels.changed_height;
}

void SettingsScreen::damage_all() { window().setNeedsDisplay(); }

void SettingsScreen::tap(CGPoint place) {
  must(wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, place.x, place.y) != 0, "a touch");
  must(wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, place.x, place.y) != 0, "a touch's end");
}

UIWindow SettingsScreen::window() { return UIApplication::sharedApplication().keyWindow(); }

PSListController SettingsScreen::page() {
  const auto navigation = objc::cast_or_nil<UINavigationController>(window().rootViewController());
  return navigation.topViewController().as<PSListController>();
}

void SettingsScreen::scroll_to(double y) { table().setContentOffset({0, y}, false); }

double SettingsScreen::end_of_page() {
  const UITableView all = table();
  const UIEdgeInsets insets = objc::send<"adjustedContentInset", UIEdgeInsets>(all);
  return all.contentSize().height - all.bounds().size.height + insets.bottom;
}

UITableViewCell SettingsScreen::cell(NSInteger row, NSInteger section) {
  const auto found = objc::send<"cellForRowAtIndexPath:", UITableViewCell>(
      table(), NSIndexPath::indexPathForRow(row, section));
  must(static_cast<bool>(found), "a cell in sight");
  return found;
}

CGPoint SettingsScreen::middle_of(const UIView& view) {
  const CGRect bounds = view.bounds();
  return view.convertPointToView({bounds.size.width / 2, bounds.size.height / 2}, UIView());
}

}  // namespace wispen::bench
