/* tests/rootpath/two_prefixes_libroot.c: an optional library that knows both prefixes and no path, and in
 * which order it was asked for them. */

static char asked[64];
static int count;
static void note(char which) {
  if (count < (int)sizeof asked - 1) asked[count++] = which;
}
const char* two_prefixes_libroot_asked(void) { return asked; }

const char* libroot_get_root_prefix(void) {
  note('r');
  return "/rootfs";
}
const char* libroot_get_jbroot_prefix(void) {
  note('j');
  return "/jb";
}
