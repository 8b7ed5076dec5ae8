#pragma once

#include <QDialog>
#include <memory>

#include "platform/ado.h"
#include "toolkit/ListView.h"

namespace Ui {
class DictionaryList;
}
class DictionaryRecord;

/// What the list window of a dictionary shows and where its rows come from.
struct DictionaryListSource {
    QString caption;
    QString sql;
    QString idColumn;
    QString nameColumn;
    QString newTip{};   ///< tool tip of the button for a new record
    QString editTip{};  ///< tool tip of the button for editing
};

/// The window with all records of a dictionary, from which they are added and renamed. No routine
/// handles a failure of the database.
class DictionaryList : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY(DictionaryList)

 public:
    ~DictionaryList() override;

    /// Fills the list anew, in the order of the database. The first row is the selected one then.
    /// @throws RuntimeError 94 when a name is Null, database failures.
    void Refresh_List();

 protected:
    /// Leaves the list empty: a class of this kind fills it at the end of its own constructor.
    DictionaryList(DictionaryListSource source, QWidget* parent);

    /// The record window of this dictionary, hidden.
    virtual std::unique_ptr<DictionaryRecord> makeRecord() = 0;
    /// Lets the user edit the selected record and brings the list up to date.
    virtual void editRecord() = 0;
    /// Gives a row that has been filled its colour; `records` stands on its record.
    virtual void paint(const ListItem& row, const ado::Recordset& records);
    /// Whether the edit button is to be enabled after a fill of so many records.
    virtual bool canEdit(qint32 recordCount) const;

    /// Loads the record window and shows the selected record in it until the user has done with it.
    /// @return false, with nothing shown, when no row is selected.
    bool editSelected();
    void unloadRecord();

    void keyPressEvent(QKeyEvent* event) override;

 private:
    void addRecord();
    DictionaryRecord& loadRecord();

    DictionaryListSource source_;
    std::unique_ptr<Ui::DictionaryList> ui_;
    std::unique_ptr<DictionaryRecord> record_;
};
