#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QRadioButton>
#include <array>
#include <memory>

#include "core/Sites.h"
#include "film/mFilm.h"
#include "lookup/LookupResult.h"
#include "toolkit/ImageFrame.h"
#include "toolkit/formContent.h"

namespace Ui {
class frmDVD;
}
namespace ado {
class Recordset;
}

/// The film editor: shows and edits one row of `tDVD`; its controls are the only state. It is used for one
/// film: created, `Inicializuj` called with the key, run modally, the two public values read, destroyed.
class frmDVD final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmDVD)

 public:
    /// Fills the lists of genres and departments and starts as for a new film.
    /// @param sites where films are looked up.
    explicit frmDVD(Sites sites, QWidget* parent = nullptr);
    ~frmDVD() override;

    /// Shows the film with the key; 0 for a new one. Failures are skipped and leave their control as for a
    /// new film. A film that is missing or cannot be read is reported in a box; then nothing can be entered,
    /// and nothing is stored over it.
    void Inicializuj(qint32 id);

    void Refresh_ZanrLST();
    void Refresh_OddelCBO();

    /// Key of the film; 0 while it is new and not saved.
    qint32 IDFilmu = 0;
    /// 0 open, or closed by its frame; 1 saved; 2 left with "Storno".
    qint32 Vysledek = 0;

 protected:
    /// Enter and Esc belong to the genre panel while it is open. Esc leaves the editor only when nothing has
    /// been changed in it.
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void findControlArrays();
    void paintGenrePanel();
    void connectButtons();
    void VycistiForm();
    void readFilm();
    void refuseInput();
    void readColumns(const ado::Recordset& films);

    void save();
    void store();
    void setColumns(const ado::Recordset& films);
    void storePictures(ado::Recordset& films);

    void takeGenres();
    void closeGenres();
    void lookUpInShop();
    void lookUpInFilmDatabase();
    void takePreview(const LookupResult& found);
    /// Moves the focus to the first empty one of the fields that a lookup fills, else to "Uložit".
    void goOnAfterLookup();
    void choosePicture(int picture);
    void copyPictureOut(int picture);

    template <std::size_t Count>
    static QString ZapisChk(const std::array<QCheckBox*, Count>& boxes);
    template <std::size_t Count>
    static void NactiChk(const std::array<QCheckBox*, Count>& boxes, const QString& tokens);
    qint32 VratJazyk() const;
    void NastavJazyk(qint32 jazyk);

    /// Index of the chosen department; -1 when none is chosen or text was typed since.
    int departmentIndex() const;

    std::unique_ptr<Ui::frmDVD> ui_;
    Sites sites_;
    bool unread_ = false;  ///< its row could not be read, so the controls do not show it
    bool departmentTyped_ = false;
    formContent::Content shown_;  // content of the controls when the film was opened
    std::array<QRadioButton*, 3> optJazyk_{};
    std::array<QCheckBox*, 5> chkMenu_{};
    std::array<QCheckBox*, 9> chkSound_{};
    std::array<QCheckBox*, 7> chkTitle_{};
    std::array<ImageFrame*, 2> imgObalDesk_{};
};
