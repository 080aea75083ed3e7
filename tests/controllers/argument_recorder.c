/* tests/controllers/argument_recorder.c: a command that writes its arguments, the first included, beside
 * itself. A script could not: what starts it puts its own name in the first one's place. */

#include <stdio.h>
#include <string.h>
#include <unistd.h>

extern char** environ;

int main(int argc, char** argv) {
  char path[4096] = "";
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - sizeof ".arguments");
  if (length < 0) return 1;
  strcpy(path + length, ".arguments");
  FILE* const record = fopen(path, "w");
  if (record == NULL) return 1;
  for (int i = 0; i < argc; ++i) fprintf(record, "%s|", argv[i]);
  for (char** variable = environ; variable != NULL && *variable != NULL; ++variable) {
    fprintf(record, "environment: %s|", *variable);
  }
  fputc('.', record);
  return fclose(record);
}
