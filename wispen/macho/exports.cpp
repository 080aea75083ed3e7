// wispen/macho/exports.cpp

#include "wispen/macho/exports.hpp"

#include <utility>

#include "wispen/macho/bytes.hpp"

namespace wispen::macho {

namespace {

constexpr std::uint64_t kReexport = 0x8;
constexpr std::uint64_t kResolver = 0x10;
constexpr std::size_t kMostNodes = 10000;
constexpr std::size_t kLongestName = 4096;

Error broken(const std::string& what) { return Error{"the table of exports " + what}; }

struct Node {
  std::uint64_t place;
  std::string name;
};

}  // namespace

Result<std::vector<Export>> read_exports(const Image& image) {
  const Range range = image.exports_trie ? *image.exports_trie
                      : image.dyld_info  ? image.dyld_info->exports
                                         : Range{};
  const std::string_view trie = part(image.bytes, range.offset, range.size);
  std::vector<Export> exports;
  if (trie.empty()) return exports;
  std::vector<Node> pending{{0, ""}};
  for (std::size_t visited = 0; !pending.empty(); ++visited) {
    if (visited == kMostNodes) return broken("has no end");
    const Node node = std::move(pending.back());
    pending.pop_back();
    if (node.place >= trie.size()) return broken("leads out of its bytes");
    Cursor cursor(trie.substr(node.place));
    const std::uint64_t size = cursor.uleb();
    const std::size_t body = cursor.position();
    if (size > 0) {
      const std::uint64_t flags = cursor.uleb();
      const std::uint64_t offset = cursor.uleb();
      if ((flags & (kReexport | kResolver)) != 0)
        return broken("passes on another image's symbol " + node.name);
      if (!cursor.ok() || offset >= image.memory_size())
        return broken("places " + node.name + " outside the image");
      exports.push_back({node.name, offset});
    }
    if (!cursor.ok() || !fits(node.place + body, size, trie.size())) return broken("is cut off");
    Cursor children(trie.substr(node.place + body + size));
    const std::uint8_t count = children.byte();
    for (unsigned i = 0; i < count; ++i) {
      const std::string_view edge = children.text();
      const std::uint64_t place = children.uleb();
      if (!children.ok()) return broken("is cut off");
      if (edge.empty() || node.name.size() + edge.size() > kLongestName)
        return broken("has a name that has no end");
      pending.push_back({place, node.name + std::string(edge)});
    }
    if (!children.ok()) return broken("is cut off");
  }
  return exports;
}

}  // namespace wispen::macho
