// host/core/text_list.cpp: lists of words in one text: "de,en".

#include "host/core/text_list.hpp"

#include <algorithm>

namespace wispen {

std::vector<std::string> split_list(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    const auto first = text.find_first_not_of(' ', start);
    if (first < end) {
      const auto last = text.find_last_not_of(' ', end - 1);
      parts.push_back(text.substr(first, last - first + 1));
    }
    start = end + 1;
  }
  return parts;
}

std::string joined(const std::vector<std::string>& words, const std::string& between) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : between) + word;
  return all;
}

}  // namespace wispen
