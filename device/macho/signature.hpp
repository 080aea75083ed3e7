// device/macho/signature.hpp: the code signature that sits at an image's end: a directory of page hashes.
#pragma once

#include <cstdint>
#include <string>

#include "device/macho/image.hpp"
#include "host/core/result.hpp"

namespace wispen::macho {

struct Signature {
  std::string identifier;
  std::uint32_t flags = 0;
  std::size_t pages = 0;

  bool ad_hoc() const;
};

/// Reads the directory and recomputes every page's SHA-256. Fails, with the page's number, where one differs,
/// where the signature does not cover the file up to itself, and for a signature that is none.
Result<Signature> check_signature(const Image& image);

}  // namespace wispen::macho
