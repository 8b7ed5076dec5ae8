#include "toolkit/icons.h"

#include <QAbstractButton>
#include <QAction>
#include <QHash>

using namespace Qt::StringLiterals;

namespace {

template <typename Control>
void placeIn(const QWidget& form) {
    for (Control* control : form.findChildren<Control*>()) {
        const QString name = control->property("iconName").toString();
        if (!name.isEmpty()) control->setIcon(icons::named(name));
    }
}

}  // namespace

QIcon icons::named(const QString& name) {
    // Copies of an icon share what has been drawn of it.
    static QHash<QString, QIcon> known;
    auto found = known.find(name);
    if (found == known.end()) found = known.insert(name, QIcon(u":/icons/"_s + name + u".svg"_s));
    return *found;
}

void icons::place(QWidget& form) {
    placeIn<QAbstractButton>(form);
    placeIn<QAction>(form);
}
