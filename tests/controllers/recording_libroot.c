/* tests/controllers/recording_libroot.c: an optional library that writes down what it is asked, and answers
 * with another place each time, so that every conversion can be told from the one before. */

#include <stdio.h>
#include <string.h>

enum { MOST = 64, SIZE = 1024 };

static char asked[MOST][SIZE];
static int count;

/* The path of a question, without those before `recording_libroot_forget`; null where there is none. */
const char* recording_libroot_asked(int index) { return index < count ? asked[index] : NULL; }
void recording_libroot_forget(void) { count = 0; }

const char* libroot_get_jbroot_prefix(void) { return "/of-the-library"; }

char* libroot_jbrootpath(const char* path, char* resolved_path) {
  if (count < MOST) snprintf(asked[count++], SIZE, "%s%s", resolved_path == NULL ? "no buffer: " : "", path);
  if (resolved_path == NULL) return NULL;
  memset(resolved_path, '#', SIZE); /* all of the buffer is the library's to write */
  snprintf(resolved_path, SIZE, "/var/mobile/answer-%d%s", count, path);
  return resolved_path;
}
