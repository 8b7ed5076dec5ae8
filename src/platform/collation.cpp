#include "platform/collation.h"

#include <QCollator>
#include <QLocale>

int collation::compare(QStringView left, QStringView right) {
    // One collator for the whole run: making one costs more than a thousand comparisons.
    static const QCollator collator = [] {
        QCollator made(QLocale(QLocale::Czech, QLocale::CzechRepublic));
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator.compare(left, right);
}
