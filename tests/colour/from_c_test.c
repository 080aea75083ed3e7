/* tests/colour/from_c_test.c: a C program that links only the host library and the runtime, and asks for
 * colours by class and selector name: every row of a table of texts, and a few images. Exit status 0 when
 * everything was right. */

#include <math.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>

#include "host/wispen_host.h"

/* The runtime's C interface, as much as is used here. */
typedef void (*method)(void);
extern void* objc_lookUpClass(const char* name);
extern const void* sel_registerName(const char* name);
extern method objc_msg_lookup(void* receiver, const void* selector);

/* CoreGraphics', which the host library exports under the platform's names. */
extern void* CGColorSpaceCreateDeviceRGB(void);
extern void* CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bits, size_t row,
                                   void* space, unsigned info);
extern void* CGBitmapContextCreateImage(void* context);
extern void CGContextRelease(void* context);
extern void CGImageRelease(void* image);

#define SEND(result, types, receiver, name) \
  ((result(*) types)objc_msg_lookup((receiver), sel_registerName(name)))

static void* send(void* receiver, const char* name) {
  return SEND(void*, (void*, const void*), receiver, name)(receiver, sel_registerName(name));
}
static void* send1(void* receiver, const char* name, const void* argument) {
  return SEND(void*, (void*, const void*, const void*), receiver, name)(receiver, sel_registerName(name),
                                                                        argument);
}
static const char* text_of(void* string) {
  return SEND(const char*, (void*, const void*), string, "UTF8String")(string,
                                                                       sel_registerName("UTF8String"));
}
static int is_dark(void* color) {
  return SEND(unsigned char, (void*, const void*), color, "wispIsDarkColor")(
      color, sel_registerName("wispIsDarkColor"));
}
typedef struct {
  double red, green, blue, alpha;
} rgba;
static rgba components(void* color) {
  rgba c = {-1, -1, -1, -1};
  const void* name = sel_registerName("getRed:green:blue:alpha:");
  SEND(unsigned char, (void*, const void*, double*, double*, double*, double*), color,
       "getRed:green:blue:alpha:")
  (color, name, &c.red, &c.green, &c.blue, &c.alpha);
  return c;
}
static void* color_with(double red, double green, double blue) {
  void* cls = objc_lookUpClass("UIColor");
  return SEND(void*, (void*, const void*, double, double, double, double), cls,
              "colorWithRed:green:blue:alpha:")(cls, sel_registerName("colorWithRed:green:blue:alpha:"), red,
                                                green, blue, 1.0);
}
static void* string(const char* text) {
  return send1(objc_lookUpClass("NSString"), "stringWithUTF8String:", text);
}

static int failures;
static void check(int right, const char* what) {
  if (right) return;
  ++failures;
  fprintf(stderr, "failed: %s\n", what);
}

static const struct {
  const char* text;
  int red, green, blue;
  double alpha;
} texts[] = {
    {"", 0, 0, 0, 1},
    {"#", 0, 0, 0, 1},
    {"#FF0000", 255, 0, 0, 1},
    {"FF0000", 255, 0, 0, 1},
    {"ff0000", 255, 0, 0, 1},
    {"#FF0000:0.5", 255, 0, 0, 0.5},
    {"FF0000:", 255, 0, 0, 0},
    {"#FF0000:abc", 255, 0, 0, 0},
    {"0x00FF00", 0, 255, 0, 1},
    {"#FFF", 0, 15, 255, 1},
    {"#11223344", 0x22, 0x33, 0x44, 1},
    {" #FF0000", 0, 0, 0, 1},
    {"FFFFFFFFF", 255, 255, 255, 1},
};

static const struct {
  double red, green, blue;
  const char* text;
  int dark;
} colors[] = {
    {0.5, 1, 0, "#7FFF00", 0}, {1.2, 0, 0, "#1320000", 1}, {-0.5, 0, 0, "#FFFFFF810000", 1},
    {0, 0, 1, "#0000FF", 1},   {0, 1, 0, "#00FF00", 0},    {0.5, 0.5, 0.5, "#7F7F7F", 0},
};

/* An image whose rows above `split` are of one colour and the others of another; 0xRRGGBBAA. */
static void* image_of(size_t width, size_t height, size_t split, unsigned above, unsigned below) {
  static unsigned char bytes[4 * 128 * 128];
  for (size_t i = 0; i < width * height; ++i) {
    const unsigned colour = i / width < split ? above : below;
    for (int part = 0; part < 4; ++part)
      bytes[4 * i + (size_t)part] = (unsigned char)(colour >> (24 - 8 * part));
  }
  void* context =
      CGBitmapContextCreate(bytes, width, height, 8, 4 * width, CGColorSpaceCreateDeviceRGB(), 1u | 4u << 12);
  void* pixels = CGBitmapContextCreateImage(context);
  void* image = send1(objc_lookUpClass("UIImage"), "imageWithCGImage:", pixels);
  CGImageRelease(pixels);
  CGContextRelease(context);
  return image;
}

static int is(void* color, int red, int green, int blue) {
  const rgba c = components(color);
  return c.red == (double)((float)red / 255.0f) && c.green == (double)((float)green / 255.0f) &&
         c.blue == (double)((float)blue / 255.0f) && c.alpha == 1;
}

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: %s ROOT BUNDLE\n", argv[0]);
    return 2;
  }
  wispen_host_options options;
  memset(&options, 0, sizeof options);
  options.size = sizeof options;
  options.root = argv[1];
  if (wispen_host_start(&options) != 1) return 2;
  void* pool = send(objc_lookUpClass("NSAutoreleasePool"), "new");
  check(wispen_host_load_bundle(argv[2]) != NULL, "the bundle loads");

  void* cls = objc_lookUpClass("UIColor");
  check(components(send1(cls, "wispRGBAColorFromHexString:", NULL)).alpha == 1, "nil is opaque black");
  for (size_t i = 0; i < sizeof texts / sizeof texts[0]; ++i) {
    const rgba c = components(send1(cls, "wispRGBAColorFromHexString:", string(texts[i].text)));
    check(c.red == texts[i].red / 255.0 && c.green == texts[i].green / 255.0 &&
              c.blue == texts[i].blue / 255.0 && c.alpha == texts[i].alpha,
          texts[i].text);
  }
  for (size_t i = 0; i < sizeof colors / sizeof colors[0]; ++i) {
    void* color = color_with(colors[i].red, colors[i].green, colors[i].blue);
    check(strcmp(text_of(send1(cls, "wispHexStringFromColor:", color)), colors[i].text) == 0, colors[i].text);
    check(is_dark(color) == colors[i].dark, colors[i].text);
  }

  void* one = image_of(10, 10, 10, 0x0000FFFF, 0);
  check(is(send(one, "wispDominantColor"), 255, 0, 0), "one colour dominates as red");
  check(is(send(one, "wispSecondDominantColor"), 0, 0, 255), "and is its own second");
  check(is(send(image_of(10, 10, 0, 0, 0), "wispDominantColor"), 255, 0, 0), "nothing opaque is red");
  void* halves = image_of(10, 10, 5, 0xFF0000FF, 0x0000FFFF);
  check(is(send(halves, "wispDominantColor"), 255, 0, 0), "the first of two halves leads");
  void* orange = image_of(10, 10, 7, 0xFFFFFFFF, 0xFF8000FF);
  check(is(send(orange, "wispDominantColor"), 255, 128, 0), "orange is more vivid than white");
  check(is(send(orange, "wispSecondDominantColor"), 255, 128, 0), "white covers more than three fifths");
  check(is(send(image_of(10, 10, 10, 0x80400080, 0), "wispSecondDominantColor"), 128, 64, 0),
        "half-transparent pixels count as they are stored");
  check(is(send(image_of(100, 100, 70, 0xFFFFFFFF, 0xFF8000FF), "wispDominantColor"), 255, 128, 0),
        "a large square");
  check(is(send(image_of(40, 50, 35, 0xFFFFFFFF, 0xFF8000FF), "wispDominantColor"), 255, 128, 0),
        "a small portrait");
  check(is(send(image_of(60, 61, 40, 0xFFFFFFFF, 0xFF8000FF), "wispDominantColor"), 255, 0, 0),
        "a large portrait is not looked at");

  void* a = send(objc_lookUpClass("RGBPixel"), "new");
  void* b = send(objc_lookUpClass("RGBPixel"), "new");
  SEND(void, (void*, const void*, int), a, "setR:")(a, sel_registerName("setR:"), 255);
  SEND(void, (void*, const void*, int), b, "setG:")(b, sel_registerName("setG:"), 10);
  check(SEND(int, (void*, const void*, void*, void*), one, "colourDistance:andB:")(
            one, sel_registerName("colourDistance:andB:"), a, b) == 265,
        "the city-block distance");
  send(a, "release");
  send(b, "release");

  send(pool, "drain");
  check(wispen_host_stop() == 1, "the host stops");
  if (failures == 0) puts("a C program read, wrote and found colours by selector");
  return failures == 0 ? 0 : 1;
}
