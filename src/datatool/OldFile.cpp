#include "datatool/OldFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

#include "datatool/Interruption.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pageSize = 4096;
constexpr qsizetype versionOffset = 20;
constexpr char jet3 = 0;
constexpr char jet4 = 1;
constexpr auto secondsForMegabyte = std::chrono::seconds(1);

[[noreturn]] void refuse(const QString& path, const QString& what) {
    throw RuntimeError(errors::invalidCall,
                       u"Starý soubor %1 nelze převést: %2"_s.arg(QDir::toNativeSeparators(path), what));
}

QString located(const QString& program) {
    QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty()) {
        throw RuntimeError(
            errors::fileNotFound,
            u"K převodu starých souborů je potřeba balíček mdbtools a ten není nainstalovaný: "
            "chybí program %1. Na Debianu jej správce nainstaluje příkazem: apt install mdbtools"_s.arg(
                program));
    }
    return path;
}

/// The limits for our own program.
ProgramLimits ownLimits(ProgramLimits limits) {
#if defined(__SANITIZE_ADDRESS__)
    limits.memory = 0;  // the sanitizer reserves terabytes
#endif
    return limits;
}

/// Adds the file being read to the failures of a program.
template <typename Work>
auto reading(const QString& path, Work&& work) {
    try {
        return work();
    } catch (const interruption::Interrupted&) {
        throw;
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(),
                           u"%1 (%2)"_s.arg(failure.description(), QDir::toNativeSeparators(path)));
    }
}

}  // namespace

qsizetype placeOf(QStringView name, const QStringList& names) {
    const auto found = std::find_if(names.begin(), names.end(), [name](const QString& candidate) {
        return candidate.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? -1 : found - names.begin();
}

OldPrograms OldPrograms::find() {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString installed = QDir::cleanPath(folder + u"/../lib/kalvera"_s);
    const QString nulls = QStandardPaths::findExecutable(u"kalvera-nulls"_s, {folder, installed});
    if (nulls.isEmpty()) {
        throw RuntimeError(
            errors::fileNotFound,
            u"K převodu starých souborů je potřeba program kalvera-nulls a ten ve složce %1 ani %2 "
            "není. Sestavuje se jen tam, kde je knihovna libmdb (na Debianu balíček mdbtools-dev)."_s.arg(
                QDir::toNativeSeparators(folder), QDir::toNativeSeparators(installed)));
    }
    return {located(u"mdb-tables"_s), located(u"mdb-count"_s), located(u"mdb-export"_s), nulls, {}};
}

void OldFile::checkHeader() const {
    QFile file(path_);
    const QFileInfo info(path_);
    if (!info.isFile()) refuse(path_, u"soubor tam není."_s);
    if (!file.open(QFile::ReadOnly)) refuse(path_, u"soubor nelze číst."_s);
    if (info.size() == 0) refuse(path_, u"soubor je prázdný."_s);
    const QByteArray header = file.read(versionOffset + 1);
    if (header.size() <= versionOffset || !header.startsWith(QByteArray("\0\1\0\0Standard ", 13)))
        refuse(path_, u"není to databáze Jet."_s);
    if (header[versionOffset] != jet4 || header.sliced(13, 3) != "Jet") {
        refuse(path_, header[versionOffset] == jet3
                          ? u"je ve starším formátu Jet 3 (Access 97); převést lze jen Jet 4."_s
                          : u"je v novějším formátu (Access 2007); převést lze jen Jet 4."_s);
    }
    if (info.size() % pageSize != 0)
        refuse(path_, u"je useknutý, jeho délka není násobkem %1."_s.arg(pageSize));
}

OldFile::OldFile(const QString& path, const OldPrograms& programs) : path_(path), programs_(programs) {
    checkHeader();
    const qint64 length = QFileInfo(path).size();
    programs_.limits.time += secondsForMegabyte * (length >> 20);
    programs_.limits.memory += length;
    lister_ = std::make_unique<ChildProgram>(programs_.tables, QStringList{u"-1"_s, path_}, programs_.limits);
}

void OldFile::begin(const QStringList& tables) {
    otherTables_ = reading(
        path_, [this] { return QString::fromUtf8(lister_->readAll()).split(u'\n', Qt::SkipEmptyParts); });
    for (const QString& table : tables) {
        const qsizetype at = placeOf(table, otherTables_);
        if (at < 0) refuse(path_, u"chybí v něm tabulka %1."_s.arg(table));
        tables_ += otherTables_.takeAt(at);
    }
    marks_ = std::make_unique<ProgramRecords>(programs_.nulls, QStringList(path_) + tables_,
                                              ownLimits(programs_.limits));
}

OldTable::OldTable(OldFile& file) : marks_(file.marks_->reader) {
    const QString table = file.tables_.takeFirst();
    isLast_ = file.tables_.isEmpty();
    what_ = u"%1, tabulka %2"_s.arg(QDir::toNativeSeparators(file.path_), table);
    const OldPrograms& programs = file.programs_;
    rows_ = std::make_unique<ProgramRecords>(
        programs.rows,
        QStringList{u"-D"_s, u"%Y-%m-%d %H:%M:%S"_s, u"-T"_s, u"%Y-%m-%d %H:%M:%S"_s, u"-b"_s, u"raw"_s,
                    file.path_, table},
        programs.limits);
    counter_ =
        std::make_unique<ChildProgram>(programs.count, QStringList{file.path_, table}, programs.limits);
}

void OldTable::begin() {
    reading(what_, [this] {
        check(rows_->reader.next(fields_) && marks_.next(markFields_) && markFields_.size() == 1);
        for (const QByteArray& field : fields_)
            columns_ += QString::fromUtf8(field);
        bool isNumber = false;
        lastNumber_ = marks().toLongLong(&isNumber);
        check(isNumber);
        count_ = counter_->readAll().trimmed().toLongLong(&isNumber);
        check(isNumber);
    });
}

void OldTable::check(bool matches) {
    if (matches) return;
    throw RuntimeError(errors::invalidCall,
                       u"Dvě čtení téže tabulky se rozcházejí, soubor je asi poškozený."_s);
}

bool OldTable::next() {
    return reading(what_, [this] {
        const bool isRow = rows_->reader.next(fields_);
        check(marks_.next(markFields_));
        if (!isRow) {
            QByteArrayList nothing;
            check(marks() == "end" && (!isLast_ || !marks_.next(nothing)));
            return false;
        }
        check(fields_.size() == columns_.size() && marks().size() == columns_.size());
        check(marks().count('T') == markFields_.size() - 1);
        for (qsizetype column = 0; column < columns_.size(); ++column)
            check(marks()[column] != 'N' || fields_[column].isEmpty());
        return true;
    });
}

std::optional<QByteArrayView> OldTable::value(qsizetype column) const {
    if (marks()[column] == 'N') return std::nullopt;
    if (marks()[column] != 'T') return fields_[column];
    return markFields_[QByteArrayView(marks()).first(column + 1).count('T')];
}
