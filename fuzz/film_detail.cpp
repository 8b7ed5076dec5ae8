// A whole reading of a film: the three pages are separated by form feeds. It ends with fields or with the
// one failure that a page may cause.

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include "fuzzText.h"
#include "lookup/mDetail.h"
#include "platform/Outside.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace {

class Pages final : public Outside {
 public:
    QList<QByteArray> pages;

    BoxAnswer messageBox(const QString&, int, const QString&, QObject*) override { return BoxAnswer::ok; }
    QString openFile(const FileDialogRequest&, QObject*) override { return {}; }
    QString saveFile(const FileDialogRequest&, QObject*) override { return {}; }
    bool openWithDesktop(const QString&) override { return false; }
    QStringList printers() override { return {}; }
    void setPrinter(const QString&) override {}
    void printPicture(const PicturePage&) override {}
    void printPages(const QString&, const std::function<void(QPagedPaintDevice&)>&, QObject*) override {}
    QDateTime now() override { return {}; }
    bool download(const QString&, const QString& path) override {
        if (pages.isEmpty()) return false;
        QFile file(path);
        return file.open(QFile::WriteOnly) && file.write(pages.takeFirst()) >= 0;
    }
};

class Window final : public csfd::DetailWindow {
 public:
    int selectedRow() const override { return 0; }
    QString selectedPath() const override { return QStringLiteral("1-FILM/"); }
    QString text(LookupField field) const override { return fields_.value(static_cast<int>(field)); }
    void setText(LookupField field, const QString& text) override { fields_[static_cast<int>(field)] = text; }
    void clearOtherTitles() override {}
    void addOtherTitle(const QString&) override {}
    void showPicture(const QString&) override {}
    void showPosterChoice() override {}
    void untickPosterChoice() override {}
    void showStage(const QString&) override {}
    void showWait() override { waiting = true; }
    void hideWait() override { waiting = false; }
    void repaintFields() override {}
    void yield() override {}

    bool waiting = false;

 private:
    QHash<int, QString> fields_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static QTemporaryDir folder;
    static const bool made = QDir(folder.path()).mkpath(QStringLiteral("data"));
    require(made);
    paths::setProgramFolder(folder.path());
    Pages outside;
    outside.pages = QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\f');
    Window window;
    csfd::Buffers buffers;
    const Sites sites{
        .filmDb = QStringLiteral("http://film"), .filmDb2 = QStringLiteral("http://other"), .shop = {}};
    try {
        csfd::nactiDetail(sites, buffers, window);
    } catch (const RuntimeError& failure) {
        require(failure.number() == errors::invalidCall);
    }
    require(!window.waiting);
    return 0;
}
