#include "platform/ChunkSpool.h"

#include <algorithm>

#include "platform/errors.h"

void ado::ChunkSpool::append(QByteArrayView bytes) {
    if (file_ == nullptr && size_ + bytes.size() <= pieceLength) {
        buffer_.append(bytes);
    } else {
        if (file_ == nullptr) {
            file_ = std::make_unique<QTemporaryFile>();
            if (!file_->open()) throw RuntimeError(errors::pathAccess);
            if (file_->write(buffer_) != buffer_.size()) throw RuntimeError(errors::diskFull);
            buffer_.clear();
        }
        file_->seek(size_);
        if (file_->write(bytes.data(), bytes.size()) != bytes.size() || !file_->flush()) {
            throw RuntimeError(errors::diskFull);
        }
    }
    size_ += bytes.size();
}

QByteArray ado::ChunkSpool::read(qint64 from) const {
    if (file_ == nullptr) return buffer_;
    file_->seek(from);
    const qint64 wanted = std::min<qint64>(pieceLength, size_ - from);
    QByteArray piece = file_->read(wanted);
    if (piece.size() != wanted) throw RuntimeError(errors::pathAccess);
    return piece;
}
