// tests/device/signed_code_test.cpp: arm64e code runs under live keys: what it hands over and what it is
// given is signed as on a phone, and exceptions pass through. signed_code_control_test.cpp shows what does
// not work.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

#include "tests/device/loader/image_loader.hpp"
#include "tests/device/signed_bundle.hpp"
#include "tests/support/temporary_folder.hpp"
#include "wispen/macho/image.hpp"

extern "C" {
[[gnu::visibility("default")]] int signed_test_number = 21;
[[gnu::visibility("default")]] int signed_test_twice(int number) { return number * 2; }
}

namespace wispen::testing {
namespace {

const std::string kSigned = WISPEN_TEST_SIGNED_IMAGE;

TEST_F(SignedCode, KeysAreLiveAndTellAddressesConstantsAndKeysApart) {
  constexpr int kMany = 4096;
  int right = 0, moved = 0, other_address = 0, other_key = 0;
  const auto pointer = reinterpret_cast<std::uint64_t>(&signed_test_number);
  for (std::uint16_t constant = 1; constant <= kMany; ++constant) {
    const macho::Signing signing{macho::Key::IA, false, constant};
    const std::uint64_t made = loader::signed_pointer(pointer, signing, nullptr);
    moved += made != pointer;
    right += loader::authenticates(made, signing, nullptr) && loader::plain_pointer(made) == pointer;
    other_address += loader::authenticates(made, {macho::Key::IA, true, constant}, &right);
    other_key += loader::authenticates(made, {macho::Key::DA, false, constant}, nullptr);
  }
  EXPECT_EQ(right, kMany);
  // Seven bits are left for a signature where the system ignores a pointer's top byte: one in 128 collides.
  EXPECT_GT(moved, kMany * 9 / 10);
  EXPECT_LT(other_address, kMany / 10);
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
  static std::atomic<int> done = 0;
  bundle.call<void>("signed_dispatch_later", reinterpret_cast<int*>(&done));
  while (done.load() == 0) std::this_thread::yield();  // the queue's own thread runs it
  EXPECT_EQ(done.load(), 30);
}

TEST_F(SignedCode, ItsDestructorsRunWhenTheProcessEnds) {
  auto* const seen = static_cast<int*>(
      ::mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  ASSERT_NE(seen, MAP_FAILED);
  const pid_t child = ::fork();
  if (child == 0) {
    Bundle(kSigned).call<void>("signed_at_exit", seen);
    std::exit(0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  EXPECT_EQ(*seen, 1);
  ::munmap(seen, sizeof(int));
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

}  // namespace
}  // namespace wispen::testing
