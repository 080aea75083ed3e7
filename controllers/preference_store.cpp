// controllers/preference_store.cpp: where the domain file is.

#include "controllers/preference_store.hpp"

#include "rootpath/rootpath.h"

namespace wispen {

NSString preference_domain_path() {
  // All ASCII: the literal is its own file-system representation.
  constexpr char kPath[] = "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist";
  char resolved[LIBROOT_PATH_MAX];
  return NSString::stringWithUTF8String(libroot_dyn_jbrootpath(kPath, resolved));
}

}  // namespace wispen
