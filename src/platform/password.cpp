#include "platform/password.h"

#include <QCryptographicHash>
#include <QtEndian>

#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

// "KvD" and the format number, counted from "D" for 1: files of format 1 hold "KvDD".
constexpr qint32 markOfFormatZero = 0x4B764443;
constexpr qint32 newestFormat = 0x4B7644FF - markOfFormatZero;

// Offsets and values: the file format of SQLite 3, "The Database Header".
constexpr qsizetype headerLength = 100;
constexpr qsizetype markOffset = 68;
constexpr qsizetype verifierOffset = 60;
constexpr qsizetype pageSizeOffset = 16;
constexpr qsizetype schemaFormatOffset = 44;
constexpr qsizetype encodingOffset = 56;
constexpr qsizetype journalModeOffset = 18;
constexpr char rollbackJournal[] = {1, 1};  // to write, to read
constexpr qsizetype reservedOffset = 20;
constexpr char appleReserve = 12;  // bytes of each page reserved by the SQLite of macOS
constexpr qsizetype fractionsOffset = 21;
constexpr char fractions[] = {64, 32, 32};

qint32 verifier(const QString& password) {
    const QByteArray digest = QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Sha256);
    // The field is signed, and 0 would mean a file without a password.
    return static_cast<qint32>(qFromBigEndian<quint32>(digest.constData()) & 0x7FFFFFFF) | 1;
}

template <typename Number>
Number numberAt(const QByteArray& header, qsizetype offset) {
    return qFromBigEndian<Number>(header.constData() + offset);
}

template <std::size_t Length>
bool holds(const QByteArray& header, qsizetype offset, const char (&bytes)[Length]) {
    return QByteArrayView(header).sliced(offset, Length) == QByteArrayView(bytes, Length);
}

[[noreturn]] void refuse(int resultCode) {
    throw sqlite::Failure(errors::database, sqlite::description(resultCode), resultCode);
}

[[noreturn]] void refuseNewer(qint64 format) {
    throw RuntimeError(
        errors::database,
        u"Soubor databáze má novější formát (%1), než tato verze programu umí (%2). Nainstalujte novější verzi programu."_s
            .arg(format)
            .arg(password::dataFormat));
}

}  // namespace

void password::stamp(const sqlite::Database& database, const QString& password) {
    database.exec(("PRAGMA application_id=" + QByteArray::number(markOfFormatZero + dataFormat)).constData());
    database.exec(("PRAGMA user_version=" + QByteArray::number(verifier(password))).constData());
}

void password::checkHeader(const sqlite::Database& database, const QString& password) {
    QByteArray header(headerLength, '\0');
    // Through SQLite's own handle: closing another one would drop this process's locks on the file.
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    const int read = file == nullptr || file->pMethods == nullptr
                         ? SQLITE_CANTOPEN
                         : file->pMethods->xRead(file, header.data(), headerLength, 0);
    if (read == SQLITE_IOERR_SHORT_READ) refuse(SQLITE_NOTADB);
    if (read != SQLITE_OK) refuse(read);
    if (!header.startsWith(QByteArray("SQLite format 3\0", 16))) refuse(SQLITE_NOTADB);
    const qint64 format = qint64{numberAt<qint32>(header, markOffset)} - markOfFormatZero;
    if (format < 1 || format > newestFormat) refuse(SQLITE_NOTADB);
    if (format > dataFormat) refuseNewer(format);
    const auto pageSize = numberAt<quint16>(header, pageSizeOffset);
    const bool powerOfTwo = pageSize != 0 && (pageSize & (pageSize - 1)) == 0;
    // Some of these values would make SQLite work in another mode and change the file.
    if (!(pageSize == 1 || (powerOfTwo && pageSize >= 512)) ||
        !holds(header, journalModeOffset, rollbackJournal) || !holds(header, fractionsOffset, fractions) ||
        (header[reservedOffset] != 0 && header[reservedOffset] != appleReserve) ||
        numberAt<qint32>(header, schemaFormatOffset) != 4 || numberAt<qint32>(header, encodingOffset) != 1) {
        refuse(SQLITE_CORRUPT);
    }
    if (numberAt<qint32>(header, verifierOffset) != verifier(password))
        throw RuntimeError(errors::databasePassword);
}
