// bench/layout_bench.cpp: rows of a labelled slider, solved from scratch and after one change.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "host/layout/model.hpp"
#include "host/layout/stack.hpp"

namespace wispen::bench {
namespace {

using namespace layout;

/// A title above a slider and its value: two stacks and six constraints of the row's own.
class Row {
 public:
  Row(Model& model, ItemId page, int number)
      : content_(model.add_item("content", page)),
        outer_item_(model.add_item("outer", content_)),
        title_(model.add_item("title", outer_item_)),
        inner_item_(model.add_item("inner", outer_item_)),
        slider_(model.add_item("slider", inner_item_)),
        value_(model.add_item("value", inner_item_)),
        outer_(std::make_unique<Stack>(model, outer_item_)),
        inner_(std::make_unique<Stack>(model, inner_item_)) {
    must(model.set_frame(content_, {{0, 70.0 * number}, {320, 70}}));
    model.set_intrinsic_size(title_, 100 + number % 37, 18);
    model.set_intrinsic_size(slider_, std::nullopt, 34);
    model.set_intrinsic_size(value_, 22, 12);
    for (const ItemId label : {title_, value_}) {
      for (const Axis axis : {Axis::Horizontal, Axis::Vertical}) must(model.set_hugging(label, axis, 251));
    }
    inner_->arrange({.alignment = StackAlignment::Center, .spacing = 5},
                    {{.item = slider_}, {.item = value_}});
    outer_->arrange({.axis = Axis::Vertical,
                     .distribution = StackDistribution::EqualCentering,
                     .alignment = StackAlignment::Center},
                    {{.item = title_}, {.item = inner_item_}});
    equal(model, outer_item_, content_, Attribute::Top, 4);
    equal(model, outer_item_, content_, Attribute::Leading, 15);
    equal(model, outer_item_, content_, Attribute::Trailing, -15);
    equal(model, outer_item_, content_, Attribute::Bottom, -4);
    equal(model, inner_item_, outer_item_, Attribute::Width, 0);
    equal(model, value_, inner_item_, Attribute::Height, 0);
  }

  void set_value_width(Model& model, double width) const { model.set_intrinsic_size(value_, width, 12); }
  bool is_right(const Model& model, double value_width) const {
    return model.frame(slider_) == Rect{{0, 0}, {290 - 5 - value_width, 34}};
  }

 private:
  static void must(const Result<void>& done) {
    if (!done) std::abort();
  }
  static void equal(Model& model, ItemId one, ItemId other, Attribute attribute, double constant) {
    const auto added = model.add_constraint({.first = one,
                                             .first_attribute = attribute,
                                             .second = other,
                                             .second_attribute = attribute,
                                             .constant = constant});
    if (!added) std::abort();
  }

  ItemId content_, outer_item_, title_, inner_item_, slider_, value_;
  std::unique_ptr<Stack> outer_, inner_;
};

struct Page {
  explicit Page(int count) {
    const ItemId page = model.add_item("page");
    if (!model.set_frame(page, {{0, 0}, {320, 70.0 * count}})) std::abort();
    for (int i = 0; i < count; ++i) rows.emplace_back(model, page, i);
  }
  Model model;
  std::vector<Row> rows;
};

void solve_from_scratch(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    auto page = std::make_unique<Page>(count);
    const LayoutReport report = page->model.solve();
    if (!report.conflicts.empty() || !page->rows.back().is_right(page->model, 22)) {
      state.SkipWithError("the last row is not where it should be");
    }
    state.PauseTiming();
    page.reset();
    state.ResumeTiming();
  }
}

void change_one_row(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  Page page(count);
  page.model.solve();
  const Row& row = page.rows[static_cast<std::size_t>(count) / 2];
  double width = 22;
  for (auto _ : state) {
    width = width < 60 ? width + 1 : 22;
    row.set_value_width(page.model, width);
    page.model.solve();
    if (!row.is_right(page.model, width)) state.SkipWithError("the row is not where it should be");
  }
}

// Rows do not depend on each other: ten times as many cost about ten times as much, and one change the same.
BENCHMARK(solve_from_scratch)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(change_one_row)->Arg(50)->Arg(500)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace wispen::bench

BENCHMARK_MAIN();
