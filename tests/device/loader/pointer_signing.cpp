// tests/device/loader/pointer_signing.cpp

#include "tests/device/loader/pointer_signing.hpp"

#include <cstdio>
#include <cstdlib>

#if defined(__aarch64__)
#include <sys/auxv.h>
#endif

namespace wispen::loader {

namespace {

constexpr std::uint64_t kAddressBits = (std::uint64_t{1} << 48) - 1;

#if defined(__aarch64__)
std::uint64_t sign(std::uint64_t pointer, std::uint64_t discriminator, macho::Key key) {
  switch (key) {
    case macho::Key::IA:
      asm(".arch_extension pauth\n\tpacia %0, %1" : "+r"(pointer) : "r"(discriminator));
      break;
    case macho::Key::IB:
      asm(".arch_extension pauth\n\tpacib %0, %1" : "+r"(pointer) : "r"(discriminator));
      break;
    case macho::Key::DA:
      asm(".arch_extension pauth\n\tpacda %0, %1" : "+r"(pointer) : "r"(discriminator));
      break;
    case macho::Key::DB:
      asm(".arch_extension pauth\n\tpacdb %0, %1" : "+r"(pointer) : "r"(discriminator));
      break;
  }
  return pointer;
}
#else
std::uint64_t sign(std::uint64_t pointer, std::uint64_t, macho::Key) { return pointer; }
#endif

}  // namespace

bool keys_are_live() {
#if defined(__aarch64__)
  constexpr unsigned long kAddressAuthentication = 1UL << 30;  // HWCAP_PACA
  static const bool live = (::getauxval(AT_HWCAP) & kAddressAuthentication) != 0;
  return live;
#else
  return false;
#endif
}

std::uint64_t signed_pointer(std::uint64_t plain, const macho::Signing& signing, const void* address) {
  if (plain == 0) return 0;
  // An address and a constant are blended: the constant takes the highest bits.
  const std::uint64_t low = reinterpret_cast<std::uint64_t>(address) & kAddressBits;
  const std::uint64_t constant = signing.constant;
  const std::uint64_t discriminator = signing.address_diversity ? low | constant << 48 : constant;
  return sign(plain, discriminator, signing.key);
}

std::uint64_t plain_pointer(std::uint64_t pointer) { return pointer & kAddressBits; }

bool authenticates(std::uint64_t pointer, const macho::Signing& signing, const void* address) {
  // Compared, not waited for: a pointer that fails is poisoned in bits that a collision can hide.
  return pointer == 0 || signed_pointer(plain_pointer(pointer), signing, address) == pointer;
}

void refuse(const char* what) {
  std::fprintf(stderr, "loader: %s does not authenticate\n", what);
  std::abort();
}

std::uint64_t authenticated(std::uint64_t pointer, const macho::Signing& signing, const void* address,
                            const char* what) {
  if (!authenticates(pointer, signing, address)) refuse(what);
  return plain_pointer(pointer);
}

}  // namespace wispen::loader
