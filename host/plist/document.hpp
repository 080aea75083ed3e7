// host/plist/document.hpp: a property list that has been read, and views of its values.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/core/result.hpp"
#include "host/files/buffer.hpp"
#include "host/files/system_calls.hpp"
#include "host/plist/contents.hpp"
#include "host/plist/types.hpp"

namespace wispen::plist {

class Elements;
class Entries;

/// One value of a document: two words, made when asked for, valid as long as a Document shares the contents.
/// A question that does not fit the value's type is answered with zero, false or nothing.
class Value {
 public:
  Value(const Contents& contents, Node node) : contents_(&contents), node_(node) {}

  Type type() const { return contents_->type(node_); }
  bool is(Type type) const { return this->type() == type; }

  bool boolean() const;
  Integer integer() const;
  double real() const;
  /// Seconds since 2001-01-01T00:00:00Z.
  double date() const;
  std::uint64_t uid() const;
  std::vector<std::uint8_t> data() const;
  /// UTF-8. A lone surrogate, which only binary lists can hold, comes as U+FFFD.
  std::string string() const;
  /// The string without a copy, where the file holds it as it is; true of nearly all.
  std::optional<std::string_view> string_view() const;

  /// Elements of an array, entries of a dictionary (those with the same key too). Counts them: keep it.
  std::size_t count() const;
  /// Both in the order of the file.
  Elements elements() const;
  Entries entries() const;
  /// The entry of a dictionary; of several with the same key the last.
  std::optional<Value> find(std::string_view key) const;

  /// The value's place in its document, for as long as that lives: a view can be made again from it.
  Node node() const { return node_; }

 private:
  const Contents* contents_;
  Node node_;
};

struct Entry {
  Value key;
  Value value;
};

/// What Elements and Entries have in common: a forward walk over a container's children.
template <class Item>
class Children {
 public:
  class Iterator {
   public:
    using difference_type = std::ptrdiff_t;
    using value_type = Item;

    Iterator(const Contents& contents, Node container, Position position)
        : contents_(&contents), container_(container), position_(position) {}
    Item operator*() const;
    Iterator& operator++() {
      position_ = contents_->next(container_, position_);
      return *this;
    }
    bool operator==(const Iterator& other) const { return position_ == other.position_; }

   private:
    const Contents* contents_;
    Node container_;
    Position position_;
  };

  Children(const Contents& contents, Node container, bool any)
      : contents_(&contents),
        container_(container),
        first_(any ? contents.first(container) : 0),
        end_(any ? contents.end(container) : 0) {}
  Iterator begin() const { return {*contents_, container_, first_}; }
  Iterator end() const { return {*contents_, container_, end_}; }

 private:
  const Contents* contents_;
  Node container_;
  Position first_;
  Position end_;
};

template <>
inline Value Children<Value>::Iterator::operator*() const {
  return {*contents_, contents_->value_at(container_, position_)};
}
template <>
inline Entry Children<Entry>::Iterator::operator*() const {
  return {Value(*contents_, contents_->key_at(container_, position_)),
          Value(*contents_, contents_->value_at(container_, position_))};
}

class Elements : public Children<Value> {
  using Children::Children;
};
class Entries : public Children<Entry> {
  using Children::Children;
};

/// A whole property list, XML, binary or old-style, checked from its first byte to its last when it was read:
/// what has become a Document can be walked without errors. An old-style list counts as XML from then on.
/// Copies share it; it never changes, and threads may read it together.
class Document {
 public:
  /// The bytes of a file. An error says where in them the trouble is.
  static Result<Document> parse(files::Buffer bytes);
  static Result<Document> parse(std::string_view bytes);
  /// Reads the file; nothing is remembered from an earlier reading.
  static Result<Document> read(const std::string& path,
                               const files::SystemCalls& calls = files::SystemCalls::real());
  /// What a writer starts from: nothing when there is no file or none that can be read as a list, which the
  /// next write replaces. An error where the same file might be read a moment later (no memory, no free
  /// descriptor, a failing disk): writing now would lose what it holds.
  static Result<std::optional<Document>> read_for_writing(
      const std::string& path, const files::SystemCalls& calls = files::SystemCalls::real());

  Value root() const { return {*contents_, contents_->root()}; }
  Value at(Node node) const { return {*contents_, node}; }
  Format format() const { return contents_->format(); }
  /// For the writers of this folder.
  const Contents& contents() const { return *contents_; }

 private:
  explicit Document(std::shared_ptr<const Contents> contents) : contents_(std::move(contents)) {}

  std::shared_ptr<const Contents> contents_;
};

}  // namespace wispen::plist
