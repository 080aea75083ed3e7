// wispen/drive/driver.hpp: does a script's steps on the running host.
#pragma once

#include <optional>
#include <string>

#include "wispen/drive/script.hpp"
#include "wispen/output.hpp"
#include "wispen/session.hpp"

namespace wispen::program {

/// Looks for rows and texts on the screen as it is, and uses them by touches and keys alone.
class Driver {
 public:
  explicit Driver(const Session& session) : session_(session) {}

  /// What the step answers beyond that it was done; fails with what was found instead.
  Result<Json> run(const Step& step);

 private:
  using Words = std::vector<std::string>;

  Result<Json> touch(const Step& step);
  Result<Json> scroll(const Words& words);
  Result<Json> expect(const Words& words);
  Result<Json> expect_value(const std::string& row, const std::string& wanted);
  Result<Json> expect_stored(const std::string& key, const std::string& wanted);
  Result<Json> expect_posted(const std::string& name);
  Result<Json> expect_colour(double x, double y, const std::string& wanted);
  Result<Json> drag_slider(const std::string& row, double value);
  Result<Json> choose(const std::string& row, const std::string& title);

  /// The view of a row or with a text, brought into sight; scrolls through the whole page to find a row.
  Result<Json> find(const std::string& name);
  std::optional<Json> find_now(const std::string& name) const;
  Result<Json> bring_into_sight(const std::string& name);

  const Session& session_;
  std::size_t posts_seen_ = 0;
};

}  // namespace wispen::program
