// wispen/drive/forms.cpp: every step that a script can say, and the function that does it.

#include "wispen/drive/forms.hpp"

#include <array>
#include <cstdlib>

#include "host/wispen_host.h"
#include "wispen/drive/driver.hpp"
#include "wispen/drive/touches.hpp"

namespace wispen::program {

namespace {

using Words = std::vector<std::string>;

double number(const std::string& word) { return std::strtod(word.c_str(), nullptr); }

/// After a function of the C interface: its error, or what happens once all has come to rest.
Result<Json> then_settle(int status) { return answer(status != 0 ? settle() : done_or_why(status)); }

Result<Json> scroll(double points) {
  turn_wheel(points);
  return Json::object();
}

Result<Json> inspect(Driver&, const Words&) {
  const char* const tree = wispen_host_view_tree();
  if (tree == nullptr) return Error{wispen_host_last_error()};
  return Json{{"windows", Json::parse(tree)}};
}

constexpr std::array kForms{
    Form{"show", "w", R"(show PAGE                    a page by class, "root" or "settings")",
         [](Driver& driver, const Words& words) { return driver.show(words[0]); }},
    Form{"tap", "w", "tap ROW-OR-TEXT              its switch, field or button, else the row itself",
         [](Driver& driver, const Words& words) { return driver.tap(words[0]); }},
    Form{"tap", "n n", "tap X Y                      a place of the screen, in points",
         [](Driver&, const Words& words) {
           return answer(touch_at({number(words[0]), number(words[1])}, kTapSeconds));
         }},
    Form{"hold", "w n", "hold ROW-OR-TEXT SECONDS     a long press",
         [](Driver& driver, const Words& words) { return driver.hold(words[0], number(words[1])); }},
    Form{"drag", "w 'to n", "drag ROW to VALUE            its slider, by the thumb",
         [](Driver& driver, const Words& words) { return driver.drag_slider(words[0], number(words[1])); }},
    Form{"drag", "n n 'to n n", "drag X Y to X Y              a finger over the screen",
         [](Driver&, const Words& words) {
           return answer(
               drag_between({number(words[0]), number(words[1])}, {number(words[2]), number(words[3])}));
         }},
    Form{"choose", "w w", "choose ROW TITLE             a segment, by title or number from 1",
         [](Driver& driver, const Words& words) { return driver.choose(words[0], words[1]); }},
    Form{"type", "w", "type TEXT                    key by key, where the keyboard is",
         [](Driver&, const Words& words) { return then_settle(wispen_host_type(words[0].c_str())); }},
    Form{"key", "w", "key NAME                     tab, return, escape, left, shift+tab, ...",
         [](Driver&, const Words& words) { return then_settle(wispen_host_key(words[0].c_str())); }},
    Form{"scroll", "'up n", "scroll up|down POINTS        by the wheel",
         [](Driver&, const Words& words) { return scroll(number(words[0])); }},
    Form{"scroll", "'down n", "", [](Driver&, const Words& words) { return scroll(-number(words[0])); }},
    Form{"scroll", "'to w", "scroll to ROW                until it can be seen",
         [](Driver& driver, const Words& words) { return driver.scroll_to(words[0]); }},
    Form{"wait", "n", "wait SECONDS                 of the host's clock",
         [](Driver&, const Words& words) {
           return answer(done_or_why(wispen_host_run_for(number(words[0]))));
         }},
    Form{"settle", "", "settle                       until nothing moves",
         [](Driver&, const Words&) { return answer(settle()); }},
    Form{"back", "", "back                         to the page below",
         [](Driver&, const Words&) { return then_settle(wispen_host_key("escape")); }},
    Form{"look", "w w", "look NAME VALUE              appearance dark, device pad, language de, ...",
         [](Driver&, const Words& words) {
           return then_settle(wispen_host_set_look(words[0].c_str(), words[1].c_str()));
         }},
    Form{"reload", "", "reload                       the pages' lists, from their files",
         [](Driver&, const Words&) { return then_settle(wispen_host_reload_pages()); }},
    Form{"expect", "'page w", "expect page CLASS",
         [](Driver& driver, const Words& words) { return driver.expect_page(words[0]); }},
    Form{"expect", "'text w", "expect text TEXT             somewhere on the screen",
         [](Driver& driver, const Words& words) { return driver.expect_text(words[0], true); }},
    Form{"expect", "'no 'text w", "expect no text TEXT",
         [](Driver& driver, const Words& words) { return driver.expect_text(words[0], false); }},
    Form{"expect", "'row w", "expect row ROW               there is such a row",
         [](Driver& driver, const Words& words) { return driver.expect_row(words[0], true); }},
    Form{"expect", "'no 'row w", "expect no row ROW",
         [](Driver& driver, const Words& words) { return driver.expect_row(words[0], false); }},
    Form{"expect", "'value w w", "expect value ROW VALUE       on, off, a number, or a text",
         [](Driver& driver, const Words& words) { return driver.expect_value(words[0], words[1]); }},
    Form{"expect", "'stored w w", "expect stored KEY VALUE      in the preferences file, through the page",
         [](Driver& driver, const Words& words) { return driver.expect_stored(words[0], words[1]); }},
    Form{"expect", "'posted w",
         "expect posted NAME           the notification was posted since the last time",
         [](Driver& driver, const Words& words) { return driver.expect_posted(words[0]); }},
    Form{"expect", "'colour n n w", "expect colour X Y #RRGGBB    of a pixel, within 2 of 255",
         [](Driver& driver, const Words& words) {
           return driver.expect_colour(number(words[0]), number(words[1]), words[2]);
         }},
    Form{"snapshot", "w", "snapshot FILE.png",
         [](Driver&, const Words& words) {
           return answer(done_or_why(wispen_host_snapshot(words[0].c_str(), 0, 0)));
         }},
    Form{"inspect", "", "inspect                      the tree of views, in the answer", inspect},
};

}  // namespace

std::span<const Form> forms() { return kForms; }

}  // namespace wispen::program
