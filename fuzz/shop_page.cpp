// The shop's list page and a film's page: fields, or one of the failures that a link may cause.

#include <QMap>

#include "fuzzText.h"
#include "lookup/mObchod.h"
#include "platform/Outside.h"
#include "platform/errors.h"

namespace {

class NoWeb final : public Outside {
 public:
    BoxAnswer messageBox(const QString&, int, const QString&, QObject*) override { return BoxAnswer::ok; }
    QString openFile(const FileDialogRequest&, QObject*) override { return {}; }
    QString saveFile(const FileDialogRequest&, QObject*) override { return {}; }
    bool openWithDesktop(const QString&) override { return false; }
    QStringList printers() override { return {}; }
    void setPrinter(const QString&) override {}
    void printPicture(const PicturePage&) override {}
    void printPages(const QString&, const std::function<void(QPagedPaintDevice&)>&, QObject*) override {}
    QDateTime now() override { return {}; }
    bool download(const QString&, const QString&) override { return false; }
};

class Window final : public obchod::DetailWindow {
 public:
    QString text(LookupField field) const override { return fields.value(field); }
    void setText(LookupField field, const QString& text) override { fields[field] = text; }
    void showPicture(const QString&) override {}
    void repaintPicture() override {}
    void stopBrowser() override {}
    void showWait() override {}
    void hideWait() override { done = true; }
    void yield() override {}

    QMap<LookupField, QString> fields;
    bool done = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const QString page = fuzzText(data, size);
    try {
        for (const ListEntry& film : obchod::NactiSeznamObchod(page))
            require(!film.text.contains(u'<') && !film.text.contains(u'>'));
    } catch (const RuntimeError& failure) {
        require(failure.number() == errors::invalidCall || failure.number() == errors::typeMismatch ||
                failure.number() == errors::overflow);
    }
    const NoWeb outside;
    Window window;
    obchod::NactiDetailObchod(page, QStringLiteral("http://shop"), window);
    require(window.done && window.fields.size() == 10);
    require(window.text(LookupField::picture).isEmpty());
    return 0;
}
