#pragma once

#include <QMainWindow>
#include <QMenu>
#include <memory>

#include "core/Sites.h"
#include "toolkit/ListView.h"
#include "toolkit/OwnedWindows.h"

class SharedUser;
class frmKlienti;
class frmOddeleniList;
class frmZanry;
namespace Ui {
class frmMaster;
}
namespace ado {
class Recordset;
}

/// The main window: the list of all films and every command on it. It edits nothing itself; it hands the key
/// of a film to another window and brings the list up to date afterwards.
class frmMaster final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMaster)

 public:
    /// Sets the caption, fills the list by Czech title and gives the columns their stored widths.
    /// @param sites the web sites that its windows ask.
    explicit frmMaster(Sites sites, QWidget* parent = nullptr);
    ~frmMaster() override;

    /// Fills the list anew with all films in the order of a column of `tDVD`, paints those on loan and counts
    /// both. A failure is told in a box once; the rows read so far stay.
    void NactiSeznam(const QString& sortColumn);

    /// Brings the row of one film up to date, or adds it at the end, and paints all films on loan anew. Panel
    /// 5 keeps its count. Failures are skipped.
    void ObnovZaznam(qint32 id);

    /// Runs the film editor for one film, 0 for a new one, and brings its row up to date when it was saved.
    void OtevritPridatZaznam(qint32 id);

    /// Returns the selected film when its row tells a customer, after asking; else opens a dialog to lend it
    /// and brings its row up to date once that is answered.
    void PujcitVratit();
    /// Closes the first open loan of a film. Failures are skipped.
    void vratitFilm(qint32 id);
    /// Asks, then deletes a film and fills the list anew by Czech title. Its loans and pictures stay.
    void SmazatZaznam(qint32 id);

    /// Selects the first row that holds a term: mode "CZ" in the Czech title, "PUV" in the loan date, "KAT"
    /// in the number. A box tells when there is none.
    void NajdiText(const QString& mode, const QString& term);

    /// Paints every row black, also those on loan.
    void Recolor();

    /// Gives the columns the widths stored under `ColSie`. A damaged text is told in a box; the columns
    /// before the damage have their new widths then.
    void SetColSizeStr();

    /// The widths of all columns in twips, each followed by "|".
    QString GetColSizeStr() const;

 protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void buildList();
    void buildStatusBar();
    void buildToolBars();
    void connectCommands();

    /// Paints the films of the open loans and counts them. Failures are skipped; one ends the walk.
    void paintLoans(ado::Recordset& loans);
    /// Opens a dialog to lend a film.
    void lend(qint32 id, const QString& title);
    /// Asks for a newer version and offers it; a box tells when there is none, or no answer.
    void findNewVersion();
    /// Opens the search for covers on a title.
    void findCover(const QString& title);
    /// Asks for a term and looks for it.
    void najit(const QString& mode, const QString& caption);
    void sortByColumn(int column);
    void placeList();
    /// Enables the commands that need a selected row while there is one.
    void enableCommands();
    /// Key of the selected film. @throws RuntimeError 91 when none is selected.
    qint32 selectedFilm() const;

    std::unique_ptr<Ui::frmMaster> ui_;
    Sites sites_;
    QMenu hidMenuListItem_{this};
    ListView* lvwList_;
    OwnedWindows ownedWindows_;
    QPointer<frmZanry> frmZanry_;
    QPointer<frmOddeleniList> frmOddeleniList_;
    QPointer<frmKlienti> frmKlienti_;
    std::shared_ptr<SharedUser> user_;  // also of the windows opened here, which can outlive this one
};
