#pragma once

#include <array>

#include "support/TemporaryProgram.h"
#include "support/windows.h"

inline constexpr std::array lineBoxes = {"txtUSREGNUM", "txtUSNAME", "txtUSPHONE", "txtUSMAIL"};
inline constexpr std::array pageBoxes = {"txtUSADR", "txtUSPOZN"};

/// The windows of the lending module over a catalogue of their own.
class RentalTest : public TemporaryProgram {
 protected:
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
