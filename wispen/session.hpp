// wispen/session.hpp: a host with the bundle loaded, for the length of one command.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "platform/Preferences.hpp"
#include "wispen/facts/facts.hpp"

namespace wispen::program {

/// What every command takes.
struct CommonOptions {
  std::string root;    // empty: the user's own
  std::string layout;  // empty: as the root was made
  std::string bundle;  // empty: the one beside the program
  std::string languages = "en";
  bool json = false;
  bool lists_as_data = false;  // nothing that lists name is performed
};

/// The traits that a screen is to have, by name; those that are empty or missing are the host's defaults.
using Traits = std::map<std::string, std::string>;

/// A page of the bundle, open.
struct Page {
  PSListController controller;
  std::string cls;
  std::string list;   // the name of its specifier list
  std::string title;  // as the row that opens it is labelled

  /// Every row of the list, hidden ones too, in the list's order.
  NSArray all_specifiers() const;
  bool shows(const PSSpecifier& specifier) const;
};

/// The class of the page that a row leads to; "" for none.
std::string page_of_row(const PSSpecifier& row);

/// The folder of this program.
std::string program_folder();
/// What the bundle that the options name says of itself; without one, the bundle beside the program.
Result<BundleFacts> bundle_facts(const CommonOptions& options);
/// Its folder. An error where none is named and none, or more than one, is beside the program.
Result<std::string> bundle_folder(const CommonOptions& options);
/// The options with the bundle as it is installed in the device root, where its package is installed first if
/// it is not there or was built anew. Whoever names a bundle is writing it, and gets that one.
Result<CommonOptions> with_installed_bundle(CommonOptions options);

/// Starts the host; ends it when it goes. One at a time.
class Session {
 public:
  /// Prints why and gives nothing where the host cannot start (or the bundle cannot be loaded).
  static std::optional<Session> start(const CommonOptions& options);
  static std::optional<Session> start_with_bundle(const CommonOptions& options);
  /// With a screen of these traits, the bundle offered on the list of Settings, and a clock that is driven
  /// unless it is to be the wall's.
  static std::optional<Session> start_with_screen(const CommonOptions& options, const Traits& traits,
                                                  bool wall_clock = false);
  Session(Session&& other) noexcept
      : bundle_(std::move(other.bundle_)),
        running_(std::exchange(other.running_, false)),
        wall_clock_(other.wall_clock_) {}
  Session& operator=(Session&&) = delete;
  ~Session();

  bool on_wall_clock() const { return wall_clock_; }
  /// The folder of the bundle, where one was loaded or offered.
  const std::string& bundle() const { return bundle_; }

  /// The principal page and the pages that rows lead to, each once, in the order in which they are reached.
  std::vector<Page> pages() const;
  /// The page of a class, or of a specifier list, or "root"; prints the names that there are where it is
  /// neither.
  std::optional<Page> page(const std::string& name) const;

 private:
  Session() = default;
  static std::optional<Session> start_on_clock(const CommonOptions& options, bool wall_clock);
  std::string bundle_;
  bool running_ = true;
  bool wall_clock_ = true;
};

}  // namespace wispen::program
