// tests/host/plist/binary_maker.hpp: binary lists made object by object, well-formed or not.
#pragma once

#include <string>
#include <vector>

#include "host/plist/big_endian.hpp"

namespace wispen::plist::testing {

/// A header, the objects as given (the first is the root), their offsets, and a trailer that fits them.
inline std::string binary(const std::vector<std::string>& objects, std::size_t reference_size = 1) {
  std::string bytes = "bplist00";
  std::vector<std::size_t> offsets;
  for (const std::string& object : objects) {
    offsets.push_back(bytes.size());
    bytes += object;
  }
  const std::size_t table = bytes.size();
  const std::size_t offset_size = bytes_for(table);
  for (const std::size_t offset : offsets) append_big_endian(bytes, offset, offset_size);
  bytes.append(6, '\0');
  append_big_endian(bytes, offset_size, 1);
  append_big_endian(bytes, reference_size, 1);
  append_big_endian(bytes, objects.size(), 8);
  append_big_endian(bytes, 0, 8);
  append_big_endian(bytes, table, 8);
  return bytes;
}

}  // namespace wispen::plist::testing
