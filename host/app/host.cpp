// host/app/host.cpp: the running host: one device root, one loop, the bundles loaded on it.

#include "host/app/host.hpp"

#include <poll.h>

#include <utility>

#include "host/app/settings/live_reload.hpp"
#include "host/app/settings/settings_app.hpp"
#include "host/core/current_root.hpp"
#include "host/core/platform_dlfcn.hpp"
#include "host/core/queues.hpp"
#include "host/core/system_sounds.hpp"
#include "host/foundation/bundle.hpp"
#include "host/foundation/foundation_start.hpp"
#include "host/foundation/notification_center.hpp"
#include "host/onboarding/welcome_controller.hpp"
#include "host/preferences/named_method.hpp"
#include "host/preferences/preferences.hpp"

namespace wispen {

namespace {

/// Foundation must know a thread before it sends messages there.
extern "C" {
unsigned char GSRegisterCurrentThread();
void GSUnregisterCurrentThread();
}

void run_in_pool(void (*body)(void*), void* context) {
  const objc::AutoreleasePool pool;
  body(context);
}

}  // namespace

struct Host::Listening {
  NotificationListener source;
  WatchId watch = 0;
};

Result<std::unique_ptr<Host>> Host::start(HostOptions options) {
  if (options.root.empty()) return Error{"the host needs a folder for its device root"};
  auto root = DeviceRoot::open(options.root, options.layout);
  if (!root) return root.error();
  if (auto started = start_foundation(); !started) return started.error();
  uikit::define_uikit();
  preferences::define_preferences();
  preferences::set_lists_as_data(options.lists_as_data);
  onboarding::define_welcome_controller();

  if (!options.library_search_path.empty()) {
    set_library_search_path(options.library_search_path);
  } else {
    set_library_search_path({host_library_folder()});
  }
  auto shared_root = std::make_shared<const DeviceRoot>(*std::move(root));
  set_current_root(shared_root);
  return std::unique_ptr<Host>(new Host(std::move(options), std::move(shared_root)));
}

Host::Host(HostOptions options, std::shared_ptr<const DeviceRoot> root)
    : options_(std::move(options)),
      root_(std::move(root)),
      loop_(std::make_unique<MainLoop>(options_.clock)) {
  loop_->set_job_scope(run_in_pool);
  Queues::shared().background().set_hooks({.thread_started = [] { GSRegisterCurrentThread(); },
                                           .thread_ending = [] { GSUnregisterCurrentThread(); },
                                           .job_scope = run_in_pool});
  Queues::shared().attach(*loop_);
  session_ = std::make_unique<uikit::Session>(*loop_, options_.traits);
  frame_buffer_ = std::make_unique<uikit::FrameBuffer>(*session_);
  clear_posted_notifications();
  clear_played_sounds();
}

Host::~Host() { stop(); }

bool Host::stop() {
  if (std::exchange(stopped_, true)) return true;
  processes_.reset();
  while (!listenings_.empty()) stop_listening(listenings_.begin()->first);
  {
    const objc::AutoreleasePool pool;
    live_reload_.reset();
    settings_.reset();
    frame_buffer_.reset();
  }
  const bool ended = Queues::shared().stop();
  session_.reset();
  set_current_root(nullptr);
  return ended;
}

Result<void> Host::set_trait(const std::string& name, const std::string& value) {
  uikit::Traits changed = traits();
  if (auto set = uikit::set_trait(changed, name, value); !set) return set;
  session_->set_traits(std::move(changed));
  // Its texts are translated where its lists are read.
  if (settings_ != nullptr && name == "language") settings_->reload();
  return {};
}

SettingsApp& Host::settings() {
  if (settings_ == nullptr) settings_ = std::make_unique<SettingsApp>(*this);
  return *settings_;
}

Result<void> Host::follow_files(const std::string& folder) {
  auto live = LiveReload::start(*loop_, settings(), folder);
  if (!live) return live.error();
  live_reload_ = *std::move(live);
  return {};
}

Result<void> Host::start_processes(DeviceProcesses::Options options) {
  if (processes_) return Error{"the device's processes are running already"};
  if (options.programs.empty()) options.programs = host_library_folder() + "/stand-ins";
  auto started = DeviceProcesses::start(*loop_, *root_, std::move(options));
  if (!started) return started.error();
  processes_ = *std::move(started);
  return {};
}

Result<NSBundle> Host::load_bundle(const std::string& path) {
  auto bundle = bundle_at(path);
  if (!bundle) return bundle;
  const auto principal = load_bundle_code(*bundle);
  if (!principal) return principal.error();
  principal_class_ = *principal;
  return bundle;
}

Result<NSObject> Host::open_page(const std::string& class_name) {
  const objc::ClassRef cls =
      class_name.empty() ? principal_class_ : objc::ClassRef::named(class_name.c_str());
  if (!cls && class_name.empty()) return Error{"no bundle is loaded"};
  if (!cls) return Error{"there is no class " + class_name};
  if (!cls.is_subclass_of(objc::class_named<"PSListController">())) {
    return Error{std::string("the class ") + cls.name() + " is not a page"};
  }
  NSObject page = objc::send<"new", NSObject>(cls);
  if (!page) return Error{std::string("a page of class ") + cls.name() + " cannot be made"};
  return page;
}

Result<int> Host::listen(const std::string& name, Listener listener) {
  auto source =
      NotificationListener::open(root_->notifications_folder(),
                                 name.empty() ? std::vector<std::string>() : std::vector<std::string>{name});
  if (!source) return source.error();
  const int number = next_listening_++;
  auto listening = std::make_unique<Listening>(Listening{*std::move(source), 0});
  auto* const kept = listening.get();
  listening->watch = loop_->watch(kept->source.fd(), POLLIN, [kept, listener = std::move(listener)](short) {
    for (const Notice& notice : kept->source.read()) listener(notice.name, notice.posts);
  });
  listenings_.emplace(number, std::move(listening));
  return number;
}

void Host::stop_listening(int number) {
  const auto found = listenings_.find(number);
  if (found == listenings_.end()) return;
  loop_->unwatch(found->second->watch);
  listenings_.erase(found);
}

}  // namespace wispen
