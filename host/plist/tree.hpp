// host/plist/tree.hpp: a property list that is being made.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "host/core/result.hpp"
#include "host/plist/document.hpp"
#include "host/plist/types.hpp"

namespace wispen::plist {

/// Seconds since 2001-01-01T00:00:00Z.
struct Date {
  double seconds = 0;
};
struct Uid {
  std::uint64_t number = 0;
  friend bool operator==(Uid, Uid) = default;
};
using Data = std::vector<std::uint8_t>;

class Tree;
struct Member;
using Array = std::vector<Tree>;
/// In the order in which it is written. Of two members with the same key the last counts.
using Dictionary = std::vector<Member>;

/// A value with all that it holds. Booleans are not numbers here: true and 1 differ.
class Tree {
 public:
  using Variant = std::variant<bool, Integer, double, std::string, Data, Date, Array, Dictionary, Uid>;

  /// An empty dictionary.
  Tree();
  // Implicit on purpose: a tree is written down as its values.
  Tree(bool value);         // NOLINT(google-explicit-constructor)
  Tree(int value);          // NOLINT(google-explicit-constructor)
  Tree(Integer value);      // NOLINT(google-explicit-constructor)
  Tree(double value);       // NOLINT(google-explicit-constructor)
  Tree(const char* value);  // NOLINT(google-explicit-constructor)
  Tree(std::string value);  // NOLINT(google-explicit-constructor)
  Tree(Data value);         // NOLINT(google-explicit-constructor)
  Tree(Date value);         // NOLINT(google-explicit-constructor)
  Tree(Array value);        // NOLINT(google-explicit-constructor)
  Tree(Dictionary value);   // NOLINT(google-explicit-constructor)
  Tree(Uid value);          // NOLINT(google-explicit-constructor)

  /// A copy of a document's value. Of entries with the same key the last one stays, in the first one's place.
  static Tree of(const Value& value);

  Type type() const { return static_cast<Type>(value_.index()); }
  const Variant& variant() const { return value_; }
  /// The value as one of the variant's types, or null.
  template <class T>
  const T* as() const {
    return std::get_if<T>(&value_);
  }
  template <class T>
  T* as() {
    return std::get_if<T>(&value_);
  }

  /// Equal bits: a NaN equals itself, and -0 is not 0.
  friend bool operator==(const Tree& left, const Tree& right);

 private:
  Variant value_;
};

struct Member {
  std::string key;
  Tree value;
  friend bool operator==(const Member&, const Member&);
};

// Only here is a member a complete type, which the variant must know to be made or destroyed.
inline Tree::Tree() : value_(Dictionary{}) {}
inline Tree::Tree(bool value) : value_(value) {}
inline Tree::Tree(int value) : value_(Integer::of(value)) {}
inline Tree::Tree(Integer value) : value_(value) {}
inline Tree::Tree(double value) : value_(value) {}
inline Tree::Tree(const char* value) : value_(std::string(value)) {}
inline Tree::Tree(std::string value) : value_(std::move(value)) {}
inline Tree::Tree(Data value) : value_(std::move(value)) {}
inline Tree::Tree(Date value) : value_(value) {}
inline Tree::Tree(Array value) : value_(std::move(value)) {}
inline Tree::Tree(Dictionary value) : value_(std::move(value)) {}
inline Tree::Tree(Uid value) : value_(value) {}

/// The bytes of a file. An error when the tree is deeper or larger than a reader takes, when a string is not
/// UTF-8, or when the format cannot hold it: XML has no control characters, and no dates outside the years 0
/// to 9999. XML keeps whole seconds of a date and writes a UID as the dictionary that stands for one there.
Result<std::string> encode(const Tree& tree, Format format);

}  // namespace wispen::plist
