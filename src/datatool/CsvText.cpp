#include "datatool/CsvText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <optional>
#include <tuple>
#include <utility>

#include "datatool/BadLine.h"
#include "datatool/pictureFormat.h"
#include "platform/codepage.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
constexpr QByteArrayView unassigned = "\x81\x83\x88\x90\x98";  // in Windows-1250
constexpr auto nullField = u"\\N";
constexpr qint64 longest = qint64{1} << 30;

/// The length of the valid UTF-8 character at the beginning of `bytes`; 0 if there is none.
qsizetype characterLength(QByteArrayView bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const qsizetype length = lead < 0x80       ? 1
                             : lead >> 5 == 6  ? 2
                             : lead >> 4 == 14 ? 3
                             : lead >> 3 == 30 ? 4
                                               : 0;
    if (length == 0 || length > bytes.size()) return 0;
    return bytes.first(length).isValidUtf8() ? length : 0;
}

/// True for a European letter or a typographic mark. As Windows-1250, these begin with letters that hardly
/// ever stand before the bytes that follow (Ă, Ĺ, â€), unlike sequences that are valid by accident (ÍŠ, ĚŽ).
bool isTypical(QByteArrayView character) {
    const auto lead = static_cast<unsigned char>(character.front());
    return (lead >= 0xC2 && lead <= 0xC5) || character.startsWith("\xE2\x80");
}

struct Utf8Look {
    qsizetype characters = 0;  // valid ones of two or more bytes
    qsizetype faults = 0;      // bytes outside valid characters
    qsizetype firstFault = 0;
    qsizetype firstTypical = -1;

    explicit Utf8Look(QByteArrayView bytes) {
        for (qsizetype at = 0; at < bytes.size();) {
            const qsizetype length = characterLength(bytes.sliced(at));
            if (length == 0 && faults++ == 0) firstFault = at;
            if (length > 1) ++characters;
            if (length > 1 && firstTypical < 0 && isTypical(bytes.sliced(at))) firstTypical = at;
            at += std::max(length, qsizetype{1});
        }
    }

    bool isMeant() const { return characters > faults; }
};

QString decodeWindows1250(const QByteArray& bytes, qsizetype firstUtf8) {
    const auto lineAt = [&bytes](qsizetype at) { return bytes.first(at).count('\n') + 1; };
    if (firstUtf8 >= 0)
        throw BadLine(lineAt(firstUtf8), u"znak je v kódování UTF-8, zbytek souboru ve Windows-1250."_s);
    const auto strange =
        std::find_if(bytes.begin(), bytes.end(), [](char byte) { return unassigned.contains(byte); });
    if (strange != bytes.end()) {
        throw BadLine(lineAt(strange - bytes.begin()),
                      u"bajt %1 není znakem kódování Windows-1250 a soubor není ani v UTF-8."_s.arg(
                          QString::number(static_cast<unsigned char>(*strange), 16).toUpper()));
    }
    return codepage::fromWindows1250(bytes);
}

QString decodeUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    return decoder(bytes);
}

QString decodeUtf16(const QByteArray& bytes) {
    const auto encoding = bytes.startsWith("\xFF\xFE") ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE;
    QStringDecoder decoder(encoding);
    QString text = decoder(bytes);
    const bool isCutOff = bytes.size() % 2 != 0;
    if (isCutOff || !text.isValidUtf16())
        throw BadLine(text.count(u'\n') + 1,
                      u"soubor v kódování UTF-16 je poškozený na tomto řádku nebo před ním."_s);
    return text;
}

bool isMarkedUtf16(const QByteArray& bytes) {
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

/// @return the text and the name of its encoding.
std::pair<QString, QString> decode(const QByteArray& bytes) {
    if (isMarkedUtf16(bytes)) return {decodeUtf16(bytes), u"UTF-16"_s};
    if (bytes.isValidUtf8()) return {decodeUtf8(bytes), u"UTF-8"_s};
    const Utf8Look look(bytes);
    if (bytes.startsWith(byteOrderMark) || look.isMeant()) {
        throw BadLine(bytes.first(look.firstFault).count('\n') + 1,
                      u"znak není správně v kódování UTF-8, v němž je zbytek souboru."_s);
    }
    return {decodeWindows1250(bytes, look.firstTypical), u"Windows-1250"_s};
}

/// What kind of file this is instead of a text, in Czech; "" if it can be one.
QString otherKind(const QByteArray& bytes) {
    if (bytes.startsWith("PK\x03\x04") || bytes.startsWith("\xD0\xCF\x11\xE0"))
        return u"je to sešit tabulkového programu, dokument nebo archiv"_s;
    if (bytes.startsWith("%PDF-")) return u"je to dokument PDF"_s;
    if (bytes.startsWith("SQLite format 3")) return u"je to soubor databáze"_s;
    if (pictureFormat::isPicture(bytes.first(std::min(bytes.size(), pictureFormat::headLength))))
        return u"je to obrázek"_s;
    return {};
}

/// In Latin letters every other byte is zero.
bool isUnmarkedUtf16(const QByteArray& bytes) {
    if (isMarkedUtf16(bytes)) return false;
    const QByteArrayView head = QByteArrayView(bytes).first(std::min(bytes.size(), qsizetype{200}));
    const qsizetype zeros = head.count('\0');
    return bytes.size() % 2 == 0 && zeros > head.size() / 3;
}

QByteArray readFile(const QString& path) {
    const QString shown = QDir::toNativeSeparators(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        throw RuntimeError(errors::pathAccess, u"Tabulka musí být obyčejný soubor: %1"_s.arg(shown));
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        throw RuntimeError(errors::fileNotFound, u"Soubor nelze číst: %1"_s.arg(shown));
    if (file.size() > longest)
        throw RuntimeError(errors::pathAccess, u"Soubor je na tabulku příliš velký: %1"_s.arg(shown));
    QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        throw RuntimeError(errors::pathAccess, u"Soubor nelze číst: %1"_s.arg(shown));
    return bytes;
}

void refuseOtherKinds(const QByteArray& bytes, const QString& path) {
    QString fault = otherKind(bytes);
    if (fault.isEmpty() && isUnmarkedUtf16(bytes)) fault = u"je v kódování UTF-16 bez značky na začátku"_s;
    if (fault.isEmpty()) return;
    throw RuntimeError(
        errors::invalidCall,
        u"Soubor není textová tabulka, kterou jde číst: %1. V tabulkovém programu ji uložte jako CSV "
        "v kódování UTF-8: %2"_s.arg(fault, QDir::toNativeSeparators(path)));
}

/// The separator that a first line for spreadsheets names; that line is emptied.
std::optional<QChar> takeNamedSeparator(QString& text) {
    static const QRegularExpression line(u"^\"?sep=([^\"\\r\\n])\"?(?=\\r|\\n|$)"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    constexpr qsizetype longestLine = 10;  // with the line end; matching looks at all letters it is given
    const QRegularExpressionMatch match = line.match(text.left(longestLine));
    if (!match.hasMatch()) return std::nullopt;
    text.remove(0, match.capturedLength());
    return match.captured(1).front();
}

QChar separatorOf(QStringView text) {
    std::array<qsizetype, 3> counts{};
    constexpr QStringView separators = u",;\t";
    bool quoted = false;
    for (const QChar character : text) {
        if (character == u'"') quoted = !quoted;
        if (quoted) continue;
        if (character == u'\n' && std::any_of(counts.begin(), counts.end(), [](auto n) { return n > 0; }))
            break;
        if (const auto at = separators.indexOf(character); at >= 0) ++counts.at(static_cast<std::size_t>(at));
    }
    return separators[std::max_element(counts.begin(), counts.end()) - counts.begin()];
}

/// True for `\N` behind at least `more` further backslashes and nothing else.
bool looksLikeNull(QStringView field, qsizetype more) {
    if (field.size() < 2 + more || !field.endsWith(nullField)) return false;
    return std::all_of(field.begin(), field.end() - 1, [](QChar character) { return character == u'\\'; });
}

}  // namespace

CsvText CsvText::read(const QString& path) {
    const QByteArray bytes = readFile(path);
    refuseOtherKinds(bytes, path);
    CsvText result;
    std::tie(result.text, result.encoding) = decode(bytes);
    if (const qsizetype nul = result.text.indexOf(QChar::Null); nul >= 0) {
        throw BadLine(
            result.text.first(nul).count(u'\n') + 1,
            u"je tu nulový znak, soubor tedy není text v některém z kódování UTF-8, UTF-16 a Windows-1250."_s);
    }
    // Lines of old Macintosh programs.
    if (!result.text.contains(u'\n')) result.text.replace(u'\r', u'\n');
    const std::optional<QChar> named = takeNamedSeparator(result.text);
    result.separator = named ? *named : separatorOf(result.text);
    return result;
}

bool csvField::isNull(QStringView field) {
    return field == QStringView(nullField);
}

QString csvField::textOf(const QString& field) {
    return looksLikeNull(field, 1) ? field.sliced(1) : field;
}

QString csvField::ofText(const QString& text) {
    if (text.isNull()) return QString::fromUtf16(nullField);
    QString field = looksLikeNull(text, 0) ? u'\\' + text : text;
    return u'"' + field.replace(u'"', u"\"\""_s) + u'"';
}
