#include "core/mDialog.h"

#include <QDir>

#include "core/mFunction.h"
#include "platform/Outside.h"
#include "platform/paths.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

FileDialogRequest jpegRequest(const QString& title, const QString& folder) {
    return {title, u"JPEG Obrazek (*.jpg)"_s, u"*.jpg"_s, folder, u"jpg"_s};
}

QString openPicture(QObject* form, const QString& folderKey) {
    const QString folder = CtiNastaveni(folderKey, paths::programFolder());
    return text::trim(Outside::current().openFile(jpegRequest(u"Načtení obrázku"_s, folder), form));
}

}  // namespace

QString OtevritObal(QObject* form) {
    return openPicture(form, u"Covers"_s);
}

QString OtevritNahled(QObject* form) {
    return openPicture(form, u"Nahled"_s);
}

QString UlozitObrazek(QObject* form) {
    return text::trim(Outside::current().saveFile(jpegRequest(u"Uložení obrázku"_s, QDir::homePath()), form));
}
