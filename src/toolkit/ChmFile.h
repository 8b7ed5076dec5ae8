#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

struct chmFile;

/// A compiled help file (CHM) with texts in Windows-1250.
class ChmFile final {
 public:
    /// An entry of the contents or the index.
    struct Topic {
        QString title;
        QString page;   ///< path within the file; "" for an entry without a page
        int depth = 0;  ///< nesting depth, from 0
    };

    /// Opens the file; see isOpen for the result.
    explicit ChmFile(const QString& path);
    ~ChmFile();
    ChmFile(const ChmFile&) = delete;
    ChmFile& operator=(const ChmFile&) = delete;

    bool isOpen() const noexcept { return file_ != nullptr; }
    /// The content of a path such as "/uvod.html"; empty when there is none.
    QByteArray read(const QString& path) const;
    /// The table of contents, in its order.
    std::vector<Topic> contents() const { return topics(".hhc"); }
    /// The index.
    std::vector<Topic> index() const { return topics(".hhk"); }

 private:
    std::vector<Topic> topics(const char* ending) const;

    struct Close {
        void operator()(chmFile* file) const noexcept;
    };
    std::unique_ptr<chmFile, Close> file_;
};
