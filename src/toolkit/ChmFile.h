#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

struct chmFile;

/// A compiled help file, as the usual viewers read it. Its texts are in Windows-1250.
class ChmFile final {
 public:
    /// A line of the contents or of the index.
    struct Topic {
        QString title;
        QString page;   ///< path within the file; "" for a line without a page
        int depth = 0;  ///< 0 for the outermost lines
    };

    /// Opens the file; one that is missing or no help file is not open afterwards.
    explicit ChmFile(const QString& path);
    ~ChmFile();
    ChmFile(const ChmFile&) = delete;
    ChmFile& operator=(const ChmFile&) = delete;

    bool isOpen() const noexcept { return file_ != nullptr; }
    /// What stands at a path such as "/uvod.html"; empty when there is no such thing.
    QByteArray read(const QString& path) const;
    /// The table of contents, in the order of its lines.
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
