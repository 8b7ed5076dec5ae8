#pragma once

#include <QString>
#include <QTemporaryDir>

/// A program folder with a catalogue of its own, for as long as it lives.
class BenchCatalogue {
 public:
    /// `films` films with titles in no order, `openLoans` loans of the first of them, and `pictures` small
    /// covers.
    BenchCatalogue(int films, int openLoans, int pictures = 0);

    QString folder() const { return folder_.path(); }
    QString path() const { return folder_.filePath(QStringLiteral("data/data.ddb")); }
    QString picturesPath() const { return folder_.filePath(QStringLiteral("data/pictures.ddb")); }
    /// Makes it the one that the program works on.
    void use() const;

 private:
    QTemporaryDir folder_;
};
