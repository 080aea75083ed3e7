// fuzz/package_fuzz.cpp: any bytes as a package, through every check.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "wispen/package/verify.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wispen::package;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (verify_package(bytes).checks.empty()) std::abort();
  Report report;
  check_code(bytes, report);  // without the archive around it, which few inputs get through
  return 0;
}
