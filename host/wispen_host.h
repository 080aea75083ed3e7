/* host/wispen_host.h: the desktop host as a C library, libwispenhost.so.
 *
 * A program in any language can start the host on a device root, load a settings bundle, and then talk to
 * everything in it through the Objective-C runtime, by class and selector name: the bundle's controllers, the
 * specifiers, Foundation. This header adds what is not a message: starting and stopping, the loop and its
 * clock, the notifications, errors.
 *
 *   wispen_host_options options = {sizeof options};
 *   options.root = "/tmp/device";
 *   if (!wispen_host_start(&options)) fail(wispen_host_last_error());
 *   wispen_host_load_bundle("build/out/Lumen.bundle");
 *   wispen_host_object page = wispen_host_open_page("LumenRootController");
 *   ... objc_msg_lookup(page, sel_registerName("specifiers")) ...
 *   wispen_host_release(page);
 *   wispen_host_stop();
 *
 * Everything is called from one thread, the main thread: the one that called wispen_host_start. On any other
 * every function fails, and that thread's wispen_host_last_error says why. One host runs in a process at a
 * time; it may be stopped and started again, also on another root. Strings are UTF-8. An exception of the
 * bundle's, of the platform's or of a listener's ends in the function during which it is raised: that fails.
 * Functions that give an int give 1 for done and 0 for failed; wispen_host_last_error() then says why, in one
 * sentence. */
#ifndef HOST_WISPEN_HOST_H_
#define HOST_WISPEN_HOST_H_

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** An object of the runtime: an `id`. */
typedef struct wispen_host_object_s* wispen_host_object;

/** What a host starts with. Zero the structure, set size, then what differs from the defaults. */
typedef struct wispen_host_options {
  /** sizeof(wispen_host_options), so that the structure can grow. */
  size_t size;
  /** The folder that plays the phone's file system; made where it does not exist. Required. */
  const char* root;
  /** "rootless" or "rootful"; null: as the root was made, and rootless for a new one. */
  const char* layout;
  /** The user's languages, most wanted first, comma separated: "de,en". Null: "en". */
  const char* languages;
  /** "light" or "dark". Null: "light". */
  const char* appearance;
  /** "phone" or "pad". Null: "phone". */
  const char* device;
  /** Where "@rpath" leads, colon separated; null: the folder of libwispenhost.so. */
  const char* rpath;
  /** Non-zero: time is the wall clock's. Zero: the clock stands still and moves by wispen_host_advance. */
  int wall_clock;
  /** Non-zero: the screen shows windows that the program makes, and the Settings application never comes up.
   */
  int own_windows;
  /** Non-zero: the bundle's lists are data only. No method that they name is performed, so that a list which
   * nobody trusts can be looked at. */
  int lists_as_data;
} wispen_host_options;

/** Starts the host. Fails while one runs, and for options that cannot be used; nothing is running then. */
int wispen_host_start(const wispen_host_options* options);
/** Ends background work and forgets the root. Objects of the bundle must have been released. Harmless when no
 *  host runs. Fails where a background job would not end; the host is stopped even so. */
int wispen_host_stop(void);
/** Whether a host runs. */
int wispen_host_running(void);

/** Why the last function that failed did so; "" when none has. Valid until the next call of this library. */
const char* wispen_host_last_error(void);
/** The next sentence about something that the platform passes over in silence (a strings table with a broken
 *  line, a list that is missing), oldest first; null when there is none left. Valid until the next call. */
const char* wispen_host_next_problem(void);

/** The folder of the user's own device root, which is used where nobody names another:
 *  $XDG_DATA_HOME/wispen/root, else ~/.local/share/wispen/root. Only computed; "" where there is no home.
 * Valid until the next call of this library. */
const char* wispen_host_default_root(void);

/** The path of the device root, absolute; null when no host runs. */
const char* wispen_host_root(void);
/** The real path of a path on the phone. Null on failure. Valid until the next call. */
const char* wispen_host_path(const char* device_path);

/** The real path of a path of the jailbreak's, as the root-path library gives it to the bundle: below /var/jb
 * on a rootless root. Null on failure. Valid until the next call. */
const char* wispen_host_jailbreak_path(const char* path);

/** Opens a bundle and loads its code. Gives the NSBundle (not to be released), or null. A bundle that is
 *  loaded already is opened again, its data read anew. */
wispen_host_object wispen_host_load_bundle(const char* path);
/** Makes a page of a loaded bundle: an instance of the class, initialised, which the caller releases. Null
 * class name: the principal class of the bundle loaded last. Null on failure. */
wispen_host_object wispen_host_open_page(const char* class_name);
/** Gives a page's reference back; null is harmless. One that this library has not given out, or that was
 * given back already, is left alone, and the last error says so. */
void wispen_host_release(wispen_host_object object);

/** The class of the page that a row leads to; "" for a row (a PSSpecifier) that leads to none, as one with a
 * key does: its own page offers its choices. Null on failure. Valid until the next call of this library. */
const char* wispen_host_page_of_row(wispen_host_object row);

/** The user's languages from now on, as in the options. */
int wispen_host_set_languages(const char* languages);

/** Runs everything that is due: the main queue, background work, arrived notifications. Fails where the work
 *  does not come to an end. Autoreleased objects of these jobs go with them. */
int wispen_host_run_until_idle(void);
/** Runs for a time of the host's clock, in seconds: waits on a wall clock, drives a driven one. */
int wispen_host_run_for(double seconds);
/** Moves a driven clock on; every timer fires at its exact time. Fails on a wall clock. */
int wispen_host_advance(double seconds);
/** Seconds on the host's clock; a driven one starts at 0. */
double wispen_host_now(void);

/** How many notifications this process has posted since the host started, and the name of each, in order. */
size_t wispen_host_posted_count(void);
/** Null out of range. Valid until the host stops. */
const char* wispen_host_posted_name(size_t index);

/** The system sounds that were played since the host started: none is heard. */
size_t wispen_host_sound_count(void);
/** Its number; 0 out of range. */
unsigned int wispen_host_sound(size_t index);

/** Called on the main thread, from within the run functions, once or more after a name was posted by whatever
 *  process on this root; `posts` is how many posts this call stands for. */
typedef void (*wispen_host_listener)(const char* name, unsigned long long posts, void* context);
/** Listens to a name, or to all of them where it is null. Gives a number above zero, or 0 on failure. */
int wispen_host_listen(const char* name, wispen_host_listener listener, void* context);
/** Ends a listening; unknown numbers are harmless. */
void wispen_host_stop_listening(int listening);

/* The phone's own processes. */

/** Called on the main thread, from within the run functions, when one of the processes below has ended and is
 * not started again: `why` is one sentence. */
typedef void (*wispen_host_process_listener)(const char* why, void* context);
/** Puts the stand-ins of SpringBoard and backboardd, and the killall that restarts them, into the device root
 * and starts them; they are started again when they end, and end with the host. They are taken from the
 * folder `programs`; null: "stand-ins" beside libwispenhost.so. `home_screen_arguments` are SpringBoard's,
 * ended by null; null for none. Fails where somebody else's program has the place of one of them in the root.
 */
int wispen_host_start_processes(const char* programs, const char* const* home_screen_arguments,
                                wispen_host_process_listener listener, void* context);
/** The id of the process of that name (SpringBoard, backboardd) that lives; 0 where none does. */
int wispen_host_process(const char* name);

/* The screen. Places and sizes are in points from the top left corner, as the device is held. The Settings
 * application comes up with the first of these calls. */

/** A trait of the screen: how its user wants it, what device it is, how that is held. */
typedef struct wispen_host_trait {
  const char* name;
  const char* description; /**< for people */
  /** All values there are, comma separated; "" where any list goes ("de,en"). Valid until the next call. */
  const char* values;
} wispen_host_trait;
/** The traits there are: appearance, language, direction, text size, device and orientation. Whether or not a
 * host runs. */
size_t wispen_host_trait_count(void);
/** All null out of range. */
wispen_host_trait wispen_host_trait_at(size_t index);
/** Changes a trait in place. Fails, changing nothing, if the trait or the value is unknown; the error names
 * those that are known. */
int wispen_host_set_look(const char* name, const char* value);
/** The present value of a trait; null for an unknown name. Valid until the next call of this library. */
const char* wispen_host_look(const char* name);
/** The devices there are, comma separated. Valid until the next call of this library. */
const char* wispen_host_devices(void);

/** The screen in points, and how many pixels a point has. */
typedef struct wispen_host_screen_size {
  double width;
  double height;
  double scale;
} wispen_host_screen_size;
wispen_host_screen_size wispen_host_screen(void);

/** Offers the bundle of a folder on the front page of Settings. */
int wispen_host_offer_bundle(const char* path);
/** Shows a page with the pages that lead to it below it, without animation: "" or null for the list of
 * Settings, "root" for the offered or installed bundle's own page, else the class of a page that rows lead
 * to. */
int wispen_host_show_page(const char* page);
/** The class of the page that is shown. Valid until the next call of this library. */
const char* wispen_host_shown_page(void);
/** Builds the lists of all pages anew from their files; pages, scroll positions and values stay. */
int wispen_host_reload_pages(void);
/** From now on the pages follow the files of that bundle: what is saved there is seen at once. While a list
 * or a strings table cannot be read the last good pages stay, under a note that says why. */
int wispen_host_follow_files(const char* bundle);
/** Lets time of a driven clock pass until nothing moves and nobody works in the background, but at most so
 *  many seconds. */
int wispen_host_settle(double at_most);

/** What a finger does. There is one. */
enum wispen_host_touch_phase {
  WISPEN_HOST_TOUCH_BEGAN,
  WISPEN_HOST_TOUCH_MOVED,
  WISPEN_HOST_TOUCH_ENDED,
  WISPEN_HOST_TOUCH_CANCELLED
};
int wispen_host_touch(enum wispen_host_touch_phase phase, double x, double y);
/** Turns the wheel over a place; positive is up. */
int wispen_host_wheel(double x, double y, double points);
/** Writes text where the keyboard is, as if each character were typed. */
int wispen_host_type(const char* text);
/** Presses a key: tab, return, escape, backspace, delete, left, right, up, down, home, end, page-up,
 *  page-down, space, or one character; "shift+" and "command+" before it. Fails for an unknown name;
 *  a key that nothing handles is not an error. */
int wispen_host_key(const char* key);

/** Writes a picture of the screen as PNG, whole or not at all. Scale 0 is the device's, else 0.5 to 4. With
 *  `whole_page` the screen is as high as the page is long. */
int wispen_host_snapshot(const char* path, double scale, int whole_page);

/** The screen's pixels, kept from frame to frame: 32 bits a pixel, 0xAARRGGBB in the machine's byte order,
 *  alpha premultiplied. Valid until the next call of wispen_host_frame or wispen_host_stop. */
typedef struct wispen_host_frame_pixels {
  const unsigned char* pixels;
  int width;
  int height;
  size_t stride; /**< bytes from row to row */
  /** The part that changed since the last call, in pixels; width 0 where nothing did. */
  int changed_x, changed_y, changed_width, changed_height;
} wispen_host_frame_pixels;
/** Paints what changed. */
int wispen_host_frame(wispen_host_frame_pixels* frame);
/** Pixels a point of the frames from now on, 0.5 to 4, for a window that shows the screen larger or smaller
 * than the device's own; 0 for the device's. The views stay where the device has them. */
int wispen_host_set_frame_scale(double scale);
/** Whether the next frame differs from the last: something was changed, or moves. */
int wispen_host_frame_stale(void);
/** Opens a window of the desktop on the screen, and runs the host until it is closed. Mouse and keyboard do
 * what touches and keys do; a strip of buttons, and F2 to F7, switch the traits in place. `languages` are
 * those that the strip offers, comma separated; null for none. Needs a wall clock; fails where there is no
 * display. */
int wispen_host_run_window(const char* title, const char* languages);

/** Where on the desktop a window opens. */
enum wispen_host_window_place {
  WISPEN_HOST_WINDOW_CENTRE,
  WISPEN_HOST_WINDOW_LEFT,
  /** The right half, beside another window to which it leaves the keyboard. */
  WISPEN_HOST_WINDOW_RIGHT
};
/** The same, at a place. */
int wispen_host_run_window_at(const char* title, const char* languages, enum wispen_host_window_place place);

/** What is on the screen, as JSON: every window as a tree of views with "class", "frame", "text", "value" and
 *  more, and the row beside each cell. Null on failure. Valid until the next call of this library. */
const char* wispen_host_view_tree(void);

#ifdef __cplusplus
}
#endif

#endif
