// Opens a page in the browser engine, as somebody who looks at it would, and writes down what is to be seen:
// the text, and the size of each picture that could be shown, "0x0" for one that could not.
//
// page_reader PAGE OUTPUT

#include <QApplication>
#include <QFile>
#include <QSaveFile>
#include <QWebEnginePage>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");  // tests run as root, too
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QWebEnginePage page;
    QObject::connect(&page, &QWebEnginePage::loadFinished, &page, [&](bool loaded) {
        if (!loaded) return QCoreApplication::exit(1);
        page.runJavaScript(
            u"document.body.innerText + '\\n' + Array.from(document.images, i => i.naturalWidth + 'x' + "
            "i.naturalHeight).join(' ')"_s,
            [&](const QVariant& seen) {
                QSaveFile output(arguments.at(2));
                const bool written = output.open(QFile::WriteOnly) &&
                                     output.write(seen.toString().toUtf8()) >= 0 && output.commit();
                QCoreApplication::exit(written ? 0 : 1);
            });
    });
    page.load(QUrl::fromUserInput(arguments.at(1)));
    return QApplication::exec();
}
