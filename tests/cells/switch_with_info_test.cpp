// tests/cells/switch_with_info_test.cpp: a switch, and the alert that explains it.

#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

/// How what was presented came.
std::vector<std::string> presented_how;
objc::Original<void(UIViewController, bool, objc::Block<void()>)> present;
void note_presenting(const UIViewController& presenter, const UIViewController& shown, bool animated,
                     const objc::Block<void()>& completion) {
  presented_how.emplace_back(std::string(animated ? "animated" : "at once") +
                             (completion ? ", with more to do" : ""));
  present(presenter, shown, animated, completion);
}

class SwitchWithInfoTest : public PageTest {
 protected:
  void show_switches() {
    const auto info = [](const char* key, std::initializer_list<std::pair<const char*, const char*>> more) {
      std::string xml;
      for (const auto& [name, value] : more)
        xml += std::string("<key>") + name + "</key><string>" + value + "</string>";
      return item({{"cell", "PSSwitchCell"}, {"cellClass", "XXXSwitchWithInfoCell"}, {"key", key}}, xml);
    };
    const std::string list = specifier_list(
        info("full", {{"label", "Full"}, {"infoTitle", "About It"}, {"infoMessage", "One.\\nTwo."}}) +
        info("bare", {{"label", "Bare"}}) + info("nameless", {}) +
        item({{"cell", "PSSliderCell"},
              {"cellClass", "XXXLabeledSliderCell"},
              {"key", "slider"},
              {"label", "Slider"},
              {"infoMessage", "Of the slider."}}));
    show("SepSettingsCell",
         {{"Root.plist",
           specifier_list(item({{"cell", "PSLinkCell"}, {"label", "Page"}, {"detail", "SepSettingsCell"}}))},
          {"SepSettingsLS.plist", list},
          {"de.lproj/SepSettingsLS.strings",
           "\"Full\" = \"Voll\";\n\"Bare\" = \"Nackt\";\n\"One.\\\\nTwo.\" = \"Eins.\\\\nZwei.\";\n"
           "\"No information provided for this cell.\" = \"Nichts.\";\n"}});
  }
  static void tap_info(const char* identifier) { tap(*part(*row(identifier), "UIButton")); }
  static UIAlertController alert() {
    return objc::cast_or_nil<UIAlertController>(navigation().presentedViewController());
  }
  static std::string text_of(const NSString& text) { return text ? text.utf8() : "(nil)"; }
};

TEST_F(SwitchWithInfoTest, StandsBesideItsSwitchInPurple) {
  show_switches();
  const auto row_cell = cell<PSSwitchTableCell>("full");
  const auto control = row_cell.control<UISwitch>();
  EXPECT_EQ(rgba(control.onTintColor()), (std::vector<double>{0.5, 0, 0.5, 1}));
  EXPECT_EQ(rgba(control.thumbTintColor()), (std::vector<double>{0, 0, 0, 1}));
  const Json button = *part(*row("full"), "UIButton");
  const Json toggle = *part(*row("full"), "UISwitch");
  const CGRect content = row_cell.contentView().bounds();
  const auto info = objc::cast_or_nil<UIButton>(row_cell.contentView().subviews().lastObject());
  ASSERT_TRUE(info);
  EXPECT_EQ(info.buttonType(), UIButtonType::InfoDark);
  EXPECT_NEAR(info.frame().origin.x + info.bounds().size.width, content.size.width - 4, 0.01);
  EXPECT_NEAR(info.center().y, content.size.height / 2, 0.51);
  EXPECT_LE(button["frame"][0].get<double>() + button["frame"][2].get<double>(),
            toggle["frame"][0].get<double>());
  EXPECT_EQ(rgba(info.tintColor()), (std::vector<double>{0.5, 0, 0.5, 1}));
  top().view().setTintColor(UIColor::greenColor());
  EXPECT_EQ(rgba(info.tintColor()), (std::vector<double>{0.5, 0, 0.5, 1}));
}

TEST_F(SwitchWithInfoTest, IsAskedByAWholeTapOnItsButtonOnly) {
  show_switches();
  const auto content = cell<PSSwitchTableCell>("full").contentView();
  const auto info = objc::cast_or_nil<UIButton>(content.subviews().lastObject());
  info.sendActionsForControlEvents(~UIControlEventTouchUpInside);
  settle();
  EXPECT_FALSE(alert());
  info.sendActionsForControlEvents(UIControlEventTouchUpInside);
  settle();
  EXPECT_TRUE(alert());
}

TEST_F(SwitchWithInfoTest, AlertsOfBothCellsComeWithAnimation) {
  show_switches();
  if (!present) {
    objc::Category<UIViewController>().method<"presentViewController:animated:completion:", &note_presenting>(
        present);
  }
  presented_how.clear();
  tap_info("full");
  tap_text("Cancel");
  objc::send<"setCustomSliderValue">(cell("slider"));
  settle();
  EXPECT_TRUE(alert());
  EXPECT_THAT(presented_how, ::testing::ElementsAre("animated", "animated"));
}

TEST_F(SwitchWithInfoTest, ExplainsItselfOnSeveralLines) {
  show_switches();
  tap_info("full");
  ASSERT_TRUE(alert());
  EXPECT_EQ(text_of(alert().title()), "About It");
  EXPECT_EQ(text_of(alert().message()), "One.\nTwo.");
  ASSERT_EQ(alert().actions().count(), 1U);
  EXPECT_EQ(text_of(alert().actions().objectAtIndex<UIAlertAction>(0).title()), "Cancel");
  EXPECT_EQ(alert().actions().objectAtIndex<UIAlertAction>(0).style(), UIAlertActionStyle::Cancel);
  tap_text("Cancel");
  EXPECT_FALSE(alert());
  EXPECT_FALSE(std::filesystem::exists(domain_file()));  // the switch was not touched
}

TEST_F(SwitchWithInfoTest, HasATextForRowsThatSayNothing) {
  show_switches();
  tap_info("bare");
  EXPECT_EQ(text_of(alert().title()), "Bare");
  EXPECT_EQ(text_of(alert().message()), "No information provided for this cell.");
  tap_text("Cancel");
  tap_info("nameless");
  EXPECT_EQ(text_of(alert().title()), "(nil)");
}

TEST_F(SwitchWithInfoTest, TranslatesTheMessageAndNeverTheTitle) {
  wispen_host_stop();
  start("de");
  show_switches();
  EXPECT_TRUE(with_text("Voll"));
  tap_info("full");
  EXPECT_EQ(text_of(alert().title()), "About It");
  EXPECT_EQ(text_of(alert().message()), "Eins.\nZwei.");
  tap_text("Cancel");
  EXPECT_TRUE(with_text("Nackt"));
  tap_info("bare");
  EXPECT_EQ(text_of(alert().title()), "Bare");
  EXPECT_EQ(text_of(alert().message()), "Nichts.");
}

TEST_F(SwitchWithInfoTest, TranslatesFromTheDefaultTableWhereTheRowNamesNone) {
  wispen_host_stop();
  start("de");
  show_switches();
  const PSSpecifier specifier = cell("bare").specifier();
  write_file(bundle_folder() / "de.lproj/Localizable.strings",
             "\"No information provided for this cell.\" = \"Gar nichts.\";\n");
  specifier.setProperty(NSString(), "localizationTable"_ns);
  tap_info("bare");
  EXPECT_EQ(text_of(alert().message()), "Gar nichts.");
}

TEST_F(SwitchWithInfoTest, IsPurpleFromItsFirstRefreshOn) {
  show_switches();
  const auto fresh = make_cell<PSSwitchTableCell>("XXXSwitchWithInfoCell");
  const auto info = objc::cast_or_nil<UIButton>(fresh.contentView().subviews().lastObject());
  const std::vector<double> purple{0.5, 0, 0.5, 1};
  EXPECT_NE(rgba(info.tintColor()), purple);
  fresh.refreshCellContentsWithSpecifier(fresh.specifier());
  EXPECT_EQ(rgba(info.tintColor()), purple);
  info.setTintColor(UIColor::greenColor());
  objc::send<"tintColorDidChange">(fresh);
  EXPECT_EQ(rgba(info.tintColor()), purple);
  // The switch's own colours are given once.
  const auto control = fresh.control<UISwitch>();
  control.setOnTintColor(UIColor::greenColor());
  control.setThumbTintColor(UIColor::greenColor());
  fresh.refreshCellContentsWithSpecifier(fresh.specifier());
  objc::send<"tintColorDidChange">(fresh);
  EXPECT_EQ(rgba(control.onTintColor()), (std::vector<double>{0, 1, 0, 1}));
  EXPECT_EQ(rgba(control.thumbTintColor()), (std::vector<double>{0, 1, 0, 1}));
}

TEST_F(SwitchWithInfoTest, WithoutAControllerAroundItTakesTheFirstWindowsOnPurpose) {
  show_switches();
  const PSSpecifier specifier = cell("full").specifier();
  const UIWindow first = UIApplication::sharedApplication().keyWindow();
  const UIWindow second = UIWindow::alloc().initWithFrame({{0, 0}, {390, 844}});
  const auto other = objc::make<UIViewController>();
  second.setRootViewController(other);
  second.makeKeyAndVisible();
  const auto presented = [&] {
    return objc::cast_or_nil<UIAlertController>(first.rootViewController().presentedViewController());
  };
  for (const char* const cls : {"XXXSwitchWithInfoCell", "XXXLabeledSliderCell"}) {
    const auto loose = make_cell(cls, specifier);
    objc::send<"infoButtonTapped">(loose);
    settle();
    const UIAlertController shown = presented();
    ASSERT_TRUE(shown) << cls;
    EXPECT_EQ(text_of(shown.title()), "About It");
    EXPECT_FALSE(other.presentedViewController());
    // Nor is what is presented already looked at: a second one is not shown on the first.
    objc::send<"infoButtonTapped">(loose);
    settle();
    EXPECT_EQ(presented(), shown);
    EXPECT_FALSE(shown.presentedViewController());
    first.rootViewController().dismissViewController(false);
    settle();
    EXPECT_FALSE(presented());
  }
  first.makeKeyAndVisible();
}

TEST_F(SwitchWithInfoTest, IsTheSliderCellsOperationToo) {
  show_switches();
  objc::send<"infoButtonTapped">(cell("slider"));
  settle();
  EXPECT_EQ(text_of(alert().title()), "Slider");
  EXPECT_EQ(text_of(alert().message()), "Of the slider.");
}

TEST_F(SwitchWithInfoTest, StoresItsValueAsAnySwitch) {
  show_switches();
  tap(*part(*row("full"), "UISwitch"));
  const auto stored = NSDictionary::dictionaryWithContentsOfFile(domain_file().c_str());
  EXPECT_TRUE(stored.objectForKey<NSNumber>("full"_ns).boolValue());
}

}  // namespace
}  // namespace wispen::testing
