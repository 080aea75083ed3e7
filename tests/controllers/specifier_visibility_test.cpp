// tests/controllers/specifier_visibility_test.cpp: the rules by which rows are shown, on every page.

#include <dlfcn.h>

#include <array>
#include <string>

#include "tests/support/host_fixture.hpp"

namespace wispen::testing {
namespace {

/// A settings source that a test can fill: it answers the two questions that the rules ask.
class Settings : public objc::Authored<Settings, NSObject> {
 public:
  static constexpr objc::FixedString kClass{"WispenTestSettings"};
  using Authored::Authored;

  static constexpr objc::InstanceVariable<"_values", NSMutableDictionary> kValues{};
  NSMutableDictionary& values() const { return variable(kValues); }
  bool bool_for_key(const NSString& key) const {
    asked.push_back(key.utf8());
    return values().objectForKey<NSNumber>(key).boolValue();
  }
  NSObject value_for_key(const NSString& key) const {
    asked.push_back(key.utf8());
    return values().objectForKey(key);
  }
  static inline std::vector<std::string> asked;

  static void define() {
    objc::Class<Settings>()
        .variable(kValues)
        .method<"boolForKey:", &Settings::bool_for_key>()
        .method<"valueForKey:", &Settings::value_for_key>()
        .register_class();
  }
};

constexpr std::array kPages{"WispRootListController", "SepSettingsCell",       "BackgroundSettingsCell",
                            "ContextMenuLabels",      "Expanded3DAdjustments", "SepSettingsHSCell"};

class SpecifierVisibilityTest : public HostTest, public ::testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    load_shipped_bundle();
    page_ = open_page(GetParam());
    Settings::define();
    settings_ = objc::make<Settings>();
    settings_.values() = NSMutableDictionary::dictionary();
    Settings::asked.clear();
    // The code may have been loaded from another test's copy of the bundle.
    Dl_info info{};
    ASSERT_NE(::dladdr(objc::code_address(objc::ClassRef::named("WispBaseController")), &info), 0);
    void* const image = ::dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(image, nullptr);
    prefs_ = static_cast<objc::Unowned<Settings>*>(::dlsym(image, "prefs"));
    ASSERT_NE(prefs_, nullptr);
    ::dlclose(image);
    ASSERT_FALSE(prefs_->get()) << "nothing in the system assigns the settings source";
  }
  void TearDown() override {
    *prefs_ = objc::Unowned<Settings>();
    page_ = nullptr;
    HostTest::TearDown();
  }

  void use_settings(std::initializer_list<std::pair<const char*, NSObject>> values) {
    for (const auto& [key, value] : values) settings_.values().setObject(value, NSString(key));
    *prefs_ = objc::Unowned<Settings>(settings_);
  }

  using Properties = std::initializer_list<std::pair<const char*, NSObject>>;
  static PSSpecifier row(Properties properties) {
    NSMutableDictionary all = NSMutableDictionary::dictionary();
    for (const auto& [key, value] : properties) all.setObject(value, NSString(key));
    const PSSpecifier specifier = objc::make<PSSpecifier>();
    objc::send<"setProperties:">(specifier, all);
    return specifier;
  }
  bool shown(Properties properties) const {
    return objc::send<"isSpecifierVisible:", bool>(page_, row(properties));
  }
  /// "rule -> remedy" for each.
  std::vector<std::string> hiding(Properties properties) const {
    const auto rules = objc::send<"rulesHidingSpecifier:", NSArray>(page_, row(properties));
    std::vector<std::string> words;
    for (NSUInteger i = 0; i < rules.count(); ++i) {
      const auto rule = rules.objectAtIndex<NSDictionary>(i);
      words.push_back(rule.objectForKey<NSString>("rule"_ns).utf8() + " -> " +
                      rule.objectForKey<NSString>("remedy"_ns).utf8());
    }
    return words;
  }
  static NSObject yes() { return NSNumber::numberWithBool(true); }
  static NSObject no() { return NSNumber::numberWithBool(false); }

  PSListController page_;
  Settings settings_;
  objc::Unowned<Settings>* prefs_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(EveryPage, SpecifierVisibilityTest, ::testing::ValuesIn(kPages),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(SpecifierVisibilityTest, WithoutASettingsSourceTheOutcomesAreFixed) {
  EXPECT_FALSE(shown({{"depends", "anything"_ns}}));
  EXPECT_TRUE(shown({{"dependsNot", "anything"_ns}}));
  EXPECT_TRUE(shown({{"labelDependant", yes()}}));
  EXPECT_FALSE(shown({{"key", "regularAutoColor"_ns}}));
  EXPECT_FALSE(shown({{"key", "regularColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "notificationAutoColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "notificationColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "somethingElse"_ns}}));
  EXPECT_TRUE(shown({}));
}

TEST_P(SpecifierVisibilityTest, DependsShowsTheRowWhenTheNamedSettingIsOn) {
  use_settings({{"on", yes()}, {"off", no()}});
  EXPECT_TRUE(shown({{"depends", "on"_ns}}));
  EXPECT_FALSE(shown({{"depends", "off"_ns}}));
  EXPECT_FALSE(shown({{"depends", "unknown"_ns}}));
}

TEST_P(SpecifierVisibilityTest, DependsNotIsTheOppositeAndAnUnknownSettingShows) {
  use_settings({{"on", yes()}, {"off", no()}});
  EXPECT_FALSE(shown({{"dependsNot", "on"_ns}}));
  EXPECT_TRUE(shown({{"dependsNot", "off"_ns}}));
  EXPECT_TRUE(shown({{"dependsNot", "unknown"_ns}}));
}

TEST_P(SpecifierVisibilityTest, EitherOfTheTwoDependenciesHides) {
  use_settings({{"on", yes()}, {"off", no()}});
  EXPECT_TRUE(shown({{"depends", "on"_ns}, {"dependsNot", "off"_ns}}));
  EXPECT_FALSE(shown({{"depends", "off"_ns}, {"dependsNot", "off"_ns}}));
  EXPECT_FALSE(shown({{"depends", "on"_ns}, {"dependsNot", "on"_ns}}));
}

TEST_P(SpecifierVisibilityTest, ALabelRowHidesOnlyWhenBothLabelSettingsAreOn) {
  use_settings({{"hideLabels", yes()}});
  EXPECT_TRUE(shown({{"labelDependant", yes()}}));
  use_settings({{"dockHideLabels", yes()}});
  EXPECT_FALSE(shown({{"labelDependant", yes()}}));
  use_settings({{"hideLabels", no()}});
  EXPECT_TRUE(shown({{"labelDependant", yes()}}));
}

TEST_P(SpecifierVisibilityTest, TheMarkOfALabelRowCountsByItsPresenceAlone) {
  use_settings({{"hideLabels", yes()}, {"dockHideLabels", yes()}});
  EXPECT_FALSE(shown({{"labelDependant", no()}}));
  EXPECT_FALSE(shown({{"labelDependant", "text"_ns}}));
  EXPECT_TRUE(shown({}));
}

TEST_P(SpecifierVisibilityTest, TheDocksLabelsAreAskedForOnlyWhenLabelsAreHidden) {
  use_settings({{"hideLabels", no()}});
  shown({{"labelDependant", yes()}});
  EXPECT_THAT(Settings::asked, ::testing::Not(::testing::Contains("dockHideLabels")));
}

TEST_P(SpecifierVisibilityTest, AMissingOrNoneRegularModeHidesItsColourRows) {
  use_settings({});
  EXPECT_FALSE(shown({{"key", "regularColor"_ns}}));
  use_settings({{"regularMode", "none"_ns}});
  EXPECT_FALSE(shown({{"key", "regularColor"_ns}}));
  EXPECT_FALSE(shown({{"key", "regularAutoColor"_ns}}));
  use_settings({{"regularMode", "auto"_ns}});
  EXPECT_TRUE(shown({{"key", "regularColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "regularAutoColor"_ns}}));
}

TEST_P(SpecifierVisibilityTest, AMissingNotificationModeHidesNothingUnlikeTheRegularOneOnPurpose) {
  use_settings({});
  EXPECT_TRUE(shown({{"key", "notificationColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "notificationAutoColor"_ns}}));
  use_settings({{"notificationMode", "none"_ns}});
  EXPECT_FALSE(shown({{"key", "notificationColor"_ns}}));
  EXPECT_FALSE(shown({{"key", "notificationAutoColor"_ns}}));
  EXPECT_FALSE(shown({{"key", "regularColor"_ns}}));
}

TEST_P(SpecifierVisibilityTest, BothModesAreAskedForEveryRowAndTheRegularOneTwiceWhenSet) {
  use_settings({{"regularMode", "auto"_ns}});
  shown({});
  EXPECT_THAT(Settings::asked, ::testing::ElementsAre("regularMode", "regularMode", "notificationMode"));
}

TEST_P(SpecifierVisibilityTest, EveryTestIsMadeInOrderAlsoForARowThatIsHiddenAlready) {
  use_settings(
      {{"on", yes()}, {"hideLabels", yes()}, {"dockHideLabels", yes()}, {"notificationMode", "none"_ns}});
  EXPECT_FALSE(shown({{"depends", "off"_ns},
                      {"dependsNot", "on"_ns},
                      {"labelDependant", yes()},
                      {"key", "notificationColor"_ns}}));
  EXPECT_THAT(Settings::asked, ::testing::ElementsAre("off", "on", "hideLabels", "dockHideLabels",
                                                      "regularMode", "notificationMode"));
}

TEST_P(SpecifierVisibilityTest, AModeOrKeyThatIsNoTextMatchesNothing) {
  use_settings({{"regularMode", yes()}, {"notificationMode", yes()}});
  EXPECT_TRUE(shown({{"key", "regularColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "notificationColor"_ns}}));
  use_settings({{"regularMode", "none"_ns}, {"notificationMode", "none"_ns}});
  EXPECT_TRUE(shown({{"key", yes()}}));
}

TEST_P(SpecifierVisibilityTest, TheDomainsFileIsNoSourceOfTheRulesOnPurpose) {
  write_file(domain_file(), plist("<dict><key>on</key><true/><key>regularMode</key><string>auto</string>"
                                  "<key>notificationMode</key><string>none</string></dict>"));
  EXPECT_FALSE(shown({{"depends", "on"_ns}}));
  EXPECT_TRUE(shown({{"dependsNot", "on"_ns}}));
  EXPECT_FALSE(shown({{"key", "regularColor"_ns}}));
  EXPECT_TRUE(shown({{"key", "notificationColor"_ns}}));
}

TEST_P(SpecifierVisibilityTest, ARowIsNotChangedByTheQuestion) {
  NSMutableDictionary properties = NSMutableDictionary::dictionary();
  properties.setObject("x"_ns, "depends"_ns);
  const PSSpecifier specifier = objc::make<PSSpecifier>();
  objc::send<"setProperties:">(specifier, properties);
  objc::send<"isSpecifierVisible:", bool>(page_, specifier);
  EXPECT_TRUE(specifier.properties().isEqual(properties));
}

TEST_P(SpecifierVisibilityTest, EveryRuleThatHidesARowIsSaidWithWhatWouldShowIt) {
  using Rules = std::vector<std::string>;
  use_settings({{"off", no()}, {"on", yes()}, {"hideLabels", yes()}, {"dockHideLabels", yes()}});
  EXPECT_EQ(hiding({{"depends", "on"_ns}, {"dependsNot", "off"_ns}, {"key", "notificationColor"_ns}}),
            Rules());
  EXPECT_EQ(hiding({{"depends", "off"_ns}, {"dependsNot", "on"_ns}, {"labelDependant", no()}}),
            (Rules{R"("depends": the setting "off" is off -> "off" on)",
                   R"("dependsNot": the setting "on" is on -> "on" off)",
                   R"("labelDependant": the settings "hideLabels" and "dockHideLabels" are both on -> )"
                   R"("hideLabels" or "dockHideLabels" off)"}));
  EXPECT_EQ(hiding({{"key", "regularAutoColor"_ns}}),
            Rules{R"(the setting "regularMode" is missing or "none" -> another "regularMode" than "none")"});
  use_settings({{"notificationMode", "none"_ns}});
  EXPECT_EQ(hiding({{"key", "notificationAutoColor"_ns}}),
            Rules{R"(the setting "notificationMode" is "none" -> another "notificationMode" than "none")"});
}

TEST_P(SpecifierVisibilityTest, TheReasonSaysWhereTheRulesHaveNoSettings) {
  EXPECT_EQ(
      hiding({{"depends", "x"_ns}}),
      std::vector<std::string>{
          R"("depends": the setting "x" is off (the rules have no settings to ask: all read as off and )"
          R"(missing) -> "x" on, in settings that the rules are given to ask (the variable prefs))"});
}

}  // namespace
}  // namespace wispen::testing
