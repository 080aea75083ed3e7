// host/plist/binary_parser.hpp: the check that lets a binary property list be read unchecked.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "host/plist/binary_contents.hpp"

namespace wispen::plist {

/// Checks a binary property list: every object that can be reached from the root lies inside the file, is of
/// a known kind, and no container holds itself. Containers are walked with a list, not by recursion; a
/// container that is named in many places is walked once, and counted as often as it is named.
class BinaryParser {
 public:
  explicit BinaryParser(const files::Buffer& bytes) : bytes_(bytes.data()), size_(bytes.size()) {}

  bool run();
  const BinaryTrailer& trailer() const { return trailer_; }
  /// "byte 1234: ..."
  const std::string& error() const { return error_; }

 private:
  /// What one copy of a container comes to.
  struct Extent {
    std::uint64_t size = 0;    ///< as kMaxExpandedSize counts
    std::uint32_t height = 0;  ///< containers inside one another, itself counted; 0 while it is being walked
  };
  struct Frame {
    Node node = 0;
    BinaryObject object;
    std::uint64_t next = 0;
    Extent extent;
  };

  bool fail_at(std::uint64_t offset, std::string message);
  bool read_trailer();
  bool inspect(Node node, BinaryObject& object);
  bool inspect_counted(BinaryObject& object);
  bool check_leaf(const BinaryObject& object);
  bool enter(Node node, const BinaryObject& object);
  bool walk();
  bool visit(Node node, bool as_key);
  /// The same for the plain leaves that lists are full of; false leaves the object to visit().
  bool visit_simple(Node node, bool as_key, std::uint64_t& size);
  bool account(std::uint64_t size, std::size_t offset);
  void leave();

  const char* bytes_;
  std::size_t size_;
  BinaryTrailer trailer_;
  std::vector<Frame> open_;
  std::unordered_map<Node, Extent> extents_;
  std::uint64_t walked_size_ = 0;
  std::string error_;
};

}  // namespace wispen::plist
