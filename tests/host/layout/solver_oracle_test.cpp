// tests/host/layout/solver_oracle_test.cpp: random small systems against an answer found the slow, sure way.
//
// With every variable wished to zero at the lowest priority, the best answer lies where as many of the planes
// "this constraint holds exactly" cross as there are variables. So all such points are tried.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <random>
#include <vector>

#include "host/layout/solver.hpp"

namespace wispen::layout {
namespace {

constexpr int kVariables = 3;
using Point3 = std::array<double, kVariables>;

struct Plane {
  Point3 factors{};
  Relation relation = Relation::Equal;
  double constant = 0;
  Priority priority = kRequired;

  double violation(const Point3& point) const {
    double excess = -constant;
    for (int i = 0; i < kVariables; ++i) {
      excess += factors[static_cast<std::size_t>(i)] * point[static_cast<std::size_t>(i)];
    }
    if (relation == Relation::LessOrEqual) return std::max(excess, 0.0);
    if (relation == Relation::GreaterOrEqual) return std::max(-excess, 0.0);
    return std::abs(excess);
  }
};

double determinant(const Point3& a, const Point3& b, const Point3& c) {
  return a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
         a[2] * (b[0] * c[1] - b[1] * c[0]);
}

std::optional<Point3> crossing(const Plane& a, const Plane& b, const Plane& c) {
  const double whole = determinant(a.factors, b.factors, c.factors);
  if (std::abs(whole) < 1e-9) return std::nullopt;
  Point3 point{};
  for (std::size_t i = 0; i < kVariables; ++i) {
    Point3 p = a.factors;
    Point3 q = b.factors;
    Point3 r = c.factors;
    p[i] = a.constant;
    q[i] = b.constant;
    r[i] = c.constant;
    point[i] = determinant(p, q, r) / whole;
  }
  return point;
}

std::vector<Point3> crossings(const std::vector<Plane>& planes) {
  std::vector<Point3> points;
  for (std::size_t i = 0; i < planes.size(); ++i) {
    for (std::size_t j = i + 1; j < planes.size(); ++j) {
      for (std::size_t k = j + 1; k < planes.size(); ++k) {
        if (const auto point = crossing(planes[i], planes[j], planes[k])) points.push_back(*point);
      }
    }
  }
  return points;
}

using Costs = std::map<Priority, double, std::greater<>>;

Costs costs_at(const std::vector<Plane>& planes, const std::vector<bool>& counts, const Point3& point) {
  Costs costs;
  for (std::size_t i = 0; i < planes.size(); ++i) {
    if (counts[i]) costs[planes[i].priority] += planes[i].violation(point);
  }
  return costs;
}

/// -1 where a is better, 0 where they are as good as each other.
int compare(const Costs& a, const Costs& b) {
  for (const auto& [priority, cost] : a) {
    const double other = b.at(priority);
    if (std::abs(cost - other) > 1e-6) return cost < other ? -1 : 1;
  }
  return 0;
}

class RandomSystem {
 public:
  explicit RandomSystem(unsigned seed) : random_(seed) {}

  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  Plane plane() {
    static constexpr std::array<Priority, 6> kPriorities{1000, 1000, 750, 250.5, 250, 50};
    Plane made;
    for (double& factor : made.factors) factor = pick(0, 2) == 0 ? 0 : pick(-3, 3);
    made.relation = static_cast<Relation>(pick(-1, 1));
    made.constant = pick(-20, 20);
    made.priority = kPriorities[static_cast<std::size_t>(pick(0, 5))];
    return made;
  }

 private:
  std::mt19937 random_;
};

/// The solver and the slow way, fed the same.
class Duel {
 public:
  explicit Duel(std::vector<Plane> planes) : planes_(std::move(planes)) {
    for (Var& variable : variables_) variable = solver_.add_variable();
    for (std::size_t i = 0; i < kVariables; ++i) {
      Plane wish{.factors = {}, .relation = Relation::Equal, .constant = 0, .priority = 1};
      wish.factors[i] = 1;
      planes_.push_back(wish);
    }
    for (const Plane& plane : planes_) ids_.push_back(add(plane));
  }

  void set_constant(std::size_t index, double constant) {
    planes_[index].constant = constant;
    EXPECT_TRUE(solver_.set_constant(ids_[index], constant).ok());
  }
  void remove(std::size_t index) {
    solver_.remove(ids_[index]);
    ids_.erase(ids_.begin() + static_cast<std::ptrdiff_t>(index));
    planes_.erase(planes_.begin() + static_cast<std::ptrdiff_t>(index));
  }
  std::size_t removable() const { return planes_.size() - kVariables; }

  /// `elders_first`: whether the order of adding still says who is broken.
  void compare_answers(bool elders_first) {
    const SolveReport report = solver_.solve();
    EXPECT_TRUE(report.optimal);
    const std::vector<Point3> points = crossings(planes_);
    std::vector<bool> counts(planes_.size(), false);
    for (std::size_t i = 0; i < planes_.size(); ++i) {
      const bool broken = solver_.is_broken(ids_[i]);
      counts[i] = !broken;
      if (planes_[i].priority < kRequired) continue;
      if (!elders_first) continue;
      counts[i] = true;
      const bool possible = some_point_keeps_required(points, counts, i);
      EXPECT_EQ(broken, !possible) << "constraint " << i;
      counts[i] = possible;
    }
    const Point3 found{solver_.value(variables_[0]), solver_.value(variables_[1]),
                       solver_.value(variables_[2])};
    const Costs mine = costs_at(planes_, counts, found);
    const auto required = mine.find(kRequired);
    EXPECT_LT(required == mine.end() ? 0 : required->second, 1e-6);
    for (const Point3& point : points) {
      ASSERT_LE(compare(mine, costs_at(planes_, counts, point)), 0)
          << found[0] << ' ' << found[1] << ' ' << found[2] << " is worse than " << point[0] << ' '
          << point[1] << ' ' << point[2];
    }
  }

 private:
  ConstraintId add(const Plane& plane) {
    Terms terms;
    for (std::size_t i = 0; i < kVariables; ++i) terms.push_back({variables_[i], plane.factors[i]});
    const Result<ConstraintId> id = solver_.add(terms, plane.relation, plane.constant, plane.priority);
    EXPECT_TRUE(id.ok());
    return *id;
  }
  bool some_point_keeps_required(const std::vector<Point3>& points, const std::vector<bool>& counts,
                                 std::size_t last) const {
    for (const Point3& point : points) {
      bool keeps = true;
      for (std::size_t i = 0; i <= last && keeps; ++i) {
        keeps = !counts[i] || planes_[i].priority < kRequired || planes_[i].violation(point) < 1e-7;
      }
      if (keeps) return true;
    }
    return false;
  }

  Solver solver_;
  std::array<Var, kVariables> variables_{};
  std::vector<Plane> planes_;
  std::vector<ConstraintId> ids_;
};

std::vector<Plane> random_planes(RandomSystem& random) {
  std::vector<Plane> planes(static_cast<std::size_t>(random.pick(1, 8)));
  for (Plane& plane : planes) plane = random.plane();
  return planes;
}

TEST(SolverAgainstEveryCrossing, FindsTheBestAnswerOfThreeThousandRandomSystems) {
  for (unsigned seed = 0; seed < 3000; ++seed) {
    SCOPED_TRACE(seed);
    RandomSystem random(seed);
    Duel(random_planes(random)).compare_answers(true);
    if (HasFatalFailure() || HasNonfatalFailure()) return;
  }
}

TEST(SolverAgainstEveryCrossing, FindsTheBestAnswerAfterEditsAndRemovals) {
  for (unsigned seed = 0; seed < 1500; ++seed) {
    SCOPED_TRACE(seed);
    RandomSystem random(seed + 100'000);
    Duel duel(random_planes(random));
    duel.compare_answers(true);
    for (int step = 0; step < 8 && duel.removable() > 0; ++step) {
      const auto index = static_cast<std::size_t>(random.pick(0, static_cast<int>(duel.removable()) - 1));
      if (random.pick(0, 3) == 0) {
        duel.remove(index);
      } else {
        duel.set_constant(index, random.pick(-20, 20));
      }
      duel.compare_answers(false);
      if (HasFatalFailure() || HasNonfatalFailure()) return;
    }
  }
}

}  // namespace
}  // namespace wispen::layout
