#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>

/// Mends of a pair what can be mended without guessing.
namespace repair {

/// What was done.
struct Report {
    QString folder;
    QStringList steps;  // in Czech
    QStringList left;   // what is still wrong, one line each
    bool lostRows = false;

    bool isWhole() const { return left.isEmpty() && !lostRows; }
    QString text() const;
};

/// Makes a backup beside `folder`, then mends indexes, picture keys, missing numbers and languages, and
/// deletes rows that hold nothing, in one transaction for each file. Of a damaged pair all that can be read
/// is first brought into a new one; the damaged pair is put aside within `folder`. What was done stands in
/// `repair.txt` there too.
/// @param tell is told what is being done, in Czech.
/// @throws RuntimeError when the program holds `folder` or the files cannot be read or written.
Report run(const QString& folder, const QDateTime& now, const std::function<void(const QString&)>& tell);

}  // namespace repair
