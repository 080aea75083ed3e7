// wispen/lint/specifier_lint.hpp: what is wrong with a bundle's specifier lists.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/preferences/method_roles.hpp"

namespace wispen::lint {

enum class Severity {
  Warning,  ///< works, but surely was not meant so
  Error,    ///< does not work
};

struct Finding {
  Severity severity;
  std::string file;                 // below the bundle: "Root.plist"
  std::optional<std::size_t> item;  // its place among the list's items, from 0
  std::string row;                  // the row's id, key or label; "" where it has none
  std::string message;
};

/// What can only be asked at run time.
class Classes {
 public:
  Classes() = default;
  Classes(const Classes&) = delete;
  Classes& operator=(const Classes&) = delete;
  virtual ~Classes() = default;

  virtual bool exists(const std::string& name) const = 0;
  virtual bool is_page(const std::string& name) const = 0;
  virtual bool answers(const std::string& name, const std::string& selector) const = 0;
  /// Why the class's method of that name cannot be what a list names it for; nothing where it can.
  virtual std::optional<std::string> misfit(const std::string& name, const std::string& selector,
                                            preferences::MethodRole role) const = 0;
  /// The class of the page that shows a list, or "" where none is known.
  virtual std::string page_of_list(const std::string& list) const = 0;
};

/// Checks every list of the bundle folder (each .plist in it that has "items"): that it can be read, its
/// keys, cell types and the types of its values, the classes, selectors, images and translations that it
/// names, ids that stand twice, and a first row that could be hidden. Findings are in the order of files and
/// rows.
std::vector<Finding> check_bundle(const std::string& folder, const Classes& classes);

}  // namespace wispen::lint
