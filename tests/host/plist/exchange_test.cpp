// tests/host/plist/exchange_test.cpp: files that go to other implementations and come back.
#include <gtest/gtest.h>
#include <plist/plist.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "host/plist/splice.hpp"
#include "tests/host/plist/samples.hpp"
#include "tests/support/temporary_folder.hpp"

namespace wispen::plist {
namespace {

using testing::everything;
using testing::tree_of;
using wispen::testing::contents_of;
using wispen::testing::TemporaryFolder;
using wispen::testing::write_file;

/// Runs Python with its standard library only; true when it ended well.
bool python(const std::string& script, const std::string& in, const std::string& out) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::execlp("python3", "python3", "-I", "-c", script.c_str(), in.c_str(), out.c_str(), nullptr);
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return status == 0;
}

/// Reads a list and writes it again in both formats, as out.xml and out.bin.
constexpr const char* kThroughPython = R"(
import plistlib, sys
value = plistlib.load(open(sys.argv[1], 'rb'))
plistlib.dump(value, open(sys.argv[2] + '.xml', 'wb'), fmt=plistlib.FMT_XML, sort_keys=False)
plistlib.dump(value, open(sys.argv[2] + '.bin', 'wb'), fmt=plistlib.FMT_BINARY, sort_keys=False)
)";

/// Both formats of what libplist makes of a list.
std::pair<std::string, std::string> through_libplist(const std::string& bytes, Format format) {
  plist_t list = nullptr;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  format == Format::Xml ? plist_from_xml(bytes.data(), size, &list)
                        : plist_from_bin(bytes.data(), size, &list);
  if (list == nullptr) return {};
  std::pair<std::string, std::string> result;
  char* buffer = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(list, &buffer, &length);
  if (buffer != nullptr) result.first.assign(buffer, length);
  std::free(buffer);
  buffer = nullptr;
  plist_to_bin(list, &buffer, &length);
  if (buffer != nullptr) result.second.assign(buffer, length);
  std::free(buffer);
  plist_free(list);
  return result;
}

/// The entries of the sample that an implementation is known to keep.
Tree without(Tree tree, const std::vector<std::string>& keys) {
  Dictionary kept;
  for (Member& member : *tree.as<Dictionary>()) {
    if (std::find(keys.begin(), keys.end(), member.key) == keys.end()) kept.push_back(std::move(member));
  }
  return kept;
}

/// Compares entry by entry, so that a failure says which one. Both peers read a carriage return from XML and
/// keep it in binary, but write it to XML as it is, which reads as a line feed.
void expect_same(const std::string& bytes, const Tree& tree, const std::string& how) {
  constexpr const char* kCarriageReturns = "lines";
  const Result<Document> document = Document::parse(bytes);
  ASSERT_TRUE(document) << document.error().message << how;
  EXPECT_EQ(document->root().count(), tree.as<Dictionary>()->size()) << how;
  for (const Member& member : *tree.as<Dictionary>()) {
    const std::optional<Value> value = document->root().find(member.key);
    ASSERT_TRUE(value) << member.key << how;
    if (document->format() == Format::Xml && member.key == kCarriageReturns) continue;
    EXPECT_TRUE(Tree::of(*value) == member.value) << member.key << how;
  }
}

class Exchange : public ::testing::TestWithParam<Format> {};
INSTANTIATE_TEST_SUITE_P(Formats, Exchange, ::testing::Values(Format::Xml, Format::Binary),
                         [](const auto& format) { return format.param == Format::Xml ? "Xml" : "Binary"; });

TEST_P(Exchange, GoesThroughPythonUnchanged) {
  // Python's dates begin with the year 1.
  const Tree tree = without(everything(), {"early date"});
  const TemporaryFolder folder;
  write_file(folder / "in", *encode(tree, GetParam()));
  ASSERT_TRUE(python(kThroughPython, folder / "in", folder / "out"));
  expect_same(contents_of(folder / "out.xml"), tree, " by XML");
  expect_same(contents_of(folder / "out.bin"), tree, " by binary");
}

TEST_P(Exchange, GivesPythonAFileThatWasSpliced) {
  const Tree tree = without(everything(), {"early date"});
  const Result<Document> document = Document::parse(*encode(tree, GetParam()));
  const Result<std::string> bytes =
      splice(*document,
             {{"new", Array{1, "\xF0\x9F\x98\x80"}}, {"data", std::nullopt}, {"emoji \xF0\x9F\x98\x80", 2}});
  const TemporaryFolder folder;
  write_file(folder / "in", *bytes);
  ASSERT_TRUE(python(kThroughPython, folder / "in", folder / "out"));
  expect_same(contents_of(folder / "out.xml"), tree_of(*bytes), " by XML");
  expect_same(contents_of(folder / "out.bin"), tree_of(*bytes), " by binary");
}

TEST_P(Exchange, GoesThroughLibplistUnchanged) {
  // libplist writes the year 0 with a single digit, and -0 without its sign.
  const Tree tree = without(everything(), {"early date", "minus zero"});
  const auto [xml, binary] = through_libplist(*encode(tree, GetParam()), GetParam());
  ASSERT_FALSE(xml.empty());
  ASSERT_FALSE(binary.empty());
  expect_same(xml, tree, " by XML");
  expect_same(binary, tree, " by binary");
}

}  // namespace
}  // namespace wispen::plist
