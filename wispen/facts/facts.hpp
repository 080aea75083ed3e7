// wispen/facts/facts.hpp: what a bundle says of itself beside its lists: names, domain, own keys.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/core/result.hpp"

namespace wispen {

/// The facts of one bundle. An empty text is a fact that is not known: a bundle without a file of facts
/// works, and whatever needs a fact says so.
struct BundleFacts {
  std::string bundle;          ///< the folder's name without ".bundle", which the executable has too
  std::string name;            ///< for people
  std::string package;         ///< the identifier of its package
  std::string domain;          ///< of its values
  std::string notification;    ///< posted after each write
  std::string companion;       ///< the process that shows what the values do, below "stand-ins/"
  std::string minimum_system;  ///< "15.0"
  std::vector<std::string> languages;
  std::vector<std::string> exports;                           ///< what its code exports, without underscores
  std::vector<std::pair<std::string, std::string>> row_keys;  ///< keys of its rows, and what each holds
  std::vector<std::string> hiding_row_keys;                   ///< keys by which a row may be hidden
  std::vector<std::string> hideable_rows;                     ///< the "key" of rows that hide by other rules
  std::vector<std::string> picture_cells;                     ///< cell classes whose titles may name images

  /// On the device, below the jailbreak's prefix.
  std::string folder() const { return "/Library/PreferenceBundles/" + bundle + ".bundle"; }
  std::string executable() const { return folder() + "/" + bundle; }
  std::string entry_file() const { return "/Library/PreferenceLoader/Preferences/" + bundle + ".plist"; }
  std::string domain_file() const { return "/var/mobile/Library/Preferences/" + domain + ".plist"; }
};

/// Reads "<bundle>.facts.json". An error names the file and what is wrong with it.
Result<BundleFacts> read_facts(const std::string& file);

/// The facts of the bundle in a folder: out of the file beside it, else out of the one of that bundle in
/// `programs`, by its own name or by that of its executable; else its name alone.
Result<BundleFacts> facts_of_bundle(const std::string& folder, const std::string& programs);

/// The one bundle whose facts lie in that folder. An error where there is none, or more than one.
Result<BundleFacts> only_bundle(const std::string& folder);

}  // namespace wispen
