/* tests/host/app/c_program_test.c: a C program that links only the host library and the runtime, and sets and
 * reads a value on each of the six pages by class and selector name. Exit status 0 when everything was right.
 */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "host/wispen_host.h"

/* The runtime's C interface, as much as is used here. */
typedef void (*method)(void);
extern void* objc_lookUpClass(const char* name);
extern const void* sel_registerName(const char* name);
extern method objc_msg_lookup(void* receiver, const void* selector);

#define SEND(result, types, receiver, name) \
  ((result(*) types)objc_msg_lookup((receiver), sel_registerName(name)))

static void* send(void* receiver, const char* name) {
  return SEND(void*, (void*, const void*), receiver, name)(receiver, sel_registerName(name));
}
static void* send1(void* receiver, const char* name, const void* argument) {
  return SEND(void*, (void*, const void*, const void*), receiver, name)(receiver, sel_registerName(name),
                                                                        argument);
}
static void send2(void* receiver, const char* name, const void* first, const void* second) {
  SEND(void, (void*, const void*, const void*, const void*), receiver, name)
  (receiver, sel_registerName(name), first, second);
}
static void* string(const char* text) {
  return send1(objc_lookUpClass("NSString"), "stringWithUTF8String:", text);
}
static void* number(int value) {
  void* cls = objc_lookUpClass("NSNumber");
  return SEND(void*, (void*, const void*, int), cls, "numberWithInt:")(
      cls, sel_registerName("numberWithInt:"), value);
}
static int int_value(void* object) {
  return object == NULL
             ? -1
             : SEND(int, (void*, const void*), object, "intValue")(object, sel_registerName("intValue"));
}

static int failures;
static void check(int right, const char* what) {
  if (right) return;
  ++failures;
  fprintf(stderr, "failed: %s (last error: %s)\n", what, wispen_host_last_error());
}

static unsigned long long heard;
static void listener(const char* name, unsigned long long posts, void* context) {
  (void)context;
  if (strcmp(name, "test/changed") == 0) heard += posts;
}

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: %s ROOT BUNDLE\n", argv[0]);
    return 2;
  }
  check(wispen_host_start(NULL) == 0, "no options are refused");
  check(strlen(wispen_host_last_error()) > 0, "and why is said");

  wispen_host_options options;
  memset(&options, 0, sizeof options);
  options.size = sizeof options;
  check(wispen_host_start(&options) == 0, "a missing root is refused");
  options.root = argv[1];
  options.layout = "sideways";
  check(wispen_host_start(&options) == 0, "an unknown layout is refused");
  options.layout = NULL;
  options.appearance = "sepia";
  check(wispen_host_start(&options) == 0, "an unknown appearance is refused");
  options.appearance = "dark";
  check(wispen_host_running() == 0, "nothing runs after refusals");
  check(wispen_host_load_bundle(argv[2]) == NULL, "no bundle without a host");
  check(wispen_host_start(&options) == 1, "the host starts");
  check(wispen_host_start(&options) == 0, "a second host is refused");
  check(wispen_host_running() == 1, "and the first runs on");
  check(wispen_host_path("/var/jb/x") != NULL, "a path is resolved");

  void* pool = send(objc_lookUpClass("NSAutoreleasePool"), "new");
  check(wispen_host_load_bundle("/nonexistent") == NULL, "a missing bundle is refused");
  check(wispen_host_load_bundle(argv[2]) != NULL, "the bundle loads");
  check(wispen_host_open_page("NSString") == NULL, "a string is not a page");
  check(wispen_host_open_page("NoSuchPage") == NULL, "an unknown class is not a page");
  const int listening = wispen_host_listen("test/changed", listener, NULL);
  check(listening > 0, "listening");

  static const char* const pages[] = {"WispRootListController", "SepSettingsCell",
                                      "BackgroundSettingsCell", "ContextMenuLabels",
                                      "Expanded3DAdjustments",  "SepSettingsHSCell"};
  void* properties = send(objc_lookUpClass("NSMutableDictionary"), "dictionary");
  send2(properties, "setObject:forKey:", string("fromC"), string("key"));
  send2(properties, "setObject:forKey:", string("test/changed"), string("PostNotification"));
  void* specifier = send(objc_lookUpClass("PSSpecifier"), "new");
  send1(specifier, "setProperties:", properties);
  for (int i = 0; i < 6; ++i) {
    wispen_host_object page = wispen_host_open_page(pages[i]);
    check(page != NULL, pages[i]);
    send2(page, "setPreferenceValue:specifier:", number(10 + i), specifier);
    check(int_value(send1(page, "readPreferenceValue:", specifier)) == 10 + i, pages[i]);
    wispen_host_release(page);
  }
  check(wispen_host_open_page(NULL) != NULL, "the principal page opens without a name");
  check(wispen_host_posted_count() == 6, "six notifications were posted");
  check(strcmp(wispen_host_posted_name(5), "test/changed") == 0, "under their name");
  check(wispen_host_posted_name(6) == NULL, "and no seventh");
  check(wispen_host_run_until_idle() == 1, "the loop runs");
  check(heard == 6, "the listener heard of all six");
  wispen_host_stop_listening(listening);
  wispen_host_stop_listening(listening);

  check(wispen_host_now() == 0, "time stands still");
  check(wispen_host_advance(1.5) == 1 && wispen_host_now() == 1.5, "and moves when told");
  check(wispen_host_advance(-1) == 0, "but not backwards");
  check(wispen_host_run_for(0.5) == 1 && wispen_host_now() == 2, "run_for drives a driven clock");

  send(specifier, "release");
  send(pool, "drain");
  check(wispen_host_stop() == 1, "the host stops");
  check(wispen_host_stop() == 1, "stopping twice is harmless");
  check(wispen_host_start(&options) == 1 && wispen_host_stop() == 1, "and it can start again");
  if (failures == 0) puts("a C program set and read a value on each of the six pages");
  return failures == 0 ? 0 : 1;
}
