#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>
#include <ostream>

/// Readable values in the messages of failing tests.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << bytes.toHex(' ').toStdString();
}

/// What a function makes of texts, each told as "from→to".
template <typename Convert>
void expectEach(Convert&& convert, std::initializer_list<QStringView> conversions) {
    for (const QStringView each : conversions) {
        const qsizetype arrow = each.indexOf(u'→');
        const QString from = each.first(arrow).toString();
        EXPECT_EQ(convert(from), each.sliced(arrow + 1).toString()) << from.toStdString();
    }
}
