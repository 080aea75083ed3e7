// tests/host/layout/stack_test.cpp: views in a row or a column, arranged by constraints.

#include "host/layout/stack.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/host/geometry/near_rect.hpp"

namespace wispen::layout {
namespace {

using ::testing::IsEmpty;

class StackTest : public testing::Test {
 protected:
  ItemId view(const std::string& name, double width, double height) {
    const ItemId item = model.add_item(name, stack_item);
    model.set_intrinsic_size(item, width, height);
    return item;
  }
  void size_stack(double width, double height) {
    ASSERT_TRUE(model.set_frame(stack_item, {{0, 0}, {width, height}}).ok());
  }
  /// Leaves the size to the stack.
  void pin_stack() {
    const ItemId window = model.add_item("window");
    ASSERT_TRUE(model.set_frame(window, {{0, 0}, {400, 300}}).ok());
    for (const Attribute edge : {Attribute::Left, Attribute::Top}) {
      ASSERT_TRUE(
          model
              .add_constraint(
                  {.first = stack_item, .first_attribute = edge, .second = window, .second_attribute = edge})
              .ok());
    }
  }
  void solve() {
    const LayoutReport report = model.solve();
    EXPECT_TRUE(report.optimal);
    for (const ConflictReport& conflict : report.conflicts) ADD_FAILURE() << conflict.message();
  }
  static std::vector<ArrangedItem> all(const std::vector<ItemId>& items) {
    std::vector<ArrangedItem> arranged;
    for (const ItemId item : items) arranged.push_back({.item = item});
    return arranged;
  }

  Model model;
  ItemId stack_item = model.add_item("stack");
  Stack stack{model, stack_item};
};

TEST_F(StackTest, IsEmptyWithoutViews) {
  stack.arrange({}, {});
  solve();
  EXPECT_THAT(model.frame(stack_item), NearRect(0, 0, 0, 0));
}

TEST_F(StackTest, IsAsLargeAsItsViewsAskFor) {
  const auto items = all({view("a", 40, 20), view("b", 60, 30), view("c", 10, 5)});
  for (int distribution = 0; distribution < 5; ++distribution) {
    for (int alignment = 0; alignment < 6; ++alignment) {
      stack.arrange({.distribution = static_cast<StackDistribution>(distribution),
                     .alignment = static_cast<StackAlignment>(alignment),
                     .spacing = 8},
                    items);
      const Size fitting = model.fitting_size(stack_item, kFittingCompressed);
      SCOPED_TRACE(testing::Message() << distribution << ' ' << alignment);
      EXPECT_NEAR(fitting.height, 30, 1e-6);
      // Equal lengths are the longest, 60; for equal centres, 58 apart, the second gap grows.
      EXPECT_NEAR(fitting.width, distribution == 1 ? 196 : distribution == 4 ? 141 : 126, 1e-6);
    }
  }
}

TEST_F(StackTest, LeavesOutHiddenViewsAndTheSpacingAfterThem) {
  const ItemId a = view("a", 40, 20);
  const ItemId b = view("b", 60, 20);
  const ItemId c = view("c", 10, 20);
  size_stack(200, 20);
  stack.arrange({.spacing = 8}, {{.item = a}, {.item = b, .hidden = true, .spacing_after = 50}, {.item = c}});
  solve();
  EXPECT_THAT(model.frame(a), NearRect(0, 0, 40, 20));
  EXPECT_THAT(model.frame(c), NearRect(48, 0, 152, 20));
  stack.arrange({.spacing = 8}, {{.item = a}, {.item = b, .spacing_after = 50}, {.item = c}});
  solve();
  EXPECT_THAT(model.frame(b), NearRect(48, 0, 60, 20));
  EXPECT_THAT(model.frame(c), NearRect(158, 0, 42, 20));
}

TEST_F(StackTest, StretchesWhatHugsLeastAndShrinksWhatResistsLeast) {
  const ItemId slider = view("slider", 100, 34);
  const ItemId label = view("label", 30, 12);
  ASSERT_TRUE(model.set_hugging(label, Axis::Horizontal, 251).ok());
  ASSERT_TRUE(model.set_compression_resistance(slider, Axis::Horizontal, 749).ok());
  stack.arrange({.alignment = StackAlignment::Center, .spacing = 5}, all({slider, label}));
  size_stack(300, 34);
  solve();
  EXPECT_THAT(model.frame(slider), NearRect(0, 0, 265, 34));
  EXPECT_THAT(model.frame(label), NearRect(270, 11, 30, 12));
  size_stack(80, 34);
  solve();
  EXPECT_THAT(model.frame(slider), NearRect(0, 0, 45, 34));
  EXPECT_THAT(model.frame(label), NearRect(50, 11, 30, 12));
}

TEST_F(StackTest, KeepsItsMargins) {
  pin_stack();
  const ItemId a = view("a", 40, 20);
  stack.arrange({.margins = {1, 2, 3, 4}}, all({a}));
  solve();
  EXPECT_THAT(model.frame(stack_item), NearRect(0, 0, 46, 24));
  EXPECT_THAT(model.frame(a), NearRect(2, 1, 40, 20));
}

TEST_F(StackTest, RunsFromRightToLeftWhereReadingDoes) {
  pin_stack();
  const ItemId a = view("a", 40, 20);
  const ItemId b = view("b", 60, 20);
  model.set_direction(Direction::RightToLeft);
  stack.arrange({.spacing = 10, .margins = {0, 5, 0, 1}}, all({a, b}));
  solve();
  EXPECT_THAT(model.frame(stack_item), NearRect(0, 0, 116, 20));
  EXPECT_THAT(model.frame(a), NearRect(71, 0, 40, 20));
  EXPECT_THAT(model.frame(b), NearRect(1, 0, 60, 20));
  model.set_direction(Direction::LeftToRight);
  solve();
  EXPECT_THAT(model.frame(a), NearRect(5, 0, 40, 20));
}

TEST_F(StackTest, AlignsBaselinesWithTheTallestAtTheEdge) {
  const ItemId large = view("large", 40, 40);
  const ItemId small = view("small", 40, 16);
  model.set_baselines(large, 30, 10);
  model.set_baselines(small, 12, 4);
  size_stack(100, 60);
  stack.arrange({.alignment = StackAlignment::FirstBaseline}, all({small, large}));
  solve();
  EXPECT_THAT(model.frame(large), NearRect(40, 0, 60, 40));
  EXPECT_THAT(model.frame(small), NearRect(0, 18, 40, 16));
  stack.arrange({.alignment = StackAlignment::LastBaseline}, all({small, large}));
  solve();
  EXPECT_THAT(model.frame(large), NearRect(40, 20, 60, 40));
  EXPECT_THAT(model.frame(small), NearRect(0, 38, 40, 16));
}

TEST_F(StackTest, MeasuresSpacingBetweenBaselinesWhereAsked) {
  const ItemId a = view("a", 40, 20);
  const ItemId b = view("b", 40, 20);
  model.set_baselines(a, 15, 5);
  model.set_baselines(b, 15, 5);
  stack.arrange({.axis = Axis::Vertical, .spacing = 30, .baseline_relative = true}, all({a, b}));
  solve();
  EXPECT_THAT(model.frame(b), NearRect(0, 30, 40, 20));
}

TEST_F(StackTest, GivesWayToOthersConstraintsOnItsViews) {
  const ItemId a = view("a", 40, 20);
  const ItemId b = view("b", 60, 20);
  size_stack(200, 20);
  stack.arrange({}, all({a, b}));
  ASSERT_TRUE(model.add_constraint({.first = b, .first_attribute = Attribute::Width, .constant = 70}).ok());
  solve();
  EXPECT_THAT(model.frame(a), NearRect(0, 0, 130, 20));
}

TEST_F(StackTest, LeavesNothingBehind) {
  const ItemId a = view("a", 40, 20);
  const ItemId b = view("b", 60, 20);
  const ItemId c = view("c", 60, 20);
  model.solve();
  const std::size_t before = model.constraint_count();
  {
    Stack other(model, stack_item);
    other.arrange({.distribution = StackDistribution::EqualCentering}, all({a, b, c}));
    solve();
    EXPECT_GT(model.constraint_count(), before);
  }
  EXPECT_EQ(model.constraint_count(), before);
}

TEST_F(StackTest, TouchesNothingOfOthersAfterItsItemIsGone) {
  const ItemId home = model.add_item("home");
  {
    Stack other(model, home);
    std::vector<ItemId> views;
    for (int i = 0; i < 3; ++i) views.push_back(model.add_item("view", home));
    other.arrange({.distribution = StackDistribution::EqualSpacing}, all(views));
    solve();
    model.remove_item(home);
    std::vector<ItemId> strangers;
    for (int i = 0; i < 8; ++i) strangers.push_back(model.add_item("stranger"));
    other.arrange({}, all(views));
    for (const ItemId stranger : strangers) EXPECT_TRUE(model.has_item(stranger));
    for (const ItemId view : views) EXPECT_FALSE(model.has_item(view));
  }
  solve();
}

TEST_F(StackTest, NamesWhatContradictsInATooNarrowStack) {
  const ItemId a = view("a", 40, 20);
  const ItemId b = view("b", 40, 20);
  size_stack(4, 20);
  stack.arrange({.spacing = 5}, all({a, b}));
  const LayoutReport report = model.solve();
  ASSERT_EQ(report.conflicts.size(), 1u);
  EXPECT_EQ(report.conflicts[0].broken_name, "stack-spacing: b.leading == a.trailing + 5");
  EXPECT_THAT(report.conflicts[0].together,
              testing::IsSupersetOf({"stack.width == 4 (its frame)", "a.width >= 0", "b.width >= 0",
                                     "stack-spacing: b.leading == a.trailing + 5"}));
}

/// A cell of a settings page: a title above a slider and its value, with six constraints of its own.
TEST(LabelledSlider, LiesWhereItsConstraintsPutIt) {
  Model model;
  const ItemId content = model.add_item("content");
  const ItemId outer_item = model.add_item("outer", content);
  const ItemId title = model.add_item("title", outer_item);
  const ItemId inner_item = model.add_item("inner", outer_item);
  const ItemId slider = model.add_item("slider", inner_item);
  const ItemId value = model.add_item("value", inner_item);
  model.set_intrinsic_size(title, 120, 18);
  model.set_intrinsic_size(slider, std::nullopt, 34);
  model.set_intrinsic_size(value, 22, 12);
  for (const ItemId label : {title, value}) {
    ASSERT_TRUE(model.set_hugging(label, Axis::Horizontal, 251).ok());
    ASSERT_TRUE(model.set_hugging(label, Axis::Vertical, 251).ok());
  }
  Stack inner(model, inner_item);
  Stack outer(model, outer_item);
  inner.arrange({.alignment = StackAlignment::Center, .spacing = 5}, {{.item = slider}, {.item = value}});
  outer.arrange({.axis = Axis::Vertical,
                 .distribution = StackDistribution::EqualCentering,
                 .alignment = StackAlignment::Center},
                {{.item = title}, {.item = inner_item}});
  const auto equal = [&](ItemId one, ItemId other, Attribute attribute, double constant) {
    ASSERT_TRUE(model
                    .add_constraint({.first = one,
                                     .first_attribute = attribute,
                                     .second = other,
                                     .second_attribute = attribute,
                                     .constant = constant})
                    .ok());
  };
  equal(outer_item, content, Attribute::Top, 4);
  equal(outer_item, content, Attribute::Leading, 15);
  equal(outer_item, content, Attribute::Trailing, -15);
  equal(outer_item, content, Attribute::Bottom, -4);
  equal(inner_item, outer_item, Attribute::Width, 0);
  equal(value, inner_item, Attribute::Height, 0);

  ASSERT_TRUE(model.set_frame(content, {{0, 0}, {320, 70}}).ok());
  EXPECT_THAT(model.solve().conflicts, IsEmpty());
  EXPECT_THAT(model.frame(outer_item), NearRect(15, 4, 290, 62));
  EXPECT_THAT(model.frame(title), NearRect(85, 0, 120, 18));
  EXPECT_THAT(model.frame(inner_item), NearRect(0, 28, 290, 34));
  EXPECT_THAT(model.frame(slider), NearRect(0, 0, 263, 34));
  EXPECT_THAT(model.frame(value), NearRect(268, 0, 22, 34));

  const Size fitting = model.fitting_size(content, {320, 0}, kRequired, kFittingSizeLevel);
  EXPECT_NEAR(fitting.width, 320, 1e-6);
  EXPECT_NEAR(fitting.height, 60, 1e-6);

  model.set_direction(Direction::RightToLeft);
  EXPECT_THAT(model.solve().conflicts, IsEmpty());
  EXPECT_THAT(model.frame(slider), NearRect(27, 0, 263, 34));
  EXPECT_THAT(model.frame(value), NearRect(0, 0, 22, 34));
}

}  // namespace
}  // namespace wispen::layout
