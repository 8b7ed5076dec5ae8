#pragma once

#include <exception>
#include <functional>

#include "platform/sqlite.h"

/// Counts the pages that the engine reads of a file as long as this lives: a check of a whole file is one
/// step to the engine, so that its own progress handler is not called. One object at a time in each thread.
class PageWatch final {
 public:
    /// @param step is told the number of pages read from time to time. What it throws interrupts the engine
    ///        and is thrown again by `finish`.
    PageWatch(const sqlite::Database& database, std::function<void(qint64 pages)> step);
    ~PageWatch();
    PageWatch(const PageWatch&) = delete;
    PageWatch& operator=(const PageWatch&) = delete;

    /// Call after the engine's work, also when it failed. @throws what `step` has thrown.
    void finish() const;

 private:
    void count() noexcept;

    static thread_local PageWatch* current;
    static int read(sqlite3_file* file, void* bytes, int length, sqlite3_int64 offset);
    static int fetch(sqlite3_file* file, sqlite3_int64 offset, int length, void** bytes);

    sqlite3* handle_;
    sqlite3_file* file_ = nullptr;
    const sqlite3_io_methods* methods_ = nullptr;  // those of the file
    sqlite3_io_methods counting_{};
    std::function<void(qint64)> step_;
    qint64 pages_ = 0;
    std::exception_ptr thrown_;
};
