// The I/O baseline: a plain C program that reads the pages and, for a conversion, writes as many bytes into as many
// files, as safely as kivsys does: each beside its place, flushed, and moved there. It does nothing else, and uses
// nothing of the product. The calls of the system are in floor_posix.c and floor_win32.c.
//
// floor read PAGE...                         reads the pages
// floor copy FILES BYTES FOLDER PAGE...      reads the pages, and writes FILES files of BYTES bytes each into FOLDER

#include "floor.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

char* buffer;
static size_t bufferBytes;

int grow(size_t bytes) {
  if (bytes > bufferBytes) {
    free(buffer);
    buffer = calloc(bytes, 1);
    bufferBytes = buffer != NULL ? bytes : 0;
  }
  return buffer != NULL || bytes == 0;
}

static int readPages(int count, char** names) {
  for (int i = 0; i < count; ++i) {
    if (!readPage(names[i])) {
      return 0;
    }
  }
  return 1;
}

static int copy(long files, size_t bytes, const char* folder) {
  if (!grow(bytes)) {
    return 0;
  }
  for (long number = 1; number <= files; ++number) {
    if (!writeFile(folder, number, bytes)) {
      return 0;
    }
  }
  return flushFolder(folder);
}

int main(int argc, char** argv) {
  if (argc > 2 && strcmp(argv[1], "read") == 0) {
    return readPages(argc - 2, argv + 2) ? 0 : 1;
  }
  if (argc > 5 && strcmp(argv[1], "copy") == 0) {
    const long files = strtol(argv[2], NULL, 10);
    const size_t bytes = strtoul(argv[3], NULL, 10);
    return readPages(argc - 5, argv + 5) && copy(files, bytes, argv[4]) ? 0 : 1;
  }
  (void)fputs("usage: floor read PAGE... | floor copy FILES BYTES FOLDER PAGE...\n", stderr);
  return 2;
}
