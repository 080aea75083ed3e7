// host/core/platform_strings.cpp: the bounded string functions of the phone's C library.

#include "host/core/platform_strings.hpp"

#include <locale.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>

#include <algorithm>
#include <cstring>

std::size_t wispen_platform_strlcpy(char* target, const char* source, std::size_t size) {
  const std::size_t wanted = std::strlen(source);
  if (size > 0) {
    const std::size_t copied = std::min(wanted, size - 1);
    std::memcpy(target, source, copied);
    target[copied] = '\0';
  }
  return wanted;
}

std::size_t wispen_platform_strlcat(char* target, const char* source, std::size_t size) {
  const std::size_t held = strnlen(target, size);
  // No terminator within the bound: the target is left alone, as the manual has it.
  if (held == size) return size + std::strlen(source);
  return held + wispen_platform_strlcpy(target + held, source, size - held);
}

namespace {

locale_t c_locale() {
  static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

}  // namespace

int wispen_platform_snprintf_l(char* text, std::size_t size, void* /*locale*/, const char* format, ...) {
  const locale_t before = ::uselocale(c_locale());
  va_list arguments;
  va_start(arguments, format);
  const int length =                               // the analyser does not see that they are started
      ::vsnprintf(text, size, format, arguments);  // NOLINT(clang-analyzer-valist.Uninitialized)
  va_end(arguments);
  ::uselocale(before);
  return length;
}

float wispen_platform_strtof_l(const char* text, char** end, void* /*locale*/) {
  return ::strtof_l(text, end, c_locale());
}
