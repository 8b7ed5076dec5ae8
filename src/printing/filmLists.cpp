#include "printing/filmLists.h"

#include <optional>

#include "core/forEachRow.h"
#include "platform/Outside.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "printing/mPrintHTM.h"

using namespace Qt::StringLiterals;

namespace {

/// The columns of a simple list, looked up once for all its rows.
struct RowFields {
    explicit RowFields(const ado::Recordset& films)
        : czJm(films.Fields(u"CZJm")),
          zanr(films.Fields(u"Zanr")),
          jazyk(films.Fields(u"Jazyk")),
          katCisl(films.Fields(u"KatCisl")) {}

    ado::Field czJm;
    ado::Field zanr;
    ado::Field jazyk;
    ado::Field katCisl;
};

void addRow(const RowFields& film, qint32 number) {
    PridejRadek(QString::number(number), film.czJm.Value().toText(), film.zanr.Value().toText(),
                GetJazyk(film.jazyk.Value()), film.katCisl.Value().toText());
}

void addBlock(const ado::Recordset& film) {
    QString picture;
    skipFailure([&] {
        const DbValue id = film.Fields(u"Nahled_ID").Value();
        if (!id.isNull() && id.toLong() != 0) picture = PripravNahled(id.toLong());
    });
    const auto text = [&film](QStringView column) { return film.Fields(column).Value().toText(); };
    PridejDetail(text(u"CZJm"), text(u"Zanr"), text(u"Delka"), text(u"Stat"), text(u"Rok"),
                 GetJazyk(film.Fields(u"Jazyk").Value()), text(u"Obsah"), text(u"Herci"), text(u"KatCisl"),
                 picture);
}

}  // namespace

void filmLists::print(const QString& sql, Kind kind, const std::function<void()>& yield) {
    HtmlTelo.clear();
    qint32 number = 0;
    std::optional<RowFields> found;
    const auto fields = [&found](const ado::Recordset& films) -> const RowFields& {
        return found ? *found : found.emplace(films);
    };
    forEachRow(sql, [&](const ado::Recordset& film) {
        ++number;
        // Skipped here, so that events are processed after a film that is left out, too.
        skipFailure([&] { kind == Kind::detailed ? addBlock(film) : addRow(fields(film), number); });
        yield();
    });
    const QString path = paths::inProgramFolder(u"\\data\\test.htm");
    const QByteArray head = kind == Kind::simple ? hlavickaSeznamu() : hlavickaPodrobneho();
    skipFailure([&] { files::write(path, {head, HtmlTelo, konecSeznamu()}); });
    Outside::current().openWithDesktop(path);
    Err.Clear();
}
