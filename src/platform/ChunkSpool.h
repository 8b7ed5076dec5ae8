#pragma once

#include <QByteArray>
#include <QTemporaryFile>
#include <memory>

namespace ado {

/// Bytes to be written to a binary column. Up to `pieceLength` of them are held in memory, more in a
/// temporary file that only the owner can read and that is removed with the object.
class ChunkSpool final {
 public:
    /// @throws RuntimeError 75 when the temporary file cannot be made, 61 when it cannot be written.
    void append(QByteArrayView bytes);

    qint64 size() const noexcept { return size_; }

    /// Passes the bytes to `take` in order, in pieces of at most `pieceLength` bytes.
    /// @throws RuntimeError 75 when the temporary file cannot be read back, and what `take` throws.
    template <typename Take>
    void forEachPiece(Take&& take) const {
        qint64 at = 0;
        while (at < size_) {
            const QByteArray piece = read(at);
            take(piece, at);
            at += piece.size();
        }
    }

    static constexpr qsizetype pieceLength = 65536;

 private:
    QByteArray read(qint64 from) const;

    QByteArray buffer_;
    std::unique_ptr<QTemporaryFile> file_;
    qint64 size_ = 0;
};

}  // namespace ado
