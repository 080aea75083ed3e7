// tests/host/layout/stack_table_test.cpp: every axis, distribution and alignment, with up to three views, in
// stacks that are too small, just right and too large, against the same rules written as plain arithmetic.

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "host/layout/stack.hpp"

namespace wispen::layout {
namespace {

struct Span {
  double start;
  double length;
};

constexpr double kAsked[] = {60, 20, 40};   // along the stack
constexpr double kAcross[] = {30, 44, 10};  // across it
constexpr double kFirst[] = {20, 25, 5};    // first baseline from the top
constexpr double kLast[] = {4, 10, 2};      // last baseline from the bottom

std::vector<Span> spread(const std::vector<double>& lengths, const std::vector<double>& gaps) {
  std::vector<Span> spans;
  double place = 0;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    spans.push_back({place, lengths[i]});
    place += lengths[i] + (i < gaps.size() ? gaps[i] : 0);
  }
  return spans;
}

/// The views with the highest index give way first.
std::vector<double> shrunk(std::vector<double> lengths, double excess) {
  for (std::size_t i = lengths.size(); i-- > 0 && excess > 0;) {
    const double taken = std::min(lengths[i], excess);
    lengths[i] -= taken;
    excess -= taken;
  }
  return lengths;
}

std::vector<Span> expected_along(StackDistribution distribution, const std::vector<double>& asked,
                                 double spacing, double room) {
  const std::size_t count = asked.size();
  if (count == 0) return {};
  std::vector<double> gaps(count - 1, spacing);
  const double free = room - spacing * static_cast<double>(gaps.size());
  const double sum = std::accumulate(asked.begin(), asked.end(), 0.0);
  std::vector<double> lengths = asked;
  if (distribution == StackDistribution::FillEqually) {
    std::fill(lengths.begin(), lengths.end(), free / static_cast<double>(count));
    return spread(lengths, gaps);
  }
  if (distribution == StackDistribution::FillProportionally) {
    for (double& length : lengths) length *= free / sum;
    return spread(lengths, gaps);
  }
  if (free <= sum) return spread(shrunk(lengths, sum - free), gaps);
  if (distribution == StackDistribution::Fill || count == 1) {
    lengths.back() += free - sum;
    return spread(lengths, gaps);
  }
  if (distribution == StackDistribution::EqualSpacing || count == 2) {
    for (double& gap : gaps) gap = (room - sum) / static_cast<double>(gaps.size());
    return spread(lengths, gaps);
  }
  const double centres = room - (lengths[0] + lengths[2]) / 2;
  const double least_first = (lengths[0] + lengths[1]) / 2 + spacing;
  const double least_second = (lengths[1] + lengths[2]) / 2 + spacing;
  const double first = std::min(std::max(centres / 2, least_first), centres - least_second);
  gaps[0] = first - (lengths[0] + lengths[1]) / 2;
  gaps[1] = centres - first - (lengths[1] + lengths[2]) / 2;
  return spread(lengths, gaps);
}

std::vector<Span> expected_across(StackAlignment alignment, Axis axis, std::size_t count, double room) {
  const bool baselines =
      alignment == StackAlignment::FirstBaseline || alignment == StackAlignment::LastBaseline;
  if (baselines && axis == Axis::Vertical) alignment = StackAlignment::Fill;
  std::vector<Span> spans;
  const double highest = *std::max_element(kFirst, kFirst + count);
  const double lowest = *std::max_element(kLast, kLast + count);
  for (std::size_t i = 0; i < count; ++i) {
    const double length = alignment == StackAlignment::Fill ? room : kAcross[i];
    double start = 0;
    if (alignment == StackAlignment::Center) start = (room - length) / 2;
    if (alignment == StackAlignment::Trailing) start = room - length;
    if (alignment == StackAlignment::FirstBaseline) start = highest - kFirst[i];
    if (alignment == StackAlignment::LastBaseline) start = room - lowest + kLast[i] - length;
    spans.push_back({start, length});
  }
  return spans;
}

class StackTable : public testing::TestWithParam<std::tuple<int, int, int>> {};

TEST_P(StackTable, PutsEveryViewWhereTheRulesSay) {
  const Axis axis = static_cast<Axis>(std::get<0>(GetParam()));
  const auto distribution = static_cast<StackDistribution>(std::get<1>(GetParam()));
  const auto alignment = static_cast<StackAlignment>(std::get<2>(GetParam()));
  const bool across_is_height = axis == Axis::Horizontal;

  for (std::size_t count = 1; count <= 3; ++count) {
    for (const double spacing : {0.0, 8.0}) {
      for (const double room : {16.0, 70.0, 100.0, 136.0, 140.0, 150.0, 300.0}) {
        for (const bool with_hidden : {false, true}) {
          SCOPED_TRACE(testing::Message() << count << " views, spacing " << spacing << ", room " << room
                                          << (with_hidden ? ", hidden ones" : ""));
          Model model;
          const ItemId stack_item = model.add_item("stack");
          const double across_room = 60;
          ASSERT_TRUE(model
                          .set_frame(stack_item, across_is_height ? Rect{{7, 9}, {room, across_room}}
                                                                  : Rect{{7, 9}, {across_room, room}})
                          .ok());
          std::vector<ArrangedItem> arranged;
          std::vector<ItemId> views;
          const auto hidden = [&] {
            const ItemId item = model.add_item("hidden", stack_item);
            model.set_intrinsic_size(item, 1000, 1000);
            arranged.push_back({.item = item, .hidden = true, .spacing_after = 77});
          };
          for (std::size_t i = 0; i < count; ++i) {
            if (with_hidden) hidden();
            views.push_back(model.add_item("view" + std::to_string(i), stack_item));
            model.set_intrinsic_size(views.back(), across_is_height ? kAsked[i] : kAcross[i],
                                     across_is_height ? kAcross[i] : kAsked[i]);
            model.set_baselines(views.back(), kFirst[i], kLast[i]);
            arranged.push_back({.item = views.back()});
          }
          if (with_hidden) hidden();
          Stack stack(model, stack_item);
          stack.arrange(
              {.axis = axis, .distribution = distribution, .alignment = alignment, .spacing = spacing},
              arranged);
          const LayoutReport report = model.solve();
          for (const ConflictReport& conflict : report.conflicts) ADD_FAILURE() << conflict.message();

          const std::vector<double> asked(kAsked, kAsked + count);
          const auto along = expected_along(distribution, asked, spacing, room);
          const auto across = expected_across(alignment, axis, count, across_room);
          for (std::size_t i = 0; i < count; ++i) {
            const Rect frame = model.frame(views[i]);
            const Span main{across_is_height ? frame.origin.x : frame.origin.y,
                            across_is_height ? frame.width() : frame.height()};
            const Span cross{across_is_height ? frame.origin.y : frame.origin.x,
                             across_is_height ? frame.height() : frame.width()};
            EXPECT_NEAR(main.start, along[i].start, 1e-6) << "view " << i;
            EXPECT_NEAR(main.length, along[i].length, 1e-6) << "view " << i;
            EXPECT_NEAR(cross.start, across[i].start, 1e-6) << "view " << i;
            EXPECT_NEAR(cross.length, across[i].length, 1e-6) << "view " << i;
          }
          if (HasFailure()) return;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Every, StackTable,
                         testing::Combine(testing::Range(0, 2), testing::Range(0, 5), testing::Range(0, 6)));

}  // namespace
}  // namespace wispen::layout
