#pragma once

#include <QByteArray>
#include <QTemporaryFile>
#include <memory>

namespace ado {

/// Bytes on their way into a binary column. A small buffer holds them; what goes beyond it is kept in a
/// temporary file that only the owner can read and that goes away with the object.
class ChunkSpool final {
 public:
    /// @throws RuntimeError 75 when the temporary file cannot be made, 61 when it cannot be written.
    void append(QByteArrayView bytes);

    qint64 size() const noexcept { return size_; }

    /// Hands the bytes over from the first to the last, in pieces of at most `pieceLength` bytes.
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
