#include "datatool/FilmExport.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>

#include "datatool/CsvText.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/outputFile.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 filmsPerReport = 500;

/// Unlike QString::fromUtf8, keeps a byte order mark with which a text begins.
QString textOf(const sqlite::Statement& films, int column) {
    if (films.isNull(column)) return {};
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const auto* utf8 = reinterpret_cast<const char*>(sqlite3_column_text(films.handle(), column));
    const QString text = decoder(QByteArrayView(utf8, sqlite3_column_bytes(films.handle(), column)));
    return text.isNull() ? u""_s : text;
}

QString fieldOf(const sqlite::Statement& films, int column) {
    const bool isNumber = sqlite3_column_type(films.handle(), column) == SQLITE_INTEGER;
    return isNumber ? QString::number(films.number(column)) : csvField::ofText(textOf(films, column));
}

QByteArray header(const sqlite::Statement& films, int columns) {
    QByteArray line;
    for (int column = 0; column < columns; ++column)
        line += QByteArray(column == 0 ? "" : ",") + sqlite3_column_name(films.handle(), column);
    return line + "\r\n";
}

}  // namespace

qint64 filmExport::write(const QString& folder, const QString& csv,
                         const std::function<void(qint64)>& progress) {
    const sqlite::Database database = dataFiles::openCatalogue(folder);
    outputFile::refuseExisting(csv);
    QSaveFile file(csv);
    if (!file.open(QFile::WriteOnly)) outputFile::failWriting(csv);

    const sqlite::Statement rows(database,
                                 "SELECT tDVD.*, OdJm AS Oddeleni, Oddel_ID IS NOT NULL AND ODID IS NULL "
                                 "FROM tDVD LEFT JOIN tOddeleni ON ODID=Oddel_ID ORDER BY DVDID");
    const int columns = sqlite3_column_count(rows.handle()) - 1;
    file.write(header(rows, columns));
    qint64 films = 0;
    while (rows.step()) {
        interruption::check();
        QStringList fields;
        for (int column = 0; column < columns; ++column)
            fields += fieldOf(rows, column);
        // A key without its department must not look like a department without a name.
        if (rows.number(columns) != 0) fields.back().clear();
        file.write((fields.join(u',') + u"\r\n"_s).toUtf8());
        if (++films % filmsPerReport == 0) progress(films);
    }
    if (!files::commit(file)) outputFile::fail(u"Soubor nelze zapsat, je možná plný disk"_s, csv);
    return films;
}
