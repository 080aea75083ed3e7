// fuzz/package_fuzz.cpp: any bytes as a package, through every check.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "wispen/package/verify.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen::package;
  static const wispen::BundleFacts facts = *wispen::read_facts(WISPEN_FUZZ_FACTS);
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (verify_package(bytes, facts).checks.empty()) std::abort();
  Report report;
  check_code(bytes, facts, report);  // without the archive around it, which few inputs get through
  return 0;
}
