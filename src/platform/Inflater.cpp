#include "platform/Inflater.h"

#include <array>

Inflater::Inflater() {
    constexpr int tellFormatByHeader = MAX_WBITS + 32;
    // On failure the first call of inflate fails.
    inflateInit2(&stream_, tellFormatByHeader);
}

Inflater::~Inflater() {
    inflateEnd(&stream_);
}

bool Inflater::inflate(QByteArrayView piece, const std::function<bool(QByteArrayView)>& take) {
    std::array<char, 16384> plain;
    stream_.next_in = reinterpret_cast<const Bytef*>(piece.data());
    stream_.avail_in = static_cast<uInt>(piece.size());
    do {
        if (ended_) return stream_.avail_in == 0;
        stream_.next_out = reinterpret_cast<Bytef*>(plain.data());
        stream_.avail_out = static_cast<uInt>(plain.size());
        const int result = ::inflate(&stream_, Z_NO_FLUSH);
        if (result == Z_BUF_ERROR) return true;  // needs the next piece
        if (result != Z_OK && result != Z_STREAM_END) return false;
        ended_ = result == Z_STREAM_END;
        const auto length = static_cast<qsizetype>(plain.size() - stream_.avail_out);
        if (length > 0 && !take({plain.data(), length})) return false;
    } while (stream_.avail_in > 0 || stream_.avail_out == 0);
    return true;
}
