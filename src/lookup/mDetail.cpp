#include "lookup/mDetail.h"

#include <optional>

#include "core/stahniSoubor.h"
#include "lookup/Module2.h"
#include "lookup/mCSFD.h"
#include "lookup/mModInetPic.h"
#include "lookup/webText.h"
#include "platform/Outside.h"
#include "platform/errors.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

QString inData(const QString& fileName) {
    return paths::inProgramFolder(QString(u"\\data\\"_s + fileName));
}

/// Hides the wait panel however a reading ends.
class WaitPanel {
 public:
    explicit WaitPanel(csfd::DetailWindow& window) : window_(window) { window_.showWait(); }
    ~WaitPanel() { window_.hideWait(); }
    WaitPanel(const WaitPanel&) = delete;
    WaitPanel& operator=(const WaitPanel&) = delete;

 private:
    csfd::DetailWindow& window_;
};

/// One reading of a film. `step` skips failures until the line of country, year and length has been read.
class Reading {
 public:
    Reading(const Sites& sites, csfd::Buffers& buffers, csfd::DetailWindow& window)
        : sites_(sites), buffers_(buffers), window_(window) {}

    void run() {
        const WaitPanel wait(window_);
        window_.repaintFields();
        window_.yield();
        if (!filmIsSelected() || !readPlainPage()) return;
        readFullPage();
        readCzechTitle();
        readOriginalTitle();
        readOtherTitles();
        readGenre();
        readOrigin();
        readDirector();
        readCast();
        readDescription();
        readPoster();
        yieldAndRepaint();
    }

 private:
    template <typename Statement>
    void step(Statement&& statement) {
        if (skipping_) {
            skipFailure(statement);
        } else {
            statement();
        }
    }

    void set(LookupField field, const QString& text) {
        step([&] { window_.setText(field, text); });
    }
    QString cut(const QString& startMarker, const QString& endMarker) const {
        return NajdiTextPolozky(buffers_.page, startMarker, endMarker);
    }
    void yieldAndRepaint() {
        window_.yield();
        window_.repaintFields();
    }
    void stage(const QString& percent) {
        window_.showStage(u"Hotovo z "_s + percent);
        window_.yield();
    }
    void takePage(const QString& fileName) {
        window_.yield();
        step([&] { buffers_.page = csfd::Page(NactiUTF8Soubor(inData(fileName))); });
        window_.yield();
    }
    QString filmAddress() const {
        if (!path_) throw RuntimeError(errors::objectNotSet);
        return sites_.filmDb + u"/film/"_s + *path_;
    }

    bool filmIsSelected() {
        int row = 0;
        step([&] { row = window_.selectedRow(); });  // fails on an empty list, which counts as a row
        // Read once: the user may go to another row meanwhile.
        step([&] { path_ = window_.selectedPath(); });
        if (row != -1) return true;
        MsgBox(u"Není vybraný film v seznamu nalezených."_s, boxStyle::information);
        return false;
    }

    /// The plain page holds the key to the full one.
    bool readPlainPage() {
        const QString file = u"detailsmall.find"_s;
        bool fetched = true;
        step([&] { fetched = csfd::StahniDetail(filmAddress(), file); });
        if (!fetched) return false;
        takePage(file);
        return true;
    }

    void readFullPage() {
        const QString file = u"detail.find"_s;
        const QString key = csfd::detailKey(buffers_.page);
        stage(u"30%"_s);
        bool fetched = true;
        step([&] { fetched = csfd::StahniDetail(filmAddress() + u"?text="_s + key, file); });
        if (fetched) takePage(file);  // else the plain page has to do
        stage(u"60%"_s);
    }

    void readCzechTitle() {
        set(LookupField::czechTitle,
            cut(u"<h1 style='font-size: 18px;font-weight:bold;color: #000000;font-family: "
                "Tahoma;display:inline'>"_s,
                u"</h1>"_s));
        yieldAndRepaint();
    }

    void readOriginalTitle() {
        const QString file = u"detailimdb.find"_s;
        const QString address = sites_.filmDb2 + u"/title/"_s;
        const QString identifier = NajdiURLPolozky(buffers_.page, u"<a href=\""_s + address);
        if (identifier.isEmpty() || !csfd::StahniDetail(address + identifier, file)) return;
        step([&] { buffers_.otherPage = NactiUTF8Soubor(inData(file)); });
        const QString title = NajdiTextPolozky(csfd::Page(buffers_.otherPage), u"<title>"_s, u"</title>"_s);
        buffers_.otherPage.clear();
        set(LookupField::originalTitle, csfd::titleWithoutYear(title));
    }

    void readOtherTitles() {
        const csfd::OtherTitles other = csfd::ZpracujDalsiNazvy(
            cut(u"<span style='font-size: 18px;font-weight:bold;color: #000000;font-family: Tahoma;'>"_s,
                u"</table>             <br>"_s));
        if (other.any) window_.clearOtherTitles();
        for (const QString& title : other.titles) {
            window_.addOtherTitle(title);
            set(LookupField::originalTitle, title);
        }
        stage(u"65%"_s);
    }

    void readGenre() {
        set(LookupField::genre, cut(u"<br>   <b>"_s, u"&nbsp;<br>"_s).replace(u" / "_s, u", "_s));
        yieldAndRepaint();
    }

    void readOrigin() {
        csfd::Origin origin;
        if (csfd::cutOrigin(cut(u"&nbsp;<br>"_s, u"<"_s), origin)) {
            skipping_ = false;
            set(LookupField::length, origin.length);
            window_.repaintFields();
            set(LookupField::year, origin.year);
            window_.repaintFields();
            set(LookupField::country, origin.country);
            window_.repaintFields();
        }
        window_.yield();
    }

    void readDirector() {
        const csfd::Page links(cut(u"<b>Režie:</b>"_s, u"<br>"_s));
        set(LookupField::director, OdebratTagy(NajdiTextPolozky(links, u">"_s, u"</a>"_s)));
        yieldAndRepaint();
    }

    void readCast() {
        QString cast = csfd::castOf(cut(u"<b>Hrají: </b>"_s, u"<br>&nbsp;<br></td>"_s));
        step([&] {
            // Removing the last separator fails for a film without a cast.
            if (cast.isEmpty()) throw RuntimeError(errors::invalidCall);
            cast.chop(2);
        });
        set(LookupField::cast, cast);
        yieldAndRepaint();
    }

    void readDescription() {
        set(LookupField::description,
            csfd::descriptionOf(cut(u"<span class='komentar_font' style='text-align:justify;width:700px;'>"_s,
                                    u"</span>"_s)));
        window_.yield();
    }

    void readPoster() {
        const qsizetype found = buffers_.page.upper().indexOf(u"POSTERS");
        if (found < 0) {
            window_.showPosterChoice();
            window_.untickPosterChoice();
            return;
        }
        QString address = buffers_.page.text().sliced(found);
        step([&] {
            const qsizetype blank = address.indexOf(u' ');
            if (blank < 0) throw RuntimeError(errors::invalidCall);
            address.truncate(blank);
        });
        address.remove(u'"').remove(u'\'');
        set(LookupField::picture, sites_.filmDb + u'/' + address);
        // A file that is not a picture never ends the reading; the field then keeps the address.
        skipFailure([&] {
            window_.setText(LookupField::picture,
                            NactiWebObrazek(window_.text(LookupField::picture),
                                            [this](const QString& path) { window_.showPicture(path); }));
        });
        window_.showPosterChoice();
    }

    const Sites& sites_;
    csfd::Buffers& buffers_;
    csfd::DetailWindow& window_;
    std::optional<QString> path_;
    bool skipping_ = true;
};

}  // namespace

bool csfd::StahniDetail(const QString& url, const QString& fileName) {
    if (StahniSoubor(url, inData(fileName))) return true;
    MsgBox(u"Pri detailu došlo k chybě chybe."_s);
    return false;
}

void csfd::nactiDetail(const Sites& sites, Buffers& buffers, DetailWindow& window) {
    Reading(sites, buffers, window).run();
}
