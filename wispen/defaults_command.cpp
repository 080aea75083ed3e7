// wispen/defaults_command.cpp: wispen defaults read and write.

#include <cstdio>
#include <utility>
#include <vector>

#include "host/wispen_host.h"
#include "wispen/commands.hpp"
#include "wispen/output.hpp"
#include "wispen/row_value.hpp"

namespace wispen::program {

namespace {

struct Row {
  Page page;
  PSSpecifier specifier;
};

/// The rows that store something, of the page named, or of all.
std::optional<std::vector<Row>> rows_of(const Session& session, const std::string& page_name) {
  std::vector<Page> pages;
  if (page_name.empty()) {
    pages = session.pages();
  } else {
    auto page = session.page(page_name);
    if (!page) return std::nullopt;
    pages.push_back(*std::move(page));
  }
  std::vector<Row> rows;
  for (const Page& page : pages) {
    const NSArray specifiers = page.all_specifiers();
    for (NSUInteger i = 0; i < specifiers.count(); ++i) {
      const auto specifier = specifiers.objectAtIndex<PSSpecifier>(i);
      if (specifier.propertyForKey("key"_ns)) rows.push_back({page, specifier});
    }
  }
  return rows;
}

std::string key_of(const Row& row) { return row.specifier.propertyForKey("key"_ns).description().utf8(); }

std::optional<Row> find(const std::vector<Row>& rows, const DefaultsOptions& what) {
  for (const Row& row : rows) {
    if (key_of(row) == what.key) return row;
  }
  fail("no row" + (what.page.empty() ? std::string() : " of " + what.page) + " has the key " + what.key);
  return std::nullopt;
}

}  // namespace

int read_defaults(const CommonOptions& options, const DefaultsOptions& what) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_bundle(options);
  if (!session) return kFailed;
  const auto rows = rows_of(*session, what.page);
  if (!rows) return kFailed;
  if (!what.key.empty()) {
    const auto row = find(*rows, what);
    if (!row) return kFailed;
    const NSObject value = row->specifier.performGetter();
    if (options.json) {
      std::printf("%s\n",
                  Json{{"page", row->page.cls}, {"key", what.key}, {"value", json_of(value)}}.dump().c_str());
    } else {
      const auto string = objc::cast_or_nil<NSString>(value);
      std::printf("%s\n", string ? shown(json_of(value).get<std::string>()).c_str() : text_of(value).c_str());
    }
    return kDone;
  }
  Json all = Json::array();
  for (const Row& row : *rows) {
    const NSObject value = row.specifier.performGetter();
    if (options.json) {
      all.push_back({{"page", row.page.cls}, {"key", key_of(row)}, {"value", json_of(value)}});
    } else {
      std::printf("%s %s %s\n", padded(row.page.cls, 24).c_str(), padded(shown(key_of(row)), 28).c_str(),
                  text_of(value).c_str());
    }
  }
  if (options.json) std::printf("%s\n", all.dump(2).c_str());
  return kDone;
}

int write_defaults(const CommonOptions& options, const DefaultsOptions& what) {
  const objc::AutoreleasePool pool;
  const auto session = Session::start_with_bundle(options);
  if (!session) return kFailed;
  const auto rows = rows_of(*session, what.page);
  if (!rows) return kFailed;
  const auto row = find(*rows, what);
  if (!row) return kFailed;
  const auto value = row_value(row->specifier, what.value, what.type);
  if (!value) return fail(what.key + ": " + value.error().message);
  const std::size_t posted_before = wispen_host_posted_count();
  row->specifier.performSetterWithValue(*value);
  const NSObject stored = row->specifier.performGetter();
  // The page is silent about a write that failed; whoever set a value from here wants to know.
  const bool written = stored && stored.isEqual(*value);
  if (options.json) {
    Json notifications = Json::array();
    for (std::size_t i = posted_before; i < wispen_host_posted_count(); ++i)
      notifications.push_back(wispen_host_posted_name(i));
    std::printf(
        "%s\n",
        Json{
            {"page", row->page.cls}, {"key", what.key}, {"value", json_of(stored)}, {"posted", notifications}}
            .dump()
            .c_str());
  } else if (written) {
    std::printf("%s = %s\n", shown(what.key).c_str(), text_of(stored).c_str());
  }
  print_problems();
  return written ? kDone : fail(what.key + " was not stored");
}

}  // namespace wispen::program
