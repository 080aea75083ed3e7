// wispen/macho/signature.hpp: the code signature that sits at an image's end: a directory of page hashes.
#pragma once

#include <cstdint>
#include <string>

#include "host/core/result.hpp"
#include "wispen/macho/image.hpp"
#include "wispen/macho/sha256.hpp"

namespace wispen::macho {

/// Where the hashes lie and what they are of.
struct CodeDirectory {
  std::string identifier;
  std::uint32_t flags = 0;
  std::uint64_t limit = 0;  // what is signed: the bytes before it
  std::uint64_t page_size = 0;
  std::uint64_t page_count = 0;
  std::uint64_t hashes = 0;  // in the image's bytes, one after the other

  /// The hash that the bytes have now.
  Sha256 hash_of(std::string_view bytes, std::uint64_t page) const;
};

/// The directory of an image's signature; an error for one that is of another kind than SHA-256 of pages, or
/// that does not cover the image up to itself.
Result<CodeDirectory> read_code_directory(const Image& image);

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
