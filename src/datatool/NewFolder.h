#pragma once

#include <QString>
#include <QStringList>

/// A folder that is created if it is missing, with those above it. Unless `keep` is called, those created are
/// removed with the object; one that meanwhile contains something is kept.
class NewFolder final {
 public:
    /// @throws RuntimeError 75 when the folder cannot be created.
    explicit NewFolder(const QString& path);
    ~NewFolder();
    NewFolder(const NewFolder&) = delete;
    NewFolder& operator=(const NewFolder&) = delete;

    /// Lets the folders stay and syncs their names.
    void keep();

 private:
    QStringList made_;  // innermost first
};
