// tests/controllers/preference_store_test.cpp: the values of the pages, through every page's own methods.

#include <array>
#include <filesystem>
#include <string>

#include "tests/support/host_fixture.hpp"
#include "tests/support/raised.hpp"

namespace wispen::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::array kPages{"WispRootListController", "SepSettingsCell",       "BackgroundSettingsCell",
                            "ContextMenuLabels",      "Expanded3DAdjustments", "SepSettingsHSCell"};

PSSpecifier specifier_with(const NSMutableDictionary& properties) {
  PSSpecifier specifier = objc::make<PSSpecifier>();
  objc::send<"setProperties:">(specifier, properties);
  return specifier;
}

PSSpecifier specifier_for(const char* key, const NSObject& default_value = NSObject(),
                          const char* notification = nullptr) {
  NSMutableDictionary properties = NSMutableDictionary::dictionary();
  if (key != nullptr) properties.setObject(NSString(key), "key"_ns);
  if (default_value) properties.setObject(default_value, "default"_ns);
  if (notification != nullptr) properties.setObject(NSString(notification), "PostNotification"_ns);
  return specifier_with(properties);
}

NSObject read(const PSListController& page, const PSSpecifier& specifier) {
  return objc::send<"readPreferenceValue:", NSObject>(page, specifier);
}
void write(const PSListController& page, const NSObject& value, const PSSpecifier& specifier) {
  objc::send<"setPreferenceValue:specifier:">(page, value, specifier);
}
NSNumber number(int value) { return NSNumber::numberWithInt(value); }

class PreferenceStoreTest : public HostTest, public ::testing::WithParamInterface<const char*> {
 protected:
  using HostTest::HostTest;
  void SetUp() override {
    HostTest::SetUp();
    load_shipped_bundle();
    page_ = open_page(GetParam());
  }
  void TearDown() override {
    page_ = nullptr;
    HostTest::TearDown();
  }
  NSDictionary domain() const { return NSDictionary::dictionaryWithContentsOfFile(domain_file().c_str()); }

  PSListController page_;
};

INSTANTIATE_TEST_SUITE_P(EveryPage, PreferenceStoreTest, ::testing::ValuesIn(kPages),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(PreferenceStoreTest, ReadsTheDefaultWhereThereIsNoFile) {
  EXPECT_TRUE(read(page_, specifier_for("k", number(1))).isEqual(number(1)));
  EXPECT_FALSE(read(page_, specifier_for("k")));
  EXPECT_FALSE(fs::exists(domain_file())) << "reading made the file";
}

TEST_P(PreferenceStoreTest, TheFirstWriteMakesAFileWithOneKey) {
  write(page_, number(7), specifier_for("thickness"));
  EXPECT_EQ(domain().count(), 1u);
  EXPECT_TRUE(domain().objectForKey("thickness"_ns).isEqual(number(7)));
}

TEST_P(PreferenceStoreTest, AWriteKeepsEveryOtherKeyByteForByte) {
  const std::string before =
      "<?xml version=\"1.0\"?>\n<!-- mine --><plist><dict>\n <key>a</key>  <real>1.50</real>\n"
      "<key>b</key><string>\xC3\xA4 &amp; \xF0\x9F\x8D\x8E</string>\n</dict></plist>";
  write_file(domain_file(), before);
  write(page_, number(2), specifier_for("c"));
  const std::string after = contents_of(domain_file());
  EXPECT_NE(after.find("<!-- mine --><plist><dict>\n <key>a</key>  <real>1.50</real>\n"), std::string::npos);
  EXPECT_NE(after.find("<string>\xC3\xA4 &amp; \xF0\x9F\x8D\x8E</string>"), std::string::npos);
  EXPECT_TRUE(read(page_, specifier_for("c")).isEqual(number(2)));
}

TEST_P(PreferenceStoreTest, AnOldStyleFileIsReadAndItsKeysOutliveTheNextWrite) {
  write_file(domain_file(), "{ k = old; }");
  EXPECT_TRUE(read(page_, specifier_for("k")).isEqual("old"_ns));
  write(page_, number(1), specifier_for("new"));
  EXPECT_TRUE(domain().objectForKey("k"_ns).isEqual("old"_ns));
  EXPECT_TRUE(domain().objectForKey("new"_ns).isEqual(number(1)));
}

TEST_P(PreferenceStoreTest, AStoredFalseOrZeroWinsOverTheDefault) {
  write(page_, NSNumber::numberWithBool(false), specifier_for("off"));
  write(page_, number(0), specifier_for("zero"));
  EXPECT_FALSE(read(page_, specifier_for("off", NSNumber::numberWithBool(true))).as<NSNumber>().boolValue());
  EXPECT_EQ(read(page_, specifier_for("zero", number(5))).as<NSNumber>().intValue(), 0);
}

TEST_P(PreferenceStoreTest, AnOddValueIsReturnedAsItIs) {
  write_file(domain_file(), plist("<dict><key>k</key><array><string>x</string></array></dict>"));
  EXPECT_TRUE(objc::cast_or_nil<NSArray>(read(page_, specifier_for("k", number(1)))));
}

TEST_P(PreferenceStoreTest, PostsTheRowsNotificationOnceAWriteAlsoForAnEqualValue) {
  const PSSpecifier loud = specifier_for("k", NSObject(), "test/changed");
  write(page_, number(1), loud);
  write(page_, number(1), loud);
  write(page_, number(1), specifier_for("k"));
  EXPECT_THAT(posted(), ::testing::ElementsAre("test/changed", "test/changed"));
}

TEST_P(PreferenceStoreTest, ANotificationComesAfterTheValueIsInTheFile) {
  struct Seen {
    std::string file;
    int value = 0;
  } seen{domain_file().string()};
  ASSERT_GT(wispen_host_listen(
                "test/changed",
                [](const char*, unsigned long long, void* context) {
                  auto* heard = static_cast<Seen*>(context);
                  heard->value = NSDictionary::dictionaryWithContentsOfFile(heard->file.c_str())
                                     .objectForKey<NSNumber>("k"_ns)
                                     .intValue();
                },
                &seen),
            0);
  write(page_, number(9), specifier_for("k", NSObject(), "test/changed"));
  ASSERT_EQ(wispen_host_run_until_idle(), 1);
  EXPECT_EQ(seen.value, 9);
}

TEST_P(PreferenceStoreTest, AFileThatCannotBeReadCountsAsEmptyAndTheNextWriteReplacesIt) {
  for (const char* const damaged :
       {"", "garbage", "<plist><dict><key>a</key>", "bplist00\xff\xff", "<plist><array/></plist>"}) {
    write_file(domain_file(), damaged);
    EXPECT_TRUE(read(page_, specifier_for("k", number(3))).isEqual(number(3))) << damaged;
    write(page_, number(4), specifier_for("k"));
    EXPECT_EQ(domain().count(), 1u) << damaged;
    EXPECT_EQ(domain().objectForKey<NSNumber>("k"_ns).intValue(), 4);
  }
}

TEST_P(PreferenceStoreTest, AFailedWriteIsSilentAndIsNotifiedAllTheSame) {
  fs::create_directories(domain_file() / "in the way");  // a folder where the file should be
  write(page_, number(1), specifier_for("k", NSObject(), "test/changed"));
  EXPECT_THAT(posted(), ::testing::ElementsAre("test/changed"));
  EXPECT_TRUE(fs::is_directory(domain_file()));
  EXPECT_TRUE(read(page_, specifier_for("k", number(5))).isEqual(number(5)));
}

TEST_P(PreferenceStoreTest, AValueOrKeyThatNoFileCanHoldIsDroppedInSilenceAndNotifiedAllTheSame) {
  const std::string before = plist("<dict><key>k</key><integer>1</integer></dict>");
  write_file(domain_file(), before);
  write(page_, page_, specifier_for("k", NSObject(), "test/changed"));
  EXPECT_EQ(contents_of(domain_file()), before);
  const PSSpecifier odd = specifier_for(nullptr, number(8), "test/changed");
  odd.setProperty(number(5), "key"_ns);
  EXPECT_TRUE(read(page_, odd).isEqual(number(8)));
  write(page_, number(1), odd);
  EXPECT_EQ(contents_of(domain_file()), before);
  EXPECT_THAT(posted(), ::testing::ElementsAre("test/changed", "test/changed"));
}

TEST_P(PreferenceStoreTest, IsNotTheFrameworksStoreWhateverDomainTheRowNames) {
  const PSSpecifier specifier = specifier_for("k", number(3), "test/changed");
  specifier.setProperty("some.domain"_ns, "defaults"_ns);
  const auto other = device_path("/var/mobile/Library/Preferences/some.domain.plist");
  write_file(other, plist("<dict><key>k</key><integer>8</integer></dict>"));
  EXPECT_TRUE(read(page_, specifier).isEqual(number(3)));
  write(page_, number(4), specifier);
  EXPECT_EQ(
      NSDictionary::dictionaryWithContentsOfFile(other.c_str()).objectForKey<NSNumber>("k"_ns).intValue(), 8);
  EXPECT_TRUE(domain().objectForKey("k"_ns).isEqual(number(4)));
  EXPECT_THAT(posted(), ::testing::ElementsAre("test/changed"));
}

TEST_P(PreferenceStoreTest, AWriteLeavesThePageAsItIs) {
  const NSArray rows = page_.specifiers();
  objc::send<"clearSpecifierChanges">(page_);
  write(page_, "none"_ns, specifier_for("regularMode"));  // which rows are shown by
  EXPECT_EQ(page_.specifiers(), rows);
  EXPECT_EQ((objc::send<"specifierChanges", NSArray>(page_)).count(), 0U);
  EXPECT_EQ(wispen_host_sound_count(), 0U);
}

TEST_P(PreferenceStoreTest, ARowWithoutAKeyReadsItsDefaultAndRaisesWhenWritten) {
  const PSSpecifier keyless = specifier_for(nullptr, number(8), "test/changed");
  EXPECT_TRUE(read(page_, keyless).isEqual(number(8)));
  EXPECT_EQ(raised_by([&] { write(page_, number(1), keyless); }), "NSInvalidArgumentException");
  EXPECT_EQ(raised_by([&] { write(page_, NSObject(), specifier_for("k")); }), "NSInvalidArgumentException");
  EXPECT_FALSE(fs::exists(domain_file()));
  const std::string before = plist("<dict><key>k</key><integer>1</integer></dict>");
  write_file(domain_file(), before);
  EXPECT_EQ(raised_by([&] { write(page_, number(1), keyless); }), "NSInvalidArgumentException");
  EXPECT_EQ(raised_by([&] { write(page_, NSObject(), specifier_for("k")); }), "NSInvalidArgumentException");
  EXPECT_EQ(contents_of(domain_file()), before);
  EXPECT_TRUE(posted().empty());
}

TEST_P(PreferenceStoreTest, EveryPageSeesWhatAnotherWrote) {
  write(page_, "shared"_ns, specifier_for("k"));
  for (const char* const other : kPages) {
    EXPECT_EQ(read(open_page(other), specifier_for("k")).as<NSString>().utf8(), "shared") << other;
  }
}

TEST_P(PreferenceStoreTest, HasMethodsOfItsOwn) {
  // The sub-pages share no base that could give them these.
  const auto own = [&](objc::Selector selector) {
    const objc::abi::Class cls = objc::class_of(page_).borrow();
    const objc::ClassRef store_owner = std::string(GetParam()) == "WispRootListController"
                                           ? objc::ClassRef(cls).superclass()
                                           : objc::ClassRef(cls);
    return objc::abi::method_getImplementation(
               objc::abi::class_getInstanceMethod(store_owner.borrow(), selector.borrow())) !=
           objc::abi::method_getImplementation(
               objc::abi::class_getInstanceMethod(store_owner.superclass().borrow(), selector.borrow()));
  };
  EXPECT_TRUE(own(objc::selector<"readPreferenceValue:">()));
  EXPECT_TRUE(own(objc::selector<"setPreferenceValue:specifier:">()));
  EXPECT_TRUE(objc::responds_to(page_, objc::selector<"isSpecifierVisible:">()));
}

TEST_P(PreferenceStoreTest, WritersAtTheSameMomentAreNotLockedOnPurpose) {
  // Two writers that both read before either writes: the later write wins whole. Writes one after the other
  // never lose each other's keys.
  write(page_, number(1), specifier_for("first"));
  const auto early = NSMutableDictionary::dictionaryWithContentsOfFile(domain_file().c_str());
  write(page_, number(2), specifier_for("second"));
  EXPECT_EQ(domain().count(), 2u);
  early.setObject(number(3), "third"_ns);
  ASSERT_TRUE(early.writeToFile(domain_file().c_str(), true));
  EXPECT_FALSE(domain().objectForKey("second"_ns));
  EXPECT_TRUE(domain().objectForKey("first"_ns));
}

class RootfulStoreTest : public HostTest {
 protected:
  RootfulStoreTest() : HostTest("rootful") {}
};

TEST_F(RootfulStoreTest, KeepsItsFileWhereThatLayoutHasIt) {
  load_shipped_bundle();
  const auto page = open_page("SepSettingsCell");
  write(page, number(1), specifier_for("k"));
  EXPECT_TRUE(fs::exists(folder_ / "root/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist"));
  EXPECT_FALSE(fs::exists(folder_ / "root/var/jb"));
}

class RootlessStoreTest : public HostTest {};

TEST_F(RootlessStoreTest, KeepsItsFileBelowTheJailbreaksRoot) {
  load_shipped_bundle();
  const auto page = open_page("SepSettingsCell");
  write(page, number(1), specifier_for("k"));
  EXPECT_TRUE(
      fs::exists(folder_ / "root/var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist"));
}

}  // namespace
}  // namespace wispen::testing
