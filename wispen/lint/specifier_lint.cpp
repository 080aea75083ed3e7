// wispen/lint/specifier_lint.cpp: what is wrong with a bundle's specifier lists.

#include "wispen/lint/specifier_lint.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string_view>

#include "host/plist/document.hpp"
#include "host/preferences/cell_types.hpp"
#include "host/preferences/limits.hpp"
#include "wispen/lint/specifier_keys.hpp"
#include "wispen/lint/translations.hpp"

namespace wispen::lint {

namespace {

namespace fs = std::filesystem;
using plist::Type;
using plist::Value;

std::string string_at(const Value& item, std::string_view key) {
  const auto value = item.find(key);
  return value && value->is(Type::String) ? value->string() : std::string();
}

bool is_number(const Value& value) { return value.is(Type::Integer) || value.is(Type::Real); }
double number_of(const Value& value) {
  return value.is(Type::Real) ? value.real() : static_cast<double>(value.integer().signed_value());
}

bool fits(const Value& value, Holds holds) {
  switch (holds) {
    case Holds::Any:
      return true;
    case Holds::Boolean:
      return value.is(Type::Boolean) || value.is(Type::Integer);  // 0 and 1 are usual in older lists
    case Holds::Number:
      return is_number(value);
    case Holds::Array:
      return value.is(Type::Array);
    case Holds::Dictionary:
      return value.is(Type::Dictionary);
    default:
      return value.is(Type::String);
  }
}

/// Equal as a stored value would be: true is not 1, but 1 is 1.0.
bool same_value(const Value& a, const Value& b) {
  if (is_number(a) && is_number(b)) return number_of(a) == number_of(b);
  if (a.type() != b.type()) return false;
  return a.is(Type::String) ? a.string() == b.string() : a.is(Type::Boolean) && a.boolean() == b.boolean();
}

std::size_t utf16_length(const std::string& utf8) {
  std::size_t units = 0;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    units += (byte & 0xC0U) == 0x80U ? 0U : byte >= 0xF0U ? 2U : 1U;
  }
  return units;
}

preferences::MethodRole role_of(const std::string& key) {
  using preferences::MethodRole;
  if (key == "get") return MethodRole::Getter;
  if (key == "set") return MethodRole::Setter;
  if (key == "valuesDataSource" || key == "titlesDataSource") return MethodRole::DataSource;
  return MethodRole::Action;
}

/// Rows that the visibility rules may hide.
bool can_be_hidden(const Value& item) {
  static constexpr std::array<std::string_view, 4> kColourKeys{"regularAutoColor", "regularColor",
                                                               "notificationAutoColor", "notificationColor"};
  return item.find("depends") || item.find("dependsNot") || item.find("labelDependant") ||
         std::ranges::find(kColourKeys, string_at(item, "key")) != kColourKeys.end();
}

/// Whether the bundle has a picture of that name, with or without an ending, at whatever scale.
bool has_image(const std::string& folder, const std::string& name) {
  const fs::path path(name);
  const std::string stem = (path.parent_path() / path.stem()).string();
  const std::string ending = path.has_extension() ? path.extension().string() : ".png";
  for (const char* const scale : {"", "@2x", "@3x"}) {
    for (const char* const device : {"", "~iphone", "~ipad"}) {
      std::error_code error;
      if (fs::is_regular_file(folder + "/" + stem + scale + device + ending, error)) return true;
    }
  }
  return false;
}

/// Checks one list.
class ListCheck {
 public:
  ListCheck(const std::string& folder, const std::string& list, const Classes& classes,
            std::vector<Finding>& findings)
      : folder_(folder),
        file_(list + ".plist"),
        classes_(classes),
        findings_(findings),
        page_(classes.page_of_list(list)),
        translations_(folder, list, table_errors_) {
    for (const auto& [file, message] : table_errors_) {
      findings_.push_back({Severity::Error, file, std::nullopt, "", message});
    }
  }

  void run(const Value& root) {
    const auto items = root.find("items");
    if (!items->is(Type::Array)) return add(Severity::Error, "\"items\" is not an array");
    if (page_.empty()) add(Severity::Warning, "no page that the root page leads to shows this list");
    if (const std::string title = string_at(root, "title"); !title.empty()) check_text("title", title);
    std::size_t index = 0;
    for (const Value item : items->elements()) {
      if (index == preferences::kMostRows) {
        item_.reset();
        row_.clear();
        return add(Severity::Error, "the list has " + std::to_string(items->count()) +
                                        " rows, and only the first " +
                                        std::to_string(preferences::kMostRows) + " are shown");
      }
      item_ = index++;
      row_.clear();
      if (!item.is(Type::Dictionary)) {
        add(Severity::Error, "the item is not a dictionary");
      } else {
        check_item(item);
      }
    }
  }

 private:
  void add(Severity severity, std::string message) {
    findings_.push_back({severity, file_, item_, row_, std::move(message)});
  }

  void check_item(const Value& item) {
    row_ = string_at(item, "id");
    if (row_.empty()) row_ = string_at(item, "key");
    if (row_.empty()) row_ = string_at(item, "label");

    for (const plist::Entry entry : item.entries()) check_entry(entry.key.string(), entry.value);

    const std::string cell = string_at(item, "cell");
    const auto type = preferences::cell_type_from_name(cell);
    if (!item.find("cell")) add(Severity::Error, "the row has no cell type");
    if (!cell.empty() && !type) add(Severity::Error, "there is no cell type \"" + cell + "\"");

    const std::string id = !string_at(item, "id").empty() ? string_at(item, "id") : string_at(item, "key");
    if (!id.empty() && !ids_.insert(id).second)
      add(Severity::Error, "the id \"" + id + "\" stands twice in this list");
    if (*item_ == 0 && can_be_hidden(item)) {
      add(Severity::Error, "the first row could be hidden, and then the page could not be refreshed");
    }
    check_choices(item);
    if (type) check_default(item, *type);
  }

  void check_entry(const std::string& key, const Value& value) {
    const KnownKey* const known = find_known_key(key);
    if (known == nullptr) return add(Severity::Warning, "nobody knows the key \"" + key + "\"");
    if (!fits(value, known->holds)) {
      return add(Severity::Error, "\"" + key + "\" holds " + plist::name_of(value.type()) +
                                      ", and should hold " + std::string(description(known->holds)));
    }
    switch (known->holds) {
      case Holds::ClassName:
        return check_class(key, value.string());
      case Holds::SelectorName:
        return check_selector(key, value.string());
      case Holds::ImageName:
        if (!has_image(folder_, value.string()))
          add(Severity::Error, "there is no image \"" + value.string() + "\"");
        return;
      case Holds::Text:
        return check_text(key, value.string());
      default:
        return;
    }
  }

  void check_class(const std::string& key, const std::string& name) {
    if (!classes_.exists(name))
      return add(Severity::Error, "there is no class " + name + " (\"" + key + "\")");
    if (key == "detail" && !classes_.is_page(name)) add(Severity::Error, "the class " + name + " is no page");
  }

  void check_selector(const std::string& key, const std::string& name) {
    if (page_.empty()) return;
    if (!classes_.answers(page_, name)) {
      return add(Severity::Error, "the page " + page_ + " has no method " + name + " (\"" + key + "\")");
    }
    if (const auto misfit = classes_.misfit(page_, name, role_of(key))) {
      add(Severity::Error, *misfit + " (\"" + key + "\")");
    }
  }

  void check_text(const std::string& key, const std::string& text) {
    if (const std::size_t length = utf16_length(text); length > preferences::kLongestText) {
      return add(Severity::Error, "\"" + key + "\" has " + std::to_string(length) +
                                      " characters, and is cut at " +
                                      std::to_string(preferences::kLongestText));
    }
    if (text.empty() || text.front() == '#') return;  // an example colour reads the same everywhere
    for (const std::string& language : translations_.lacking(text)) {
      add(Severity::Warning, "\"" + key + "\" is not translated into " + language + ": " + text);
    }
  }

  void check_choices(const Value& item) {
    const auto values = item.find("validValues");
    const auto titles = item.find("validTitles");
    if (!values || !values->is(Type::Array)) return;
    const bool pictures = string_at(item, "cellClass") == "XXXSegmentTableImageCell";
    if (titles && titles->is(Type::Array)) {
      if (titles->count() != values->count()) {
        add(Severity::Error, "there are " + std::to_string(values->count()) + " values and " +
                                 std::to_string(titles->count()) + " titles");
      }
      for (const Value title : titles->elements()) {
        if (!title.is(Type::String)) {
          add(Severity::Error, "a title is not a string");
        } else if (!(pictures && has_image(folder_, title.string()))) {
          check_text("validTitles", title.string());
        }
      }
    } else if (!item.find("titlesDataSource")) {
      add(Severity::Warning, "the values have no titles");
    }
    const auto chosen = item.find("default");
    if (!chosen) return;
    for (const Value value : values->elements()) {
      if (same_value(value, *chosen)) return;
    }
    add(Severity::Error, "the default is none of the values");
  }

  void check_default(const Value& item, preferences::CellType type) {
    using preferences::CellType;
    const auto given = item.find("default");
    if (type == CellType::Switch && given && !fits(*given, Holds::Boolean)) {
      add(Severity::Error, "a switch's default is yes or no");
    }
    if (type != CellType::Slider) return;
    const auto bound = [&](std::string_view key, double fallback) {
      const auto value = item.find(key);
      return value && is_number(*value) ? number_of(*value) : fallback;
    };
    const double least = bound("min", 0);
    const double most = bound("max", 1);
    if (least >= most) add(Severity::Error, "the slider's min is not below its max");
    if (!given) return;
    if (!is_number(*given)) return add(Severity::Error, "a slider's default is a number");
    if (number_of(*given) < least || number_of(*given) > most) {
      add(Severity::Error, "the default is outside the slider's range");
    }
  }

  const std::string folder_;
  const std::string file_;
  const Classes& classes_;
  std::vector<Finding>& findings_;
  const std::string page_;
  std::vector<std::pair<std::string, std::string>> table_errors_;
  const Translations translations_;
  std::optional<std::size_t> item_;
  std::string row_;
  std::set<std::string> ids_;
};

}  // namespace

std::vector<Finding> check_bundle(const std::string& folder, const Classes& classes) {
  std::vector<Finding> findings;
  std::error_code error;
  std::vector<fs::path> lists;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const bool is_list = entry.path().extension() == ".plist" && entry.path().filename() != "Info.plist";
    if (is_list) lists.push_back(entry.path());
  }
  std::ranges::sort(lists);
  if (lists.empty())
    findings.push_back({Severity::Error, ".", std::nullopt, "", "the bundle has no specifier list"});
  for (const fs::path& path : lists) {
    const auto document = plist::Document::read(path.string());
    if (!document) {
      findings.push_back({Severity::Error, path.filename(), std::nullopt, "", document.error().message});
      continue;
    }
    if (!document->root().is(Type::Dictionary) || !document->root().find("items")) {
      findings.push_back({Severity::Warning, path.filename(), std::nullopt, "", "the list has no \"items\""});
      continue;
    }
    ListCheck(folder, path.stem(), classes, findings).run(document->root());
  }
  return findings;
}

}  // namespace wispen::lint
