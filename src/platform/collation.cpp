#include "platform/collation.h"

#include <QCollator>
#include <QLocale>

namespace {

const QCollator& czech() {
    // Shared: creating a collator costs more than a thousand comparisons.
    static const QCollator collator = [] {
        QCollator made(QLocale(QLocale::Czech, QLocale::CzechRepublic));
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator;
}

}  // namespace

int collation::compare(QStringView left, QStringView right) {
    return czech().compare(left, right);
}

QCollatorSortKey collation::sortKey(const QString& text) {
    return czech().sortKey(text);
}
