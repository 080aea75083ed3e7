// host/app/settings/live_reload.cpp: pages that follow the files they are made of.

#include "host/app/settings/live_reload.hpp"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "host/app/host.hpp"
#include "host/plist/document.hpp"
#include "host/strings/table.hpp"

namespace wispen {

namespace fs = std::filesystem;

namespace {

// An editor writes, renames and sets times; a build writes many files. All of that is one change.
constexpr auto kCalm = std::chrono::milliseconds(60);
constexpr std::uint32_t kSaved = IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE | IN_CREATE;

std::string fault_of(const fs::path& file) {
  if (file.extension() == ".plist") {
    const auto list = plist::Document::read(file.string());
    return list ? std::string() : list.error().message;
  }
  if (file.extension() == ".strings") {
    const strings::Table table = strings::Table::read(file.string());
    return table.error() ? table.error()->message : std::string();
  }
  return {};
}

}  // namespace

std::string first_fault(const std::string& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, error)) {
    files.push_back(entry.path());
  }
  std::ranges::sort(files);
  for (const fs::path& file : files) {
    std::string fault = fault_of(file);
    if (fault.empty()) continue;
    const std::string name = fs::relative(file, folder, error).string();
    // The reader names the file by its whole path; a person knows the folder.
    if (const auto at = fault.find(file.string()); at != std::string::npos) {
      fault.replace(at, file.string().size(), name);
      return fault;
    }
    return name + ": " + fault;
  }
  return {};
}

LiveReload::LiveReload(MainLoop& loop, SettingsApp& app, std::string folder, int descriptor)
    : loop_(loop), app_(app), folder_(std::move(folder)), descriptor_(descriptor) {}

Result<std::unique_ptr<LiveReload>> LiveReload::start(MainLoop& loop, SettingsApp& app, std::string folder) {
  const int descriptor = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (descriptor < 0) return Error{std::string("files cannot be watched: ") + std::strerror(errno)};
  std::unique_ptr<LiveReload> live(new LiveReload(loop, app, std::move(folder), descriptor));
  if (auto watched = live->watch_folder(live->folder_); !watched) return watched.error();
  std::error_code error;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(live->folder_, error)) {
    if (entry.is_directory(error)) (void)live->watch_folder(entry.path().string());
  }
  live->watch_ = loop.watch(descriptor, POLLIN, [raw = live.get()](short) { raw->read_events(); });
  return live;
}

LiveReload::~LiveReload() {
  if (watch_ != 0) loop_.unwatch(watch_);
  if (due_) loop_.cancel(timer_);
  hide_fault();
  ::close(descriptor_);
}

Result<void> LiveReload::watch_folder(const std::string& folder) {
  if (::inotify_add_watch(descriptor_, folder.c_str(), kSaved | IN_ONLYDIR) < 0) {
    return Error{folder + " cannot be watched: " + std::strerror(errno)};
  }
  return {};
}

void LiveReload::read_events() {
  alignas(inotify_event) std::array<char, 4096> buffer;
  bool relevant = false;
  while (true) {
    const ssize_t size = ::read(descriptor_, buffer.data(), buffer.size());
    if (size <= 0) break;
    for (ssize_t at = 0; at < size;) {
      const auto* const event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
      const std::string name = event->len > 0 ? event->name : "";
      const bool created = (event->mask & IN_CREATE) != 0;
      if (created && (event->mask & IN_ISDIR) != 0) (void)watch_folder(folder_ + "/" + name);
      // What is created is told of again when it is written.
      const std::string kind = fs::path(name).extension();
      relevant = relevant || (!created && (kind == ".plist" || kind == ".strings" || kind == ".png"));
    }
  }
  if (!relevant || due_) return;
  due_ = true;
  timer_ = loop_.add_timer(kCalm, [this] { reload(); });
}

void LiveReload::reload() {
  due_ = false;
  const std::string fault = first_fault(folder_);
  if (!fault.empty()) return show_fault(fault);
  hide_fault();
  app_.reload_from(folder_);
}

void LiveReload::show_fault(const std::string& sentence) {
  constexpr double kMargin = 16;
  constexpr double kPadding = 14;
  constexpr double kAboveAll = 2000;
  if (!note_) {
    note_ = objc::make<UIWindow>();
    note_.setWindowLevel(kAboveAll);
    note_.setUserInteractionEnabled(false);
    const UIView box = objc::make<UIView>();
    box.setBackgroundColor(UIColor::systemRedColor());
    box.layer().setCornerRadius(12);
    note_.addSubview(box);
    text_ = objc::make<UILabel>();
    text_.setNumberOfLines(0);
    text_.setTextColor(UIColor::whiteColor());
    box.addSubview(text_);
  }
  text_.setFont(UIFont::preferredFontForTextStyle(UIFontTextStyleFootnote));
  text_.setText(sentence.c_str());
  const Rect screen = note_.bounds();
  const EdgeInsets safe = note_.safeAreaInsets();
  const double width = screen.width() - 2 * (kMargin + kPadding);
  const double height = text_.sizeThatFits(Size{width, 0}).height;
  text_.setFrame(Rect{{kPadding, kPadding}, {width, height}});
  const double box_height = height + 2 * kPadding;
  const double bottom = screen.height() - std::max(safe.bottom, kMargin);
  text_.superview().setFrame(
      Rect{{kMargin, bottom - box_height}, {screen.width() - 2 * kMargin, box_height}});
  note_.setHidden(false);
}

void LiveReload::hide_fault() {
  if (note_) note_.setHidden(true);
}

}  // namespace wispen
