// tests/host/layout/model_test.cpp: items with attributes, the constraints between them, and the frames
// that follow.

#include "host/layout/model.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "host/layout/autoresizing.hpp"
#include "tests/host/geometry/near_rect.hpp"

namespace wispen::layout {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ModelTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(model.set_frame(window, {{0, 0}, {400, 300}}).ok());
    ASSERT_TRUE(model.set_frame(page, {{100, 50}, {200, 160}}).ok());
  }

  ConstraintId constrain(ConstraintSpec spec) {
    const Result<ConstraintId> added = model.add_constraint(std::move(spec));
    EXPECT_TRUE(added.ok()) << (added.ok() ? "" : added.error().message);
    return added.ok() ? *added : ConstraintId{};
  }
  ConstraintId tie(Attribute attribute, double constant = 0, Relation relation = Relation::Equal,
                   Priority priority = kRequired) {
    return constrain({.first = view,
                      .first_attribute = attribute,
                      .relation = relation,
                      .second = page,
                      .second_attribute = attribute,
                      .constant = constant,
                      .priority = priority});
  }
  ConstraintId size(ItemId item, Attribute attribute, double constant, Priority priority = kRequired,
                    Relation relation = Relation::Equal) {
    return constrain({.first = item,
                      .first_attribute = attribute,
                      .relation = relation,
                      .constant = constant,
                      .priority = priority});
  }
  void solve() {
    const LayoutReport report = model.solve();
    EXPECT_TRUE(report.optimal);
    for (const ConflictReport& conflict : report.conflicts) ADD_FAILURE() << conflict.message();
  }

  Model model;
  ItemId window = model.add_item("window");
  ItemId page = model.add_item("page", window);
  ItemId view = model.add_item("view", page);
};

TEST_F(ModelTest, PlacesAViewByItsEdges) {
  tie(Attribute::Top, 4);
  tie(Attribute::Leading, 15);
  tie(Attribute::Trailing, -15);
  tie(Attribute::Bottom, -4);
  solve();
  EXPECT_THAT(model.frame(view), NearRect(15, 4, 170, 152));
  EXPECT_THAT(model.window_frame(view), NearRect(115, 54, 170, 152));
}

struct AttributeCase {
  Attribute first;
  Attribute second;
  double x, y;  // of a 40 x 20 view in a 200 x 160 page, 7 points from where it would touch
  double rtl_x;
};

class EveryAttribute : public ModelTest, public testing::WithParamInterface<AttributeCase> {};

TEST_P(EveryAttribute, IsWhereItsNameSays) {
  const AttributeCase& one = GetParam();
  size(view, Attribute::Width, 40);
  size(view, Attribute::Height, 20);
  model.set_baselines(view, 14, 5);
  model.set_baselines(page, 30, 12);
  // The other axis is pinned where nothing of the case reaches.
  tie(is_horizontal(one.first) ? Attribute::Top : Attribute::Left);
  constrain({.first = view,
             .first_attribute = one.first,
             .second = page,
             .second_attribute = one.second,
             .constant = 7});
  solve();
  EXPECT_THAT(model.frame(view), NearRect(one.x, one.y, 40, 20));
  model.set_direction(Direction::RightToLeft);
  solve();
  EXPECT_THAT(model.frame(view), NearRect(one.rtl_x, one.y, 40, 20));
  model.set_direction(Direction::LeftToRight);
  solve();
  EXPECT_THAT(model.frame(view), NearRect(one.x, one.y, 40, 20));
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, EveryAttribute,
    testing::Values(AttributeCase{Attribute::Left, Attribute::Left, 7, 0, 7},
                    AttributeCase{Attribute::Left, Attribute::Right, 207, 0, 207},
                    AttributeCase{Attribute::Right, Attribute::Left, -33, 0, -33},
                    AttributeCase{Attribute::Right, Attribute::Right, 167, 0, 167},
                    AttributeCase{Attribute::Leading, Attribute::Leading, 7, 0, 153},
                    AttributeCase{Attribute::Leading, Attribute::Trailing, 207, 0, -47},
                    AttributeCase{Attribute::Trailing, Attribute::Leading, -33, 0, 193},
                    AttributeCase{Attribute::Trailing, Attribute::Trailing, 167, 0, -7},
                    AttributeCase{Attribute::CenterX, Attribute::CenterX, 87, 0, 87},
                    AttributeCase{Attribute::CenterX, Attribute::Left, -13, 0, -13},
                    AttributeCase{Attribute::CenterX, Attribute::Leading, -13, 0, 173},
                    AttributeCase{Attribute::Trailing, Attribute::CenterX, 67, 0, 93},
                    AttributeCase{Attribute::Top, Attribute::Top, 0, 7, 0},
                    AttributeCase{Attribute::Top, Attribute::Bottom, 0, 167, 0},
                    AttributeCase{Attribute::Bottom, Attribute::Bottom, 0, 147, 0},
                    AttributeCase{Attribute::CenterY, Attribute::CenterY, 0, 77, 0},
                    AttributeCase{Attribute::CenterY, Attribute::Top, 0, -3, 0},
                    AttributeCase{Attribute::FirstBaseline, Attribute::FirstBaseline, 0, 23, 0},
                    AttributeCase{Attribute::LastBaseline, Attribute::LastBaseline, 0, 140, 0},
                    AttributeCase{Attribute::FirstBaseline, Attribute::Bottom, 0, 153, 0}));

TEST_F(ModelTest, ComparesSizesAcrossAxes) {
  constrain({.first = view,
             .first_attribute = Attribute::Width,
             .second = page,
             .second_attribute = Attribute::Width,
             .multiplier = 0.25,
             .constant = 10});
  constrain({.first = view,
             .first_attribute = Attribute::Height,
             .second = view,
             .second_attribute = Attribute::Width,
             .multiplier = 2});
  solve();
  EXPECT_NEAR(model.frame(view).width(), 60, 1e-9);
  EXPECT_NEAR(model.frame(view).height(), 120, 1e-9);
}

TEST_F(ModelTest, MultipliesAPlaceWithinWhatHoldsBoth) {
  size(view, Attribute::Width, 40);
  constrain({.first = view,
             .first_attribute = Attribute::CenterX,
             .second = page,
             .second_attribute = Attribute::CenterX,
             .multiplier = 1.5});
  constrain({.first = view,
             .first_attribute = Attribute::Top,
             .second = page,
             .second_attribute = Attribute::Bottom,
             .multiplier = 0.25});
  solve();
  EXPECT_NEAR(model.frame(view).origin.x, 130, 1e-9);
  EXPECT_NEAR(model.frame(view).origin.y, 40, 1e-9);
}

TEST_F(ModelTest, CountsInequalitiesFromTheTrailingSideInRightToLeft) {
  size(view, Attribute::Width, 40);
  tie(Attribute::Leading, 30, Relation::GreaterOrEqual);
  tie(Attribute::Leading, 0, Relation::Equal, 500);
  solve();
  EXPECT_NEAR(model.frame(view).origin.x, 30, 1e-9);
  model.set_direction(Direction::RightToLeft);
  solve();
  EXPECT_NEAR(model.frame(view).origin.x, 130, 1e-9);
}

TEST_F(ModelTest, HugsAndResistsAroundTheContentSize) {
  model.set_intrinsic_size(view, 80, 30);
  tie(Attribute::Leading);
  const ConstraintId wide = size(view, Attribute::Width, 120, 249);
  const ConstraintId low = size(view, Attribute::Height, 10, 749);
  solve();
  EXPECT_NEAR(model.frame(view).width(), 80, 1e-9);
  EXPECT_NEAR(model.frame(view).height(), 30, 1e-9);
  ASSERT_TRUE(model.set_priority(wide, 251).ok());
  ASSERT_TRUE(model.set_priority(low, 751).ok());
  solve();
  EXPECT_NEAR(model.frame(view).width(), 120, 1e-9);
  EXPECT_NEAR(model.frame(view).height(), 10, 1e-9);
  ASSERT_TRUE(model.set_hugging(view, Axis::Horizontal, 252).ok());
  ASSERT_TRUE(model.set_compression_resistance(view, Axis::Vertical, 752).ok());
  solve();
  EXPECT_NEAR(model.frame(view).width(), 80, 1e-9);
  EXPECT_NEAR(model.frame(view).height(), 30, 1e-9);
  model.set_intrinsic_size(view, 90, std::nullopt);
  solve();
  EXPECT_NEAR(model.frame(view).width(), 90, 1e-9);
  EXPECT_NEAR(model.frame(view).height(), 10, 1e-9);
}

TEST_F(ModelTest, NeverMakesASizeNegative) {
  tie(Attribute::Leading, 150);
  tie(Attribute::Trailing, -150);
  const LayoutReport report = model.solve();
  ASSERT_THAT(report.conflicts, SizeIs(1));
  EXPECT_THAT(report.conflicts[0].together,
              ElementsAre("view.width >= 0", "page.width == 200 (its frame)",
                          "view.leading == page.leading + 150", "view.trailing == page.trailing - 150"));
  EXPECT_THAT(report.conflicts[0].message(), HasSubstr("Broken to go on: view.trailing == page.trailing"));
  EXPECT_GE(model.frame(view).width(), 0);
}

TEST_F(ModelTest, NamesConstraintsByTheirIdentifiers) {
  constrain({.first = view, .first_attribute = Attribute::Width, .constant = 5, .identifier = "narrow"});
  const ConstraintId wide = constrain({.first = view,
                                       .first_attribute = Attribute::Width,
                                       .relation = Relation::GreaterOrEqual,
                                       .second = page,
                                       .second_attribute = Attribute::Width,
                                       .multiplier = 0.5,
                                       .constant = -1,
                                       .identifier = "wide"});
  const LayoutReport report = model.solve();
  ASSERT_THAT(report.conflicts, SizeIs(1));
  EXPECT_EQ(report.conflicts[0].broken, wide);
  EXPECT_EQ(report.conflicts[0].broken_name, "wide: view.width >= 0.5 * page.width - 1");
  EXPECT_THAT(report.conflicts[0].together, testing::Contains("narrow: view.width == 5"));
  EXPECT_TRUE(model.is_broken(wide));
}

TEST_F(ModelTest, RefusesPairsThatMakeNoSense) {
  const auto refused = [&](Attribute first, Attribute second) {
    const bool alone = second == Attribute::NotAnAttribute;
    return !model
                .add_constraint({.first = view,
                                 .first_attribute = first,
                                 .second = alone ? kNoItem : page,
                                 .second_attribute = second})
                .ok();
  };
  EXPECT_TRUE(refused(Attribute::Left, Attribute::NotAnAttribute));
  EXPECT_TRUE(refused(Attribute::NotAnAttribute, Attribute::Left));
  EXPECT_TRUE(refused(Attribute::Left, Attribute::Top));
  EXPECT_TRUE(refused(Attribute::Left, Attribute::Leading));
  EXPECT_TRUE(refused(Attribute::Trailing, Attribute::Right));
  EXPECT_TRUE(refused(Attribute::Width, Attribute::CenterX));
  EXPECT_TRUE(refused(static_cast<Attribute>(99), Attribute::Left));
  EXPECT_FALSE(refused(Attribute::CenterX, Attribute::Leading));
  EXPECT_FALSE(refused(Attribute::Width, Attribute::Height));
  EXPECT_FALSE(refused(Attribute::Width, Attribute::NotAnAttribute));
  EXPECT_FALSE(model.add_constraint({.first = kNoItem, .first_attribute = Attribute::Width}).ok());
  EXPECT_FALSE(model.add_constraint({.first = ItemId{77}, .first_attribute = Attribute::Width}).ok());
}

TEST_F(ModelTest, RefusesNumbersThatAreNone) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(model.set_frame(view, {{0, 0}, {kNan, 1}}).ok());
  EXPECT_FALSE(model.set_frame(view, {{0, kInfinity}, {1, 1}}, 18, {1, 1}).ok());
  EXPECT_FALSE(model.set_frame(view, {{0, 0}, {1, 1}}, 18, {kNan, 1}).ok());
  EXPECT_FALSE(model.set_hugging(view, Axis::Horizontal, kNan).ok());
  EXPECT_FALSE(model.set_compression_resistance(view, Axis::Horizontal, 1001).ok());
  EXPECT_FALSE(
      model.add_constraint({.first = view, .first_attribute = Attribute::Width, .multiplier = kNan}).ok());
  const ConstraintId id = size(view, Attribute::Width, 12);
  EXPECT_FALSE(model.set_constant(id, kInfinity).ok());
  model.set_intrinsic_size(view, kNan, -5);
  model.set_baselines(view, kNan, 0);
  solve();
  EXPECT_NEAR(model.frame(view).width(), 12, 1e-9);
  EXPECT_EQ(model.intrinsic_length(view, Axis::Vertical), std::nullopt);
}

TEST_F(ModelTest, MovesWithAnEditedFrame) {
  tie(Attribute::Leading, 10);
  tie(Attribute::Trailing, -10);
  solve();
  for (int width = 0; width < 100; ++width) {
    ASSERT_TRUE(model.set_frame(page, {{5, 5}, {100.0 + width, 50}}).ok());
    solve();
    ASSERT_THAT(model.frame(view).width(), testing::DoubleNear(80 + width, 1e-9));
  }
  EXPECT_THAT(model.frame(page), NearRect(5, 5, 199, 50));
}

TEST_F(ModelTest, LetsAFrameFollowAParentThatTheSolverSizes) {
  const ItemId box = model.add_item("box", page);
  const ItemId blur = model.add_item("blur", box);
  const ItemId badge = model.add_item("badge", box);
  ASSERT_TRUE(model.set_frame(blur, {{0, 0}, {100, 50}}, kFlexibleWidth | kFlexibleHeight, {100, 50}).ok());
  ASSERT_TRUE(model
                  .set_frame(badge, {{70, 20}, {20, 10}},
                             kFlexibleLeftMargin | kFlexibleTopMargin | kFlexibleBottomMargin, {100, 50})
                  .ok());
  size(box, Attribute::Width, 180);
  size(box, Attribute::Height, 90);
  solve();
  EXPECT_THAT(model.frame(blur), NearRect(0, 0, 180, 90));
  EXPECT_THAT(model.frame(badge), NearRect(150, 40, 20, 10));
}

TEST_F(ModelTest, ForgetsAnItemWithWhatIsInsideAndAllThatNamesThem) {
  const std::size_t before = model.constraint_count();
  const ItemId extra = model.add_item("extra", page);
  const ItemId inside = model.add_item("inside", extra);
  ASSERT_TRUE(model.set_frame(extra, {{1, 2}, {3, 4}}).ok());
  model.set_intrinsic_size(inside, 10, 10);
  const ConstraintId across = constrain({.first = view,
                                         .first_attribute = Attribute::Left,
                                         .second = inside,
                                         .second_attribute = Attribute::Right});
  solve();
  EXPECT_NEAR(model.frame(view).origin.x, 11, 1e-9);
  model.remove_item(extra);
  model.remove_item(extra);
  EXPECT_FALSE(model.has_item(extra));
  EXPECT_FALSE(model.has_item(inside));
  EXPECT_EQ(model.constraint_count(), before);
  EXPECT_TRUE(model.set_constant(across, 12).ok());
  solve();
  EXPECT_THAT(model.frame(inside), NearRect(0, 0, 0, 0));
  EXPECT_THAT(model.frame(view), NearRect(0, 0, 0, 0));
}

TEST_F(ModelTest, ReachesAcrossTheHierarchy) {
  const ItemId deep = model.add_item("deep", view);
  const ItemId far = model.add_item("far", window);
  ASSERT_TRUE(model.set_frame(view, {{10, 20}, {50, 50}}).ok());
  ASSERT_TRUE(model.set_frame(far, {{300, 200}, {30, 40}}).ok());
  constrain({.first = deep,
             .first_attribute = Attribute::Left,
             .second = far,
             .second_attribute = Attribute::Left});
  constrain({.first = deep,
             .first_attribute = Attribute::Bottom,
             .second = far,
             .second_attribute = Attribute::CenterY,
             .constant = 5});
  solve();
  EXPECT_THAT(model.frame(deep), NearRect(190, 155, 0, 0));
  EXPECT_THAT(model.window_frame(deep), NearRect(300, 225, 0, 0));
}

TEST_F(ModelTest, TakesBackABrokenConstraintWhenThereIsRoom) {
  tie(Attribute::Leading);
  tie(Attribute::Trailing);
  const ConstraintId wide = size(view, Attribute::Width, 300);
  EXPECT_THAT(model.solve().conflicts, SizeIs(1));
  EXPECT_NEAR(model.frame(view).width(), 200, 1e-9);
  ASSERT_TRUE(model.set_frame(page, {{0, 0}, {300, 160}}).ok());
  EXPECT_THAT(model.solve().conflicts, IsEmpty());
  EXPECT_FALSE(model.is_broken(wide));
}

TEST_F(ModelTest, FitsAnItemAroundWhatIsInIt) {
  const ItemId label = model.add_item("label", view);
  model.set_intrinsic_size(label, 80, 20);
  for (const auto& [attribute, constant] : {std::pair{Attribute::Leading, 8.0},
                                            {Attribute::Trailing, -8.0},
                                            {Attribute::Top, 3.0},
                                            {Attribute::Bottom, -3.0}}) {
    constrain({.first = label,
               .first_attribute = attribute,
               .second = view,
               .second_attribute = attribute,
               .constant = constant});
  }
  tie(Attribute::Width);  // what surrounds the item does not count
  EXPECT_EQ(model.fitting_size(view, kFittingCompressed), (Size{96, 26}));
  // Hugging is stronger than the pull of an expanded fitting.
  EXPECT_EQ(model.fitting_size(view, kFittingExpanded), (Size{96, 26}));
  EXPECT_EQ(model.fitting_size(view, {150, 0}, kRequired, kFittingSizeLevel), (Size{150, 26}));
  ASSERT_TRUE(model.set_hugging(label, Axis::Horizontal, 49).ok());
  EXPECT_EQ(model.fitting_size(view, kFittingExpanded), (Size{10'000, 26}));
  EXPECT_EQ(model.fitting_size(kNoItem, kFittingCompressed), (Size{0, 0}));
}

TEST_F(ModelTest, AlignsFramesToPixelsSoThatNeighboursStillTouch) {
  ItemId last = kNoItem;
  std::vector<ItemId> thirds;
  for (int i = 0; i < 3; ++i) {
    const ItemId third = model.add_item("third", page);
    constrain({.first = third,
               .first_attribute = Attribute::Width,
               .second = page,
               .second_attribute = Attribute::Width,
               .multiplier = 1.0 / 3});
    constrain({.first = third,
               .first_attribute = Attribute::Leading,
               .second = i == 0 ? page : last,
               .second_attribute = i == 0 ? Attribute::Leading : Attribute::Trailing});
    thirds.push_back(last = third);
  }
  solve();
  EXPECT_THAT(model.frame(thirds[1], 2), NearRect(66.5, 0, 67, 0));
  EXPECT_EQ(model.frame(thirds[0], 2).max_x(), model.frame(thirds[1], 2).min_x());
  EXPECT_EQ(model.frame(thirds[1], 2).max_x(), model.frame(thirds[2], 2).min_x());
  EXPECT_EQ(model.frame(thirds[2], 2).max_x(), 200);
  EXPECT_EQ(model.frame(thirds[1], 0), model.frame(thirds[1]));
  EXPECT_EQ(model.frame(thirds[1], std::numeric_limits<double>::quiet_NaN()), model.frame(thirds[1]));
}

TEST_F(ModelTest, FollowsBaselinesThatMove) {
  size(view, Attribute::Height, 20);
  model.set_baselines(view, 14, 5);
  constrain({.first = view,
             .first_attribute = Attribute::FirstBaseline,
             .second = page,
             .second_attribute = Attribute::Top,
             .constant = 50});
  solve();
  EXPECT_NEAR(model.frame(view).origin.y, 36, 1e-9);
  model.set_baselines(view, 10, 5);
  solve();
  EXPECT_NEAR(model.frame(view).origin.y, 40, 1e-9);
}

}  // namespace
}  // namespace wispen::layout
