// host/plist/change_set.hpp: changes found by key while a dictionary is walked.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/plist/splice.hpp"

namespace wispen::plist {

/// The changes that count, and which of them the dictionary's entries have met.
class ChangeSet {
 public:
  explicit ChangeSet(const std::vector<Change>& changes) {
    if (changes.size() == 1) {
      effective_.push_back({&changes[0], false});
      return;
    }
    for (const Change& change : changes) {
      const auto [place, fresh] = places_.try_emplace(change.key, effective_.size());
      if (fresh) {
        effective_.push_back({&change, false});
      } else {
        effective_[place->second].change = &change;
      }
    }
  }

  /// Changes that set a key no entry had are left over at the end, in the order in which they were given.
  struct Effective {
    const Change* change = nullptr;
    bool met = false;
  };

  Effective* find(std::string_view key) {
    // One change is the rule: a page sets one value.
    if (effective_.size() == 1) return effective_[0].change->key == key ? effective_.data() : nullptr;
    const auto place = places_.find(key);
    return place == places_.end() ? nullptr : &effective_[place->second];
  }
  /// The change that a key of a document is about.
  template <class SomeContents>
  Effective* find_in(const SomeContents& contents, Node key) {
    const std::optional<std::string_view> in_place = contents.text_in_place(key);
    return in_place ? find(*in_place) : find(std::string_view{contents.text(key)});
  }
  /// The key of the only change there is, or null.
  const std::string* only_key() const {
    return effective_.size() == 1 ? &effective_.front().change->key : nullptr;
  }
  const std::vector<Effective>& effective() const { return effective_; }

 private:
  std::vector<Effective> effective_;
  std::unordered_map<std::string_view, std::size_t> places_;
};

}  // namespace wispen::plist
