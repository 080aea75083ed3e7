/* tests/rootpath/from_c_test.c: the header and the functions, used from C. */

#include <stdio.h>
#include <string.h>

#include "rootpath/rootpath.h"

int main(void) {
  char buffer[LIBROOT_PATH_MAX];
  if (libroot_jbrootpath_fallback("/a", buffer) != buffer) return 1;
  if (libroot_jbrootpath_fallback(NULL, buffer) != NULL) return 2;
  if (strcmp(libroot_get_jbroot_prefix_fallback(), "/var/jb") != 0) return 3;
  puts(buffer);
  return 0;
}
