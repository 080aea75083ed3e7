// tests/host/plist/out_of_memory_test.cpp: memory that is refused at the k-th request.
//
// A program of its own, because it replaces the operators that all others allocate with.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "host/files/recycled_memory.hpp"
#include "host/files/replace_file.hpp"
#include "host/plist/splice.hpp"
#include "host/strings/table.hpp"
#include "tests/host/plist/samples.hpp"
#include "tests/support/temporary_folder.hpp"

namespace {

// Counts down while armed; the request that finds 1 is refused.
long refuse_at = 0;
long requests = 0;
long blocks = 0;

void* allocate(std::size_t size) {
  ++requests;
  if (refuse_at != 0 && requests == refuse_at) throw std::bad_alloc();
  void* block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  ++blocks;
  return block;
}

void release(void* block) {
  if (block == nullptr) return;
  --blocks;
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }

namespace wispen::plist {
namespace {

using testing::everything;
using wispen::testing::TemporaryFolder;

/// Runs the work with the first, second, third... request refused until one run makes no more of them.
/// After each run nothing may be left over; `work` says whether it succeeded.
template <class Work>
long refuse_each(Work work) {
  files::free_kept_blocks();
  for (long k = 1;; ++k) {
    const long blocks_before = blocks;
    requests = 0;
    refuse_at = k;
    const bool succeeded = work();
    refuse_at = 0;
    files::free_kept_blocks();
    EXPECT_EQ(blocks, blocks_before) << "leaked when request " << k << " was refused";
    if (requests < k) {
      EXPECT_TRUE(succeeded);
      return k - 1;
    }
  }
}

class OutOfMemory : public ::testing::TestWithParam<Format> {};
INSTANTIATE_TEST_SUITE_P(Formats, OutOfMemory, ::testing::Values(Format::Xml, Format::Binary),
                         [](const auto& format) { return format.param == Format::Xml ? "Xml" : "Binary"; });

TEST_P(OutOfMemory, MakesReadingAnErrorWithoutLeaks) {
  const std::string bytes = *encode(everything(), GetParam());
  const long count = refuse_each([&] { return Document::parse(bytes).ok(); });
  EXPECT_GT(count, 2);
  std::printf("%ld requests refused one by one\n", count);
}

TEST_P(OutOfMemory, MakesWritingAnErrorAndKeepsTheFile) {
  const TemporaryFolder folder;
  const std::string path = folder / "values.plist";
  ASSERT_TRUE(update_file(path, {{"a", 1}, {"nested", Array{1, "two"}}}, GetParam()));
  const Tree before = Tree::of(Document::read(path)->root());
  const std::vector<Change> changes = {{"a", 2}, {"b", everything()}};
  const Tree after = Tree::of(Document::parse(*splice(*Document::read(path), changes))->root());
  const long count = refuse_each([&] {
    const bool done = update_file(path, changes).ok();
    const long armed = std::exchange(refuse_at, 0);
    const long counted = requests;
    {
      const Result<Document> now = Document::read(path);
      EXPECT_TRUE(now);
      const Tree tree = Tree::of(now->root());
      EXPECT_TRUE(tree == after || (!done && tree == before));
      // Where even the old file could not be read for want of memory, nothing may have been written.
      EXPECT_TRUE(done || tree == before);
      EXPECT_TRUE(update_file(path, {{"a", 1}, {"b", std::nullopt}}));
    }
    refuse_at = armed;
    requests = counted;
    return done;
  });
  EXPECT_GT(count, 20);
  std::printf("%ld requests refused one by one\n", count);
}

TEST(OutOfMemory, MakesAnEncodingAnErrorWithoutLeaks) {
  const Tree tree = everything();
  for (const Format format : {Format::Xml, Format::Binary}) {
    EXPECT_GT(refuse_each([&] { return encode(tree, format).ok(); }), 2);
  }
}

TEST(OutOfMemory, MakesATableAnErrorWithoutLeaks) {
  const std::string text =
      "\"a long key that needs memory\" = \"a long text that needs memory\";\n\"b\" = \"\\U00e4\";";
  EXPECT_GT(refuse_each([&] { return !strings::Table::parse(text, "Root.strings").error(); }), 2);
}

}  // namespace
}  // namespace wispen::plist
