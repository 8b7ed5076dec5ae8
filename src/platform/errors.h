#pragma once

#include <QString>
#include <exception>
#include <utility>

/// Error numbers that the program itself raises: those of the Basic runtime and of ActiveX Data Objects,
/// which users know from message boxes.
namespace errors {
inline constexpr qint32 invalidCall = 5;
inline constexpr qint32 overflow = 6;
inline constexpr qint32 outOfMemory = 7;
inline constexpr qint32 subscriptOutOfRange = 9;
inline constexpr qint32 divisionByZero = 11;
inline constexpr qint32 typeMismatch = 13;
inline constexpr qint32 fileNotFound = 53;
inline constexpr qint32 diskFull = 61;
inline constexpr qint32 endOfFile = 62;
inline constexpr qint32 pathAccess = 75;
inline constexpr qint32 objectNotSet = 91;
inline constexpr qint32 invalidNull = 94;
inline constexpr qint32 noSuchControl = 340;
inline constexpr qint32 invalidPropertyValue = 380;
inline constexpr qint32 invalidPicture = 481;
inline constexpr qint32 printer = 482;
inline constexpr qint32 cannotCreateObject = 429;
inline constexpr qint32 duplicateKey = 457;
inline constexpr qint32 noCurrentRecord = 3021;
inline constexpr qint32 operationNotAllowed = 3219;
inline constexpr qint32 itemNotFound = 3265;
inline constexpr qint32 objectClosed = 3704;
inline constexpr qint32 objectOpen = 3705;
inline constexpr qint32 elementNotFound = 35601;
/// OLE DB results.
inline constexpr qint32 database = -2147467259;
inline constexpr qint32 databaseReadOnly = -2147217911;
inline constexpr qint32 databasePassword = -2147217843;
inline constexpr qint32 databaseSql = -2147217900;
inline constexpr qint32 databaseConstraint = -2147217873;
inline constexpr qint32 rowGone = -2147217885;

/// The Czech description of one of these numbers; a general one for any other.
QString description(qint32 number);
}  // namespace errors

/// A failed statement, with a Czech description fit for the user.
class RuntimeError : public std::exception {
 public:
    /// With the default description of its number.
    explicit RuntimeError(qint32 number);
    RuntimeError(qint32 number, QString description);

    qint32 number() const noexcept { return number_; }
    const QString& description() const noexcept { return description_; }
    /// The number and the description, in UTF-8.
    const char* what() const noexcept override { return what_.constData(); }

 private:
    qint32 number_;
    QString description_;
    QByteArray what_;
};

/// The last skipped failure, readable until it is cleared.
class ErrorState final {
 public:
    /// 0 while no failure is pending.
    qint32 Number() const noexcept { return number_; }
    const QString& Description() const noexcept { return description_; }
    bool pending() const noexcept { return number_ != 0; }

    void Clear() noexcept;
    void set(const RuntimeError& failure);

 private:
    qint32 number_ = 0;
    QString description_;
};

/// The only instance, for the main thread alone.
extern ErrorState Err;

/// Runs one statement and skips its failure, which stays readable in `Err`. Only for failures that are meant
/// to be ignored, one statement for each call.
/// @return true if the statement succeeded.
template <typename Statement>
bool skipFailure(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
        return true;
    } catch (const RuntimeError& failure) {
        Err.set(failure);
        return false;
    }
}
