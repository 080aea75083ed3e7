// tests/device/signed_code_test.cpp: arm64e code runs under live keys: what it hands over and what it is
// given is signed as on a phone, exceptions pass through, and what is signed wrongly does not work.

#include "device/macho/signed_code.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>

#include "device/loader/image_loader.hpp"
#include "device/loader/loaded_bundles.hpp"
#include "device/loader/pointer_signing.hpp"
#include "device/macho/bytes.hpp"
#include "device/macho/fixups.hpp"
#include "device/macho/format.hpp"
#include "device/macho/unwind_table.hpp"
#include "device/slices/chain_word.hpp"
#include "platform/Foundation.hpp"
#include "tests/support/temporary_folder.hpp"

extern "C" {
[[gnu::visibility("default")]] int signed_test_number = 21;
[[gnu::visibility("default")]] int signed_test_twice(int number) { return number * 2; }
}

namespace wispen::testing {
namespace {

using ::testing::HasSubstr;

class SignedHostShape : public objc::Authored<SignedHostShape, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"SignedHostShape"};
  using Authored::Authored;

  int area() const { return 3; }
  int edges() const { return 10; }
  static void define() {
    objc::Class<SignedHostShape>()
        .method<"area", &SignedHostShape::area>()
        .method<"edges", &SignedHostShape::edges>()
        .register_class();
  }
};

/// Loads an image and gives its functions by name.
class Bundle {
 public:
  explicit Bundle(const std::string& path) {
    SignedHostShape::define();
    const auto loaded = loader::load_bundle(path);
    if (!loaded) {
      ADD_FAILURE() << loaded.error().message;
      return;
    }
    handle_ = *loaded;
  }

  void* symbol(const char* name) const { return loader::symbol_of(handle_, name); }

  template <class R = int, class... A>
  R call(const char* name, A... arguments) const {
    const auto function = reinterpret_cast<R (*)(A...)>(symbol(name));
    if (function == nullptr) throw std::logic_error(std::string("the image has no ") + name);
    return function(arguments...);
  }

 private:
  void* handle_ = nullptr;
};

template <class F>
F* for_signed_code(F* function) {
  return reinterpret_cast<F*>(
      loader::signed_pointer(reinterpret_cast<std::uint64_t>(function), loader::kFunctionSigning, nullptr));
}

const std::string kSigned = WISPEN_TEST_SIGNED_IMAGE;

class SignedCode : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(loader::keys_are_live()) << "this processor, or its emulator, has no keys";
  }
};

TEST_F(SignedCode, KeysAreLiveAndTellPlacesConstantsAndKeysApart) {
  constexpr int kMany = 4096;
  int right = 0, moved = 0, other_place = 0, other_key = 0;
  const auto pointer = reinterpret_cast<std::uint64_t>(&signed_test_number);
  for (std::uint16_t constant = 1; constant <= kMany; ++constant) {
    const macho::Signing signing{macho::Key::IA, false, constant};
    const std::uint64_t made = loader::signed_pointer(pointer, signing, nullptr);
    moved += made != pointer;
    right += loader::authenticates(made, signing, nullptr) && loader::plain_pointer(made) == pointer;
    other_place += loader::authenticates(made, {macho::Key::IA, true, constant}, &right);
    other_key += loader::authenticates(made, {macho::Key::DA, false, constant}, nullptr);
  }
  EXPECT_EQ(right, kMany);
  // Seven bits are left for a signature where the system ignores a pointer's top byte: one in 128 collides.
  EXPECT_GT(moved, kMany * 9 / 10);
  EXPECT_LT(other_place, kMany / 10);
  EXPECT_LT(other_key, kMany / 10);
  EXPECT_EQ(loader::signed_pointer(0, loader::kFunctionSigning, nullptr), 0U);
}

TEST_F(SignedCode, TheSignedSliceIsTakenOfAFileForAllProcessors) {
  const std::string file = contents_of(WISPEN_TEST_FAT_FILE);
  const auto slice = loader::slice_for_this_machine(file);
  ASSERT_TRUE(slice.ok()) << slice.error().message;
  EXPECT_EQ(macho::parse_image(*slice)->architecture(), "arm64e");
}

TEST_F(SignedCode, PointersToItsDataMoveWithIt) {
  const Bundle bundle(kSigned);
  int** const pointer = static_cast<int**>(bundle.symbol("signed_number_pointer"));
  ASSERT_NE(pointer, nullptr);
  EXPECT_EQ(*pointer, bundle.symbol("signed_number"));
  EXPECT_EQ(**pointer, 4);
}

TEST_F(SignedCode, MessagesReachMethodsBothWays) {
  const Bundle bundle(kSigned);
  EXPECT_EQ(bundle.call("signed_message"), 42);
  EXPECT_EQ(bundle.call("signed_super"), 11);
  EXPECT_EQ(bundle.call("signed_dealloc"), 10) << "last words, and the state's destructor";
}

TEST_F(SignedCode, AReplacedMethodCallsTheOneBefore) {
  const Bundle bundle(kSigned);
  const SignedHostShape shape = SignedHostShape::alloc().init();
  EXPECT_EQ(bundle.call("signed_category", static_cast<const void*>(objc::borrow(shape))), 6);
  EXPECT_EQ((objc::send<"area", int>(shape)), 6);
}

TEST_F(SignedCode, ItsBlocksAreCopiedCalledAndDisposedOf) {
  const Bundle bundle(kSigned);
  int sum = 0;
  {
    const auto made = bundle.call<const void*>("signed_make_block", &sum);
    const auto block = objc::Block<int(int)>::retain(made);
    objc::abi::_Block_release(made);
    EXPECT_EQ(block(5), 15);
    const objc::Block<int(int)> again = block;
    EXPECT_EQ(again(6), 18);
    EXPECT_EQ(bundle.call("signed_call_block", made, 7), 21) << "called by its own side";
    EXPECT_EQ(bundle.call("signed_lives"), 1);
  }
  EXPECT_EQ(sum, 18);
  EXPECT_EQ(bundle.call("signed_lives"), 0) << "the lambda dies with the last reference";
}

TEST_F(SignedCode, ItCallsOurBlocks) {
  const Bundle bundle(kSigned);
  int sum = 0;
  const objc::Block<int(int)> block([&sum](int number) { return sum += number; });
  EXPECT_EQ(bundle.call("signed_call_block", block.borrow(), 4), 4);
  EXPECT_EQ(bundle.call("signed_call_block", block.borrow(), 5), 9);
  EXPECT_EQ(block(1), 10) << "it stays our own";
}

TEST_F(SignedCode, LookedUpFunctionsAreSignedAndVariablesAreNot) {
  const Bundle bundle(kSigned);
  EXPECT_EQ(bundle.call("signed_symbols", reinterpret_cast<void*>(-2)), 42);
}

TEST_F(SignedCode, QueuesRunItsFunctions) {
  const Bundle bundle(kSigned);
  EXPECT_EQ(bundle.call("signed_dispatch"), 1);
  EXPECT_EQ(bundle.call("signed_dispatch"), 1);
}

TEST_F(SignedCode, ForeignExceptionsPassThroughItsFramesAndRunItsDestructors) {
  const Bundle bundle(kSigned);
  const auto callback = for_signed_code(+[] { throw 7; });
  try {
    bundle.call("signed_pass", callback);
    FAIL() << "nothing was thrown";
  } catch (int number) {
    EXPECT_EQ(number, 7);
  }
  EXPECT_EQ(bundle.call("signed_lives"), 0);
}

TEST_F(SignedCode, ItCatchesOurExceptionsAndWeItsOwn) {
  const Bundle bundle(kSigned);
  const objc::Block<int(int)> block([](int number) -> int { throw number; });
  EXPECT_EQ(bundle.call("signed_catch", block.borrow()), 100);
  // What it threw is not asked what it says: the object's table of virtual functions is signed.
  EXPECT_THROW(bundle.call("signed_throw", 3UL), std::out_of_range);
}

// The controls. Each is a bundle, or a call, that a processor with keys must not take.

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

TEST_F(SignedCodeControl, APersonalityWordWithoutItsPlaceStopsExceptions) {
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
    std::memcpy(bytes.data() + offsetof(macho::Header64, subtype), &macho::kSubtypeArm64eToday,
                sizeof macho::kSubtypeArm64eToday);
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
