// tests/cells/header_test.cpp: the banner's two weights, and the version that the package manager tells.

#include <sys/stat.h>

#include "platform/Foundation/NSTask.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::Pointwise;

/// The commands that were started, word by word.
std::vector<std::string> commands;
objc::Original<void(NSString)> set_launch_path;
void note_launch_path(const NSTask& task, const NSString& path) {
  commands.push_back(path.utf8());
  const auto arguments = objc::send<"arguments", NSArray>(task);
  for (NSUInteger i = 0; i < arguments.count(); ++i) {
    commands.push_back(arguments.objectAtIndex<NSString>(i).utf8());
  }
  set_launch_path(task, path);
}

/// The labels that were told to lay themselves out, while a test listens.
std::vector<UIView>* laid_out_views = nullptr;
objc::Original<void()> lay_out_if_needed;
void note_layout(const UILabel& self) {
  if (laid_out_views != nullptr) laid_out_views->push_back(self);
  lay_out_if_needed(self);
}

class HeaderTest : public PageTest {
 protected:
  void SetUp() override {
    PageTest::SetUp();
    load_shipped_bundle();
  }
  static PSTableCell make() {
    return allocate<PSTableCell>("WispHeader").initialize<"initWithSpecifier:">(plain_specifier());
  }
  /// The title and the version.
  static UILabel label(const PSTableCell& cell, NSUInteger which) {
    std::vector<UILabel> labels;
    const NSArray subviews = cell.subviews();
    for (NSUInteger i = 0; i < subviews.count(); ++i) {
      if (const auto each = objc::cast_or_nil<UILabel>(subviews.objectAtIndex(i))) labels.push_back(each);
    }
    EXPECT_EQ(labels.size(), 2U);
    return labels.at(which);
  }
  /// A record of the package in the device root's own database.
  void install(const std::string& version) {
    const auto database = device_path("/var/jb/var/lib/dpkg");
    for (const char* const folder : {"info", "updates"}) {
      std::filesystem::create_directories(database / folder);
    }
    write_file(database / "status",
               "Package: com.brightmoss.wispen\nStatus: install ok installed\n"
               "Maintainer: Nobody <nobody@example.com>\nArchitecture: iphoneos-arm64\n"
               "Version: " +
                   version + "\nDescription: test\n\n");
  }
  static void write_file(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
};

TEST_F(HeaderTest, SetsTheNameInTwoWeights) {
  const PSTableCell cell = make();
  EXPECT_TRUE(cell.reuseIdentifier().isEqual("Banner"_ns));
  const UILabel title = label(cell, 0);
  EXPECT_EQ(title.text().utf8(), "WISPEN");
  EXPECT_EQ(title.frame(), (CGRect{{0, 23}, {cell.frame().size.width, 10}}));
  EXPECT_EQ(title.autoresizingMask(), 18U);
  EXPECT_EQ(title.numberOfLines(), 1);
  EXPECT_EQ(title.textAlignment(), NSTextAlignment::Center);
  EXPECT_THAT(rgba(title.textColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  NSRange range{};
  const NSDictionary heavy = title.attributedText().attributesAtIndex(0, &range);
  EXPECT_EQ(range.location, 0U);
  EXPECT_EQ(range.length, 4U);
  const auto font = heavy.objectForKey<UIFont>(NSFontAttributeName);
  EXPECT_EQ((objc::send<"fontName", NSString>(font).utf8()), "HelveticaNeue");
  EXPECT_EQ((objc::send<"pointSize", CGFloat>(font)), 34);
  EXPECT_EQ((objc::send<"fontName", NSString>(title.font()).utf8()), "HelveticaNeue-Light");
  EXPECT_EQ((objc::send<"pointSize", CGFloat>(title.font())), 34);
}

TEST_F(HeaderTest, SetsTheVersionSmallAndGreyBelowTheName) {
  const UILabel version = label(make(), 1);
  EXPECT_EQ((objc::send<"fontName", NSString>(version.font()).utf8()), "HelveticaNeue-Light");
  EXPECT_EQ((objc::send<"pointSize", CGFloat>(version.font())), 15);
  EXPECT_TRUE(version.textColor().isEqual(UIColor::systemGrayColor()));
  EXPECT_EQ(version.textAlignment(), NSTextAlignment::Center);
  EXPECT_EQ(version.autoresizingMask(), 18U);
  EXPECT_EQ(version.numberOfLines(), 1);
}

TEST_F(HeaderTest, LaysOutTheNameOnlyBeforeItIsAdded) {
  const PSTableCell cell = make();
  std::vector<UIView> asked;
  laid_out_views = &asked;
  objc::Category<UILabel>().method<"layoutIfNeeded", &note_layout>(lay_out_if_needed);
  const PSTableCell noted = make();
  laid_out_views = nullptr;
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_EQ(asked[0], label(noted, 0));
}

TEST_F(HeaderTest, StandsFurtherLeftOnAPad) {
  ASSERT_EQ(wispen_host_set_look("device", "pad"), 1);
  const PSTableCell cell = make();
  EXPECT_EQ(label(cell, 0).frame().origin.x, -20);
  EXPECT_EQ(label(cell, 1).frame().origin.x, -20);
}

TEST_F(HeaderTest, IsAHundredPointsHighAtAnyWidth) {
  const PSTableCell cell = make();
  for (const double width : {0.0, 1.0, 390.0, 4096.0}) {
    EXPECT_EQ((objc::send<"preferredHeightForWidth:", CGFloat>(cell, width)), 100);
  }
}

TEST_F(HeaderTest, ShowsTheVersionOnceItIsKnown) {
  install("1.2.3");
  const PSTableCell cell = make();
  const UILabel version = label(cell, 1);
  EXPECT_EQ(version.text().utf8(), "Version unknown");
  EXPECT_EQ(version.alpha(), 0);
  EXPECT_EQ(version.frame(), (CGRect{{0, 55}, {cell.frame().size.width, 5}}));
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_EQ(version.text().utf8(), "Version 1.2.3\n");  // with the line feed that ends the answer
  EXPECT_EQ(version.alpha(), 1);
}

TEST_F(HeaderTest, AsksThePackageManagerThroughTheShell) {
  if (!set_launch_path) {
    objc::Category<NSTask>().method<"setLaunchPath:", &note_launch_path>(set_launch_path);
  }
  commands.clear();
  make();
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_THAT(commands, ElementsAre("/bin/sh", "-c",
                                    "dpkg -s com.brightmoss.wispen | grep -i version | cut -d' ' -f2"));
}

TEST_F(HeaderTest, AsksAgainForEachCell) {
  install("1.0");
  const PSTableCell before = make();
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  install("1.1");
  const PSTableCell after = make();
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_EQ(label(before, 1).text().utf8(), "Version 1.0\n");
  EXPECT_EQ(label(after, 1).text().utf8(), "Version 1.1\n");
}

TEST_F(HeaderTest, SaysThatItIsUnknownWhereNothingIsInstalled) {
  const PSTableCell cell = make();
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_EQ(label(cell, 1).text().utf8(), "Version unknown");
  EXPECT_EQ(label(cell, 1).alpha(), 1);
}

TEST_F(HeaderTest, ShowsEveryLineThatMatches) {
  install("1.0\nSection: version-of-it");
  const PSTableCell cell = make();
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_EQ(label(cell, 1).text().utf8(), "Version version-of-it\n1.0\n");
}

TEST_F(HeaderTest, SurvivesBytesThatAreNoText) {
  install("1.0\xFF\xFE");
  const PSTableCell cell = make();
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_EQ(label(cell, 1).text().utf8(), "Version unknown");
  EXPECT_EQ(label(cell, 1).alpha(), 1);
}

TEST_F(HeaderTest, KeepsTheLabelUntilTheAnswerThoughTheCellIsGone) {
  install("2.0");
  objc::Weak<NSObject> cell_seen;
  objc::Weak<UILabel> label_seen;
  {
    const objc::AutoreleasePool pool;
    const PSTableCell cell = make();
    cell_seen = cell;
    label_seen = label(cell, 1);
  }
  EXPECT_FALSE(cell_seen.lock());
  ASSERT_EQ(wispen_host_run_until_idle(), 1) << wispen_host_last_error();
  EXPECT_FALSE(label_seen.lock());
}

TEST_F(HeaderTest, IsARowOfTheRootPage) {
  install("3.1-4");
  show_shipped("root");
  const auto banner = row("banner");
  ASSERT_TRUE(banner);
  EXPECT_EQ((*banner)["class"], "WispHeader");
  EXPECT_EQ((*banner)["frame"][3], 100);
  EXPECT_TRUE(with_text("Version 3.1-4\n"));
}

}  // namespace
}  // namespace wispen::testing
