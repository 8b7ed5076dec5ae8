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

/// The main window: the list of all films and the commands on it. It edits nothing itself; it passes the key
/// of a film to another window and updates the list afterwards.
class frmMaster final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMaster)

 public:
    /// Fills the list by Czech title and restores the column widths.
    /// @param sites for the windows opened from here.
    explicit frmMaster(Sites sites, QWidget* parent = nullptr);
    ~frmMaster() override;

    /// Refills the list with all films ordered by a column of `tDVD`, colours those on loan and shows both
    /// counts. The first failure ends the fill and is shown in a box; rows read so far stay.
    void NactiSeznam(const QString& sortColumn);

    /// Updates the row of one film, or adds one at the end, and colours all films on loan again. Panel 5
    /// keeps its count. Failures are skipped.
    void ObnovZaznam(qint32 id);

    /// Opens the film editor for one film, 0 for a new one, and updates its row if it was saved.
    void OtevritPridatZaznam(qint32 id);

    /// Returns the selected film, after asking, if its row shows a customer; else opens a dialog to lend it
    /// and updates its row once that is answered.
    void PujcitVratit();
    /// Closes the first open loan of a film. Failures are skipped.
    void vratitFilm(qint32 id);
    /// Asks, then deletes a film and refills the list by Czech title. Its loans and pictures stay.
    void SmazatZaznam(qint32 id);

    /// Selects the first row that contains a term: mode "CZ" in the Czech title, "PUV" in the loan date,
    /// "KAT" in the number. A box says when there is none.
    void NajdiText(const QString& mode, const QString& term);

    /// Colours every row black, including those on loan.
    void Recolor();

    /// Restores the column widths from the setting `ColSie`. The first invalid width is reported in a box and
    /// ends the routine.
    void SetColSizeStr();

    /// Widths of all columns in twips, each followed by "|".
    QString GetColSizeStr() const;

 protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void buildList();
    void buildStatusBar();
    void buildToolBars();
    void connectCommands();

    /// Colours the films of the open loans and shows their count. The first failure ends the loop silently.
    void paintLoans(ado::Recordset& loans);
    /// Opens a dialog to lend a film.
    void lend(qint32 id, const QString& title);
    /// Offers a newer version; a box says when there is none or no answer.
    void findNewVersion();
    /// Opens the cover search with a title as its term.
    void findCover(const QString& title);
    /// Asks for a term and searches for it; see NajdiText.
    void najit(const QString& mode, const QString& caption);
    void sortByColumn(int column);
    void placeList();
    /// Enables the commands on the selected row if there is one.
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
    std::shared_ptr<SharedUser> user_;  // shared with owned windows, which can outlive this one
};
