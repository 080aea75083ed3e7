// wispen/drive/driver.hpp: does a script's steps on the running host.
#pragma once

#include <string>

#include "host/core/result.hpp"
#include "platform/UIKit.hpp"
#include "wispen/output.hpp"
#include "wispen/session.hpp"

namespace wispen::program {

/// Looks for rows and texts on the screen as it is, uses them by touches and keys alone, and checks what came
/// of it. Each function is a step: it gives what the step answers beyond that it was done, or what was found
/// in place of what it should.
class Driver {
 public:
  explicit Driver(const Session& session) : session_(session) {}

  Result<Json> show(const std::string& page);
  /// The row's switch or field where it has one, else the row or the view with that text.
  Result<Json> tap(const std::string& name);
  Result<Json> hold(const std::string& name, double seconds);
  Result<Json> drag_slider(const std::string& row, double value);
  /// A segment by its title, or by its number from 1.
  Result<Json> choose(const std::string& row, const std::string& title);
  Result<Json> scroll_to(const std::string& name);

  Result<Json> expect_page(const std::string& cls);
  Result<Json> expect_text(const std::string& text, bool expected);
  Result<Json> expect_row(const std::string& name, bool expected);
  Result<Json> expect_value(const std::string& row, const std::string& wanted);
  Result<Json> expect_stored(const std::string& key, const std::string& wanted);
  /// Since the last time that this was asked.
  Result<Json> expect_posted(const std::string& name);
  Result<Json> expect_colour(double x, double y, const std::string& wanted);

 private:
  /// The view of a row or with a text; scrolls through the whole page to find a row.
  static Result<UIView> find(const std::string& name);
  static Result<UIView> bring_into_sight(const std::string& name);

  const Session& session_;
  std::size_t posts_seen_ = 0;
};

/// The answer of a step that has nothing to tell but that it was done.
Result<Json> answer(const Result<void>& result);

/// Whether two texts are the same, or numbers that differ by no more than a script can tell apart.
bool is_same_value(const std::string& actual, const std::string& wanted);

}  // namespace wispen::program
