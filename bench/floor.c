// The I/O baseline: a plain C program that reads the pages and, for a conversion, writes as many bytes into as many
// files, as safely as kivsys does: each beside its place, flushed, and renamed; at last the folder is flushed. It does
// nothing else, and uses nothing of the product. floor_win32.c is the same for Windows.
//
// floor read PAGE...                         reads the pages
// floor copy FILES BYTES FOLDER PAGE...      reads the pages, and writes FILES files of BYTES bytes each into FOLDER

#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

// Grows to the longest page, and is the content of the files that are written.
static char* buffer;
static size_t bufferBytes;

static int fail(const char* what, const char* name) {
  (void)fputs("floor: cannot ", stderr);
  (void)fputs(what, stderr);
  (void)fputc(' ', stderr);
  perror(name);
  return 0;
}

static int grow(size_t bytes) {
  if (bytes > bufferBytes) {
    free(buffer);
    buffer = calloc(bytes, 1);
    bufferBytes = buffer != NULL ? bytes : 0;
  }
  return buffer != NULL || bytes == 0;
}

static int readAll(int file, size_t bytes) {
  size_t have = 0;
  while (have < bytes) {
    const ssize_t got = read(file, buffer + have, bytes - have);
    if (got <= 0) {
      return 0;
    }
    have += (size_t)got;
  }
  return 1;
}

static int readPage(const char* name) {
  const int file = open(name, O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    return fail("open", name);
  }
  struct stat status;
  const int isRead = fstat(file, &status) == 0 && grow((size_t)status.st_size) && readAll(file, (size_t)status.st_size);
  return close(file) == 0 && isRead ? 1 : fail("read", name);
}

static int readPages(int count, char** names) {
  for (int i = 0; i < count; ++i) {
    if (!readPage(names[i])) {
      return 0;
    }
  }
  return 1;
}

static int writeAll(int file, size_t bytes) {
  size_t done = 0;
  while (done < bytes) {
    const ssize_t written = write(file, buffer + done, bytes - done);
    if (written < 0) {
      return 0;
    }
    done += (size_t)written;
  }
  return 1;
}

static int writeFile(const char* folder, long number, size_t bytes) {
  char name[PATH_MAX];
  char beside[PATH_MAX];
  (void)snprintf(name, sizeof name, "%s/WORK%04ld.MUS", folder, number);
  (void)snprintf(beside, sizeof beside, "%s/.floor", folder);
  const int file = open(beside, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0) {
    return fail("create", beside);
  }
  const int isWritten = writeAll(file, bytes) && fsync(file) == 0 && rename(beside, name) == 0;
  return close(file) == 0 && isWritten ? 1 : fail("write", name);
}

static int flushFolder(const char* folder) {
  const int opened = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) {
    return fail("open", folder);
  }
  const int isFlushed = fsync(opened) == 0;
  return close(opened) == 0 && isFlushed ? 1 : fail("flush", folder);
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
