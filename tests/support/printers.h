#pragma once

#include <QString>
#include <ostream>

#include "platform/DbValue.h"

/// How failing tests show Qt's values.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    *out << bytes.toHex(' ').toStdString();
}

inline void PrintTo(const DbValue& value, std::ostream* out) {
    if (value.isNull()) {
        *out << "Null";
    } else if (std::holds_alternative<QByteArray>(value.content())) {
        *out << value.toBytes().size() << " bytes";
    } else {
        *out << value.toText().toStdString();
    }
}
