#pragma once

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <array>
#include <functional>
#include <stdexcept>

#include "support/TemporaryProgram.h"

/// A control of a window by name.
template <typename Control>
Control& control(const QWidget& window, const char* name) {
    auto* found = window.findChild<Control*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
}

inline constexpr std::array lineBoxes = {"txtUSREGNUM", "txtUSNAME", "txtUSPHONE", "txtUSMAIL"};
inline constexpr std::array pageBoxes = {"txtUSADR", "txtUSPOZN"};

/// The windows of the lending module over a catalogue of their own.
class RentalTest : public TemporaryProgram {
 protected:
    static void click(const QWidget& window, const char* button) {
        QTest::mouseClick(&control<QPushButton>(window, button), Qt::LeftButton);
    }

    /// The texts in the customer form: code, name, telephone, mail, address and note.
    static QStringList entered(const QWidget& form) {
        QStringList texts;
        for (const char* box : lineBoxes)
            texts += control<QLineEdit>(form, box).text();
        for (const char* box : pageBoxes)
            texts += control<QPlainTextEdit>(form, box).toPlainText();
        return texts;
    }
    /// Enters texts in that order, "" where there are no more.
    static void enter(const QWidget& form, const QStringList& texts) {
        int at = 0;
        for (const char* box : lineBoxes)
            control<QLineEdit>(form, box).setText(texts.value(at++));
        for (const char* box : pageBoxes) {
            control<QPlainTextEdit>(form, box).selectAll();
            control<QPlainTextEdit>(form, box).insertPlainText(texts.value(at++));
        }
    }

    /// Does what opens a modal window, and goes through the steps in that window.
    template <typename Open>
    static void inModalWindow(Open&& open, const std::function<void(QWidget&)>& steps) {
        bool opened = false;
        QTimer opening;
        opening.setSingleShot(true);
        opening.callOnTimeout(QApplication::instance(), [&] {
            QWidget* const window = QApplication::activeModalWidget();
            ASSERT_NE(window, nullptr);
            opened = true;
            steps(*window);
            EXPECT_FALSE(window->isVisible());
            window->close();
        });
        opening.start(0);
        open();
        EXPECT_TRUE(opened);
    }

    /// All customers by key, a line for each: key, name, address, telephone, mail, note and code, joined by
    /// "|", Null as "-".
    QString customers() const {
        return text(
            "SELECT ifnull(group_concat(USID || '|' || ifnull(USNAME, '-') || '|' || ifnull(USADR, '-')"
            " || '|' || ifnull(USPHONE, '-') || '|' || ifnull(USMAIL, '-') || '|' || ifnull(USPOZN, '-')"
            " || '|' || ifnull(USREGNUM, '-'), char(10)), '') FROM (SELECT * FROM tUser ORDER BY USID)");
    }
    /// All loans as they were made: customer number, film, lent, and returned where they are.
    QString loans() const {
        return text(
            "SELECT ifnull(group_concat(P_UID || ' ' || P_DVDID || ' ' || PDatPujcky ||"
            " ifnull(' ' || PDatVraceni, ''), ', '), '') FROM (SELECT * FROM tPujcky ORDER BY P_ID)");
    }
};
