/* tests/rootpath/counting_libroot.c: an optional library with all five functions, which says who was called
 * and how often it was loaded. */

#include <stdlib.h>
#include <string.h>

static int loads;
__attribute__((constructor)) static void loaded(void) { ++loads; }
int counting_libroot_loads(void) { return loads; }

const char* libroot_get_root_prefix(void) { return "root prefix of the library"; }
const char* libroot_get_jbroot_prefix(void) { return "jailbreak prefix of the library"; }
const char* libroot_get_boot_uuid(void) { return "boot id of the library"; }

static char* answer(const char* what, const char* path, char* resolved_path) {
  if (path == NULL) return NULL;
  char* const buffer = resolved_path != NULL ? resolved_path : malloc(1024);
  strcpy(buffer, what);
  strncat(buffer, path, 900);
  return buffer;
}
char* libroot_jbrootpath(const char* path, char* resolved_path) { return answer("jb:", path, resolved_path); }
char* libroot_rootfspath(const char* path, char* resolved_path) { return answer("fs:", path, resolved_path); }
