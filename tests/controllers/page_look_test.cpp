// tests/controllers/page_look_test.cpp: the root page's own look, on the screen and by messages.

#include <array>

#include "tests/support/class_variables.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

using ::testing::DoubleEq;
using ::testing::ElementsAre;
using ::testing::Pointwise;

class WispRootListController : public PSListController {
 public:
  static constexpr objc::FixedString kClass{"WispRootListController"};
  using PSListController::PSListController;
};

std::vector<std::string> heard;

/// A page that says how far its view is when the banner is asked for, and has none.
class BannerlessPage : public objc::Authored<BannerlessPage, WispRootListController> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestBannerlessPage"};
  using Authored::Authored;
  void make_banner() const {
    heard.emplace_back(table() ? "banner after the table" : "banner before the table");
  }
  static void define() {
    objc::Class<BannerlessPage>().method<"headerCell", &BannerlessPage::make_banner>().register_class();
  }
};

// What the root page passes on to the framework's own.
void note(const PSListController& page, const std::string& what) {
  if (page.isKindOfClass(objc::class_for<WispRootListController>())) heard.push_back(what);
}
objc::Original<void(bool)> will_appear;
objc::Original<void(bool)> will_disappear;
objc::Original<UIView(UITableView, NSInteger)> view_for_header;
objc::Original<CGFloat(UITableView, NSInteger)> height_for_header;

void note_will_appear(const PSListController& page, bool animated) {
  note(page, animated ? "will appear, animated" : "will appear");
  will_appear(page, animated);
}
void note_will_disappear(const PSListController& page, bool animated) {
  note(page, animated ? "will disappear, animated" : "will disappear");
  will_disappear(page, animated);
}
UIView note_view_for_header(const PSListController& page, const UITableView& table, NSInteger section) {
  note(page, "view for a header");
  return view_for_header(page, table, section);
}
CGFloat note_height_for_header(const PSListController& page, const UITableView& table, NSInteger section) {
  note(page, "height for a header");
  return height_for_header(page, table, section);
}
void note_will_display(const PSListController& page, const UITableView&, const UITableViewCell&,
                       const NSIndexPath&) {
  note(page, "will display a cell");
}
void listen_to_the_framework() {
  if (!will_appear) {
    objc::Category<PSListController>()
        .method<"viewWillAppear:", &note_will_appear>(will_appear)
        .method<"viewWillDisappear:", &note_will_disappear>(will_disappear)
        .method<"tableView:viewForHeaderInSection:", &note_view_for_header>(view_for_header)
        .method<"tableView:heightForHeaderInSection:", &note_height_for_header>(height_for_header)
        .method<"tableView:willDisplayCell:forRowAtIndexPath:", &note_will_display>();
  }
  heard.clear();
}

class PageLookTest : public PageTest {
 protected:
  static UIView header_for(const UITableView& table, NSInteger section) {
    const PSListController page = top();
    return objc::send<"tableView:viewForHeaderInSection:", UIView>(page, table, section);
  }
  static UITableView table_of_width(CGFloat width) {
    return UITableView::alloc().initWithFrame({{0, 0}, {width, 100}}, UITableViewStyle::InsetGrouped);
  }
  static UILabel label_in(const UIView& view, NSUInteger index) {
    return view.subviews().objectAtIndex<UILabel>(index);
  }
  /// A variable of the page, by its registered name.
  template <class T>
  static T variable_of(const PSListController& page, const char* name) {
    const auto offset = objc::detail::offset_of(objc::ClassRef::named("WispBaseController").borrow(), name);
    return *objc::detail::at<T>(objc::borrow(page), offset);
  }
  static void expect_title(const UILabel& label, const std::string& text, const std::vector<double>& colour) {
    EXPECT_EQ(label.text().utf8(), text);
    EXPECT_EQ(rgba(label.textColor()), colour) << text;
    EXPECT_TRUE(label.font().isEqual(UIFont::systemFontOfSize(18, UIFontWeightSemibold))) << text;
    EXPECT_FALSE(label.font().isEqual(UIFont::systemFontOfSize(18)));
  }
};

TEST_F(PageLookTest, KeepsItsVariablesByNameAndInOrder) {
  load_shipped_bundle();
  EXPECT_THAT(
      variables_of("WispBaseController"),
      ElementsAre("_label", "_underLabel", "headerView1", "headerView2", "iconImageView", "headerImageView",
                  "headerImageView2", "changelogController", "changelogController2", "_savedSpecifiers"));
}

TEST_F(PageLookTest, MakesTheRunTimeCellClassWithItsFirstView) {
  load_shipped_bundle();
  const auto is_made = [] { return static_cast<bool>(objc::ClassRef::named("OndrelTintCell")); };
  // A class stays for the life of the process; where an earlier test made it, it is still there.
  const bool made_before = is_made();
  const auto page = open_page("WispRootListController");
  EXPECT_EQ(is_made(), made_before);
  EXPECT_TRUE(page.view());
  EXPECT_TRUE(is_made());
  const auto another = open_page("WispRootListController");
  EXPECT_TRUE(another.view());
}

TEST_F(PageLookTest, AsksItselfForTheBannerOnceItHasATable) {
  load_shipped_bundle();
  BannerlessPage::define();
  heard.clear();
  const BannerlessPage page = objc::make<BannerlessPage>();
  EXPECT_TRUE(page.view());
  EXPECT_THAT(heard, ElementsAre("banner after the table"));
  EXPECT_EQ(page.table().delegate(), page);
  EXPECT_FALSE(page.table().tableHeaderView());
}

TEST_F(PageLookTest, PassesItsComingAndGoingOnAndKeepsHeadersAndCellsToItself) {
  show_shipped("settings");
  listen_to_the_framework();
  const auto page = open_page("WispRootListController");
  for (const bool animated : {true, false}) {
    heard.clear();
    navigation().pushViewController(page, animated);
    settle();
    navigation().popViewController(animated);
    settle();
    const std::string how = animated ? ", animated" : "";
    EXPECT_THAT(heard, ElementsAre("will appear" + how, "will disappear" + how));
  }
}

TEST_F(PageLookTest, PutsTheBannerAboveTheRowsAndBecomesTheTablesDelegate) {
  load_shipped_bundle();
  const auto page = open_page("WispRootListController");
  const UIView view = page.view();
  const UIView banner = page.table().tableHeaderView();
  ASSERT_TRUE(banner);
  EXPECT_EQ(page.table().delegate(), page);
  ASSERT_EQ(banner.subviews().count(), 1U);
  const auto image = banner.subviews().objectAtIndex<UIImageView>(0);
  EXPECT_EQ(image.contentMode(), UIViewContentMode::ScaleAspectFill);
  EXPECT_TRUE(image.clipsToBounds());
  EXPECT_FALSE(image.translatesAutoresizingMaskIntoConstraints());
  view.setFrame({{0, 0}, {390, 844}});
  view.layoutIfNeeded();
  banner.layoutIfNeeded();
  EXPECT_EQ(image.frame(), banner.bounds());
  EXPECT_EQ(banner.bounds().size.height, 100);
  // Before the page appears, an empty view with an empty picture is the title.
  const UIView title = page.navigationItem().titleView();
  ASSERT_TRUE(title);
  ASSERT_EQ(title.subviews().count(), 1U);
  const auto icon = title.subviews().objectAtIndex<UIImageView>(0);
  EXPECT_FALSE(icon.image());
  EXPECT_EQ(icon.contentMode(), UIViewContentMode::ScaleAspectFit);
  // Again, it is another empty view; what is in the banner stays.
  objc::send<"headerCell">(page);
  EXPECT_NE(page.navigationItem().titleView(), title);
  EXPECT_EQ(page.navigationItem().titleView().subviews().count(), 0U);
  EXPECT_EQ(banner.subviews().count(), 1U);
}

TEST_F(PageLookTest, LaysTheBannerOutByFourConstraintsAndTheSecondOneByNone) {
  load_shipped_bundle();
  const auto page = open_page("WispRootListController");
  objc::send<"layoutUI">(page);  // before there is anything to lay out
  objc::send<"headerCell">(page);
  const auto banner = variable_of<UIView>(page, "headerView1");
  const auto image = variable_of<UIImageView>(page, "headerImageView");
  EXPECT_EQ(banner.frame(), (CGRect{{0, 0}, {100, 100}}));
  EXPECT_FALSE(banner.clipsToBounds());
  const auto constraints = objc::send<"constraints", NSArray>(banner);
  ASSERT_EQ(constraints.count(), 4U);
  std::vector<NSInteger> attributes;
  for (NSUInteger i = 0; i < 4; ++i) {
    const auto each = constraints.objectAtIndex<NSLayoutConstraint>(i);
    EXPECT_EQ((objc::send<"firstItem", NSObject>(each)), image);
    EXPECT_EQ((objc::send<"secondItem", NSObject>(each)), banner);
    EXPECT_EQ((objc::send<"constant", CGFloat>(each)), 0);
    attributes.push_back(objc::send<"firstAttribute", NSInteger>(each));
    EXPECT_EQ((objc::send<"secondAttribute", NSInteger>(each)), attributes.back());
  }
  EXPECT_THAT(attributes, ElementsAre(3, 4, 5, 6));  // top, bottom, leading, trailing
  EXPECT_FALSE(variable_of<UIView>(page, "headerView2"));
  EXPECT_FALSE(variable_of<UIView>(page, "headerImageView2"));
  EXPECT_FALSE(variable_of<UIImageView>(page, "iconImageView").translatesAutoresizingMaskIntoConstraints());
  EXPECT_FALSE(variable_of<UILabel>(page, "_label"));
  EXPECT_FALSE(variable_of<UILabel>(page, "_underLabel"));
}

TEST_F(PageLookTest, ShowsTheBannersImageOnlyByItsOwnPath) {
  load_shipped_bundle();
  const auto image_of = [](const PSListController& page) {
    (void)page.view();
    return page.table().tableHeaderView().subviews().objectAtIndex<UIImageView>(0).image();
  };
  EXPECT_FALSE(image_of(open_page("WispRootListController")));
  const auto file = device_path("/var/jb/Library/PreferenceBundles/3dvitrelleprefs.bundle/Assets/1.png");
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::copy_file(std::string(WISPEN_TEST_BUNDLE) + "/Assets/1.png", file);
  EXPECT_TRUE(image_of(open_page("WispRootListController")));
}

TEST_F(PageLookTest, SlidesANewButtonInAtEveryAppearance) {
  show_shipped("settings");
  tap_text("Wispen");
  const auto button = objc::cast_or_nil<UIButton>(top().navigationItem().titleView());
  ASSERT_TRUE(button);
  EXPECT_EQ(button.buttonType(), UIButtonType::System);
  EXPECT_TRUE(button.currentTitle().isEqual("Respring"_ns));
  const double rest = (*search(tree(), [](const Json& v) {
    return v.value("text", "") == "Respring" && v["class"] == "UIButton";
  }))["frame"][1];
  navigation().pushViewController(open_page("SepSettingsCell"), false);
  settle();
  navigation().popViewController(false);
  wispen_host_run_until_idle();
  const auto next = objc::cast_or_nil<UIButton>(top().navigationItem().titleView());
  EXPECT_NE(next, button);
  const auto shown_at = [&]() -> double {
    const auto view = search(
        tree(), [](const Json& v) { return v["class"] == "UIButton" && v.value("text", "") == "Respring"; });
    return view->contains("shown") ? (*view)["shown"][1].get<double>() : (*view)["frame"][1].get<double>();
  };
  EXPECT_NEAR(shown_at(), rest - 50, 0.01);
  wispen_host_advance(0.5);
  EXPECT_NEAR(shown_at(), rest - 25, 0.5);  // half-way through the default curve is half-way down
  wispen_host_advance(0.4);
  EXPECT_LT(shown_at(), rest);
  wispen_host_advance(0.101);
  EXPECT_NEAR(shown_at(), rest, 0.01);
}

TEST_F(PageLookTest, TintsTheBarOnEntryAndOnLeavingForTheListOnly) {
  show_shipped("settings");
  tap_text("Wispen");
  const UINavigationBar bar = navigation().navigationBar();
  EXPECT_THAT(rgba(bar.tintColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  objc::send<"scrollToSpecifier:animated:">(
      top(), objc::send<"specifierForID:", PSSpecifier>(top(), "Lock Screen Separators"_ns), false);
  settle();
  navigation().pushViewController(open_page("SepSettingsCell"), true);
  settle();
  EXPECT_THAT(rgba(bar.tintColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  navigation().popViewController(true);
  settle();
  EXPECT_THAT(rgba(bar.tintColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  navigation().popViewController(true);
  settle();
  EXPECT_THAT(rgba(bar.tintColor()), Pointwise(DoubleEq(), {0.0, 0.78, 0.78, 1.0}));
}

TEST_F(PageLookTest, TitlesSectionsByTheirNumberAlone) {
  show_shipped("root");
  const UITableView table = table_of_width(390);
  struct Expectation {
    NSInteger section;
    const char* text;
    std::vector<double> colour;
  };
  const std::vector<double> orange{1, 0.5, 0, 1}, black{0, 0, 0, 1}, yellow{1, 1, 0, 1}, blue{0, 0, 1, 1};
  for (const Expectation& each : {Expectation{0, "My Socials", orange},
                                  {3, "", yellow},
                                  {4, "Miscellaneous", blue},
                                  {5, "", black},
                                  {6, "", black},
                                  {7, "", black},
                                  {8, "", black},
                                  {9, "", black},
                                  {10, "", black},
                                  {11, "Base Configurations", orange},
                                  {12, "", black},
                                  {-1, "", black}}) {
    const UIView header = header_for(table, each.section);
    ASSERT_EQ(header.subviews().count(), 1U) << each.section;
    const UILabel label = label_in(header, 0);
    expect_title(label, each.text, each.colour);
    EXPECT_EQ(rgba(header.backgroundColor()), rgba(UIColor::clearColor()));
    EXPECT_EQ(label.textAlignment(), NSTextAlignment::Left);
    EXPECT_EQ(label.frame(), (CGRect{{0, 0}, {360, 40}}));
    EXPECT_EQ(header.frame(), (CGRect{{0, 0}, {360, 40}}));
    EXPECT_NE(header_for(table, each.section), header);  // a new one each time
  }
  for (const NSInteger section : {NSInteger{0}, NSInteger{1}, NSInteger{99}}) {
    const auto height = objc::send<"tableView:heightForHeaderInSection:", CGFloat>(top(), table, section);
    EXPECT_EQ(height, 40);
  }
}

TEST_F(PageLookTest, NeverShowsTheTitlesOfTheListsGroupsOnPurpose) {
  show("root",
       {{"Root.plist",
         specifier_list(item({{"cell", "PSGroupCell"}, {"label", "Of the list"}, {"footerText", "Foot"}}) +
                        item({{"cell", "PSSwitchCell"}, {"key", "a"}, {"label", "A row"}}))}});
  EXPECT_TRUE(with_text("A row"));
  EXPECT_TRUE(with_text("Foot"));
  EXPECT_TRUE(with_text("My Socials"));
  EXPECT_FALSE(with_text("Of the list"));
  EXPECT_FALSE(with_text("OF THE LIST"));
}

TEST_F(PageLookTest, CentresAPillInTwoSections) {
  show_shipped("root");
  const UITableView table = table_of_width(331);
  for (const NSInteger section : {1, 2}) {
    const UIView header = header_for(table, section);
    EXPECT_EQ(header.frame(), (CGRect{{0, 0}, {301, 50}}));
    const auto pill = header.subviews().objectAtIndex<UIView>(0);
    EXPECT_EQ(pill.center(), (CGPoint{150, 20}));  // halved as a whole number
    EXPECT_EQ(pill.layer().cornerRadius(), 10);
    EXPECT_TRUE(pill.clipsToBounds());
    const UILabel label = label_in(pill, 0);
    expect_title(label, section == 1 ? "Base Configurations" : "Miscellaneous", {1, 0.5, 0, 1});
    EXPECT_EQ(label.textAlignment(), NSTextAlignment::Center);
    EXPECT_EQ(label.bounds().size, label.sizeThatFits({}));
    EXPECT_EQ(pill.bounds().size.height, 40);
    EXPECT_EQ(rgba(pill.backgroundColor()), rgba(UIColor::clearColor()));
    EXPECT_EQ(rgba(header.backgroundColor()), rgba(UIColor::clearColor()));
    EXPECT_EQ(pill.bounds().size.width, label.bounds().size.width + 20);
    EXPECT_EQ(label.center(), (CGPoint{pill.bounds().size.width / 2, 20}));
    // The first has an empty label over it, the second none.
    ASSERT_EQ(header.subviews().count(), section == 1 ? 2U : 1U);
    if (section == 1) {
      expect_title(label_in(header, 1), "", {0, 0, 0, 1});
      EXPECT_EQ(label_in(header, 1).textAlignment(), NSTextAlignment::Left);
      EXPECT_EQ(label_in(header, 1).frame(), (CGRect{{0, 0}, {301, 40}}));
    }
  }
}

TEST_F(PageLookTest, CutsAFractionOfAWidthTowardsZero) {
  show_shipped("root");
  struct Expectation {
    CGFloat table;
    CGFloat header;
    CGFloat middle;
  };
  for (const Expectation& each : {Expectation{330.9, 300, 150}, {31.5, 1, 0}, {29.5, 0, 0}, {26.5, -3, -1}}) {
    const UIView header = header_for(table_of_width(each.table), 2);
    const auto pill = header.subviews().objectAtIndex<UIView>(0);
    EXPECT_EQ(pill.center().x, each.middle) << each.table;
    EXPECT_EQ(header.bounds().size.width, each.header) << each.table;
  }
}

TEST_F(PageLookTest, KeepsTheBarAsItIsWhereItLeavesAnyOtherStack) {
  show_shipped("settings");
  const UINavigationBar bar = navigation().navigationBar();
  const auto page = open_page("WispRootListController");
  objc::send<"viewWillDisappear:">(page, false);  // in no stack at all
  navigation().pushViewController(page, false);
  settle();
  navigation().pushViewController(open_page("WispRootListController"), false);
  settle();
  bar.setTintColor(UIColor::redColor());
  navigation().popViewController(false);  // two are left
  wispen_host_run_until_idle();
  EXPECT_THAT(rgba(bar.tintColor()), Pointwise(DoubleEq(), {0.5, 0.3, 0.55, 1.0}));
  bar.setTintColor(UIColor::redColor());
  objc::send<"viewWillDisappear:">(page, true);
  EXPECT_THAT(rgba(bar.tintColor()), Pointwise(DoubleEq(), {1.0, 0.0, 0.0, 1.0}));
}

TEST_F(PageLookTest, FadesCellsInAtEveryDisplay) {
  show_shipped("root");
  const auto shown_alpha = [&] {
    const auto view = row("maker");
    return view->value("shown_alpha", view->value("alpha", 1.0));
  };
  const UITableViewCell cell = this->cell("maker");
  const auto path = NSIndexPath::indexPathForRow(1, 0);
  EXPECT_EQ(shown_alpha(), 1.0);
  objc::send<"tableView:willDisplayCell:forRowAtIndexPath:">(top(), top().table(), cell, path);
  EXPECT_EQ(cell.alpha(), 1.0);
  EXPECT_NEAR(shown_alpha(), 0, 1e-6);
  wispen_host_advance(0.75);
  EXPECT_NEAR(shown_alpha(), 0.5, 1e-3);
  wispen_host_advance(0.76);
  EXPECT_EQ(shown_alpha(), 1.0);
  // Out of sight and back.
  objc::send<"setContentOffset:animated:">(top().table(), CGPoint{0, 3000}, false);
  settle();
  EXPECT_FALSE(row("maker"));
  objc::send<"setContentOffset:animated:">(top().table(), CGPoint{0, -100}, false);
  (void)tree();
  EXPECT_LT(shown_alpha(), 0.2);
}

TEST_F(PageLookTest, LeavesNothingBehind) {
  show_shipped("settings");
  std::vector<objc::Weak<NSObject>> seen;
  const std::function<void(const UIView&)> remember = [&](const UIView& view) {
    seen.emplace_back(view);
    const NSArray subviews = view.subviews();
    for (NSUInteger i = 0; i < subviews.count(); ++i) remember(subviews.objectAtIndex<UIView>(i));
  };
  for (int i = 0; i < 10; ++i) {
    const objc::AutoreleasePool pool;
    show("root");
    seen.emplace_back(top());
    seen.emplace_back(top().navigationItem().titleView());
    remember(top().view());
    show("settings");
  }
  EXPECT_GT(seen.size(), 500U);
  std::size_t alive = 0;
  for (const objc::Weak<NSObject>& each : seen) {
    if (const NSObject object = each.lock()) {
      if (++alive < 9) {
        const auto view = objc::cast_or_nil<UIView>(object);
        ADD_FAILURE() << object.description().utf8() << " is still there, in "
                      << (view ? objc::class_of(view.superview()).name() : "nothing");
      }
    }
  }
  EXPECT_EQ(alive, 0U);
}

}  // namespace
}  // namespace wispen::testing
