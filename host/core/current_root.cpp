// host/core/current_root.cpp: the device root that this process stands on.

#include "host/core/current_root.hpp"

#include <atomic>
#include <map>
#include <mutex>
#include <string>

namespace wispen {
namespace {

struct Prefixes {
  std::string root;
  std::string jbroot;
};

struct State {
  std::mutex mutex;
  std::shared_ptr<const DeviceRoot> root;
  // Callers hold the strings without owning them, so the prefixes of every root ever set are kept:
  // a handful of short strings, one pair a root.
  std::map<std::string, Prefixes> prefixes;
};

State& state() {
  // Never destroyed: a worker may still ask while the process ends.
  static State* const instance = std::make_unique<State>().release();
  return *instance;
}

std::atomic<const Prefixes*> current_prefixes = nullptr;

}  // namespace

std::shared_ptr<const DeviceRoot> current_root() {
  const std::lock_guard lock(state().mutex);
  return state().root;
}

void set_current_root(std::shared_ptr<const DeviceRoot> root) {
  State& shared = state();
  const std::lock_guard lock(shared.mutex);
  const Prefixes* prefixes = nullptr;
  if (root) {
    const std::string key = root->jbroot_prefix() + '\n' + root->path();
    prefixes = &shared.prefixes.try_emplace(key, Prefixes{root->path(), root->jbroot_prefix()}).first->second;
  }
  current_prefixes.store(prefixes, std::memory_order_release);
  std::swap(shared.root, root);
}

}  // namespace wispen

const char* wispen_host_root_prefix() {
  const auto* prefixes = wispen::current_prefixes.load(std::memory_order_acquire);
  return prefixes ? prefixes->root.c_str() : wispen::DeviceRoot::kNowhere;
}

const char* wispen_host_jbroot_prefix() {
  const auto* prefixes = wispen::current_prefixes.load(std::memory_order_acquire);
  return prefixes ? prefixes->jbroot.c_str() : wispen::DeviceRoot::kNowhere;
}
