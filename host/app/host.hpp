// host/app/host.hpp: the running host: one device root, one loop, the bundles loaded on it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/core/device_root.hpp"
#include "host/core/main_loop.hpp"
#include "host/core/notification_listener.hpp"
#include "host/core/result.hpp"
#include "host/processes/device_processes.hpp"
#include "host/uikit/view/painting/frame_buffer.hpp"
#include "host/uikit/view/session.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

class LiveReload;
class SettingsApp;

/// What a host starts with.
struct HostOptions {
  std::string root;
  std::optional<Layout> layout;
  std::vector<std::string> languages{"en"};
  std::string appearance = "light";
  std::string device = "phone";  // a name of uikit::device_models()
  bool landscape = false;
  std::string text_size = "L";                   // of graphics::content_size_name()
  std::optional<bool> right_to_left;             // as the first language is read, where it is not said
  std::vector<std::string> library_search_path;  // empty: the folder of the host library
  ClockKind clock = ClockKind::Driven;
  bool lists_as_data = false;  // nothing that lists name is performed
  bool own_windows = false;    // of the program that runs the host: Settings is not to come up
};

/// Splits "de,en" at commas; blanks around the parts and empty parts are dropped.
std::vector<std::string> split_list(const std::string& text, char separator);

/// One runs in a process at a time. All functions are for the main thread, which is the one that started it.
class Host {
 public:
  static Result<std::unique_ptr<Host>> start(HostOptions options);
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  ~Host();

  /// Ends background work; false where a job would not end.
  bool stop();

  MainLoop& loop() { return *loop_; }
  const DeviceRoot& root() const { return *root_; }
  const HostOptions& options() const { return options_; }
  uikit::Session& session() { return *session_; }

  /// Changes how the screen looks, in place: pages and what is typed in them stay. Fails for a word that is
  /// none, and changes nothing then.
  Result<void> set_look(const std::string& name, const std::string& value);

  Result<NSBundle> load_bundle(const std::string& path);
  /// Of the bundle loaded last; nil before.
  objc::ClassRef principal_class() const { return principal_class_; }
  /// The Settings application, made at the first call.
  SettingsApp& settings();
  /// From now on the pages follow the files of that bundle.
  Result<void> follow_files(const std::string& folder);
  /// The screen's pixels from frame to frame.
  uikit::FrameBuffer& frame_buffer() { return *frame_buffer_; }
  /// A new page; with no name the principal class of the bundle loaded last.
  Result<NSObject> open_page(const std::string& class_name);

  /// Starts the home screen and what belongs to it. From the folder "stand-ins" beside the host library where
  /// `options` name none.
  Result<void> start_processes(DeviceProcesses::Options options);
  /// Null before.
  const DeviceProcesses* processes() const { return processes_.get(); }

  using Listener = std::function<void(const std::string& name, unsigned long long posts)>;
  /// An empty name is every name.
  Result<int> listen(const std::string& name, Listener listener);
  void stop_listening(int number);

 private:
  Host(HostOptions options, std::shared_ptr<const DeviceRoot> root);

  HostOptions options_;
  std::shared_ptr<const DeviceRoot> root_;
  std::unique_ptr<MainLoop> loop_;
  std::unique_ptr<uikit::Session> session_;
  std::unique_ptr<uikit::FrameBuffer> frame_buffer_;
  std::unique_ptr<SettingsApp> settings_;
  std::unique_ptr<LiveReload> live_reload_;
  std::unique_ptr<DeviceProcesses> processes_;
  objc::ClassRef principal_class_;
  bool stopped_ = false;

  struct Listening;
  std::map<int, std::unique_ptr<Listening>> listenings_;
  int next_listening_ = 1;
};

}  // namespace wispen
