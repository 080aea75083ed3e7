// tests/controllers/shown_rows_test.cpp: rows that come and go on the screen.

#include <algorithm>
#include <random>
#include <set>

#include "tests/controllers/decided_page.hpp"
#include "tests/support/page_fixture.hpp"

namespace wispen::testing {
namespace {

std::set<std::string> hidden;

class ShownRowsTest : public PageTest {
 protected:
  static void collect(const Json& views, std::vector<std::pair<double, std::string>>& rows) {
    for (const Json& view : views) {
      if (view.contains("row")) rows.emplace_back(view["frame"][1], view["row"].value("id", std::string()));
      if (view.contains("subviews")) collect(view["subviews"], rows);
    }
  }
  /// The rows on the screen, from top to bottom.
  static std::vector<std::string> on_screen() {
    std::vector<std::pair<double, std::string>> rows;
    collect(tree(), rows);
    std::ranges::sort(rows);
    std::vector<std::string> names;
    for (auto& [y, name] : rows) names.push_back(name);
    return names;
  }
  static std::vector<std::string> in_list(const PSListController& page) {
    std::vector<std::string> names;
    const NSArray rows = page.specifiers();
    for (NSUInteger i = 0; i < rows.count(); ++i) {
      const auto specifier = rows.objectAtIndex<PSSpecifier>(i);
      if (specifier.cellType() != 0) names.push_back(specifier.identifier().utf8());
    }
    return names;
  }
};

TEST_F(ShownRowsTest, AreThoseOfTheListAfterEveryRefreshAlsoWhereGroupsComeAndGo) {
  std::string items;
  std::vector<std::string> names;
  for (const char* const name : {"G1", "a", "b", "G2", "c", "d", "G3", "G4", "e"}) {
    items += item({{"cell", name[0] == 'G' ? "PSGroupCell" : "PSSwitchCell"}, {"id", name}, {"label", name}});
    names.emplace_back(name);
  }
  hidden.clear();
  show("settings", {{"Root.plist", specifier_list(items)}});
  DecidedPage::define();
  DecidedPage::is_visible = [](const PSSpecifier& specifier) {
    return !hidden.contains(specifier.identifier().utf8());
  };
  std::mt19937 random(7);
  for (int page_number = 0; page_number < 12; ++page_number) {
    const DecidedPage page = objc::make<DecidedPage>();
    navigation().pushViewController(page, false);
    settle();
    ASSERT_EQ(on_screen(), in_list(page));
    for (int refresh = 0; refresh < 12; ++refresh) {
      std::string hiding;
      hidden.clear();
      for (std::size_t i = 1; i < names.size(); ++i) {  // the first must never be
        if (random() % 3 == 0) hidden.insert(names[i]), hiding += " " + names[i];
      }
      objc::send<"updateSpecifiers">(page);
      settle();
      ASSERT_EQ(on_screen(), in_list(page))
          << "page " << page_number << ", refresh " << refresh << ", hiding" << hiding;
    }
    hidden.clear();
    navigation().popViewController(false);
    settle();
  }
}

}  // namespace
}  // namespace wispen::testing
