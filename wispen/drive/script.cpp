// wispen/drive/script.cpp: a script that uses pages as a user does, read and checked.

#include "wispen/drive/script.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace wispen::program {

namespace {

/// What a verb takes: w a word, n a number, and literal words after a quote mark ('to).
struct Form {
  std::string_view verb;
  std::string_view arguments;
  std::string_view help;
};

constexpr std::array kForms{
    Form{"show", "w", R"(show PAGE                    a page by class, "root" or "settings")"},
    Form{"tap", "w", "tap ROW-OR-TEXT              its switch, field or button, else the row itself"},
    Form{"tap", "n n", "tap X Y                      a place of the screen, in points"},
    Form{"hold", "w n", "hold ROW-OR-TEXT SECONDS     a long press"},
    Form{"drag", "w 'to n", "drag ROW to VALUE            its slider, by the thumb"},
    Form{"drag", "n n 'to n n", "drag X Y to X Y              a finger over the screen"},
    Form{"choose", "w w", "choose ROW TITLE             a segment, by title or number from 1"},
    Form{"type", "w", "type TEXT                    key by key, where the keyboard is"},
    Form{"key", "w", "key NAME                     tab, return, escape, left, shift+tab, ..."},
    Form{"scroll", "'up n", "scroll up|down POINTS        by the wheel"},
    Form{"scroll", "'down n", ""},
    Form{"scroll", "'to w", "scroll to ROW                until it can be seen"},
    Form{"wait", "n", "wait SECONDS                 of the host's clock"},
    Form{"settle", "", "settle                       until nothing moves"},
    Form{"back", "", "back                         to the page below"},
    Form{"look", "w w", "look NAME VALUE              appearance dark, device pad, language de, ..."},
    Form{"reload", "", "reload                       the pages' lists, from their files"},
    Form{"expect", "'page w", "expect page CLASS"},
    Form{"expect", "'text w", "expect text TEXT             somewhere on the screen"},
    Form{"expect", "'no 'text w", "expect no text TEXT"},
    Form{"expect", "'row w", "expect row ROW               there is such a row"},
    Form{"expect", "'no 'row w", "expect no row ROW"},
    Form{"expect", "'value w w", "expect value ROW VALUE       on, off, a number, or a text"},
    Form{"expect", "'stored w w", "expect stored KEY VALUE      in the preferences file, through the page"},
    Form{"expect", "'posted w",
         "expect posted NAME           the notification was posted since the last time"},
    Form{"expect", "'colour n n w", "expect colour X Y #RRGGBB    of a pixel, within 2 of 255"},
    Form{"snapshot", "w", "snapshot FILE.png"},
    Form{"inspect", "", "inspect                      the tree of views, in the answer"},
};

bool is_number(const std::string& word) {
  double value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  return error == std::errc() && end == word.data() + word.size();
}

bool fits(const Form& form, const std::vector<std::string>& words) {
  if (words.front() != form.verb) return false;
  std::size_t at = 1;
  std::string_view rest = form.arguments;
  while (!rest.empty()) {
    const std::string_view argument = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(rest.size(), argument.size() + 1));
    if (at == words.size()) return false;
    const std::string& word = words[at++];
    if (argument.front() == '\'' && word != argument.substr(1)) return false;
    if (argument == "n" && !is_number(word)) return false;
  }
  return at == words.size();
}

/// The words of a line; nothing for a quote that does not end.
std::optional<std::vector<std::string>> words_of(std::string_view line) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while (true) {
    while (at < line.size() && (line[at] == ' ' || line[at] == '\t' || line[at] == '\r')) ++at;
    if (at == line.size()) return words;
    // Not before a word: that is a colour.
    if (line[at] == '#' && (words.empty() || at + 1 == line.size() || line[at + 1] == ' ')) return words;
    std::string word;
    if (line[at] != '"') {
      while (at < line.size() && line[at] != ' ' && line[at] != '\t' && line[at] != '\r') word += line[at++];
      words.push_back(std::move(word));
      continue;
    }
    ++at;
    while (at < line.size() && line[at] != '"') {
      if (line[at] == '\\' && at + 1 < line.size()) {
        ++at;
        word += line[at] == 'n' ? '\n' : line[at];
      } else {
        word += line[at];
      }
      ++at;
    }
    if (at == line.size()) return std::nullopt;
    ++at;
    words.push_back(std::move(word));
  }
}

Error wrong(int number, const std::string& what) {
  return Error{"line " + std::to_string(number) + ": " + what};
}

}  // namespace

Result<std::vector<Step>> read_script(std::string_view text) {
  std::vector<Step> steps;
  int number = 0;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    ++number;
    auto words = words_of(line);
    if (!words) return wrong(number, "a quote does not end");
    if (words->empty()) continue;
    if (std::ranges::none_of(kForms, [&](const Form& form) { return fits(form, *words); })) {
      std::string forms;
      for (const Form& form : kForms) {
        if (form.verb == words->front() && !form.help.empty()) {
          const std::string_view usage = form.help.substr(0, form.help.find("  "));
          forms += (forms.empty() ? "" : " | ") + std::string(usage);
        }
      }
      if (forms.empty()) return wrong(number, "there is no step \"" + words->front() + "\"");
      return wrong(number, "\"" + words->front() + "\" is used so: " + forms);
    }
    steps.push_back({number, std::string(line), *std::move(words)});
  }
  return steps;
}

std::string script_help() {
  std::string help = "One step a line; \"quotes\" hold words with blanks, # and a blank begin a comment.\n";
  for (const Form& form : kForms) {
    if (!form.help.empty()) help += "  " + std::string(form.help) + "\n";
  }
  return help;
}

}  // namespace wispen::program
