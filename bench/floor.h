#pragma once

// What floor.c asks of the system. The functions return 1, or 0 after a line on standard error.

#include <stddef.h>

// Grows to the longest page, and is the content of the files that are written.
extern char* buffer;
// Makes the buffer at least that long.
int grow(size_t bytes);

// Reads the file into the buffer.
int readPage(const char* name);
// Writes that many bytes of the buffer into a new file beside its place, flushes it, and moves it there.
int writeFile(const char* folder, long number, size_t bytes);
// Waits until what the folder lists is on the disk.
int flushFolder(const char* folder);
