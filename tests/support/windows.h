#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <stdexcept>

#include "toolkit/ListView.h"

/// A control of a window by name.
template <typename Control>
Control& control(const QWidget& window, const char* name) {
    auto* found = window.findChild<Control*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
}

inline void click(const QWidget& window, const char* button) {
    QTest::mouseClick(&control<QAbstractButton>(window, button), Qt::LeftButton);
}

/// Does what opens a modal window, and goes through the steps in that window, which end it.
inline void inModalWindow(const std::function<void()>& open, const std::function<void(QWidget&)>& steps) {
    bool opened = false;
    QTimer opening;
    opening.setSingleShot(true);
    opening.callOnTimeout(QApplication::instance(), [&] {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr) return;
        opened = QTest::qWaitForWindowActive(window);
        steps(*window);
        EXPECT_FALSE(window->isVisible());
        window->close();
    });
    opening.start(0);
    open();
    EXPECT_TRUE(opened);
}

/// The rows of a list in order: key and cells, joined by "|".
inline QStringList rowsOf(ListView& list) {
    QStringList rows;
    for (int row = 0; row < list.count(); ++row) {
        rows += list.itemAt(row).key() + QLatin1Char('|') + list.itemAt(row).text();
        for (int column = 1; column < list.columns(); ++column)
            rows.last() += QLatin1Char('|') + list.itemAt(row).subItem(column);
    }
    return rows;
}

/// The visible window of a kind; null when there is none, and when there are several.
template <typename Window>
Window* shownWindow() {
    QList<Window*> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* wanted = qobject_cast<Window*>(window); wanted != nullptr && wanted->isVisible())
            windows += wanted;
    }
    return windows.size() == 1 ? windows.first() : nullptr;
}
