// wispen/macho/fixups.cpp: what both forms share.

#include "wispen/macho/fixups.hpp"

#include <utility>

#include "wispen/macho/bytes.hpp"
#include "wispen/macho/format.hpp"

namespace wispen::macho {

Result<Fixups> read_fixups(const Image& image) {
  if (image.dyld_info && image.chained_fixups) return Error{"the image has fixups of both forms"};
  Fixups fixups;
  if (image.dyld_info) {
    if (auto read = read_opcodes(image, fixups); !read) return read.error();
  }
  if (image.chained_fixups) {
    if (auto read = read_chains(image, fixups); !read) return read.error();
  }
  return fixups;
}

Result<void> add_fixup(const Image& image, const Fixup& fixup, Fixups& fixups) {
  if (fixups.fixups.size() == Fixups::kMost) return Error{"the image has too many fixups"};
  const Segment* const segment = image.segment_at(fixup.address, sizeof(std::uint64_t));
  if (segment == nullptr) return Error{"a fixup lies outside the image's segments"};
  if (!segment->writable())
    return Error{"a fixup lies in the segment " + segment->name + ", which is not writable"};
  if (fixup.import == Fixup::kRebase) {
    // One past the end is where a pointer to the end of something points.
    if (fixup.target < image.base() || fixup.target - image.base() > image.memory_size()) {
      return Error{"a fixup points out of the image"};
    }
  } else if (fixup.import >= fixups.imports.size()) {
    return Error{"a fixup names an import that is not there"};
  }
  fixups.fixups.push_back(fixup);
  return {};
}

Result<void> add_import(const Image& image, Import import, Fixups& fixups) {
  if (fixups.imports.size() == Fixups::kMost) return Error{"the image has too many imports"};
  if (import.name.empty()) return Error{"an import has no name"};
  if (import.ordinal < kOrdinalWeak || import.ordinal > static_cast<int>(image.libraries.size())) {
    return Error{"the import " + import.name + " comes from library " + std::to_string(import.ordinal) +
                 ", which the image does not load"};
  }
  fixups.imports.push_back(std::move(import));
  return {};
}

}  // namespace wispen::macho
