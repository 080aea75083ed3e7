// host/plist/contents.hpp: what a document knows, whichever format it was read from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/plist/types.hpp"

namespace wispen::plist {

/// A value's place in a document's index.
using Node = std::uint32_t;

/// A place between a container's children; what it counts is the format's own affair.
using Position = std::uint32_t;

/// The index of one checked file. Every question about it can be answered without failing; one that does not
/// fit the value's type must not be asked.
class Contents {
 public:
  Contents() = default;
  Contents(const Contents&) = delete;
  Contents& operator=(const Contents&) = delete;
  virtual ~Contents() = default;

  virtual Format format() const = 0;
  virtual Node root() const = 0;
  virtual Type type(Node node) const = 0;

  virtual bool boolean(Node node) const = 0;
  virtual Integer integer(Node node) const = 0;
  /// A real number, or a date as seconds since 2001-01-01T00:00:00Z.
  virtual double number(Node node) const = 0;
  virtual std::uint64_t uid(Node node) const = 0;
  virtual std::vector<std::uint8_t> data(Node node) const = 0;
  virtual std::string text(Node node) const = 0;
  /// The string as it stands in the file, where it stands there as UTF-8.
  virtual std::optional<std::string_view> text_in_place(Node node) const = 0;

  virtual std::size_t count(Node container) const = 0;
  virtual Position first(Node container) const = 0;
  virtual Position end(Node container) const = 0;
  virtual Position next(Node container, Position position) const = 0;
  virtual Node key_at(Node dictionary, Position position) const = 0;
  virtual Node value_at(Node container, Position position) const = 0;
  /// The value of the last entry with this key.
  virtual std::optional<Node> find(Node dictionary, std::string_view key) const = 0;
};

}  // namespace wispen::plist
