// controllers/preference_store.cpp: where the domain file is.

#include "controllers/preference_store.hpp"

#include "rootpath/rootpath.h"

namespace wispen {

NSString preference_domain_path() {
  const NSString path = "/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist"_ns;
  char resolved[LIBROOT_PATH_MAX];
  return NSString::stringWithUTF8String(libroot_dyn_jbrootpath(path.fileSystemRepresentation(), resolved));
}

}  // namespace wispen
