// host/app/settings/settings_app.cpp: the Settings application: its window, and the pages in it.

#include "host/app/settings/settings_app.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <set>
#include <utility>

#include "host/app/host.hpp"
#include "host/app/settings/installed_bundles.hpp"
#include "host/foundation/arrays.hpp"
#include "host/foundation/problems.hpp"
#include "host/uikit/containers/tables/scroll_view.hpp"
#include "host/uikit/view/application.hpp"
#include "host/uikit/view/painting/frame_buffer.hpp"
#include "host/uikit/view/view.hpp"

namespace wispen {

namespace {

constexpr auto kFrame = std::chrono::nanoseconds(1'000'000'000 / 60);
constexpr int kDeepestPage = 8;

PSListController list_page(const UIViewController& page) { return objc::cast_or_nil<PSListController>(page); }

/// What a bundle calls itself.
std::string name_of_bundle(const NSBundle& bundle, const std::string& folder) {
  for (const NSString& key : {"CFBundleDisplayName"_ns, "CFBundleName"_ns}) {
    const auto name = objc::cast_or_nil<NSString>(bundle.objectForInfoDictionaryKey(key));
    if (name && name.length() > 0) return name.utf8();
  }
  return folder.substr(folder.find_last_of('/') + 1);
}

/// Rows that lead to pages, by the class of the page.
std::vector<PSSpecifier> rows_to_pages(const UIViewController& page) {
  std::vector<PSSpecifier> rows;
  const PSListController list = list_page(page);
  if (!list) return rows;
  for (const PSSpecifier& row : objects_of<PSSpecifier>(list.specifiers())) {
    if (row.detailControllerClass() && !row.propertyForKey("key"_ns)) rows.push_back(row);
  }
  return rows;
}

UIViewController page_for(const UIViewController& page, const PSSpecifier& row) {
  return page.as<PSListController>().controllerForSpecifier(row);
}

/// Goes on from the last page of the path, depth first, until a page of that class is reached.
bool reach(std::vector<UIViewController>& path, const std::string& wanted, std::set<std::string>& seen) {
  if (objc::class_of(path.back()).name() == wanted) return true;
  if (path.size() > kDeepestPage) return false;
  for (const PSSpecifier& row : rows_to_pages(path.back())) {
    const std::string cls = row.detailControllerClass().name();
    if (!seen.insert(cls).second) continue;
    const UIViewController page = page_for(path.back(), row);
    if (!page) continue;
    path.push_back(page);
    if (reach(path, wanted, seen)) return true;
    path.pop_back();
  }
  return false;
}

void join(const std::vector<UIViewController>& path, const UINavigationController& navigation) {
  for (std::size_t i = 1; i < path.size(); ++i) {
    if (!objc::responds_to(path[i], objc::selector<"setParentController:">())) continue;
    const auto page = path[i].as<PSViewController>();
    page.setParentController(path[i - 1]);
    page.setRootController(navigation);
  }
}

/// Scrolls to the nearest offset that shows no empty room.
void rest_at(const UIScrollView& scroll, const Point& offset) {
  scroll.setContentOffset(uikit::ScrollView::of(scroll).nearest_resting_offset(offset));
}

/// The innermost scroll view that fills the page.
UIScrollView scroll_view_of(const UIView& view) {
  if (const auto scroll = objc::cast_or_nil<UIScrollView>(view)) return scroll;
  for (const UIView& subview : uikit::View::of(view).subviews()) {
    if (const UIScrollView scroll = scroll_view_of(subview)) return scroll;
  }
  return UIScrollView();
}

}  // namespace

SettingsApp::SettingsApp(Host& host) : host_(host) {
  front_ = SettingsFrontPage::make(installed_bundles(host.root()),
                                   [this](const std::string& folder) { return load(folder); });
  navigation_ = UINavigationController::alloc().initWithRootViewController(front_);
  navigation_.navigationBar().setPrefersLargeTitles(true);
  window_ = objc::make<UIWindow>();
  window_.setBackgroundColor(UIColor::blackColor());  // what is seen around a page that a card pushed back
  window_.setRootViewController(navigation_);
  window_.makeKeyAndVisible();
}

SettingsApp::~SettingsApp() {
  // Pages may still be shown, presented, or moving; the window lets go of all of them.
  window_.setHidden(true);
  window_.setRootViewController(UIViewController());
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

std::vector<UIViewController> SettingsApp::path_to(const std::string& page) {
  std::vector<UIViewController> path{front_};
  if (page.empty() || page == "settings") return path;
  for (const BundleEntry& entry : front_.entries()) {
    const UIViewController root = page_for(front_, front_.row_of(entry.folder));
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
  navigation_.setViewControllers(array_of(path));
  return {};
}

void SettingsApp::reload() {
  const auto stack = objects_of<UIViewController>(navigation_.viewControllers());
  for (std::size_t i = 0; i < stack.size(); ++i) {
    const PSListController page = list_page(stack[i]);
    if (!page) continue;
    const UIScrollView scroll = page.table();
    const Point offset = scroll ? Point(scroll.contentOffset()) : Point{};
    if (i > 0 && page.specifier() && list_page(stack[i - 1])) {
      // The row that opened the page was made anew; its label is the page's title.
      const PSSpecifier row = list_page(stack[i - 1]).specifierForID(page.specifier().identifier());
      if (row) page.setSpecifier(row);
    }
    page.reloadSpecifiers();
    if (!scroll) continue;
    page.view().layoutIfNeeded();
    rest_at(scroll, offset);
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
    const UIScrollView scroll = scroll_view_of(top().view());
    if (!session.animations().active() && !(scroll && uikit::ScrollView::of(scroll).is_moving())) break;
    if (auto moved = loop.advance(kFrame); !moved) return moved;
    if (auto quiet = idle(); !quiet) return quiet;
  }
  return {};
}

Result<graphics::Image> SettingsApp::picture(double scale, bool whole_page) {
  uikit::Session& session = host_.session();
  uikit::Application::shared().lay_out_windows();
  if (!whole_page) return uikit::take_picture(session, scale);
  const UIScrollView scroll = scroll_view_of(top().view());
  if (!scroll) return uikit::take_picture(session, scale);
  const uikit::DeviceModel device = session.device();
  const Point offset = scroll.contentOffset();
  uikit::DeviceModel tall = device;
  // The bar gets its large title back at the top, which moves the page once more: twice is enough.
  constexpr double kHighest = 16'000;
  for (int pass = 0; pass < 2; ++pass) {
    const EdgeInsets inset = scroll.adjustedContentInset();
    const double outside = session.device().size().height - scroll.bounds().size.height;
    const double height = std::ceil(scroll.contentSize().height + inset.top + inset.bottom + outside);
    double& side =
        device.orientation == uikit::Orientation::Portrait ? tall.portrait.height : tall.portrait.width;
    side = std::clamp(height, device.size().height, kHighest);
    session.set_device(tall);
    uikit::Application::shared().lay_out_windows();
    rest_at(scroll, {0, -kHighest});
    uikit::Application::shared().lay_out_windows();
  }
  auto picture = uikit::take_picture(session, scale);
  session.set_device(device);
  uikit::Application::shared().lay_out_windows();
  rest_at(scroll, offset);
  uikit::Application::shared().lay_out_windows();
  return picture;
}

}  // namespace wispen
