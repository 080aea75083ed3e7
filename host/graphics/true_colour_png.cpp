// host/graphics/true_colour_png.cpp: the kind of PNG that icons are, read fast.

#include "host/graphics/true_colour_png.hpp"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/graphics/png_filter.hpp"
#include "host/graphics/premultiply.hpp"

namespace wispen::graphics {

namespace {

const std::uint8_t* as_bytes(std::string_view text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::uint32_t big_endian_32(std::string_view bytes) {
  const std::uint8_t* const at = as_bytes(bytes);
  return std::uint32_t{at[0]} << 24 | std::uint32_t{at[1]} << 16 | std::uint32_t{at[2]} << 8 | at[3];
}

struct Chunk {
  std::string_view type;
  std::string_view data;
};

/// Takes the next chunk off the front of `rest`; nothing where it is cut off or its sum is wrong.
std::optional<Chunk> next_chunk(std::string_view& rest) {
  constexpr std::size_t kAround = 12;  // length, type and sum
  if (rest.size() < kAround) return std::nullopt;
  const std::size_t length = big_endian_32(rest);
  if (length > rest.size() - kAround) return std::nullopt;
  const std::string_view summed = rest.substr(4, 4 + length);
  if (crc32_gzip_refl(0, as_bytes(summed), summed.size()) != big_endian_32(rest.substr(8 + length))) {
    return std::nullopt;
  }
  rest.remove_prefix(kAround + length);
  return Chunk{summed.substr(0, 4), summed.substr(4)};
}

struct Shape {
  std::uint32_t width;
  std::uint32_t height;
  int bytes_per_pixel;
};

/// Nothing for the kinds of pixel that are left to the library.
std::optional<Shape> read_shape(const Chunk& chunk) {
  if (chunk.type != "IHDR" || chunk.data.size() != 13) return std::nullopt;
  constexpr std::string_view kColours("\x08\x02\0\0\0", 5);  // depth, kind, packing, filters, order
  constexpr std::string_view kColoursAndAlpha("\x08\x06\0\0\0", 5);
  const std::string_view kind = chunk.data.substr(8);
  if (kind != kColours && kind != kColoursAndAlpha) return std::nullopt;
  return Shape{big_endian_32(chunk.data), big_endian_32(chunk.data.substr(4)), kind == kColours ? 3 : 4};
}

/// The inflating library leaves the upper halves of wide registers in use, with which every instruction that
/// knows only the lower ones waits for the one before: the loops behind it take twice as long.
#if defined(__x86_64__)
[[gnu::target("avx")]] void release_wide_registers() { _mm256_zeroupper(); }
void release_registers() {
  if (__builtin_cpu_supports("avx") != 0) release_wide_registers();
}
#else
void release_registers() {}
#endif

/// A zlib stream that lies in several parts (RFC 1950), inflated piece by piece.
class Inflater {
 public:
  explicit Inflater(std::vector<std::string_view> parts)
      : state_(std::make_unique_for_overwrite<inflate_state>()), parts_(std::move(parts)) {
    isal_inflate_init(state_.get());
    state_->crc_flag = ISAL_ZLIB;
  }

  /// Whether there were that many bytes.
  bool read(std::uint8_t* out, std::uint32_t size) {
    state_->next_out = out;
    state_->avail_out = size;
    while (state_->avail_out != 0 && proceed()) {
    }
    return state_->avail_out == 0;
  }

  /// Whether the stream ends here, soundly. What may follow it is ignored, as the drawing library does.
  bool ends() {
    std::uint8_t beyond = 0;
    return !read(&beyond, 1) && state_->block_state == ISAL_BLOCK_FINISH && !failed_;
  }

 private:
  /// Whether another call may bring more. The library holds bytes back when there is no room for them, so
  /// there may be some after the last part.
  bool proceed() {
    const bool fed = state_->avail_in == 0 && next_ < parts_.size();
    if (fed) {
      const std::string_view part = parts_[next_++];
      state_->next_in = const_cast<std::uint8_t*>(as_bytes(part));  // the library only reads it
      state_->avail_in = static_cast<std::uint32_t>(part.size());
    }
    const std::uint32_t given = state_->avail_in;
    const std::uint32_t room = state_->avail_out;
    failed_ = isal_inflate(state_.get()) != ISAL_DECOMP_OK || failed_;
    release_registers();
    const bool moved = fed || state_->avail_in != given || state_->avail_out != room;
    return moved && !failed_ && state_->block_state != ISAL_BLOCK_FINISH;
  }

  std::unique_ptr<inflate_state> state_;
  std::vector<std::string_view> parts_;  // each shorter than 4 GB, as a chunk's length is
  std::size_t next_ = 0;
  bool failed_ = false;
};

enum class Outcome { Sound, Short, Odd };

/// Restores the rows a band at a time, while they are in the processor's nearest memory.
Outcome read_rows(Inflater& packed, int bytes_per_pixel, const MutablePixelView& out) {
  constexpr std::size_t kBand = std::size_t{32} << 10;
  const auto width = static_cast<std::size_t>(out.width);
  const std::size_t length = 1 + width * static_cast<std::size_t>(bytes_per_pixel);
  const int rows_at_once = static_cast<int>(std::max<std::size_t>(kBand / length, 1));
  std::vector<std::uint8_t> band(length * static_cast<std::size_t>(rows_at_once) + 1);  // read a byte beyond
  std::vector<std::uint32_t> above(width);
  std::vector<std::uint32_t> row(width);
  const auto keep = bytes_per_pixel == 4 ? premultiply_row : opaque_row;
  for (int y = 0; y < out.height;) {
    const int rows = std::min(rows_at_once, out.height - y);
    const std::uint8_t* coded = band.data();
    if (!packed.read(band.data(), static_cast<std::uint32_t>(length * static_cast<std::size_t>(rows)))) {
      return Outcome::Short;
    }
    for (const int end = y + rows; y < end; ++y, coded += length) {
      if (coded[0] > static_cast<std::uint8_t>(PngFilter::Paeth)) return Outcome::Odd;
      restore_png_row(PngFilter{coded[0]}, coded + 1, bytes_per_pixel, above.data(), row.data(), out.width);
      keep(row.data(), out.row(y), out.width);
      row.swap(above);
    }
  }
  return packed.ends() ? Outcome::Sound : Outcome::Odd;
}

}  // namespace

Result<std::optional<Pixels>> decode_true_colour_png(std::string_view bytes) {
  const std::optional<Pixels> not_taken;
  constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
  if (!bytes.starts_with(kSignature)) return not_taken;
  bytes.remove_prefix(kSignature.size());

  auto chunk = next_chunk(bytes);
  const auto shape = chunk ? read_shape(*chunk) : std::nullopt;
  if (!shape) return not_taken;
  std::vector<std::string_view> packed;
  bool was_packed = false;
  while ((chunk = next_chunk(bytes)) && chunk->type != "IEND") {
    const bool is_packed = chunk->type == "IDAT";
    if (is_packed) {
      // The pixels may lie in several chunks, but must lie together.
      if (!was_packed && !packed.empty()) return not_taken;
      packed.push_back(chunk->data);
    } else {
      // Other chunks with a capital say how pixels are to be read, and one without names a transparent
      // colour.
      const bool can_be_ignored = (chunk->type.front() & 0x20) != 0 && chunk->type != "tRNS";
      if (!can_be_ignored) return not_taken;
    }
    was_packed = is_packed;
  }
  if (!chunk || packed.empty()) return not_taken;

  auto pixels = Pixels::create(shape->width, shape->height);
  if (!pixels) return not_taken;
  Inflater inflater(std::move(packed));
  switch (read_rows(inflater, shape->bytes_per_pixel, pixels->mutable_view())) {
    case Outcome::Sound:
      return std::optional(*std::move(pixels));
    case Outcome::Short:
      return Error{"the image cannot be decoded: its pixels end early"};
    case Outcome::Odd:
      break;
  }
  return not_taken;
}

}  // namespace wispen::graphics
