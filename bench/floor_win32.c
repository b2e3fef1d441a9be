// The I/O baseline for Windows: what floor.c does, with the calls of Windows. Files are flushed, closed, and moved with
// MOVEFILE_WRITE_THROUGH, so no folder need be flushed.
//
// floor read PAGE...                         reads the pages
// floor copy FILES BYTES FOLDER PAGE...      reads the pages, and writes FILES files of BYTES bytes each into FOLDER

#include <windows.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// Grows to the longest page, and is the content of the files that are written.
static char* buffer;
static size_t bufferBytes;

static int fail(const char* what, const char* name) {
  (void)fprintf(stderr, "floor: cannot %s %s: error %lu\n", what, name, GetLastError());
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

static int readAll(HANDLE file, size_t bytes) {
  size_t have = 0;
  while (have < bytes) {
    DWORD got = 0;
    if (!ReadFile(file, buffer + have, (DWORD)(bytes - have), &got, NULL) || got == 0) {
      return 0;
    }
    have += got;
  }
  return 1;
}

static int readPage(const char* name) {
  HANDLE file = CreateFileA(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL);
  if (file == INVALID_HANDLE_VALUE) {
    return fail("open", name);
  }
  LARGE_INTEGER size;
  const int isRead = GetFileSizeEx(file, &size) && grow((size_t)size.QuadPart) && readAll(file, (size_t)size.QuadPart);
  return CloseHandle(file) && isRead ? 1 : fail("read", name);
}

static int readPages(int count, char** names) {
  for (int i = 0; i < count; ++i) {
    if (!readPage(names[i])) {
      return 0;
    }
  }
  return 1;
}

static int writeAll(HANDLE file, size_t bytes) {
  size_t done = 0;
  while (done < bytes) {
    DWORD written = 0;
    if (!WriteFile(file, buffer + done, (DWORD)(bytes - done), &written, NULL)) {
      return 0;
    }
    done += written;
  }
  return 1;
}

static int writeFile(const char* folder, long number, size_t bytes) {
  char name[MAX_PATH];
  char beside[MAX_PATH];
  (void)snprintf(name, sizeof name, "%s\\WORK%04ld.MUS", folder, number);
  (void)snprintf(beside, sizeof beside, "%s\\floor.tmp", folder);
  HANDLE file = CreateFileA(beside, GENERIC_WRITE, FILE_SHARE_READ, NULL, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, NULL);
  if (file == INVALID_HANDLE_VALUE) {
    return fail("create", beside);
  }
  const int isWritten = writeAll(file, bytes) && FlushFileBuffers(file);
  const int isMoved =
      CloseHandle(file) && isWritten && MoveFileExA(beside, name, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  return isMoved ? 1 : fail("write", name);
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
  return 1;
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
