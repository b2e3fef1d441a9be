// The files of the I/O baseline with the calls of Windows.

#include <windows.h>

#include <stdio.h>

#include "floor.h"

static int fail(const char* what, const char* name) {
  (void)fprintf(stderr, "floor: cannot %s %s: error %lu\n", what, name, GetLastError());
  return 0;
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

int readPage(const char* name) {
  HANDLE file = CreateFileA(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL);
  if (file == INVALID_HANDLE_VALUE) {
    return fail("open", name);
  }
  LARGE_INTEGER size;
  const int isRead = GetFileSizeEx(file, &size) && grow((size_t)size.QuadPart) && readAll(file, (size_t)size.QuadPart);
  return CloseHandle(file) && isRead ? 1 : fail("read", name);
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

int writeFile(const char* folder, long number, size_t bytes) {
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

// Files are moved with MOVEFILE_WRITE_THROUGH.
int flushFolder(const char* folder) {
  (void)folder;
  return 1;
}
