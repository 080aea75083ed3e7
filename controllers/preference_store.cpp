// controllers/preference_store.cpp: where the domain file is.

#include "controllers/preference_store.hpp"

#include "bundle/facts/facts.hpp"
#include "rootpath/rootpath.h"

namespace wispen {

NSString preference_domain_path() {
  // All ASCII: the literal is its own file-system representation.
  char resolved[LIBROOT_PATH_MAX];
  return NSString::stringWithUTF8String(libroot_dyn_jbrootpath(facts::kDomainFile, resolved));
}

}  // namespace wispen
