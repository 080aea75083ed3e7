// wispen/pages_command.cpp: wispen pages.

#include <cstdio>

#include "wispen/commands.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

std::string cell_of(const PSSpecifier& specifier) {
  const auto cell = objc::cast_or_nil<NSString>(specifier.propertyForKey("cell"_ns));
  return cell ? cell.utf8() : "PSGroupCell";
}

std::string text_property(const PSSpecifier& specifier, const NSString& name) {
  return objc::cast_or_nil<NSString>(specifier.propertyForKey(name)).utf8();
}

Json row_json(const Page& page, const PSSpecifier& specifier) {
  Json row;
  row["cell"] = cell_of(specifier);
  row["id"] = specifier.identifier().utf8();
  row["label"] = specifier.name().utf8();
  const auto add = [&](const char* name, const NSString& key) {
    const std::string text = text_property(specifier, key);
    if (!text.empty()) row[name] = text;
  };
  add("key", "key"_ns);
  add("cellClass", "cellClass"_ns);
  add("detail", "detail"_ns);
  add("action", "action"_ns);
  add("notification", "PostNotification"_ns);
  if (specifier.propertyForKey("key"_ns)) row["value"] = json_of(specifier.performGetter());
  row["shown"] = page.shows(specifier);
  return row;
}

std::string row_text(const Page& page, const PSSpecifier& specifier) {
  const std::string cell = cell_of(specifier);
  const std::string label = specifier.name().utf8();
  if (cell == "PSGroupCell") return label.empty() ? "  --" : "  -- " + label;
  const std::string key = text_property(specifier, "key"_ns);
  std::string line = page.shows(specifier) ? "     " : "  (-)";
  line += " " + padded(cell, 17) + " " + padded(key.empty() ? specifier.identifier().utf8() : key, 26) + " ";
  line += padded(label, 34) + " ";
  if (!key.empty()) {
    line += text_of(specifier.performGetter());
  } else if (const auto detail = text_property(specifier, "detail"_ns); !detail.empty()) {
    line += "> " + detail;
  } else if (const auto action = text_property(specifier, "action"_ns); !action.empty()) {
    line += "! " + action;
  }
  while (line.back() == ' ') line.pop_back();
  return line;
}

}  // namespace

int list_pages(const CommonOptions& options, const std::string& name) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_bundle(options);
  if (!session) return kFailed;
  std::vector<Page> pages;
  if (name.empty()) {
    pages = session->pages();
  } else {
    auto page = session->page(name);
    if (!page) return kFailed;
    pages.push_back(*std::move(page));
  }
  Json all = Json::array();
  for (const Page& page : pages) {
    const NSArray specifiers = page.all_specifiers();
    Json rows = Json::array();
    if (!options.json)
      std::printf("%s  %s, %s.plist\n", shown(page.title).c_str(), page.cls.c_str(), page.list.c_str());
    for (NSUInteger i = 0; i < specifiers.count(); ++i) {
      const auto specifier = specifiers.objectAtIndex<PSSpecifier>(i);
      if (options.json) {
        rows.push_back(row_json(page, specifier));
      } else {
        std::printf("%s\n", shown(row_text(page, specifier)).c_str());
      }
    }
    if (options.json) {
      all.push_back({{"page", page.cls}, {"list", page.list}, {"title", page.title}, {"rows", rows}});
    } else {
      std::printf("\n");
    }
  }
  if (options.json) {
    std::printf("%s\n", all.dump(2).c_str());
  } else {
    std::printf("(-) marks a row that the visibility rules hide, > a page that a row opens, ! an action.\n");
  }
  print_problems();
  return kDone;
}

}  // namespace wispen::program
