#include "OldFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pageSize = 4096;
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

/// Failures of a program, with the file that it was to read.
template <typename Work>
auto reading(const QString& path, Work&& work) {
    try {
        return work();
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(),
                           u"%1 (%2)"_s.arg(failure.description(), QDir::toNativeSeparators(path)));
    }
}

ExportReader::Source sourceOf(const std::unique_ptr<ChildProgram>& program) {
    return [child = program.get()](QByteArray& bytes) { return child->read(bytes); };
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
    const QString nulls = QStandardPaths::findExecutable(u"kalvera-nulls"_s, {folder});
    if (nulls.isEmpty()) {
        throw RuntimeError(
            errors::fileNotFound,
            u"K převodu starých souborů je potřeba program kalvera-nulls a ten ve složce %1 "
            "není. Sestavuje se jen tam, kde je knihovna libmdb (na Debianu balíček mdbtools-dev)."_s.arg(
                QDir::toNativeSeparators(folder)));
    }
    return {located(u"mdb-ver"_s),
            located(u"mdb-tables"_s),
            located(u"mdb-count"_s),
            located(u"mdb-export"_s),
            nulls,
            {}};
}

OldTable::OldTable(const QString& path, const QString& table, const OldPrograms& programs)
    : what_(u"%1, tabulka %2"_s.arg(QDir::toNativeSeparators(path), table)),
      exporter_(
          std::make_unique<ChildProgram>(programs.rows,
                                         QStringList{u"-D"_s, u"%Y-%m-%d %H:%M:%S"_s, u"-T"_s,
                                                     u"%Y-%m-%d %H:%M:%S"_s, u"-b"_s, u"raw"_s, path, table},
                                         programs.limits)),
      marker_(std::make_unique<ChildProgram>(programs.nulls, QStringList{path, table}, programs.limits)),
      counter_(std::make_unique<ChildProgram>(programs.count, QStringList{path, table}, programs.limits)),
      rows_(sourceOf(exporter_)),
      marks_(sourceOf(marker_)) {}

void OldTable::begin() {
    reading(what_, [this] {
        check(rows_.next(fields_) && marks_.next(markFields_) && markFields_.size() == 1);
        for (const QByteArray& field : fields_)
            columns_ += QString::fromUtf8(field);
        bool isNumber = false;
        lastNumber_ = marks().toLongLong(&isNumber);
        check(isNumber);
        count_ = counter_->readAll().trimmed().toLongLong(&isNumber);
        check(isNumber);
    });
}

void OldTable::check(bool matches) const {
    if (matches) return;
    throw RuntimeError(errors::invalidCall,
                       u"Dvě čtení téže tabulky se rozcházejí, soubor je asi poškozený."_s);
}

bool OldTable::next() {
    return reading(what_, [this] {
        const bool isRow = rows_.next(fields_);
        check(marks_.next(markFields_));
        if (!isRow) {
            std::vector<QByteArray> nothing;
            check(marks() == "end" && !marks_.next(nothing));
            return false;
        }
        check(static_cast<qsizetype>(fields_.size()) == columns_.size() && marks().size() == columns_.size());
        check(marks().count('T') == static_cast<qsizetype>(markFields_.size()) - 1);
        for (qsizetype column = 0; column < columns_.size(); ++column)
            check(marks()[column] != 'N' || fields_[static_cast<std::size_t>(column)].isEmpty());
        return true;
    });
}

std::optional<QByteArrayView> OldTable::value(int column) const {
    if (marks()[column] == 'N') return std::nullopt;
    if (marks()[column] != 'T') return fields_[static_cast<std::size_t>(column)];
    const auto text = static_cast<std::size_t>(QByteArrayView(marks()).first(column + 1).count('T'));
    return markFields_[text];
}

OldFile::OldFile(const QString& path, const OldPrograms& programs) : path_(path), programs_(programs) {
    const QFileInfo info(path);
    if (!info.isFile()) refuse(path, u"soubor tam není."_s);
    if (!info.isReadable()) refuse(path, u"soubor nemáte právo číst."_s);
    if (info.size() == 0) refuse(path, u"soubor je prázdný."_s);
    programs_.limits.time += secondsForMegabyte * (info.size() >> 20);
    programs_.limits.memory += info.size();
    // Both at once, as most of their time goes into starting.
    ChildProgram versionTeller(programs_.version, {path}, programs_.limits);
    ChildProgram tablesTeller(programs_.tables, {u"-1"_s, path}, programs_.limits);
    QByteArray version;
    try {
        version = versionTeller.readAll().trimmed();
    } catch (const RuntimeError& failure) {
        refuse(path, u"není to databáze Jet. %1"_s.arg(failure.description()));
    }
    if (version != "JET4") {
        refuse(path, u"je ve formátu %1, převést lze jen JET4 (Access 2000 až 2003)."_s.arg(
                         QString::fromUtf8(version)));
    }
    if (info.size() % pageSize != 0)
        refuse(path, u"je useknutý, jeho délka není násobkem %1."_s.arg(pageSize));
    reading(path,
            [&] { tables_ = QString::fromUtf8(tablesTeller.readAll()).split(u'\n', Qt::SkipEmptyParts); });
}
