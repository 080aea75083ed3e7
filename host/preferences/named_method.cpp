// host/preferences/named_method.cpp: the methods that a specifier list names, before they are performed.

#include "host/preferences/named_method.hpp"

#include "host/foundation/problems.hpp"

namespace wispen::preferences {

namespace {

bool lists_are_data = false;

}  // namespace

void set_lists_as_data(bool as_data) { lists_are_data = as_data; }

bool may_perform(const objc::Object& target, objc::Selector selector, MethodRole role) {
  if (lists_are_data || !objc::responds_to(target, selector)) return false;
  // What is answered without a method (by forwarding) says nothing about its arguments.
  const auto shape = objc::shape_of_method(objc::class_of(target), selector);
  if (!shape) return false;
  const auto reason = why_not_performed(selector.name(), *shape, role);
  if (reason) report_problem(*reason + ", and is not performed");
  return !reason;
}

}  // namespace wispen::preferences
