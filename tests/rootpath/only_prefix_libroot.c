/* tests/rootpath/only_prefix_libroot.c: an optional library that knows one prefix and nothing else. */

const char* libroot_get_jbroot_prefix(void) { return "/private/preboot/jb-X"; }
