#pragma once

#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>
#include <optional>

#include "film/frmDVD.h"
#include "support/TemporaryProgram.h"
#include "support/pictures.h"
#include "support/windows.h"

/// The film editor over a catalogue of its own, its controls found by name.
class EditorTest : public TemporaryProgram {
 protected:
    frmDVD& editor() {
        if (!editor_) editor_.emplace();
        return *editor_;
    }
    /// A fresh editor on a film, as its opener makes it.
    frmDVD& open(qint32 id) {
        editor_.reset();
        editor().Inicializuj(id);
        editor().show();
        return editor();
    }

    template <typename Control>
    Control& control(const char* name) {
        return ::control<Control>(editor(), name);
    }
    void type(const char* box, const QString& text) { control<QLineEdit>(box).setText(text); }
    QString typed(const char* box) { return control<QLineEdit>(box).text(); }
    void press(const char* button) { control<QPushButton>(button).click(); }
    ImageFrame& frame(int picture) {
        return control<ImageFrame>(picture == 0 ? "imgObalDesk_0" : "imgObalDesk_1");
    }

    /// A picture file of one colour in a format that Qt writes.
    QString picture(const QString& name, const char* format = "JPG", QRgb colour = qRgb(200, 30, 30)) const {
        write(name, pictureOf(colour, format));
        return at(name);
    }

    /// All columns of a film, Null as "-", joined by ";".
    QString row(qint32 id) const {
        const sqlite::Database database(catalogue(), sqlite::Database::Mode::readWrite);
        const sqlite::Statement statement(database, "SELECT * FROM tDVD WHERE DVDID=?1");
        statement.bind(1, qint64{id});
        if (!statement.step()) return QStringLiteral("no row");
        QStringList values;
        for (int at = 0; at < sqlite3_column_count(statement.handle()); ++at)
            values += statement.isNull(at) ? QStringLiteral("-") : statement.text(at);
        return values.join(u';');
    }

 private:
    std::optional<frmDVD> editor_;
};
