// wispen/package/verify_arm64e.cpp: what a processor with live keys would stop at.

#include <algorithm>

#include "wispen/macho/signed_code.hpp"
#include "wispen/macho/unwind_table.hpp"
#include "wispen/package/verify.hpp"

namespace wispen::package {

namespace {

constexpr char kSlice[] = "arm64e";

std::string fault_of(const Result<void>& result) { return result ? "" : result.error().message; }

}  // namespace

void check_arm64e(const macho::Image& image, const macho::Fixups& fixups, Report& report) {
  report.judge(kSlice, "subtype", fault_of(macho::check_subtype(image)), "arm64e, version 0 of the ABI");
  report.judge(kSlice, "form of fixups", fault_of(macho::check_form(image, fixups)), "chains that can sign");
  report.judge(kSlice, "initialiser offsets", fault_of(macho::check_initialiser_offsets(image)),
               "where nobody can write");
  const auto table = macho::read_unwind_table(image);
  if (!table) return report.fail(kSlice, "unwinding codes", table.error().message);
  report.judge(kSlice, "unwinding codes", fault_of(macho::check_unwinding(*table)),
               std::to_string(table->functions.size()) + " functions");
  report.judge(kSlice, "return addresses", fault_of(macho::check_return_addresses(image, *table)),
               "signed in every frame");
  const auto is_signed = [](const macho::Fixup& fixup) { return fixup.signing.has_value(); };
  report.judge(
      kSlice, "signed pointers", fault_of(macho::check_signed_words(image, fixups, *table)),
      std::to_string(std::ranges::count_if(fixups.fixups, is_signed)) + ", of personality functions");
  report.judge(kSlice, "plain loads", fault_of(macho::check_loads(image, fixups)),
               "none of a signed pointer");
}

}  // namespace wispen::package
