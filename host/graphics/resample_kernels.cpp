// host/graphics/resample_kernels.cpp: the two inner loops of scaling, once per kind of processor.

#include "host/graphics/resample_kernels.hpp"

#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace wispen::graphics {

namespace detail {

namespace {

void combine_rows_portable(const std::uint8_t* rows, std::ptrdiff_t stride, int count,
                           const std::int16_t* weights, std::size_t bytes, std::int16_t* out) {
  for (std::size_t i = 0; i < bytes; ++i) {
    int sum = 1 << (kVerticalShift - 1);
    for (int k = 0; k < count; ++k) {
      if (weights[k] != 0) sum += weights[k] * rows[static_cast<std::ptrdiff_t>(i) + k * stride];
    }
    out[i] = static_cast<std::int16_t>(sum >> kVerticalShift);
  }
}

void combine_columns_portable(const std::int16_t* row, int row_first, const AxisFilter& filter,
                              std::uint32_t* out) {
  for (const Taps& taps : filter.taps) {
    const std::int16_t* weights = filter.weights.data() + taps.weights;
    std::uint32_t pixel = 0;
    if (taps.count > 0) {
      const std::int16_t* first = row + static_cast<std::ptrdiff_t>(taps.first - row_first) * 4;
      for (int channel = 0; channel < 4; ++channel) {
        int sum = 1 << (kHorizontalShift - 1);
        for (int k = 0; k < taps.count; ++k) sum += weights[k] * first[k * 4 + channel];
        pixel |= static_cast<std::uint32_t>(sum >> kHorizontalShift) << (8 * channel);
      }
    }
    *out++ = pixel;
  }
}

#if defined(__x86_64__)

int weight_pair(const std::int16_t* weights) {
  int pair = 0;
  std::memcpy(&pair, weights, sizeof pair);
  return pair;
}

// The second row of a pair that only pads may lie beyond the picture; the first one stands in for it.
const std::uint8_t* second_row(const std::uint8_t* first, std::ptrdiff_t stride, std::int16_t weight) {
  return weight != 0 ? first + stride : first;
}

void combine_rows_sse2(const std::uint8_t* rows, std::ptrdiff_t stride, int count,
                       const std::int16_t* weights, std::size_t bytes, std::int16_t* out) {
  const __m128i zero = _mm_setzero_si128();
  std::size_t i = 0;
  for (; i + 16 <= bytes; i += 16) {
    __m128i sums[4];
    for (__m128i& sum : sums) sum = _mm_set1_epi32(1 << (kVerticalShift - 1));
    for (int k = 0; k < count; k += 2) {
      const std::uint8_t* first = rows + static_cast<std::ptrdiff_t>(i) + k * stride;
      const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(first));
      const __m128i b =
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(second_row(first, stride, weights[k + 1])));
      const __m128i pair = _mm_set1_epi32(weight_pair(weights + k));
      const __m128i low = _mm_unpacklo_epi8(a, b);
      const __m128i high = _mm_unpackhi_epi8(a, b);
      sums[0] = _mm_add_epi32(sums[0], _mm_madd_epi16(_mm_unpacklo_epi8(low, zero), pair));
      sums[1] = _mm_add_epi32(sums[1], _mm_madd_epi16(_mm_unpackhi_epi8(low, zero), pair));
      sums[2] = _mm_add_epi32(sums[2], _mm_madd_epi16(_mm_unpacklo_epi8(high, zero), pair));
      sums[3] = _mm_add_epi32(sums[3], _mm_madd_epi16(_mm_unpackhi_epi8(high, zero), pair));
    }
    for (__m128i& sum : sums) sum = _mm_srli_epi32(sum, kVerticalShift);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_packs_epi32(sums[0], sums[1]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i + 8), _mm_packs_epi32(sums[2], sums[3]));
  }
  combine_rows_portable(rows + i, stride, count, weights, bytes - i, out + i);
}

void combine_columns_sse2(const std::int16_t* row, int row_first, const AxisFilter& filter,
                          std::uint32_t* out) {
  for (const Taps& taps : filter.taps) {
    const std::int16_t* weights = filter.weights.data() + taps.weights;
    __m128i sum = _mm_set1_epi32(1 << (kHorizontalShift - 1));
    const std::int16_t* pixel = row + static_cast<std::ptrdiff_t>(taps.first - row_first) * 4;
    for (int k = 0; k < taps.count; k += 2) {
      const __m128i two = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixel + std::ptrdiff_t{k} * 4));
      const __m128i paired = _mm_unpacklo_epi16(two, _mm_srli_si128(two, 8));
      sum = _mm_add_epi32(sum, _mm_madd_epi16(paired, _mm_set1_epi32(weight_pair(weights + k))));
    }
    sum = _mm_srli_epi32(sum, kHorizontalShift);
    const __m128i words = _mm_packs_epi32(sum, sum);
    *out++ = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
  }
}

__attribute__((target("avx2"))) void combine_rows_avx2(const std::uint8_t* rows, std::ptrdiff_t stride,
                                                       int count, const std::int16_t* weights,
                                                       std::size_t bytes, std::int16_t* out) {
  const __m256i zero = _mm256_setzero_si256();
  std::size_t i = 0;
  for (; i + 32 <= bytes; i += 32) {
    __m256i sums[4];
    for (__m256i& sum : sums) sum = _mm256_set1_epi32(1 << (kVerticalShift - 1));
    for (int k = 0; k < count; k += 2) {
      const std::uint8_t* first = rows + static_cast<std::ptrdiff_t>(i) + k * stride;
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(first));
      const __m256i b =
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(second_row(first, stride, weights[k + 1])));
      const __m256i pair = _mm256_set1_epi32(weight_pair(weights + k));
      const __m256i low = _mm256_unpacklo_epi8(a, b);
      const __m256i high = _mm256_unpackhi_epi8(a, b);
      sums[0] = _mm256_add_epi32(sums[0], _mm256_madd_epi16(_mm256_unpacklo_epi8(low, zero), pair));
      sums[1] = _mm256_add_epi32(sums[1], _mm256_madd_epi16(_mm256_unpackhi_epi8(low, zero), pair));
      sums[2] = _mm256_add_epi32(sums[2], _mm256_madd_epi16(_mm256_unpacklo_epi8(high, zero), pair));
      sums[3] = _mm256_add_epi32(sums[3], _mm256_madd_epi16(_mm256_unpackhi_epi8(high, zero), pair));
    }
    for (__m256i& sum : sums) sum = _mm256_srli_epi32(sum, kVerticalShift);
    // Unpacking works within halves of the register, so the halves are put back in order here.
    const __m256i first = _mm256_packs_epi32(sums[0], sums[1]);
    const __m256i second = _mm256_packs_epi32(sums[2], sums[3]);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_permute2x128_si256(first, second, 0x20));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 16),
                        _mm256_permute2x128_si256(first, second, 0x31));
  }
  combine_rows_sse2(rows + i, stride, count, weights, bytes - i, out + i);
}

// Two pairs at once, each in its half of the register.
__attribute__((target("avx2"))) void combine_columns_avx2(const std::int16_t* row, int row_first,
                                                          const AxisFilter& filter, std::uint32_t* out) {
  const __m256i interleave =
      _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15));
  const __m256i first_and_second = _mm256_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1);
  for (const Taps& taps : filter.taps) {
    const std::int16_t* weights = filter.weights.data() + taps.weights;
    const std::int16_t* pixel = row + static_cast<std::ptrdiff_t>(taps.first - row_first) * 4;
    __m256i sums = _mm256_castsi128_si256(_mm_set1_epi32(1 << (kHorizontalShift - 1)));
    sums = _mm256_inserti128_si256(sums, _mm_setzero_si128(), 1);
    int k = 0;
    for (; k + 4 <= taps.count; k += 4) {
      const __m256i four =
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixel + std::ptrdiff_t{k} * 4));
      const __m256i pairs = _mm256_permutevar8x32_epi32(
          _mm256_castsi128_si256(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(weights + k))),
          first_and_second);
      sums = _mm256_add_epi32(sums, _mm256_madd_epi16(_mm256_shuffle_epi8(four, interleave), pairs));
    }
    __m128i sum = _mm_add_epi32(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
    if (k < taps.count) {
      const __m128i two = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixel + std::ptrdiff_t{k} * 4));
      const __m128i paired = _mm_shuffle_epi8(two, _mm256_castsi256_si128(interleave));
      sum = _mm_add_epi32(sum, _mm_madd_epi16(paired, _mm_set1_epi32(weight_pair(weights + k))));
    }
    sum = _mm_srli_epi32(sum, kHorizontalShift);
    const __m128i words = _mm_packs_epi32(sum, sum);
    *out++ = static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
  }
}

#endif

}  // namespace

const RowKernels& row_kernels(ResampleKernel kernel) {
  static const RowKernels portable{combine_rows_portable, combine_columns_portable};
#if defined(__x86_64__)
  static const RowKernels sse2{combine_rows_sse2, combine_columns_sse2};
  static const RowKernels avx2{combine_rows_avx2, combine_columns_avx2};
  if (kernel == ResampleKernel::Sse2) return sse2;
  if (kernel == ResampleKernel::Avx2) return avx2;
#endif
  (void)kernel;
  return portable;
}

}  // namespace detail

ResampleKernel fastest_resample_kernel() {
#if defined(__x86_64__)
  static const ResampleKernel fastest =
      __builtin_cpu_supports("avx2") ? ResampleKernel::Avx2 : ResampleKernel::Sse2;
  return fastest;
#else
  return ResampleKernel::Portable;
#endif
}

}  // namespace wispen::graphics
