// host/app/settings/settings_app.cpp: the Settings application: its window, and the pages in it.

#include "host/app/settings/settings_app.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <set>
#include <utility>

#include "host/app/host.hpp"
#include "host/app/settings/installed_bundles.hpp"
#include "host/foundation/problems.hpp"
#include "host/uikit/painting/frame_buffer.hpp"
#include "host/uikit/tables/scroll_view.hpp"
#include "host/uikit/views/application.hpp"

namespace wispen {

namespace {

constexpr auto kFrame = std::chrono::nanoseconds(1'000'000'000 / 60);
constexpr int kDeepestPage = 8;

preferences::ListController list_page(const uikit::ViewController& page) {
  return objc::cast_or_nil<preferences::ListController>(page);
}

/// What a bundle calls itself.
std::string name_of_bundle(const NSBundle& bundle, const std::string& folder) {
  for (const NSString& key : {"CFBundleDisplayName"_ns, "CFBundleName"_ns}) {
    const auto name =
        objc::cast_or_nil<NSString>(objc::send<"objectForInfoDictionaryKey:", NSObject>(bundle, key));
    if (name && name.length() > 0) return name.utf8();
  }
  return folder.substr(folder.find_last_of('/') + 1);
}

/// Rows that lead to pages, by the class of the page.
std::vector<PSSpecifier> rows_to_pages(const uikit::ViewController& page) {
  std::vector<PSSpecifier> rows;
  if (!list_page(page)) return rows;
  const auto specifiers = objc::send<"specifiers", NSMutableArray>(page);
  for (NSUInteger i = 0, count = specifiers.count(); i < count; ++i) {
    const auto row = specifiers.objectAtIndex<PSSpecifier>(i);
    if (objc::send<"detailControllerClass", objc::ClassRef>(row) && !row.propertyForKey("key"_ns)) {
      rows.push_back(row);
    }
  }
  return rows;
}

uikit::ViewController page_for(const uikit::ViewController& page, const PSSpecifier& row) {
  return objc::send<"controllerForSpecifier:", uikit::ViewController>(page, row);
}

/// Goes on from the last page of the path, depth first, until a page of that class is reached.
bool reach(std::vector<uikit::ViewController>& path, const std::string& wanted, std::set<std::string>& seen) {
  if (objc::class_of(path.back()).name() == wanted) return true;
  if (path.size() > kDeepestPage) return false;
  for (const PSSpecifier& row : rows_to_pages(path.back())) {
    const std::string cls = objc::send<"detailControllerClass", objc::ClassRef>(row).name();
    if (!seen.insert(cls).second) continue;
    const uikit::ViewController page = page_for(path.back(), row);
    if (!page) continue;
    path.push_back(page);
    if (reach(path, wanted, seen)) return true;
    path.pop_back();
  }
  return false;
}

void join(const std::vector<uikit::ViewController>& path, const uikit::NavigationController& navigation) {
  for (std::size_t i = 1; i < path.size(); ++i) {
    if (!objc::responds_to(path[i], objc::selector<"setParentController:">())) continue;
    objc::send<"setParentController:">(path[i], path[i - 1]);
    objc::send<"setRootController:">(path[i], navigation);
  }
}

/// The innermost scroll view that fills the page.
uikit::ScrollView scroll_view_of(const uikit::View& view) {
  if (const auto scroll = objc::cast_or_nil<uikit::ScrollView>(view)) return scroll;
  for (const uikit::View& subview : view.subviews()) {
    if (const uikit::ScrollView scroll = scroll_view_of(subview)) return scroll;
  }
  return uikit::ScrollView();
}

}  // namespace

SettingsApp::SettingsApp(Host& host) : host_(host) {
  FrontPage::define();
  front_ = FrontPage::make(installed_bundles(host.root()),
                           [this](const std::string& folder) { return load(folder); });
  navigation_ = uikit::NavigationController::with_root(front_);
  objc::send<"setPrefersLargeTitles:">(navigation_.bar(), true);
  window_ = uikit::Window::make();
  window_.setBackgroundColor(UIColor::blackColor());  // what is seen around a page that a card pushed back
  window_.setRootViewController(navigation_);
  window_.makeKeyAndVisible();
}

SettingsApp::~SettingsApp() {
  // Pages may still be shown, presented, or moving; the window lets go of all of them.
  window_.setHidden(true);
  window_.setRootViewController(uikit::ViewController());
}

objc::ClassRef SettingsApp::load(const std::string& folder) {
  const auto bundle = host_.load_bundle(folder);
  if (!bundle) {
    report_problem(bundle.error().message);
    return {};
  }
  return host_.principal_class();
}

Result<void> SettingsApp::offer(const std::string& folder) {
  const auto bundle = host_.load_bundle(folder);
  if (!bundle) return bundle.error();
  front_.add({name_of_bundle(*bundle, folder), folder});
  return {};
}

std::vector<uikit::ViewController> SettingsApp::path_to(const std::string& page) {
  std::vector<uikit::ViewController> path{front_};
  if (page.empty() || page == "settings") return path;
  for (const BundleEntry& entry : front_.entries()) {
    const uikit::ViewController root = page_for(front_, front_.row_of(entry.folder));
    if (!root) continue;
    path.push_back(root);
    std::set<std::string> seen;
    if (page == "root" || reach(path, page, seen)) return path;
    path.resize(1);
  }
  return {};
}

Result<void> SettingsApp::show(const std::string& page) {
  auto path = path_to(page);
  if (path.empty()) return Error{"there is no page \"" + page + "\" that a row leads to"};
  join(path, navigation_);
  navigation_.set_stack(std::move(path), false);
  return {};
}

void SettingsApp::reload() {
  const auto& stack = navigation_.stack();
  for (std::size_t i = 0; i < stack.size(); ++i) {
    const preferences::ListController page = list_page(stack[i]);
    if (!page) continue;
    const uikit::ScrollView scroll = page.table();
    const Point offset = scroll ? scroll.contentOffset() : Point{};
    if (i > 0 && page.specifier() && list_page(stack[i - 1])) {
      // The row that opened the page was made anew; its label is the page's title.
      const PSSpecifier row = list_page(stack[i - 1]).specifierForID(page.specifier().identifier());
      if (row) objc::send<"setSpecifier:">(page, row);
    }
    objc::send<"reloadSpecifiers">(page);
    if (!scroll) continue;
    page.view().layoutIfNeeded();
    scroll.setContentOffset(scroll.nearest_resting_offset(offset));
  }
}

void SettingsApp::reload_from(const std::string& folder) {
  load(folder);  // its data are read anew
  reload();
}

Result<void> SettingsApp::settle(double at_most) {
  uikit::Session& session = host_.session();
  MainLoop& loop = host_.loop();
  const auto idle = [&]() -> Result<void> {
    if (auto ran = loop.run_until_idle(); !ran) return ran;
    uikit::Application::shared().lay_out_windows();
    return {};
  };
  if (auto quiet = idle(); !quiet) return quiet;
  const int frames = static_cast<int>(at_most * 60);
  for (int i = 0; i < frames; ++i) {
    const uikit::ScrollView scroll = scroll_view_of(top().view());
    if (!session.animations().active() && !(scroll && scroll.is_moving())) break;
    if (auto moved = loop.advance(kFrame); !moved) return moved;
    if (auto quiet = idle(); !quiet) return quiet;
  }
  return {};
}

Result<graphics::Image> SettingsApp::picture(double scale, bool whole_page) {
  uikit::Session& session = host_.session();
  uikit::Application::shared().lay_out_windows();
  if (!whole_page) return uikit::take_picture(session, scale);
  const uikit::ScrollView scroll = scroll_view_of(top().view());
  if (!scroll) return uikit::take_picture(session, scale);
  const uikit::DeviceModel device = session.device();
  const Point offset = scroll.contentOffset();
  uikit::DeviceModel tall = device;
  // The bar gets its large title back at the top, which moves the page once more: twice is enough.
  constexpr double kHighest = 16'000;
  for (int pass = 0; pass < 2; ++pass) {
    const EdgeInsets inset = scroll.adjustedContentInset();
    const double outside = session.device().size().height - scroll.bounds().height();
    const double height = std::ceil(scroll.contentSize().height + inset.top + inset.bottom + outside);
    double& side =
        device.orientation == uikit::Orientation::Portrait ? tall.portrait.height : tall.portrait.width;
    side = std::clamp(height, device.size().height, kHighest);
    session.set_device(tall);
    uikit::Application::shared().lay_out_windows();
    scroll.setContentOffset(scroll.nearest_resting_offset({0, -kHighest}));
    uikit::Application::shared().lay_out_windows();
  }
  auto picture = uikit::take_picture(session, scale);
  session.set_device(device);
  uikit::Application::shared().lay_out_windows();
  scroll.setContentOffset(scroll.nearest_resting_offset(offset));
  uikit::Application::shared().lay_out_windows();
  return picture;
}

}  // namespace wispen
