// host/app/settings/settings_app.hpp: the Settings application: its window, and the pages in it.
#pragma once

#include <string>
#include <vector>

#include "host/app/settings/front_page.hpp"
#include "host/core/result.hpp"
#include "host/graphics/image.hpp"
#include "host/uikit/view/session.hpp"

namespace wispen {

class Host;

/// One for a host, made when it is first asked for and gone before the host's session.
class SettingsApp {
 public:
  explicit SettingsApp(Host& host);
  SettingsApp(const SettingsApp&) = delete;
  SettingsApp& operator=(const SettingsApp&) = delete;
  ~SettingsApp();

  UIWindow window() const { return window_; }
  UINavigationController navigation() const { return navigation_; }
  UIViewController top() const { return navigation_.topViewController(); }

  /// Offers a bundle that no entry list names, as while it is written. Fails for a folder that is not a
  /// bundle.
  Result<void> offer(const std::string& folder);

  /// Brings up a page, with the pages that lead to it below it: the front page for an empty name, the
  /// bundle's own for "root" or its principal class, else the page of a class that rows lead to. Without
  /// animation. Fails where there is no such page, and leaves what is shown.
  Result<void> show(const std::string& page);

  /// Builds every page's list anew, after files or the language changed; scroll positions stay.
  void reload();

  /// The same, after the files of that bundle changed.
  void reload_from(const std::string& folder);

  /// Lets time pass until nothing moves any more and nobody works in the background, at most so many seconds
  /// of the clock. On a driven clock only.
  Result<void> settle(double at_most = 10);

  /// The screen as it is, or with `whole_page` as if the screen were as high as the page is long. At the
  /// device's scale for 0, else at 0.5 to 4.
  Result<graphics::Image> picture(double scale, bool whole_page);

 private:
  std::vector<UIViewController> path_to(const std::string& page);
  objc::ClassRef load(const std::string& folder);

  Host& host_;
  SettingsFrontPage front_;
  UINavigationController navigation_;
  UIWindow window_;
};

}  // namespace wispen
