// tests/cells/labeled_slider_test.cpp: the slider with its title and its value, by real touches and keys.

#include <algorithm>
#include <array>

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

/// What happened to rows and sliders, in order.
std::vector<std::string> happened;
objc::Original<void(NSObject)> store;
void note_store(const PSSpecifier& specifier, const NSObject& value) {
  happened.push_back("store " + objc::send<"description", NSString>(value).utf8());
  store(specifier, value);
}
objc::Original<void(float, bool)> move;
void note_move(const UISlider& slider, float value, bool animated) {
  happened.emplace_back(animated ? "move, animated" : "move");
  move(slider, value, animated);
}

class LabeledSliderTest : public PageTest {
 protected:
  /// One labelled slider, with more of its properties.
  void show_slider(const std::string& more = "") {
    const std::string list = specifier_list(
        item({{"cell", "PSSliderCell"},
              {"cellClass", "XXXLabeledSliderCell"},
              {"label", "Width"},
              {"key", "width"},
              {"PostNotification", "test/changed"}},
             "<key>min</key><real>-2</real><key>max</key><real>10</real><key>default</key><real>0.5</real>"
             "<key>height</key><integer>90</integer>" +
                 more) +
        item({{"cell", "PSSwitchCell"}, {"label", "Below"}, {"key", "below"}}));
    show("SepSettingsCell",
         {{"Root.plist",
           specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
          {"SepSettingsLS.plist", list}});
  }
  static PSSliderTableCell slider_cell() { return cell<PSSliderTableCell>("width"); }
  static UISlider slider() { return slider_cell().control<UISlider>(); }
  static std::string shown_value() {
    const UIView outer = slider_cell().contentView().subviews().objectAtIndex<UIView>(0);
    const auto inner = outer.subviews().objectAtIndex<UIStackView>(1);
    return inner.subviews().objectAtIndex<UILabel>(1).text().utf8();
  }
  NSObject stored() const {
    return NSDictionary::dictionaryWithContentsOfFile(domain_file().c_str()).objectForKey("width"_ns);
  }
  float stored_value() const { return objc::send<"floatValue", float>(stored()); }
  static UIAlertController dialog() {
    return objc::cast_or_nil<UIAlertController>(navigation().presentedViewController());
  }
  /// Opens the dialog by its label, replaces its text, and answers.
  void type_value(const std::string& text, const char* answer) {
    tap_text(shown_value());
    ASSERT_TRUE(dialog());
    wispen_host_key("command+a");
    wispen_host_key("backspace");
    wispen_host_type(text.c_str());
    if (std::string(answer) == "Set" || std::string(answer) == "Cancel") {
      tap_text(answer);
    } else {
      wispen_host_key(answer);
      settle();
    }
    EXPECT_FALSE(dialog());
  }
};

TEST_F(LabeledSliderTest, StandsBelowItsTitleInFiftySixPoints) {
  show_slider();
  const PSSliderTableCell row = slider_cell();
  EXPECT_EQ(row.bounds().size.height, 56);  // whatever the list says
  const auto height = row.specifier().propertyForKey<NSNumber>("height"_ns);
  EXPECT_EQ((objc::send<"intValue", int>(height)), 56);
  const UIView content = row.contentView();
  ASSERT_EQ(content.subviews().count(), 1U);
  const auto outer = content.subviews().objectAtIndex<UIStackView>(0);
  EXPECT_EQ(outer.frame(), (CGRect{{15, 4}, {content.bounds().size.width - 30, 48}}));
  EXPECT_EQ(outer.axis(), UILayoutConstraintAxis::Vertical);
  EXPECT_EQ(outer.alignment(), UIStackViewAlignment::Center);
  EXPECT_EQ(outer.distribution(), UIStackViewDistribution::EqualCentering);
  EXPECT_EQ(outer.spacing(), 0);
  const auto inner = outer.subviews().objectAtIndex<UIStackView>(1);
  EXPECT_EQ(inner.bounds().size.width, outer.bounds().size.width);
  EXPECT_EQ(inner.axis(), UILayoutConstraintAxis::Horizontal);
  EXPECT_EQ(inner.alignment(), UIStackViewAlignment::Center);
  EXPECT_EQ(inner.distribution(), UIStackViewDistribution::Fill);
  EXPECT_EQ(inner.spacing(), 5);
  EXPECT_EQ(inner.arrangedSubviews().objectAtIndex<UIView>(0), slider());
  const auto title = outer.subviews().objectAtIndex<UILabel>(0);
  const auto value = inner.subviews().objectAtIndex<UILabel>(1);
  EXPECT_EQ(title.text().utf8(), "Width");
  EXPECT_EQ(value.text().utf8(), "0.5");
  EXPECT_TRUE(title.font().isEqual(UIFont::systemFontOfSize(15, UIFontWeightBold)));
  EXPECT_TRUE(value.font().isEqual(UIFont::monospacedDigitSystemFontOfSize(10, UIFontWeightBold)));
  EXPECT_TRUE(value.isUserInteractionEnabled());
  EXPECT_EQ(value.bounds().size.height, inner.bounds().size.height);
  for (const UILabel& label : {title, value}) {
    EXPECT_EQ(rgba(label.textColor()), (std::vector<double>{1, 0.5, 0, 1}));
    EXPECT_FALSE(label.translatesAutoresizingMaskIntoConstraints());
  }
  for (const UIStackView& stack : {outer, inner}) {
    EXPECT_FALSE(stack.translatesAutoresizingMaskIntoConstraints());
  }
  // Nothing is clipped, nothing overlaps.
  EXPECT_LE(title.frame().origin.y + title.bounds().size.height, inner.frame().origin.y + 0.5);
  EXPECT_LE(inner.frame().origin.y + inner.bounds().size.height, outer.bounds().size.height + 0.5);
}

TEST_F(LabeledSliderTest, IsMadeOfARowThatSaysNothing) {
  show_slider();
  const auto bare = make_cell<PSSliderTableCell>("XXXLabeledSliderCell");
  const auto outer = bare.contentView().subviews().lastObject<UIStackView>();
  const auto inner = outer.subviews().objectAtIndex<UIStackView>(1);
  EXPECT_EQ(outer.subviews().objectAtIndex<UILabel>(0).text().length(), 0U);
  const auto value = inner.subviews().objectAtIndex<UILabel>(1);
  EXPECT_EQ(value.text().utf8(), "0.0");
  EXPECT_GT(value.bounds().size.width, 0);  // as wide as its text before anything is laid out
}

TEST_F(LabeledSliderTest, IsOrangeFromItsFirstRefreshOn) {
  show_slider();
  const auto fresh = make_cell<PSSliderTableCell>("XXXLabeledSliderCell");
  const auto outer = fresh.contentView().subviews().lastObject<UIStackView>();
  const auto inner = outer.subviews().objectAtIndex<UIStackView>(1);
  const std::array<UILabel, 2> labels{outer.subviews().objectAtIndex<UILabel>(0),
                                      inner.subviews().objectAtIndex<UILabel>(1)};
  const auto set = [&](const UIColor& colour) {
    for (const UILabel& label : labels) label.setTextColor(colour);
  };
  const auto are = [&](const UIColor& colour) {
    return std::ranges::all_of(labels,
                               [&](const UILabel& label) { return label.textColor().isEqual(colour); });
  };
  EXPECT_TRUE(are(UIColor::labelColor()));
  fresh.refreshCellContentsWithSpecifier(fresh.specifier());
  EXPECT_TRUE(are(UIColor::orangeColor()));
  set(UIColor::labelColor());
  objc::send<"tintColorDidChange">(fresh);
  EXPECT_TRUE(are(UIColor::orangeColor()));
}

TEST_F(LabeledSliderTest, TranslatesFromTheDefaultTableWhereTheRowNamesNone) {
  wispen_host_stop();
  start("de");
  show("SepSettingsCell",
       {{"Root.plist",
         specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
        {"SepSettingsLS.plist",
         specifier_list(item({{"cell", "PSSliderCell"}, {"label", "Width"}, {"key", "width"}}))},
        {"de.lproj/Localizable.strings", "\"Width\" = \"Weite\";\n"}});
  const PSSpecifier specifier = cell("width").specifier();
  specifier.setProperty("Width"_ns, "label"_ns);
  specifier.setProperty(NSString(), "localizationTable"_ns);
  const auto made = make_cell<PSSliderTableCell>("XXXLabeledSliderCell", specifier);
  const auto outer = made.contentView().subviews().objectAtIndex<UIStackView>(0);
  EXPECT_EQ(outer.subviews().objectAtIndex<UILabel>(0).text().utf8(), "Weite");
  specifier.setProperty(NSString(), "label"_ns);
  const auto nameless = make_cell<PSSliderTableCell>("XXXLabeledSliderCell", specifier);
  const auto stack = nameless.contentView().subviews().lastObject<UIStackView>();
  EXPECT_EQ(stack.subviews().objectAtIndex<UILabel>(0).text().length(), 0U);
}

TEST_F(LabeledSliderTest, TranslatesItsTitle) {
  wispen_host_stop();
  start("de");
  const std::string list = specifier_list(item({{"cell", "PSSliderCell"},
                                                {"cellClass", "XXXLabeledSliderCell"},
                                                {"label", "Width"},
                                                {"key", "width"}}));
  show("SepSettingsCell",
       {{"Root.plist",
         specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
        {"SepSettingsLS.plist", list},
        {"de.lproj/SepSettingsLS.strings", "\"Width\" = \"Breite\";\n"}});
  EXPECT_TRUE(with_text("Breite"));
}

TEST_F(LabeledSliderTest, RewritesItsValueAtEveryEventOfADrag) {
  show_slider();
  const Json view = *part(*row("width"), "UISlider");
  const double y = view["frame"][1].get<double>() + view["frame"][3].get<double>() / 2;
  const double left = view["frame"][0].get<double>() + 14;
  const double way = view["frame"][2].get<double>() - 28;
  const double start = left + way * 2.5 / 12;
  wispen_host_touch(WISPEN_HOST_TOUCH_BEGAN, start, y);
  std::string last = shown_value();
  int changes = 0;
  for (int i = 1; i <= 10; ++i) {
    wispen_host_touch(WISPEN_HOST_TOUCH_MOVED, start + way * 0.05 * i,
                      y + (i > 5 ? 200 : 0));  // outside, too
    changes += shown_value() != last ? 1 : 0;
    last = shown_value();
  }
  EXPECT_EQ(changes, 10);
  EXPECT_FALSE(stored());  // stored when the finger is lifted
  wispen_host_touch(WISPEN_HOST_TOUCH_ENDED, start + way * 0.5, y + 200);
  settle();
  EXPECT_NEAR(stored_value(), 6.5, 0.1);
  EXPECT_NEAR(std::stod(shown_value()), stored_value(), 0.051);
  EXPECT_THAT(posted(), ::testing::Contains("test/changed"));
}

TEST_F(LabeledSliderTest, FollowsEachKindOfEventOnPurpose) {
  show_slider();
  float value = 1;
  for (const UIControlEvents events :
       {UIControlEventTouchDragInside, UIControlEventTouchDragOutside, UIControlEventValueChanged}) {
    slider().setValue(++value, false);
    slider().sendActionsForControlEvents(UIControlEventTouchDown | UIControlEventTouchUpInside);
    EXPECT_NE(std::stof(shown_value()), value);
    slider().sendActionsForControlEvents(events);
    EXPECT_EQ(std::stof(shown_value()), value) << events;
  }
}

TEST_F(LabeledSliderTest, AsksForAnExactValueWithTwoDecimals) {
  show_slider();
  tap_text("0.5");
  ASSERT_TRUE(dialog());
  EXPECT_TRUE(dialog().title().isEqual("Enter Value"_ns));
  EXPECT_FALSE(dialog().message());
  const auto field = dialog().textFields().objectAtIndex<UITextField>(0);
  EXPECT_EQ(field.text().utf8(), "0.50");
  EXPECT_EQ(field.keyboardType(), UIKeyboardType::DecimalPad);
  EXPECT_EQ(rgba(field.textColor()), (std::vector<double>{1, 0.5, 0, 1}));
  ASSERT_EQ(dialog().actions().count(), 2U);
  EXPECT_TRUE(dialog().actions().objectAtIndex<UIAlertAction>(0).title().isEqual("Set"_ns));
  EXPECT_EQ(dialog().actions().objectAtIndex<UIAlertAction>(0).style(), UIAlertActionStyle::Default);
  EXPECT_EQ(dialog().actions().objectAtIndex<UIAlertAction>(1).style(), UIAlertActionStyle::Cancel);
  tap_text("Cancel");
  EXPECT_FALSE(dialog());
  EXPECT_FALSE(stored());
}

TEST_F(LabeledSliderTest, OpensNothingForATapOnTheTitle) {
  show_slider();
  tap_text("Width");
  EXPECT_FALSE(dialog());
}

TEST_F(LabeledSliderTest, StoresAndShowsWhatIsTypedWithinItsRange) {
  show_slider();
  struct Case {
    const char* typed;
    float stored;
    const char* shown;
  };
  for (const Case& each : {Case{"3.25", 3.25F, "3.2"},
                           {"11", 10, "10.0"},
                           {"-7", -2, "-2.0"},
                           {"10", 10, "10.0"},
                           {"-2", -2, "-2.0"},
                           {"abc", 0, "0.0"},
                           {"", 0, "0.0"},
                           {"0,5", 0, "0.0"},
                           {"  4", 4, "4.0"},
                           {"7.5x", 7.5F, "7.5"},
                           {"nan", 0, "0.0"},
                           {"inf", 0, "0.0"},
                           {"0x8", 0, "0.0"},
                           {".5", 0.5F, "0.5"}}) {
    type_value(each.typed, "Set");
    EXPECT_EQ(stored_value(), each.stored) << each.typed;
    EXPECT_EQ(shown_value(), each.shown) << each.typed;
    EXPECT_EQ(slider().value(), each.stored) << each.typed;
  }
  EXPECT_EQ(posted().size(), 14U);
}

TEST_F(LabeledSliderTest, StoresFirstAndThenMovesTheSliderWithAnimation) {
  show_slider();
  if (!store) {
    objc::Category<PSSpecifier>().method<"performSetterWithValue:", &note_store>(store);
    objc::Category<UISlider>().method<"setValue:animated:", &note_move>(move);
  }
  happened.clear();
  type_value("2.5", "Set");
  EXPECT_THAT(happened, ::testing::ElementsAre("store 2.5", "move, animated"));
}

TEST_F(LabeledSliderTest, ClampsZeroWhereItIsOutsideTheRange) {
  show_slider("<key>min</key><real>1</real>");
  type_value("nothing", "Set");
  EXPECT_EQ(stored_value(), 1);
  show_slider("<key>min</key><real>-5</real><key>max</key><real>-1</real>");
  type_value("nothing", "Set");
  EXPECT_EQ(stored_value(), -1);
}

TEST_F(LabeledSliderTest, IsAnsweredByKeyboardAlone) {
  show_slider();
  type_value("2.5", "return");
  EXPECT_EQ(stored_value(), 2.5F);
  type_value("9", "escape");
  EXPECT_EQ(stored_value(), 2.5F);
  EXPECT_EQ(shown_value(), "2.5");
}

TEST_F(LabeledSliderTest, KeepsItsValueTextWhenItIsRefreshed) {
  show_slider();
  type_value("4", "Set");
  objc::send<"setPreferenceValue:specifier:">(top(), NSNumber::numberWithFloat(8), slider_cell().specifier());
  const PSSliderTableCell before = slider_cell();
  objc::send<"reloadSpecifiers">(top());
  settle();
  EXPECT_EQ(slider_cell(), before);  // the cell stays the row's
  EXPECT_EQ(slider().value(), 8);    // the framework moves the slider
  EXPECT_EQ(shown_value(), "4.0");   // and the text stays as it was
}

TEST_F(LabeledSliderTest, StaysOrangeWhateverTheTint) {
  show_slider();
  top().view().setTintColor(UIColor::greenColor());
  settle();
  const UIView outer = slider_cell().contentView().subviews().objectAtIndex<UIView>(0);
  EXPECT_EQ(rgba(outer.subviews().objectAtIndex<UILabel>(0).textColor()),
            (std::vector<double>{1, 0.5, 0, 1}));
}

TEST_F(LabeledSliderTest, PresentsOnTheTopmostController) {
  show_slider();
  const auto found = objc::send<"appropriateViewController", UIViewController>(slider_cell());
  EXPECT_EQ(found, top().as<UIViewController>());
  // Without a controller around it, the key window's, and what that presents.
  const auto loose = make_cell<PSSliderTableCell>("XXXLabeledSliderCell", slider_cell().specifier());
  const auto root = [&] { return objc::send<"appropriateViewController", UIViewController>(loose); };
  EXPECT_EQ(root(), navigation().as<UIViewController>());
  tap_text("0.5");
  EXPECT_EQ(root(), dialog().as<UIViewController>());
  tap_text("Cancel");
  // Only the key window is looked at, wherever it stands among the others.
  const UIWindow second = UIWindow::alloc().initWithFrame({{0, 0}, {390, 844}});
  const auto other = objc::make<UIViewController>();
  second.setRootViewController(other);
  const UIWindow first = UIApplication::sharedApplication().keyWindow();
  second.makeKeyAndVisible();
  EXPECT_EQ(root(), other);
  second.setHidden(true);
  EXPECT_FALSE(root());  // none is key
  objc::send<"setCustomSliderValue">(loose);
  first.makeKeyAndVisible();
  EXPECT_FALSE(dialog());
  EXPECT_EQ(root(), navigation().as<UIViewController>());
}

TEST_F(LabeledSliderTest, LeavesNothingBehind) {
  show_slider();
  objc::Weak<NSObject> alert;
  {
    const objc::AutoreleasePool pool;
    tap_text("0.5");
    alert = dialog();
    tap_text("Cancel");
  }
  EXPECT_FALSE(alert.lock());  // also when "Set" was never chosen
  const PSSpecifier specifier = slider_cell().specifier();
  std::vector<objc::Weak<NSObject>> cells;
  for (int i = 0; i < 1000; ++i) {
    const objc::AutoreleasePool pool;
    cells.emplace_back(make_cell("XXXLabeledSliderCell", specifier));
  }
  for (const auto& each : cells) ASSERT_FALSE(each.lock());
}

}  // namespace
}  // namespace wispen::testing
