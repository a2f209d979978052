#pragma once

/// What a process takes: descriptors, bytes on the heap, SQLite's part of them, and pages in
/// memory.
struct Usage {
    long descriptors;
    long long heapBytes;
    long long sqliteBytes;
    long residentKilobytes;
};

Usage usage();

/// Writes it to standard error.
void print(const char* when, const Usage& used);
