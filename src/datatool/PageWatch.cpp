#include "datatool/PageWatch.h"

#include <utility>

namespace {

constexpr qint64 pagesPerStep = 256;

}  // namespace

thread_local PageWatch* PageWatch::current = nullptr;

PageWatch::PageWatch(const sqlite::Database& database, std::function<void(qint64 pages)> step)
    : handle_(database.handle()), step_(std::move(step)) {
    sqlite3_file_control(handle_, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
    if (file_ == nullptr || file_->pMethods == nullptr) return;
    methods_ = std::exchange(file_->pMethods, &counting_);
    counting_ = *methods_;
    counting_.xRead = &PageWatch::read;
    if (methods_->iVersion >= 3) counting_.xFetch = &PageWatch::fetch;
    current = this;
}

PageWatch::~PageWatch() {
    if (methods_ == nullptr) return;
    file_->pMethods = methods_;
    current = nullptr;
}

void PageWatch::finish() const {
    if (thrown_) std::rethrow_exception(thrown_);
}

void PageWatch::count() noexcept {
    if (++pages_ % pagesPerStep != 0 || thrown_) return;
    try {
        step_(pages_);
    } catch (...) {
        // Not through the engine, which is C.
        thrown_ = std::current_exception();
        sqlite3_interrupt(handle_);
    }
}

int PageWatch::read(sqlite3_file* file, void* bytes, int length, sqlite3_int64 offset) {
    current->count();
    return current->methods_->xRead(file, bytes, length, offset);
}

int PageWatch::fetch(sqlite3_file* file, sqlite3_int64 offset, int length, void** bytes) {
    const int result = current->methods_->xFetch(file, offset, length, bytes);
    if (*bytes != nullptr) current->count();  // others are read
    return result;
}
