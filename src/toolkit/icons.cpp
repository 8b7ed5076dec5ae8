#include "toolkit/icons.h"

#include <QAbstractButton>
#include <QAction>
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QImageReader>
#include <QSet>

#include "toolkit/shades.h"

using namespace Qt::StringLiterals;

namespace {

// Line colours of the icons and their replacements in a dark theme, visible on dark and on white.
constexpr struct {
    const char* onLight;
    const char* onDark;
} lines[] = {{"#3b4a5a", "#9fb1c6"}, {"#016401", "#4fb84f"}};

// Sizes in pixels, including those for high-resolution screens.
constexpr int sizes[] = {16, 20, 24, 30, 32, 36, 48, 64, 72, 96};

QString path(const QString& name) {
    return u":/icons/"_s + name + u".svg"_s;
}

QIcon forDarkGround(const QString& name) {
    QFile file(path(name));
    if (!file.open(QFile::ReadOnly)) return {};
    QByteArray drawing = file.readAll();
    for (const auto& line : lines)
        drawing.replace(line.onLight, line.onDark);
    QIcon icon;
    for (const int size : sizes) {
        QBuffer bytes(&drawing);
        QImageReader reader(&bytes, "svg");
        reader.setScaledSize(QSize(size, size));
        icon.addPixmap(QPixmap::fromImage(reader.read()));
    }
    return icon;
}

template <typename Control>
void placeIn(const QWidget& form) {
    for (Control* control : form.findChildren<Control*>()) {
        const QString name = control->property("iconName").toString();
        if (!name.isEmpty()) control->setIcon(icons::named(name));
    }
}

}  // namespace

QIcon icons::named(const QString& name) {
    // Copies of a QIcon share its cached pixmaps.
    static QHash<QString, QIcon> known;
    // These have a background of their own.
    static const QSet<QString> pictures = {u"app"_s, u"splash"_s, u"newversion"_s};
    auto found = known.find(name);
    if (found == known.end()) {
        const bool dark = shades::isDark(QGuiApplication::palette()) && !pictures.contains(name);
        found = known.insert(name, dark ? forDarkGround(name) : QIcon(path(name)));
    }
    return *found;
}

void icons::place(QWidget& form) {
    placeIn<QAbstractButton>(form);
    placeIn<QAction>(form);
}
