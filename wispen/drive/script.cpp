// wispen/drive/script.cpp: a script that uses pages as a user does, read and checked.

#include "wispen/drive/script.hpp"

#include <algorithm>
#include <charconv>
#include <optional>

namespace wispen::program {

namespace {

bool is_number(const std::string& word) {
  double value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  return error == std::errc() && end == word.data() + word.size();
}

/// The words that the form leaves open; nothing where the line is not of this form.
std::optional<std::vector<std::string>> arguments_of(const Form& form,
                                                     const std::vector<std::string>& words) {
  if (words.front() != form.verb) return std::nullopt;
  std::vector<std::string> open;
  std::size_t at = 1;
  std::string_view rest = form.arguments;
  while (!rest.empty()) {
    const std::string_view argument = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(rest.size(), argument.size() + 1));
    if (at == words.size()) return std::nullopt;
    const std::string& word = words[at++];
    if (argument.front() == '\'') {
      if (word != argument.substr(1)) return std::nullopt;
      continue;
    }
    if (argument == "n" && !is_number(word)) return std::nullopt;
    open.push_back(word);
  }
  if (at != words.size()) return std::nullopt;
  return open;
}

std::optional<Step> step_of(const std::vector<std::string>& words) {
  for (const Form& form : forms()) {
    if (auto open = arguments_of(form, words)) return Step{0, {}, &form, *std::move(open)};
  }
  return std::nullopt;
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
    auto step = step_of(*words);
    if (!step) {
      std::string uses;
      for (const Form& form : forms()) {
        if (form.verb == words->front() && !form.help.empty()) {
          const std::string_view usage = form.help.substr(0, form.help.find("  "));
          uses += (uses.empty() ? "" : " | ") + std::string(usage);
        }
      }
      if (uses.empty()) return wrong(number, "there is no step \"" + words->front() + "\"");
      return wrong(number, "usage: " + uses);
    }
    step->line = number;
    step->source = line;
    steps.push_back(*std::move(step));
  }
  return steps;
}

std::string script_help() {
  std::string help = "One step a line; \"quotes\" hold words with blanks, # and a blank begin a comment.\n";
  for (const Form& form : forms()) {
    if (!form.help.empty()) help += "  " + std::string(form.help) + "\n";
  }
  return help;
}

}  // namespace wispen::program
