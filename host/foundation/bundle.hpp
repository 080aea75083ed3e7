// host/foundation/bundle.hpp: bundles: a folder with an Info.plist, code and localised resources.
#pragma once

#include <string>
#include <vector>

#include "host/core/result.hpp"
#include "platform/Foundation.hpp"

namespace wispen {

/// Puts the host's bundles behind NSBundle's bundleWithPath: and bundleForClass:. Foundation's own hand
/// back another bundle of the same identifier, know no class that was made at run time, and keep a strings
/// table for the life of the process.
void install_bundles();

/// The bundle of a folder: one object a path, for the life of the process. An error where the folder has no
/// readable Info.plist.
Result<NSBundle> bundle_at(const std::string& folder);

/// Loads the bundle's code, once, and gives its principal class. Code that is loaded already (a copy of the
/// bundle in another folder) is not loaded again, since a class can be registered once only: its classes
/// then belong to the bundle that was loaded last, data and all.
Result<objc::ClassRef> load_bundle_code(const NSBundle& bundle);

/// The languages that the user prefers, most wanted first ("de", "en-GB"). Every look-up asks anew.
std::vector<std::string> preferred_languages();
void set_preferred_languages(std::vector<std::string> languages);

}  // namespace wispen
