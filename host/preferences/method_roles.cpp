// host/preferences/method_roles.cpp: which methods a specifier list may name for what.

#include "host/preferences/method_roles.hpp"

#include <algorithm>
#include <array>

namespace wispen::preferences {

namespace {

using namespace std::string_view_literals;

constexpr std::array kCountsReferences{
    "retain"sv,   "release"sv,       "autorelease"sv,         "retainCount"sv,        "dealloc"sv,
    "finalize"sv, ".cxx_destruct"sv, "allowsWeakReference"sv, "retainWeakReference"sv};
// Their results belong to whoever asks, and an initialiser consumes its receiver.
constexpr std::array kOwnedFamilies{"init"sv, "new"sv, "copy"sv, "mutableCopy"sv, "alloc"sv};

bool is_of_family(std::string_view name, std::string_view family) {
  name.remove_prefix(std::min(name.find_first_not_of('_'), name.size()));
  if (!name.starts_with(family)) return false;
  return name.size() == family.size() || name[family.size()] < 'a' || name[family.size()] > 'z';
}

bool counts_references(std::string_view name, char result) {
  if (std::ranges::find(kCountsReferences, name) != kCountsReferences.end()) return true;
  return result == '@' &&
         std::ranges::any_of(kOwnedFamilies, [&](auto family) { return is_of_family(name, family); });
}

const char* missing_shape(const objc::MethodShape& shape, MethodRole role) {
  const bool gives_object = shape.result == '@';
  const bool takes = shape.takes_only_objects;
  switch (role) {
    case MethodRole::Getter:
    case MethodRole::DataSource:
      if (!gives_object) return "does not return an object";
      return takes && shape.arguments == 1 ? nullptr : "does not take the row as its one argument";
    case MethodRole::Setter:
      return takes && shape.arguments == 2 ? nullptr : "does not take a value and the row";
    case MethodRole::Action:
      return takes && shape.arguments <= 1 ? nullptr : "takes more than the row";
  }
  return nullptr;
}

}  // namespace

std::optional<std::string> why_not_performed(std::string_view name, const objc::MethodShape& shape,
                                             MethodRole role) {
  const std::string method = "the method " + std::string(name);
  if (counts_references(name, shape.result)) return method + " is for counting references";
  // A structure comes back through a hidden argument.
  if (shape.result == '{' || shape.result == '(') return method + " returns a structure";
  const char* const missing = missing_shape(shape, role);
  if (missing == nullptr) return std::nullopt;
  return method + " " + missing;
}

}  // namespace wispen::preferences
