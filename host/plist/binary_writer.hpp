// host/plist/binary_writer.hpp: trees as binary property lists.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/plist/binary_contents.hpp"
#include "host/plist/tree.hpp"

namespace wispen::plist {

/// One object that is to be written: the bytes of a leaf, or the references of a container.
struct NewObject {
  std::string bytes;  ///< a leaf's, complete; empty for a container
  Marker marker = Marker::Singleton;
  std::vector<std::uint32_t> references;  ///< of a dictionary: keys, then values

  bool is_container() const { return bytes.empty(); }
};

/// Objects made from trees, each string and number once.
class NewObjects {
 public:
  /// An index into all(); a container stands before what it holds.
  std::uint32_t add(const Tree& tree);
  std::uint32_t add_string(std::string_view text);
  /// A container whose references the caller has made up.
  std::uint32_t add_container(Marker marker, std::vector<std::uint32_t> references);

  const std::vector<NewObject>& all() const { return objects_; }

 private:
  std::uint32_t add_leaf(std::string bytes);

  std::vector<NewObject> objects_;
  std::unordered_map<std::string, std::uint32_t> leaves_;
};

/// Appends an object's first byte and, where it does not fit in there, its count.
void append_object_header(std::string& bytes, Marker marker, std::uint64_t count);

/// Appends the offset table and the trailer to a header and its objects.
void finish_binary(std::string& bytes, const std::vector<std::uint32_t>& offsets, std::uint8_t reference_size,
                   std::uint32_t root);

/// A whole file. The tree is one that can be written.
std::string encode_binary(const Tree& tree);

}  // namespace wispen::plist
