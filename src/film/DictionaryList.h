#pragma once

#include <QDialog>
#include <memory>

#include "platform/ado.h"
#include "toolkit/ListView.h"

namespace Ui {
class DictionaryList;
}
class DictionaryRecord;

/// Captions and query of a dictionary's list window.
struct DictionaryListSource {
    QString caption;
    QString sql;
    QString idColumn;
    QString nameColumn;
    QString newTip{};   ///< tool tip of the button for a new record
    QString editTip{};  ///< tool tip of the button for editing
};

/// Lists all records of a dictionary and lets the user add and rename them. Database failures are not handled
/// anywhere in it.
class DictionaryList : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY(DictionaryList)

 public:
    ~DictionaryList() override;

    /// Refills the list in database order and selects the first row.
    /// @throws RuntimeError 94 when a name is Null, database failures.
    void Refresh_List();

 protected:
    /// Leaves the list empty; derived classes fill it at the end of their own constructor.
    DictionaryList(DictionaryListSource source, QWidget* parent);

    /// Creates the record window of this dictionary, hidden.
    virtual std::unique_ptr<DictionaryRecord> makeRecord() = 0;
    /// Lets the user edit the selected record and refills the list.
    virtual void editRecord() = 0;
    /// Colours a filled row; `records` is positioned on its record.
    virtual void paint(const ListItem& row, const ado::Recordset& records);
    /// Whether the edit button is enabled for a list of that many records.
    virtual bool canEdit(qint32 recordCount) const;

    /// Loads the record window and runs it modally on the selected record.
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
