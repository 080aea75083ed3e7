// wispen/lint_command.cpp: wispen lint.

#include <cstdio>

#include "wispen/commands.hpp"
#include "wispen/lint/specifier_lint.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

namespace {

class RuntimeClasses : public lint::Classes {
 public:
  explicit RuntimeClasses(std::vector<Page> pages) : pages_(std::move(pages)) {}

  bool exists(const std::string& name) const override {
    return static_cast<bool>(objc::ClassRef::named(name.c_str()));
  }
  bool is_page(const std::string& name) const override {
    return objc::ClassRef::named(name.c_str()).is_subclass_of(objc::class_for<PSListController>());
  }
  bool answers(const std::string& name, const std::string& selector) const override {
    return objc::ClassRef::named(name.c_str()).instances_respond_to(objc::Selector::named(selector.c_str()));
  }
  std::optional<std::string> misfit(const std::string& name, const std::string& selector,
                                    preferences::MethodRole role) const override {
    const auto shape =
        objc::shape_of_method(objc::ClassRef::named(name.c_str()), objc::Selector::named(selector.c_str()));
    return shape ? preferences::why_not_performed(selector, *shape, role) : std::nullopt;
  }
  std::string page_of_list(const std::string& list) const override {
    for (const Page& page : pages_) {
      if (page.list == list) return page.cls;
    }
    return {};
  }

 private:
  std::vector<Page> pages_;
};

std::string line_of(const lint::Finding& finding) {
  std::string line = finding.file;
  if (finding.item) line += ", item " + std::to_string(*finding.item);
  if (!finding.row.empty()) line += " (" + finding.row + ")";
  return line + (finding.severity == lint::Severity::Error ? ": error: " : ": warning: ") + finding.message;
}

}  // namespace

int lint(const CommonOptions& given) {
  const objc::AutoreleasePool pool;
  CommonOptions options = given;
  options.lists_as_data = true;
  const auto session = Session::start_with_bundle(options);
  if (!session) return kFailed;
  const std::string folder =
      NSBundle::bundleForClass(objc::class_of(session->pages().front().controller)).bundlePath().utf8();
  // Some classes exist only once the first page has come up.
  session->pages().front().controller.view();
  const RuntimeClasses classes(session->pages());
  const std::vector<lint::Finding> findings = lint::check_bundle(folder, classes);
  std::size_t errors = 0;
  Json all = Json::array();
  for (const lint::Finding& finding : findings) {
    const bool is_error = finding.severity == lint::Severity::Error;
    errors += is_error ? 1 : 0;
    if (options.json) {
      all.push_back({{"severity", is_error ? "error" : "warning"},
                     {"file", finding.file},
                     {"item", finding.item ? Json(*finding.item) : Json(nullptr)},
                     {"row", finding.row},
                     {"message", finding.message}});
    } else {
      std::printf("%s\n", shown(line_of(finding)).c_str());
    }
  }
  if (options.json) {
    std::printf("%s\n", all.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
  } else {
    std::printf("%zu errors, %zu warnings\n", errors, findings.size() - errors);
  }
  return errors == 0 ? kDone : kFailed;
}

}  // namespace wispen::program
