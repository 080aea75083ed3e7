// tests/cells/segment_image_test.cpp: segments with pictures.

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

class SegmentImageTest : public PageTest {
 protected:
  void show_segments(const std::string& values, const std::string& titles) {
    const std::string list =
        specifier_list(item({{"cell", "PSSegmentCell"},
                             {"cellClass", "XXXSegmentTableImageCell"},
                             {"label", "Style"},
                             {"key", "style"}},
                            "<key>height</key><integer>20</integer><key>default</key><string>b</"
                            "string><key>validValues</key><array>" +
                                values + "</array><key>validTitles</key><array>" + titles + "</array>"));
    std::vector<std::pair<std::string, std::string>> files{
        {"Root.plist",
         specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
        {"SepSettingsLS.plist", list}};
    for (const char* const name : {"line-solid", "line-faded"}) {
      for (const char* const variant : {"", "@2x", "@3x"}) {
        const std::string file = std::string(name) + variant + ".png";
        std::ifstream bytes(std::string(WISPEN_TEST_BUNDLE) + "/" + file, std::ios::binary);
        files.emplace_back(file, std::string(std::istreambuf_iterator<char>(bytes), {}));
      }
    }
    show("SepSettingsCell", files);
  }
  static std::string strings(std::initializer_list<const char*> texts) {
    std::string xml;
    for (const char* const text : texts) xml += std::string("<string>") + text + "</string>";
    return xml;
  }
  static UISegmentedControl control() {
    return cell<PSSegmentTableCell>("style").control<UISegmentedControl>();
  }
};

TEST_F(SegmentImageTest, ShowsAnImageForEachTitleThatNamesOne) {
  show_segments(strings({"a", "b", "c"}), strings({"line-solid", "line-faded", "no-such-image"}));
  EXPECT_EQ(cell("style").bounds().size.height, 60);  // whatever the list says
  ASSERT_EQ(control().numberOfSegments(), 3U);
  for (const NSUInteger index : {0U, 1U}) {
    const UIImage image = control().imageForSegmentAtIndex(index);
    ASSERT_TRUE(image) << index;
    EXPECT_EQ(image.renderingMode(), UIImageRenderingMode::AlwaysOriginal);
  }
  EXPECT_FALSE(control().imageForSegmentAtIndex(2));
  EXPECT_EQ(control().titleForSegmentAtIndex(2).utf8(), "no-such-image");
  EXPECT_EQ(control().selectedSegmentIndex(), 1);
}

TEST_F(SegmentImageTest, PutsBothImagesOfEqualValuesOnTheFirst) {
  show_segments(strings({"a", "a", "b"}), strings({"line-solid", "line-faded", "word"}));
  EXPECT_TRUE(control().imageForSegmentAtIndex(0));
  EXPECT_FALSE(control().imageForSegmentAtIndex(1));
  EXPECT_EQ(control().titleForSegmentAtIndex(1).utf8(), "line-faded");  // equal values share one title
}

std::vector<std::string> performed;
objc::Original<NSObject(objc::Selector)> perform;

NSObject note_performed(const PSSpecifier& self, objc::Selector selector) {
  performed.emplace_back(selector.name());
  return perform(self, selector);
}

TEST_F(SegmentImageTest, AsksForTheValuesByPerformingTheirSelector) {
  performed.clear();
  objc::Category<PSSpecifier>().method<"performSelector:", &note_performed>(perform);
  show_segments(strings({"a"}), strings({"line-solid"}));
  EXPECT_THAT(performed, ::testing::Contains("values"));
}

TEST_F(SegmentImageTest, StaysWithoutValues) {
  show_segments("", "");
  EXPECT_EQ(control().numberOfSegments(), 0U);
}

TEST_F(SegmentImageTest, LeavesAValueWithoutATitleAsItIs) {
  show_segments(strings({"a", "b"}), strings({"line-solid"}));
  EXPECT_TRUE(control().imageForSegmentAtIndex(0));
  EXPECT_FALSE(control().imageForSegmentAtIndex(1));
}

TEST_F(SegmentImageTest, IsRefreshedFromTheRowThatIsGiven) {
  show_segments(strings({"a", "b"}), strings({"line-solid", "word"}));
  const auto made = make_cell<PSSegmentTableCell>("XXXSegmentTableImageCell", cell("style").specifier());
  const PSSpecifier other = plain_specifier();
  NSMutableArray values = NSMutableArray::array();
  NSMutableArray titles = NSMutableArray::array();
  for (const char* const name : {"word", "line-faded"}) {
    values.addObject(NSString(name));
    titles.addObject(NSString(name));
  }
  objc::send<"setValues:titles:">(other, values, titles);
  made.refreshCellContentsWithSpecifier(other);
  EXPECT_FALSE(made.control<UISegmentedControl>().imageForSegmentAtIndex(0));
  EXPECT_TRUE(made.control<UISegmentedControl>().imageForSegmentAtIndex(1));
}

TEST_F(SegmentImageTest, StoresWhatIsTapped) {
  show_segments(strings({"a", "b"}), strings({"line-solid", "line-faded"}));
  const Json view = *part(*row("style"), "UISegmentedControl");
  const double x = view["frame"][0].get<double>() + view["frame"][2].get<double>() / 4;
  const double y = view["frame"][1].get<double>() + view["frame"][3].get<double>() / 2;
  wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, x, y);
  wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, x, y);
  settle();
  const auto stored = NSDictionary::dictionaryWithContentsOfFile(domain_file().c_str());
  EXPECT_EQ(stored.objectForKey<NSString>("style"_ns).utf8(), "a");
}

TEST_F(SegmentImageTest, LooksForItsImagesAtEveryRefresh) {
  show_segments(strings({"a", "b"}), strings({"line-solid", "later"}));
  EXPECT_FALSE(control().imageForSegmentAtIndex(1));
  std::filesystem::copy_file(std::string(WISPEN_TEST_BUNDLE) + "/line-solid.png",
                             bundle_folder() / "later.png");
  objc::send<"reloadSpecifiers">(top());
  settle();
  EXPECT_TRUE(control().imageForSegmentAtIndex(1));
}

}  // namespace
}  // namespace wispen::testing
