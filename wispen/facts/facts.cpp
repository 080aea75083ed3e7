// wispen/facts/facts.cpp: what a bundle says of itself beside its lists.

#include "wispen/facts/facts.hpp"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>

#include "host/plist/document.hpp"

namespace wispen {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr std::string_view kEnding = ".facts.json";

/// Takes the facts out of the object; what is wrong with it, or nothing.
class Reader {
 public:
  explicit Reader(const Json& json) : json_(json) {}

  void text(const char* key, std::string& into) {
    if (const Json* const value = find(key)) take(*value, key, into);
  }
  void texts(const char* key, std::vector<std::string>& into) {
    const Json* const value = find(key);
    if (value == nullptr) return;
    if (!value->is_array()) return refuse(key, "a list of texts");
    for (const Json& one : *value) take(one, key, into.emplace_back());
  }
  void pairs(const char* key, std::vector<std::pair<std::string, std::string>>& into) {
    const Json* const value = find(key);
    if (value == nullptr) return;
    if (!value->is_object()) return refuse(key, "texts by name");
    for (const auto& [name, held] : value->items()) take(held, key, into.emplace_back(name, "").second);
  }
  const std::optional<Error>& error() const { return error_; }

 private:
  const Json* find(const char* key) const {
    const auto found = json_.find(key);
    return found == json_.end() ? nullptr : &*found;
  }
  void take(const Json& value, const char* key, std::string& into) {
    if (!value.is_string()) return refuse(key, "a text");
    into = value.get<std::string>();
  }
  void refuse(const char* key, const char* wanted) {
    if (!error_) error_ = Error{std::string("\"") + key + "\" is not " + wanted};
  }

  const Json& json_;
  std::optional<Error> error_;
};

/// "" where Info.plist does not say it.
std::string executable_of(const fs::path& bundle) {
  const auto info = plist::Document::read((bundle / "Info.plist").string());
  if (!info) return {};
  const auto name = info->root().find("CFBundleExecutable");
  return name && name->is(plist::Type::String) ? name->string() : "";
}

}  // namespace

Result<BundleFacts> read_facts(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return Error{file + " cannot be read"};
  const Json json = Json::parse(stream, nullptr, false);
  if (!json.is_object()) return Error{file + " is not a JSON object"};
  BundleFacts facts;
  Reader reader(json);
  reader.text("bundle", facts.bundle);
  reader.text("name", facts.name);
  reader.text("package", facts.package);
  reader.text("domain", facts.domain);
  reader.text("notification", facts.notification);
  reader.text("companion", facts.companion);
  reader.text("minimumSystem", facts.minimum_system);
  reader.texts("languages", facts.languages);
  reader.texts("exports", facts.exports);
  reader.pairs("rowKeys", facts.row_keys);
  reader.texts("hidingRowKeys", facts.hiding_row_keys);
  reader.texts("hideableRows", facts.hideable_rows);
  reader.texts("pictureCells", facts.picture_cells);
  if (reader.error()) return Error{file + ": " + reader.error()->message};
  if (facts.bundle.empty() || facts.bundle.find('/') != std::string::npos) {
    return Error{file + ": \"bundle\" is not the name of a folder"};
  }
  if (facts.name.empty()) facts.name = facts.bundle;
  return facts;
}

Result<BundleFacts> facts_of_bundle(const std::string& folder, const std::string& programs) {
  const fs::path path = fs::path(folder).lexically_normal();
  const fs::path bundle = path.has_filename() ? path : path.parent_path();
  const std::string name = bundle.stem().string();
  // A copy may have another name than the bundle that it is of.
  for (const std::string& known : {name, executable_of(bundle)}) {
    if (known.empty()) continue;
    for (const fs::path& place : {bundle.parent_path(), fs::path(programs)}) {
      const fs::path file = place / (known + std::string(kEnding));
      std::error_code error;
      if (fs::exists(file, error)) return read_facts(file.string());
    }
  }
  BundleFacts facts;
  facts.bundle = facts.name = name;
  return facts;
}

Result<BundleFacts> only_bundle(const std::string& folder) {
  std::string found;
  std::error_code error;
  for (const auto& file : fs::directory_iterator(folder, error)) {
    if (!file.path().filename().string().ends_with(kEnding)) continue;
    if (!found.empty()) return Error{"there is more than one bundle in " + folder + "; name one by --bundle"};
    found = file.path().string();
  }
  if (found.empty()) return Error{"there is no bundle in " + folder + "; name one by --bundle"};
  return read_facts(found);
}

}  // namespace wispen
