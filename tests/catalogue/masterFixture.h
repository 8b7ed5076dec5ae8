#pragma once

#include <QAction>
#include <QRegularExpression>
#include <optional>

#include "catalogue/frmMaster.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"

/// The main window over a catalogue of its own.
class MasterTest : public TemporaryProgram {
 protected:
    void SetUp() override {
        sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, PuvJm, Zanr, Jazyk) VALUES"
            " (1, '10', 'Žena', 'Woman', 'Drama', 0), (2, '9', 'cesta', NULL, NULL, 1),"
            " (3, NULL, 'Bez čísla', '', '', 0), (4, '12a', 'Čáp', 'Stork', 'Pohádka', 2),"
            " (5, '100', 'Chata', 'Hut', 'Horor', -1);"
            "INSERT INTO tUser (USID, USNAME) VALUES (7, 'Novák'), (12, 'Dvořák');"
            "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky, PDatVraceni) VALUES"
            " (7, 1, '2026-01-02 10:20:30', '2026-01-05 08:00:00'), (7, 2, '2026-02-03 00:00:00', NULL),"
            " (12, 4, '2026-02-04 09:01:02', NULL), (99, 5, '2026-02-05 09:01:02', NULL);");
    }

    frmMaster& window() {
        if (!window_) window_.emplace(Sites{}).show();
        return *window_;
    }
    void closeWindow() { window_.reset(); }
    ListView& list() { return control<ListView>(window(), "lvwList"); }
    void choose(const QString& key) { list().select(list().item(key)); }
    QAction* action(const char* name) { return window().findChild<QAction*>(QString::fromLatin1(name)); }

    /// The numbers of films and of loans in the status bar.
    QString counts() {
        static const QRegularExpression numbers(QStringLiteral("\\d+"));
        const auto shown = [this](const char* panel) { return control<QLabel>(window(), panel).text(); };
        return numbers.match(shown("sbMainPanel_5")).captured() + QLatin1Char(' ') +
               numbers.match(shown("sbMainPanel_6")).captured();
    }
    /// The rows in order, cells joined by "|", with "*" in front of those painted green.
    QStringList rows() {
        QStringList result = rowsOf(list());
        for (int row = 0; row < list().count(); ++row) {
            result[row].remove(0, result[row].indexOf(u'|') + 1);
            result[row].prepend(list().itemAt(row).foreColor() == 91137 ? u'*' : u' ');
        }
        return result;
    }

 private:
    std::optional<frmMaster> window_;
};
