#include "datatool/pictureFormat.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace std::string_view_literals;

struct Mark {
    std::size_t at;
    std::string_view bytes;
};

constexpr Mark marks[] = {{0, "\x89PNG\r\n\x1A\n"sv},
                          {0, "\xFF\xD8"sv},  // JPEG
                          {0, "GIF87a"sv},
                          {0, "GIF89a"sv},
                          {0, "II*\0"sv},  // TIFF
                          {0, "MM\0*"sv},
                          {0, "\0\0\1\0"sv},  // ICO
                          {0, "\0\0\2\0"sv},  // CUR
                          {0, "icns"sv},
                          {0, "\x8AMNG\r\n\x1A\n"sv},
                          {0, "/* XPM"sv},
                          {4, "ftypavi"sv},  // AVIF
                          {4, "ftyphe"sv},   // HEIF
                          {4, "ftypmif1"sv},
                          {4, "ftypmsf1"sv},
                          {4, "jP  \r\n\x87\n"sv},  // JPEG 2000
                          {0, "\xFF\x4F\xFF\x51"sv},
                          {4, "JXL \r\n\x87\n"sv},
                          {0, "\xFF\x0A"sv}};

bool has(std::string_view head, const Mark& mark) {
    return head.size() > mark.at && head.substr(mark.at).starts_with(mark.bytes);
}

int byteAt(std::string_view head, std::size_t at) {
    return static_cast<unsigned char>(head[at]);
}

/// The two letters alone could begin any text.
bool isBmp(std::string_view head) {
    constexpr std::size_t lengthAt = 14;
    if (!head.starts_with("BM"sv) || head.size() < lengthAt + 4) return false;
    const int length = byteAt(head, lengthAt);  // of the header that follows
    return (length == 12 || (length >= 40 && length <= 124)) && head.substr(lengthAt + 1, 3) == "\0\0\0"sv;
}

bool isWebp(std::string_view head) {
    return head.starts_with("RIFF"sv) && has(head, {8, "WEBP"sv});
}

bool isPnm(std::string_view head) {
    return head.size() > 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '6' &&
           " \t\r\n"sv.find(head[2]) != std::string_view::npos;
}

bool isXbm(std::string_view head) {
    return head.starts_with("#define"sv) && head.find("_width"sv) != std::string_view::npos;
}

/// Without a mark, but no text either: the one kind that is read has no colour map and three depths.
bool isTga(std::string_view head) {
    constexpr std::size_t length = 18;
    if (head.size() < length || head.substr(1, 2) != "\0\2"sv) return false;
    const int depth = byteAt(head, 16);
    return head.substr(12, 2) != "\0\0"sv && head.substr(14, 2) != "\0\0"sv &&
           (depth == 16 || depth == 24 || depth == 32);
}

}  // namespace

bool pictureFormat::isPicture(const QByteArray& head) {
    const std::string_view bytes(head.constData(), static_cast<std::size_t>(head.size()));
    return std::any_of(std::begin(marks), std::end(marks),
                       [bytes](const Mark& mark) { return has(bytes, mark); }) ||
           isBmp(bytes) || isWebp(bytes) || isPnm(bytes) || isXbm(bytes) || isTga(bytes);
}

bool pictureFormat::isUsableType(const QString& type) {
    return type.size() == 3 && std::all_of(type.begin(), type.end(),
                                           [](QChar character) { return character.isLetterOrNumber(); });
}
