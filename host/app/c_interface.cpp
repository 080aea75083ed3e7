// host/app/c_interface.cpp: the C interface over the host.

#include "host/app/c_interface.hpp"

#include <atomic>
#include <chrono>
#include <cmath>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "host/app/host.hpp"
#include "host/core/system_sounds.hpp"
#include "host/core/text_list.hpp"
#include "host/foundation/bundle.hpp"
#include "host/foundation/notification_center.hpp"
#include "host/foundation/problems.hpp"
#include "host/preferences/specifier.hpp"
#include "host/wispen_host.h"

namespace wispen::c_interface {

namespace {

// Of each thread its own: a call from a thread that may not call is refused there, and disturbs nobody.
thread_local std::string last_error;
thread_local std::string answer;
bool a_listener_raised = false;

/// Of no thread while no host runs.
std::atomic<std::thread::id>& owner() {
  static std::atomic<std::thread::id> id;
  return id;
}

}  // namespace

std::unique_ptr<Host>& running_host() {
  static std::unique_ptr<Host> host;
  return host;
}

int done() {
  last_error.clear();
  return 1;
}

int failed(std::string why) {
  last_error = std::move(why);
  return 0;
}

int done_or_failed(const Result<void>& result) { return result ? done() : failed(result.error().message); }

bool is_running() {
  const std::thread::id thread = owner().load();
  if (thread == std::this_thread::get_id()) return true;
  failed(thread == std::thread::id() ? "no host is running"
                                     : "only the thread that started the host may call it");
  return false;
}

void listener_raised() { a_listener_raised = true; }

std::string take_listener_exception() {
  return std::exchange(a_listener_raised, false) ? "a listener raised an exception" : "";
}

const char* give(std::string text) {
  answer = std::move(text);
  return answer.c_str();
}

}  // namespace wispen::c_interface

namespace {

using wispen::Host;
using wispen::Result;
using wispen::c_interface::done;
using wispen::c_interface::done_or_failed;
using wispen::c_interface::failed;
using wispen::c_interface::give;
using wispen::c_interface::guarded;
using wispen::c_interface::is_running;

std::unique_ptr<Host>& host = wispen::c_interface::running_host();
std::deque<std::string> problems;

/// Whether a host runs and this is not its thread; the error is said then.
bool is_elsewhere() { return wispen_host_running() != 0 && !is_running(); }

struct Given {
  objc::Weak<NSObject> object;
  int references = 0;
};

/// The references that this library gave away and has not got back. A caller may also release by message;
/// what died that way is forgotten, since another object may have its address by now.
std::map<wispen_host_object, Given>& given_objects() {
  static auto* const objects = new std::map<wispen_host_object, Given>();
  std::erase_if(*objects, [](const auto& entry) { return !entry.second.object.lock(); });
  return *objects;
}

/// A time from outside: a finite number of seconds that is not negative and fits the clock.
Result<wispen::Nanoseconds> duration(double seconds) {
  constexpr double kLongest = 9e9;  // some 285 years
  if (!(seconds >= 0 && seconds <= kLongest)) return wispen::Error{"a duration is between 0 and 9e9 seconds"};
  return wispen::Nanoseconds(std::llround(seconds * 1e9));
}

Result<wispen::HostOptions> options_from(const wispen_host_options& given) {
  wispen::HostOptions options;
  if (given.root == nullptr || *given.root == '\0') return wispen::Error{"the option root is missing"};
  options.root = given.root;
  if (given.layout != nullptr) {
    options.layout = wispen::layout_from_name(given.layout);
    if (!options.layout) {
      return wispen::Error{std::string("there is no layout \"") + given.layout +
                           "\": rootless and rootful are known"};
    }
  }
  const std::pair<const char*, const char*> traits[] = {
      {"language", given.languages}, {"appearance", given.appearance}, {"device", given.device}};
  for (const auto& [name, value] : traits) {
    if (value == nullptr) continue;
    if (auto set = wispen::uikit::set_trait(options.traits, name, value); !set) return set.error();
  }
  if (given.rpath != nullptr) options.library_search_path = wispen::split_list(given.rpath, ':');
  options.lists_as_data = given.lists_as_data != 0;
  options.own_windows = given.own_windows != 0;
  options.clock = given.wall_clock != 0 ? wispen::ClockKind::Wall : wispen::ClockKind::Driven;
  return options;
}

}  // namespace

extern "C" {

[[gnu::visibility("default")]] int wispen_host_start(const wispen_host_options* options) {
  if (options == nullptr || options->size < sizeof(wispen_host_options)) {
    return failed("the options' size is not that of this version");
  }
  std::thread::id nobody;
  if (!wispen::c_interface::owner().compare_exchange_strong(nobody, std::this_thread::get_id())) {
    return failed("a host is running already");
  }
  const int started = guarded(0, [&] {
    auto usable = options_from(*options);
    if (!usable) return failed(usable.error().message);
    auto running = Host::start(*std::move(usable));
    if (!running) return failed(running.error().message);
    host = *std::move(running);
    return done();
  });
  if (started == 0) wispen::c_interface::owner() = std::thread::id();
  wispen::take_problems();
  problems.clear();
  return started;
}

[[gnu::visibility("default")]] int wispen_host_stop(void) {
  if (wispen_host_running() == 0) return done();
  if (!is_running()) return 0;
  const int stopped =
      guarded(0, [] { return host->stop() ? done() : failed("a background job would not end"); });
  host.reset();
  given_objects().clear();
  wispen::c_interface::owner() = std::thread::id();
  return stopped;
}

[[gnu::visibility("default")]] int wispen_host_running(void) {
  return wispen::c_interface::owner().load() != std::thread::id() ? 1 : 0;
}

[[gnu::visibility("default")]] const char* wispen_host_last_error(void) {
  return wispen::c_interface::last_error.c_str();
}

[[gnu::visibility("default")]] const char* wispen_host_next_problem(void) {
  if (is_elsewhere()) return nullptr;
  for (std::string& sentence : wispen::take_problems()) problems.push_back(std::move(sentence));
  if (problems.empty()) return nullptr;
  std::string sentence = std::move(problems.front());
  problems.pop_front();
  return give(std::move(sentence));
}

[[gnu::visibility("default")]] const char* wispen_host_root(void) {
  return is_running() ? host->root().path().c_str() : nullptr;
}

[[gnu::visibility("default")]] const char* wispen_host_path(const char* device_path) {
  if (!is_running()) return nullptr;
  auto path = host->root().resolve(device_path != nullptr ? device_path : "");
  if (!path) {
    failed(path.error().message);
    return nullptr;
  }
  return give(*std::move(path));
}

[[gnu::visibility("default")]] const char* wispen_host_default_root(void) {
  auto folder = wispen::DeviceRoot::default_folder();
  return give(folder ? *std::move(folder) : std::string());
}

[[gnu::visibility("default")]] const char* wispen_host_jailbreak_path(const char* path) {
  if (!is_running()) return nullptr;
  const std::string below_jailbreak =
      std::string(host->root().device_jbroot()) + (path != nullptr ? path : "");
  return wispen_host_path(below_jailbreak.c_str());
}

[[gnu::visibility("default")]] wispen_host_object wispen_host_load_bundle(const char* path) {
  if (!is_running()) return nullptr;
  const objc::AutoreleasePool pool;
  return guarded<wispen_host_object>(nullptr, [&]() -> wispen_host_object {
    const auto bundle = host->load_bundle(path != nullptr ? path : "");
    if (!bundle) {
      failed(bundle.error().message);
      return nullptr;
    }
    done();
    return reinterpret_cast<wispen_host_object>(objc::borrow(*bundle));  // lives as long as the process
  });
}

[[gnu::visibility("default")]] wispen_host_object wispen_host_open_page(const char* class_name) {
  if (!is_running()) return nullptr;
  const objc::AutoreleasePool pool;
  return guarded<wispen_host_object>(nullptr, [&]() -> wispen_host_object {
    auto page = host->open_page(class_name != nullptr ? class_name : "");
    if (!page) {
      failed(page.error().message);
      return nullptr;
    }
    done();
    Given& given = given_objects()[reinterpret_cast<wispen_host_object>(objc::borrow(*page))];
    given.object = *page;
    ++given.references;
    return reinterpret_cast<wispen_host_object>(objc::leak(*std::move(page)));
  });
}

[[gnu::visibility("default")]] void wispen_host_release(wispen_host_object object) {
  if (object == nullptr || !is_running()) return;
  const auto found = given_objects().find(object);
  if (found == given_objects().end()) {
    failed("this reference was not given out by this library, or was given back already");
    return;
  }
  if (--found->second.references == 0) given_objects().erase(found);
  const objc::AutoreleasePool pool;
  guarded(0, [&] {
    objc::adopt<NSObject>(reinterpret_cast<objc::abi::id>(object));
    return done();
  });
}

[[gnu::visibility("default")]] const char* wispen_host_page_of_row(wispen_host_object row) {
  if (!is_running()) return nullptr;
  const objc::AutoreleasePool pool;
  return guarded<const char*>(nullptr, [&]() -> const char* {
    const auto specifier =
        objc::cast_or_nil<PSSpecifier>(objc::retain<NSObject>(reinterpret_cast<objc::abi::id>(row)));
    if (!specifier) {
      failed("the object is not a row");
      return nullptr;
    }
    const objc::ClassRef page = wispen::preferences::page_of(specifier);
    done();
    return give(page ? page.name() : "");
  });
}

[[gnu::visibility("default")]] int wispen_host_set_languages(const char* languages) {
  if (is_elsewhere()) return 0;
  const std::string list = languages != nullptr ? languages : "";
  const objc::AutoreleasePool pool;
  return guarded(0, [&] {
    if (host != nullptr) return done_or_failed(host->set_trait("language", list));
    wispen::uikit::Traits traits;
    if (const auto set = wispen::uikit::set_trait(traits, "language", list); !set) return done_or_failed(set);
    wispen::set_preferred_languages(traits.languages);
    return done();
  });
}

[[gnu::visibility("default")]] int wispen_host_run_until_idle(void) {
  if (!is_running()) return 0;
  return guarded(0, [] { return done_or_failed(host->loop().run_until_idle()); });
}

[[gnu::visibility("default")]] int wispen_host_run_for(double seconds) {
  if (!is_running()) return 0;
  const auto time = duration(seconds);
  if (!time) return failed(time.error().message);
  return guarded(0, [&] { return done_or_failed(host->loop().run_for(*time)); });
}

[[gnu::visibility("default")]] int wispen_host_advance(double seconds) {
  if (!is_running()) return 0;
  const auto time = duration(seconds);
  if (!time) return failed(time.error().message);
  return guarded(0, [&] { return done_or_failed(host->loop().advance(*time)); });
}

[[gnu::visibility("default")]] double wispen_host_now(void) {
  return is_running() ? static_cast<double>(host->loop().clock().now().count()) / 1e9 : 0;
}

[[gnu::visibility("default")]] size_t wispen_host_posted_count(void) {
  if (is_elsewhere()) return 0;
  return wispen::posted_notifications().size();
}

[[gnu::visibility("default")]] const char* wispen_host_posted_name(size_t index) {
  if (is_elsewhere()) return nullptr;
  const auto& names = wispen::posted_notifications();
  return index < names.size() ? names[index]->c_str() : nullptr;
}

[[gnu::visibility("default")]] size_t wispen_host_sound_count(void) {
  return is_elsewhere() ? 0 : wispen::played_sounds().size();
}

[[gnu::visibility("default")]] unsigned int wispen_host_sound(size_t index) {
  if (is_elsewhere()) return 0;
  const auto& sounds = wispen::played_sounds();
  return index < sounds.size() ? sounds[index] : 0;
}

[[gnu::visibility("default")]] int wispen_host_listen(const char* name, wispen_host_listener listener,
                                                      void* context) {
  if (!is_running()) return 0;
  if (listener == nullptr) return failed("a listening needs a function to call");
  const auto number = host->listen(name != nullptr ? name : "",
                                   [listener, context](const std::string& posted, unsigned long long posts) {
                                     // Whoever else listens, and the other names, get theirs all the same.
                                     try {
                                       listener(posted.c_str(), posts, context);
                                     } catch (...) {
                                       wispen::c_interface::listener_raised();
                                     }
                                   });
  if (!number) return failed(number.error().message);
  done();
  return *number;
}

[[gnu::visibility("default")]] void wispen_host_stop_listening(int listening) {
  if (is_running()) host->stop_listening(listening);
}

}  // extern "C"
