// host/app/window/trait_switches.cpp: the traits that a window's toolbar and keys go through.

#include "host/app/window/trait_switches.hpp"

#include <algorithm>

namespace wispen {

namespace {

constexpr int kFirstKey = 2;
// A window shows one of two directions, and one language.
constexpr std::string_view kDirection = "direction";
constexpr std::string_view kLanguage = "language";

}  // namespace

std::vector<TraitSwitch> trait_switches(const std::vector<std::string>& languages) {
  std::vector<TraitSwitch> all;
  int key = kFirstKey;
  for (const uikit::TraitField& trait : uikit::trait_fields()) {
    TraitSwitch one{&trait, key++, trait.name == kLanguage ? languages : trait.values()};
    if (trait.name == kDirection) std::erase(one.values, "natural");
    if (one.values.size() > 1) all.push_back(std::move(one));
  }
  return all;
}

std::string shown_value(const Host& host, const TraitSwitch& one) {
  if (one.trait->name == kLanguage) return host.traits().languages.front();
  if (one.trait->name == kDirection) return host.traits().is_right_to_left() ? "rtl" : "ltr";
  return one.trait->get(host.traits());
}

Result<void> step(Host& host, const TraitSwitch& one, bool forward) {
  const auto count = one.values.size();
  const auto here = std::ranges::find(one.values, shown_value(host, one));
  const auto index = static_cast<std::size_t>(here - one.values.begin());
  // A value that is none of them counts as the last: the next is the first.
  const std::size_t next = index == count ? 0 : (index + (forward ? 1 : count - 1)) % count;
  return host.set_trait(std::string(one.trait->name), one.values[next]);
}

}  // namespace wispen
