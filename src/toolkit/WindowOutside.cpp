#include "toolkit/WindowOutside.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QUrl>
#include <QWindow>
#include <algorithm>

#include "platform/download.h"
#include "platform/errors.h"
#include "toolkit/DownloadWindow.h"
#include "toolkit/WaitCursor.h"
#include "toolkit/appTitle.h"
#include "toolkit/icons.h"
#include "toolkit/pagePrinter.h"
#include "toolkit/printQueue.h"
#include "toolkit/twips.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int iconMask = 0x70;
constexpr int buttonsMask = 0x0F;
constexpr std::chrono::milliseconds patience{1000};  // before a download shows its window

struct BoxIcon {
    QMessageBox::Icon kind;  ///< selects the desktop's sound
    const char* name;
    QString spoken;  ///< by screen readers
};

BoxIcon iconOf(int style) {
    switch (style & iconMask) {
        case boxStyle::critical:
            return {QMessageBox::Critical, "box-critical", u"Chyba"_s};
        case boxStyle::question:
            return {QMessageBox::Question, "box-question", u"Dotaz"_s};
        case boxStyle::exclamation:
            return {QMessageBox::Warning, "box-exclamation", u"Upozornění"_s};
        case boxStyle::information:
            return {QMessageBox::Information, "box-information", u"Informace"_s};
        default:
            return {QMessageBox::NoIcon, nullptr, {}};
    }
}

/// Keeps the title, which can say more than the text, from being cut off: Qt sizes the box by the text alone.
void widenForTitle(QMessageBox& box) {
    const int iconAndButtons = twips::scaled(140);  // beside the title in a window frame
    QFont bold = box.font();
    bold.setBold(true);
    const int width = QFontMetrics(bold).horizontalAdvance(box.windowTitle()) + iconAndButtons;
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr) return;
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Minimum), grid->rowCount(), 0,
                  1, grid->columnCount());
}

/// File types in Czech; Qt's dialog has them in English only.
class CzechKinds final : public QFileIconProvider {
 public:
    QString type(const QFileInfo& file) const override {
        if (file.isDir()) return u"Složka"_s;
        return file.suffix().isEmpty() ? u"Soubor"_s : u"Soubor "_s + file.suffix().toUpper();
    }
};

/// Runs a file dialog. @return the chosen path; "" when cancelled.
QString ask(QFileDialog& dialog, const FileDialogRequest& request) {
    dialog.setNameFilter(request.filterName.contains(request.pattern)
                             ? request.filterName
                             : request.filterName + QStringLiteral(" (%1)").arg(request.pattern));
    CzechKinds kinds;
    dialog.setIconProvider(&kinds);
    dialog.setDefaultSuffix(request.defaultExtension);
    if (dialog.exec() != QDialog::Accepted) return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().value(0));
}

}  // namespace

WindowOutside::WindowOutside() {
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &watch_, [this](const QWindow* now) {
        QWidget* window = now != nullptr ? QWidget::find(now->winId()) : nullptr;
        if (window == nullptr) return;
        used_.removeIf([window](const QPointer<QWidget>& other) { return !other || other == window; });
        used_.prepend(window);
    });
}

QWidget* WindowOutside::windowOf(QObject* owner) const {
    for (auto* widget = qobject_cast<QWidget*>(owner); widget != nullptr; widget = widget->parentWidget()) {
        // A window that is still being made cannot carry a box, but the one that it opens from can.
        if (widget->isVisible()) return widget->window();
    }
    if (QWidget* modal = QApplication::activeModalWidget(); modal != nullptr) return modal;
    if (QWidget* active = QApplication::activeWindow(); active != nullptr) return active;
    // After a window was closed, none is active until the desktop has chosen the next one.
    const auto last = std::find_if(used_.begin(), used_.end(), [](const QPointer<QWidget>& window) {
        return window != nullptr && window->isVisible();
    });
    return last != used_.end() ? *last : nullptr;
}

BoxAnswer WindowOutside::messageBox(const QString& text, int style, const QString& title, QObject* owner) {
    const bool question = (style & buttonsMask) == boxStyle::yesNo;
    const BoxIcon icon = iconOf(style);
    QMessageBox box(icon.kind, title.isEmpty() ? appTitle() : title, text,
                    question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, windowOf(owner));
    // Film titles may contain what looks like markup.
    box.setTextFormat(Qt::PlainText);
    widenForTitle(box);
    // Shows the program's own icon. setIconPixmap would reset the box's kind, so the label is set directly.
    if (auto* label = box.findChild<QLabel*>(u"qt_msgboxex_icon_label"_s);
        label != nullptr && icon.name != nullptr) {
        const int size = twips::scaled(40);
        const QIcon drawn = icons::named(QString::fromLatin1(icon.name));
        label->setAccessibleName(icon.spoken);
        label->setPixmap(drawn.pixmap(QSize(size, size), box.devicePixelRatio()));
    }
    for (QAbstractButton* button : box.buttons())
        button->setIcon({});
    if (question) {
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    }
    switch (box.exec()) {
        case QMessageBox::Yes:
            return BoxAnswer::yes;
        case QMessageBox::No:
            return BoxAnswer::no;
        default:
            return question ? BoxAnswer::no : BoxAnswer::ok;
    }
}

QString WindowOutside::openFile(const FileDialogRequest& request, QObject* owner) {
    QFileDialog dialog(windowOf(owner), request.title, request.folder);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return ask(dialog, request);
}

QString WindowOutside::saveFile(const FileDialogRequest& request, QObject* owner) {
    QFileDialog dialog(windowOf(owner), request.title, request.folder);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    return ask(dialog, request);
}

bool WindowOutside::download(const QString& url, const QString& path) {
    Download download(url, path);
    const auto arrived = [&download] {
        const WaitCursor wait;
        return download.wait(patience);
    };
    // The window closes when the download ends. If the user cancels before, nothing is kept.
    if (!arrived()) DownloadWindow(download, windowOf(nullptr)).exec();
    return download.keep();
}

bool WindowOutside::openWithDesktop(const QString& target) {
    const bool web =
        target.startsWith(QStringLiteral("http:")) || target.startsWith(QStringLiteral("https:"));
    return QDesktopServices::openUrl(web ? QUrl(target) : QUrl::fromLocalFile(target));
}

QStringList WindowOutside::printers() {
    listed_ = QPrinterInfo::availablePrinterNames();
    return listed_;
}

void WindowOutside::setPrinter(const QString& name) {
    // A printer removed since it was offered must not be silently replaced by another.
    if (listed_.contains(name) || !QPrinterInfo::printerInfo(name).isNull()) printer_ = name;
}

QPrinterInfo WindowOutside::chosenPrinter() {
    if (!printer_.isEmpty()) {
        const QPrinterInfo chosen = QPrinterInfo::printerInfo(printer_);
        if (chosen.isNull())
            throw RuntimeError(errors::printer, u"Tiskárna %1 už není k dispozici."_s.arg(printer_));
        return chosen;
    }
    const QPrinterInfo usual = QPrinterInfo::defaultPrinter();
    // There may be printers without a default one.
    return usual.isNull() ? QPrinterInfo::printerInfo(QPrinterInfo::availablePrinterNames().value(0)) : usual;
}

void WindowOutside::printPicture(const PicturePage& page) {
    const QPrinterInfo device = chosenPrinter();
    if (device.isNull()) throw RuntimeError(errors::printer);
    const QString refusal = printQueue::refusal(device.printerName());
    if (!refusal.isEmpty()) throw RuntimeError(errors::printer, refusal);
    QPrinter printer(device, QPrinter::HighResolution);
    // Qt takes A4 whatever paper the queue has.
    if (const QPageSize paper = device.defaultPageSize(); paper.isValid()) printer.setPageSize(paper);
    if (!pagePrinter::fits(page, printer) &&
        messageBox(u"Obrázek se celý nevejde na papír v tiskárně (%1).\n\nVytisknout přesto?"_s.arg(
                       printer.pageLayout().pageSize().name()),
                   boxStyle::exclamation | boxStyle::yesNo, page.title, nullptr) != BoxAnswer::yes)
        return;
    const WaitCursor wait;
    pagePrinter::print(page, printer);
}

void WindowOutside::printPages(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint,
                               QObject* owner) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    QPrintDialog dialog(&printer, windowOf(owner));
    if (dialog.exec() != QDialog::Accepted) return;
    if (printer.outputFormat() == QPrinter::NativeFormat) {
        const QString refusal = printQueue::refusal(printer.printerName());
        if (!refusal.isEmpty()) throw RuntimeError(errors::printer, refusal);
    }
    const WaitCursor wait;
    paint(printer);
    if (printer.printerState() == QPrinter::Error) throw RuntimeError(errors::printer);
}

QDateTime WindowOutside::now() {
    return QDateTime::currentDateTime();
}
