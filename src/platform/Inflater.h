#pragma once

#define ZLIB_CONST
#include <zlib.h>

#include <QByteArrayView>
#include <functional>

/// Decompresses one stream in the format of gzip or zlib, piece by piece as it arrives.
class Inflater final {
 public:
    Inflater();
    ~Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Decompresses the next piece of the stream.
    /// @param take receives the result in pieces of a few kilobytes; false stops.
    /// @return false when the stream is damaged, when there is more behind its end, or when `take` stopped.
    bool inflate(QByteArrayView piece, const std::function<bool(QByteArrayView)>& take);

    /// True once the stream has been read to its end and its checksum was right.
    bool ended() const noexcept { return ended_; }

 private:
    z_stream stream_{};
    bool ended_ = false;
};
