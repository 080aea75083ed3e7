// tests/host/foundation/file_dictionaries_test.cpp: Foundation's dictionaries over property-list files.

#include <sys/resource.h>
#include <sys/stat.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <string>

#include "tests/host/plist/binary_maker.hpp"
#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

namespace fs = std::filesystem;

class FileDictionariesTest : public HostTest {
 protected:
  std::string file(const std::string& bytes) const {
    write_file(folder_ / "root/file.plist", bytes);
    return folder_ / "root/file.plist";
  }
  static NSDictionary read(const std::string& path) {
    return NSDictionary::dictionaryWithContentsOfFile(path.c_str());
  }
  static NSMutableDictionary read_mutable(const std::string& path) {
    return NSMutableDictionary::dictionaryWithContentsOfFile(path.c_str());
  }
};

TEST_F(FileDictionariesTest, ReadsEveryKindOfValue) {
  const auto dictionary = read(file(
      plist("<dict><key>b</key><true/><key>i</key><integer>-5</integer><key>u</"
            "key><integer>18446744073709551615</integer>"
            "<key>r</key><real>0.1</real><key>s</key><string>\xF0\x9F\x8D\x8E "
            "&lt;</string><key>d</key><data>AQID</data>"
            "<key>t</key><date>2001-01-01T00:01:00Z</date><key>a</key><array><integer>1</integer></array>"
            "<key>n</key><dict><key>x</key><string>y</string></dict></dict>")));
  ASSERT_TRUE(dictionary);
  EXPECT_EQ(dictionary.count(), 9u);
  EXPECT_TRUE(dictionary.objectForKey<NSNumber>("b"_ns).boolValue());
  EXPECT_EQ(dictionary.objectForKey<NSNumber>("i"_ns).longLongValue(), -5);
  EXPECT_EQ(dictionary.objectForKey<NSNumber>("u"_ns).unsignedLongLongValue(), 18446744073709551615ULL);
  EXPECT_EQ(dictionary.objectForKey<NSNumber>("r"_ns).doubleValue(), 0.1);
  EXPECT_EQ(dictionary.objectForKey<NSString>("s"_ns).utf8(), "\xF0\x9F\x8D\x8E <");
  EXPECT_EQ(dictionary.objectForKey<NSData>("d"_ns).length(), 3u);
  EXPECT_EQ(dictionary.objectForKey<NSDate>("t"_ns).timeIntervalSinceReferenceDate(), 60.0);
  EXPECT_EQ(dictionary.objectForKey<NSArray>("a"_ns).count(), 1u);
  EXPECT_EQ(dictionary.objectForKey<NSDictionary>("n"_ns).objectForKey<NSString>("x"_ns).utf8(), "y");
  EXPECT_FALSE(dictionary.objectForKey("missing"_ns));
  EXPECT_EQ(dictionary.allKeys().count(), 9u);
}

TEST_F(FileDictionariesTest, ADateBeyondTheCalendarIsItsFirstOrItsLastAndKeepsItsBytes) {
  const std::string path =
      file(plist("<dict><key>before</key><date>0000-01-01T00:00:00Z</date><key>past</key>"
                 "<date>0000-12-30T00:00:00Z</date><key>first</key><date>0001-01-01T00:00:00Z</date>"
                 "<key>far</key><date>12345678-01-01T00:00:00Z</date></dict>"));
  const auto dictionary = read_mutable(path);
  ASSERT_TRUE(dictionary);
  for (const char* const key : {"before", "past", "first"}) {
    EXPECT_EQ(dictionary.objectForKey(NSString(key)).description().utf8(), "0001-01-01 00:00:00 +0000")
        << key;
  }
  EXPECT_EQ(dictionary.objectForKey("far"_ns).description().utf8(), "9999-12-31 23:59:59 +0000");
  EXPECT_THAT(dictionary.description().utf8(), ::testing::HasSubstr("0001-01-01 00:00:00 +0000"));
  dictionary.setObject("x"_ns, "k"_ns);
  ASSERT_TRUE(dictionary.writeToFile(path.c_str(), true));
  EXPECT_THAT(contents_of(path), ::testing::HasSubstr("<date>0000-12-30T00:00:00Z</date>"));
}

TEST_F(FileDictionariesTest, ADateDescribesItselfWithoutTheTimeZone) {
  const auto text = [](double seconds) {
    return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds).description().utf8();
  };
  EXPECT_EQ(text(0), "2001-01-01 00:00:00 +0000");
  EXPECT_EQ(text(-1e300), "-1e+300 s since 2001-01-01 00:00:00 +0000");
  EXPECT_EQ(NSArray(objc::send<"arrayWithObject:", NSArray>(
                        objc::class_for<NSArray>(), NSDate::dateWithTimeIntervalSinceReferenceDate(0)))
                .description()
                .utf8(),
            "(\"2001-01-01 00:00:00 +0000\")");
}

TEST_F(FileDictionariesTest, ADateThatIsNotANumberMakesABinaryFileUnreadable) {
  for (const double seconds : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    std::string date = "\x33";
    plist::append_big_endian(date, std::bit_cast<std::uint64_t>(seconds), 8);
    EXPECT_FALSE(read(file(plist::testing::binary({"\xD1\x01\x02", "\x51k", date})))) << seconds;
  }
}

TEST_F(FileDictionariesTest, WhatCannotBeReadIsNilForBothKinds) {
  for (const char* const damaged : {"", " \n", "hello", "<plist><array/></plist>",
                                    "<plist><dict><key>a</key></dict></plist>", "bplist00", "{ a = ; }"}) {
    EXPECT_FALSE(read(file(damaged))) << damaged;
    EXPECT_FALSE(read_mutable(file(damaged))) << damaged;
  }
  EXPECT_FALSE(read(folder_ / "missing.plist"));
  EXPECT_FALSE(read(folder_.path()));
  EXPECT_FALSE(NSDictionary::dictionaryWithContentsOfFile(NSString()));
}

TEST_F(FileDictionariesTest, TheImmutableKindIsImmutableAndTheOtherIsNot) {
  const std::string path = file(plist("<dict><key>a</key><integer>1</integer></dict>"));
  EXPECT_FALSE(read(path).isKindOfClass(objc::class_for<NSMutableDictionary>()));
  const auto changing = read_mutable(path);
  EXPECT_TRUE(changing.isKindOfClass(objc::class_for<NSMutableDictionary>()));
  changing.setObject("two"_ns, "b"_ns);
  changing.removeObjectForKey("a"_ns);
  EXPECT_EQ(changing.count(), 1u);
  EXPECT_FALSE(changing.objectForKey("a"_ns));
  EXPECT_EQ(read(path).count(), 1u) << "the file changes only when it is written";
}

TEST_F(FileDictionariesTest, ChangesAreSeenInCountsKeysAndCopies) {
  const auto dictionary = read_mutable(
      file(plist("<dict><key>a</key><integer>1</integer><key>b</key><integer>2</integer></dict>")));
  dictionary.setObject("new"_ns, "a"_ns);
  dictionary.setObject("c"_ns, "c"_ns);
  dictionary.removeObjectForKey("b"_ns);
  dictionary.removeObjectForKey("never there"_ns);
  EXPECT_EQ(dictionary.count(), 2u);
  EXPECT_EQ(dictionary.allKeys().count(), 2u);
  const auto copy = objc::send<"copy", NSDictionary>(dictionary);
  EXPECT_TRUE(copy.isEqual(dictionary));
  dictionary.setObject("later"_ns, "d"_ns);
  EXPECT_EQ(copy.count(), 2u);
  EXPECT_EQ(copy.objectForKey<NSString>("a"_ns).utf8(), "new");
  dictionary.setObject("back"_ns, "b"_ns);
  EXPECT_EQ(dictionary.objectForKey<NSString>("b"_ns).utf8(), "back");
  EXPECT_EQ(dictionary.count(), 4u);
}

TEST_F(FileDictionariesTest, NilObjectsAndKeysRaise) {
  const auto dictionary = read_mutable(file(plist("<dict/>")));
  EXPECT_ANY_THROW(dictionary.setObject(NSObject(), "a"_ns));
  EXPECT_ANY_THROW(dictionary.setObject("a"_ns, NSObject()));
  EXPECT_EQ(dictionary.count(), 0u);
}

TEST_F(FileDictionariesTest, WritesUntouchedValuesByteForByteAndKeepsTheFilesMode) {
  const std::string path =
      file("<plist><dict><!-- c --><key>a</key>\t<real>1.500</real><key>b</key><true/></dict></plist>");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const auto dictionary = read_mutable(path);
  dictionary.setObject(NSNumber::numberWithBool(false), "b"_ns);
  ASSERT_TRUE(dictionary.writeToFile(path.c_str(), true));
  EXPECT_EQ(contents_of(path),
            "<plist><dict><!-- c --><key>a</key>\t<real>1.500</real><key>b</key><false/></dict></plist>");
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777u, 0640u);
}

TEST_F(FileDictionariesTest, ABinaryFileStaysBinary) {
  const auto original = NSMutableDictionary::dictionary();
  original.setObject("text"_ns, "s"_ns);
  const std::string binary =
      "bplist00\xd1\x01\x02QaQb\x08\x0b\x0d" +
      std::string("\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x0f", 32);
  const std::string path = file(binary);
  const auto dictionary = read_mutable(path);
  ASSERT_TRUE(dictionary);
  EXPECT_EQ(dictionary.objectForKey<NSString>("a"_ns).utf8(), "b");
  dictionary.setObject(NSNumber::numberWithInt(300), "n"_ns);
  ASSERT_TRUE(dictionary.writeToFile(path.c_str(), true));
  EXPECT_EQ(contents_of(path).substr(0, 8), "bplist00");
  EXPECT_EQ(read(path).objectForKey<NSNumber>("n"_ns).intValue(), 300);
  EXPECT_EQ(read(path).objectForKey<NSString>("a"_ns).utf8(), "b");
}

TEST_F(FileDictionariesTest, APlainDictionaryIsWrittenWholeAndReadBackEqual) {
  const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
  dictionary.setObject("\xC3\xA9\xE2\x80\xA2\xF0\x9F\x8D\x8E"_ns, "accented \xC3\xA4"_ns);
  dictionary.setObject(NSNumber::numberWithFloat(0.1F), "float"_ns);
  dictionary.setObject(NSNumber::numberWithBool(true), "yes"_ns);
  dictionary.setObject(NSNumber::numberWithInt(1), "one"_ns);
  dictionary.setObject(NSNumber::numberWithDouble(1e-300), "tiny"_ns);
  const std::string path = folder_ / "root/made.plist";
  ASSERT_TRUE(dictionary.writeToFile(path.c_str(), true));
  EXPECT_TRUE(read(path).isEqual(dictionary));
  const std::string bytes = contents_of(path);
  EXPECT_NE(bytes.find("<true/>"), std::string::npos) << "yes is not 1";
  EXPECT_NE(bytes.find("<integer>1</integer>"), std::string::npos) << "1 is not yes";
}

TEST_F(FileDictionariesTest, WhatNoPropertyListHoldsIsNotWrittenAndTheFileStays) {
  const std::string path = file(plist("<dict><key>a</key><integer>1</integer></dict>"));
  const std::string before = contents_of(path);
  const auto dictionary = read_mutable(path);
  dictionary.setObject(objc::make<NSObject>(), "object"_ns);
  EXPECT_FALSE(dictionary.writeToFile(path.c_str(), true));
  const auto numbered = read_mutable(path);
  numbered.setObject("x"_ns, NSNumber::numberWithInt(1));
  EXPECT_FALSE(numbered.writeToFile(path.c_str(), true));
  const NSMutableDictionary circle = NSMutableDictionary::dictionary();
  circle.setObject(circle, "me"_ns);
  EXPECT_FALSE(circle.writeToFile(path.c_str(), true));
  circle.removeObjectForKey("me"_ns);
  EXPECT_EQ(contents_of(path), before);
  EXPECT_EQ(problems().size(), 3u);
}

TEST_F(FileDictionariesTest, AReadThatFailedIsReportedAndAMissingFileIsNot) {
  const std::string path = file(plist("<dict><key>a</key><integer>1</integer></dict>"));
  EXPECT_FALSE(read("/tmp/missing.plist"));
  EXPECT_TRUE(problems().empty());
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit none{0, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const NSMutableDictionary unread = read_mutable(path);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_FALSE(unread);
  EXPECT_THAT(problems(), ::testing::ElementsAre(::testing::HasSubstr("Too many open files")));
}

TEST_F(FileDictionariesTest, AllocAndInitReadAFileToo) {
  const std::string path = file(plist("<dict><key>a</key><integer>1</integer></dict>"));
  const auto dictionary =
      objc::allocate<NSMutableDictionary>().initialize<"initWithContentsOfFile:">(NSString(path.c_str()));
  ASSERT_TRUE(dictionary);
  dictionary.setObject("b"_ns, "b"_ns);
  EXPECT_EQ(dictionary.count(), 2u);
  EXPECT_EQ(dictionary.retainCount(), 1u);
  EXPECT_FALSE(objc::allocate<NSDictionary>().initialize<"initWithContentsOfFile:">("/nonexistent"_ns));
}

TEST_F(FileDictionariesTest, APathOfThePhonesIsLookedUpBelowTheDeviceRoot) {
  const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
  dictionary.setObject("x"_ns, "k"_ns);
  ASSERT_TRUE(dictionary.writeToFile("/var/mobile/Library/Preferences/some.domain.plist"_ns, true));
  EXPECT_TRUE(fs::exists(folder_ / "root/var/mobile/Library/Preferences/some.domain.plist"));
  EXPECT_FALSE(fs::exists("/var/mobile/Library/Preferences/some.domain.plist"));
  EXPECT_TRUE(
      NSDictionary::dictionaryWithContentsOfFile("/var/mobile/Library/Preferences/some.domain.plist"_ns));
}

TEST_F(FileDictionariesTest, ThousandsOfReadsAndWritesLeaveNothingBehind) {
  const std::string path = file(plist("<dict><key>a</key><integer>1</integer></dict>"));
  objc::Weak<NSMutableDictionary> last;
  for (int i = 0; i < 2000; ++i) {
    const objc::AutoreleasePool pool;
    const auto dictionary = read_mutable(path);
    dictionary.setObject(NSNumber::numberWithInt(i), "a"_ns);
    last = dictionary;
  }
  EXPECT_FALSE(last.lock());
}

}  // namespace
}  // namespace wispen::testing
