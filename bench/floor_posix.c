// The files of the I/O baseline with the calls of POSIX.

#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "floor.h"

static int fail(const char* what, const char* name) {
  (void)fputs("floor: cannot ", stderr);
  (void)fputs(what, stderr);
  (void)fputc(' ', stderr);
  perror(name);
  return 0;
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

int readPage(const char* name) {
  const int file = open(name, O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    return fail("open", name);
  }
  struct stat status;
  const int isRead = fstat(file, &status) == 0 && grow((size_t)status.st_size) && readAll(file, (size_t)status.st_size);
  return close(file) == 0 && isRead ? 1 : fail("read", name);
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

int writeFile(const char* folder, long number, size_t bytes) {
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

int flushFolder(const char* folder) {
  const int opened = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) {
    return fail("open", folder);
  }
  const int isFlushed = fsync(opened) == 0;
  return close(opened) == 0 && isFlushed ? 1 : fail("flush", folder);
}
