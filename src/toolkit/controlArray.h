#pragma once

#include <QString>
#include <QWidget>
#include <array>

/// The controls named `name_0`, `name_1`, … of a form, by index.
template <typename Control, std::size_t Count>
std::array<Control*, Count> controlArray(const QWidget& form, const QString& name) {
    std::array<Control*, Count> controls{};
    for (std::size_t index = 0; index < Count; ++index) {
        controls[index] = form.findChild<Control*>(name + QLatin1Char('_') + QString::number(index));
        Q_ASSERT(controls[index] != nullptr);
    }
    return controls;
}
