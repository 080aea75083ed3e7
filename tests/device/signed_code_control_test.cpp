// tests/device/signed_code_control_test.cpp: bundles and calls that a processor with keys must not take, and
// does not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "device/slices/chain_word.hpp"
#include "tests/device/signed_bundle.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/bytes.hpp"
#include "wispen/macho/fixups.hpp"
#include "wispen/macho/format.hpp"
#include "wispen/macho/signed_code.hpp"
#include "wispen/macho/unwind_table.hpp"

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

const std::string kSigned = WISPEN_TEST_SIGNED_IMAGE;

/// Whether a child process that runs this ends by a signal, after it said the text. A signature has seven
/// bits here, so that a wrong one is right in one of 128 processes; then it is tried again with the image at
/// another place.
bool dies(const std::function<void(unsigned attempt)>& body, const std::string& text = "") {
  constexpr unsigned kAttempts = 4;
  for (unsigned attempt = 0; attempt < kAttempts; ++attempt) {
    int ends[2];
    if (::pipe(ends) != 0) return false;
    const pid_t child = ::fork();
    if (child == 0) {
      ::dup2(ends[1], STDERR_FILENO);
      ::close(ends[0]);
      ::mmap(nullptr, attempt * 0x50000 + 0x1000, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
      body(attempt);
      std::_Exit(0);
    }
    ::close(ends[1]);
    std::string said;
    char buffer[512];
    for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;)
      said.append(buffer, static_cast<std::size_t>(got));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) {
      EXPECT_THAT(said, HasSubstr(text));
      return true;
    }
  }
  return false;
}

using Change = std::function<void(std::string& bytes, const macho::Image& image)>;

/// The image, changed, in a file of its own. A child process loads it; the folder goes with the parent's
/// test.
class SignedCodeControl : public SignedCode {
 protected:
  std::string changed(const Change& change) { return changed(kSigned, change); }
  std::string changed(const std::string& path, const Change& change) {
    std::string bytes = contents_of(path);
    const std::string before = bytes;
    const auto image = macho::parse_image(before);
    EXPECT_TRUE(image.ok());
    change(bytes, *image);
    EXPECT_NE(bytes, before);
    return folder_.write("changed", bytes);
  }

  /// The image with another signing of the personality word, or none.
  std::string with_personality(std::optional<macho::Signing> signing) {
    return changed([&](std::string& bytes, const macho::Image& image) {
      const auto table = macho::read_unwind_table(image);
      const auto fixups = macho::read_fixups(image);
      for (macho::Fixup fixup : fixups->fixups) {
        if (fixup.address != image.base() + table->personalities.at(0)) continue;
        const std::string_view place = image.bytes_at(fixup.address, 8);
        const std::uint64_t next = (*macho::read_at<std::uint64_t>(place, 0) >> 51 & 0x7FF) * 8;
        fixup.signing = signing;
        const std::uint64_t word = *slices::chain_word(fixup, image.base(), next);
        std::memcpy(bytes.data() + (place.data() - image.bytes.data()), &word, sizeof word);
      }
    });
  }

  static void throw_through(const std::string& path) {
    const Bundle bundle(path);
    try {
      bundle.call("signed_pass", for_signed_code(+[] { throw 7; }));
    } catch (int) {
      std::_Exit(0);  // it got through
    }
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(SignedCodeControl, APlainPersonalityWordStopsExceptions) {
  const std::string path = with_personality(std::nullopt);
  EXPECT_TRUE(dies([&](unsigned) { throw_through(path); }, "the personality function does not authenticate"));
}

TEST_F(SignedCodeControl, AWrongConstantOfThePersonalityWordStopsExceptions) {
  const std::string path = with_personality(macho::Signing{macho::Key::IA, true, 0x7EAD});
  EXPECT_TRUE(dies([&](unsigned) { throw_through(path); }, "the personality function does not authenticate"));
}

TEST_F(SignedCodeControl, APersonalityWordWithoutItsAddressStopsExceptions) {
  const std::string path = with_personality(macho::Signing{macho::Key::IA, false, 0});
  EXPECT_TRUE(dies([&](unsigned) { throw_through(path); }, "the personality function does not authenticate"));
}

TEST_F(SignedCodeControl, ARightPersonalityWordDoesNot) {
  EXPECT_FALSE(dies([&](unsigned) { throw_through(kSigned); }));
}

TEST_F(SignedCodeControl, UnsignedReturnAddressesStopExceptions) {
  const std::string path = changed([](std::string& bytes, const macho::Image& image) {
    const macho::Section& text = image.segment("__TEXT")->sections.front();
    for (std::uint64_t at = text.offset; at < text.offset + text.size; at += 4) {
      const std::uint32_t word = *macho::read_at<std::uint32_t>(bytes, at);
      constexpr std::uint32_t kNothing = 0xD503201F, kReturn = 0xD65F03C0;
      const std::uint32_t unsigned_word = word == 0xD503237F || word == 0xD50323FF
                                              ? kNothing                  // pacibsp, autibsp
                                          : word == 0xD65F0FFF ? kReturn  // retab
                                                               : word;
      std::memcpy(bytes.data() + at, &unsigned_word, sizeof unsigned_word);
    }
  });
  EXPECT_TRUE(dies([&](unsigned) { throw_through(path); }));
}

TEST_F(SignedCodeControl, Arm64CodeUnderAnArm64eHeaderCannotAddAMethod) {
  const std::string path = changed(WISPEN_TEST_UNSIGNED_IMAGE, [](std::string& bytes, const macho::Image&) {
    std::memcpy(bytes.data() + offsetof(macho::Header64, subtype), &macho::kSubtypeArm64eAbi0,
                sizeof macho::kSubtypeArm64eAbi0);
  });
  EXPECT_TRUE(
      dies([&](unsigned) { Bundle{path}; }, "class_addMethod's implementation does not authenticate"));
}

TEST_F(SignedCodeControl, AMethodOfAPlainFunctionIsRefused) {
  EXPECT_TRUE(dies([&](unsigned) { Bundle(kSigned).call<void>("signed_add_plain_method"); },
                   "class_addMethod's implementation does not authenticate"));
}

/// One of the bundle's blocks, whose function is then signed wrongly.
const void* spoilt_block(const Bundle& bundle) {
  static int sum = 0;
  const auto block = bundle.call<const void*>("signed_make_block", &sum);
  auto* const layout = static_cast<objc::detail::BlockLayout*>(const_cast<void*>(block));
  constexpr std::uint64_t kOneBit = std::uint64_t{1} << 50;
  auto function = reinterpret_cast<std::uint64_t>(layout->invoke) ^ kOneBit;
  if (function == loader::plain_pointer(function)) function |= kOneBit << 1;
  layout->invoke = reinterpret_cast<void (*)()>(function);
  return block;
}

TEST_F(SignedCodeControl, ASpoiltBlockIsNotTakenByItsOwnSide) {
  EXPECT_TRUE(dies(
      [&](unsigned) {
        const Bundle bundle(kSigned);
        bundle.call("signed_call_block", spoilt_block(bundle), 1);
      },
      "a heap block's function does not authenticate"));
}

TEST_F(SignedCodeControl, ASpoiltBlockIsNotCalledByUs) {
  EXPECT_TRUE(dies([&](unsigned) {
    const Bundle bundle(kSigned);
    objc::Block<int(int)>::retain(spoilt_block(bundle))(1);
  }));
}

TEST_F(SignedCodeControl, AFunctionOfOursThatIsNotSignedCannotBeCalledByIt) {
  constexpr void (*kFunctions[])() = {+[] { std::_Exit(1); }, +[] { std::_Exit(2); }, +[] { std::_Exit(3); },
                                      +[] { std::_Exit(4); }};
  EXPECT_TRUE(dies([&](unsigned attempt) { Bundle(kSigned).call("signed_pass", kFunctions[attempt]); }));
}

}  // namespace
}  // namespace wispen::testing
