// wispen/package/stubs.cpp

#include "wispen/package/stubs.hpp"

#include <algorithm>

namespace wispen::package {

namespace {

constexpr std::string_view kInstallName = "install-name:";
constexpr std::string_view kSymbols = "symbols:";

std::string_view after(std::string_view text, std::string_view word) {
  const std::size_t at = text.find(word);
  return at == std::string_view::npos ? std::string_view() : text.substr(at + word.size());
}

/// The words of "[ a, b ]", which may go over several lines.
void add_words(std::string_view text, std::set<std::string>& words) {
  std::string word;
  for (const char letter : text.substr(0, text.find(']'))) {
    if (letter == '[' || letter == ' ' || letter == '\n' || letter == ',') {
      if (!word.empty()) words.insert(std::move(word));
      word.clear();
    } else {
      word += letter;
    }
  }
  if (!word.empty()) words.insert(std::move(word));
}

}  // namespace

std::vector<Stub> parse_stubs(std::span<const TextFile> files) {
  std::vector<Stub> stubs;
  for (const TextFile& file : files) {
    Stub stub;
    std::string_view name = after(file.text, kInstallName);
    name = after(name, "'");
    stub.library = name.substr(0, name.find('\''));
    for (std::string_view rest = after(file.text, kSymbols); !rest.empty(); rest = after(rest, kSymbols)) {
      add_words(rest, stub.symbols);
    }
    stubs.push_back(std::move(stub));
  }
  return stubs;
}

}  // namespace wispen::package
