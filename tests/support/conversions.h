#pragma once

#include <gtest/gtest.h>

#include "support/printers.h"

/// What a function makes of texts, each told as "from→to".
template <typename Convert>
void expectEach(Convert&& convert, std::initializer_list<QStringView> conversions) {
    for (const QStringView each : conversions) {
        const qsizetype arrow = each.indexOf(u'→');
        const QString from = each.first(arrow).toString();
        EXPECT_EQ(convert(from), each.sliced(arrow + 1).toString()) << from.toStdString();
    }
}
