/* tests/rootpath/broken_libroot.c: an optional library that needs a function which there is nowhere. */

extern void function_that_there_is_nowhere(void);
void broken_libroot_needs_it(void) { function_that_there_is_nowhere(); }

const char* libroot_get_jbroot_prefix(void) { return "/broken"; }
