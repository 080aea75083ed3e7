// host/app/settings/live_reload.hpp: pages that follow the files they are made of.
#pragma once

#include <memory>
#include <string>

#include "host/app/settings/settings_app.hpp"
#include "host/core/main_loop.hpp"
#include "host/core/result.hpp"

namespace wispen {

/// Watches a bundle's folder, and the folders in it. When a list, a strings table or an image is saved, the
/// pages are built again, with their scroll positions and the stack of pages. While a file cannot be read,
/// the last good pages stay, under a note that says which file it is, and what is wrong with it and where.
class LiveReload {
 public:
  /// The loop and the application must outlive it. Fails for a folder that cannot be watched.
  static Result<std::unique_ptr<LiveReload>> start(MainLoop& loop, SettingsApp& app, std::string folder);
  LiveReload(const LiveReload&) = delete;
  LiveReload& operator=(const LiveReload&) = delete;
  ~LiveReload();

 private:
  LiveReload(MainLoop& loop, SettingsApp& app, std::string folder, int descriptor);
  Result<void> watch_folder(const std::string& folder);
  void read_events();
  void reload();
  void show_fault(const std::string& sentence);
  void hide_fault();

  MainLoop& loop_;
  SettingsApp& app_;
  std::string folder_;
  int descriptor_;
  WatchId watch_ = 0;
  bool due_ = false;
  TimerId timer_{};
  UIWindow note_;
  UILabel text_;
};

/// What is wrong with the first of a bundle's lists and strings tables that cannot be read, with its name;
/// empty where all can.
std::string first_fault(const std::string& folder);

}  // namespace wispen
