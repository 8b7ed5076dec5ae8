#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class DictionaryRecord;
}

/// What the record window of a dictionary shows and where its record is.
struct DictionaryRecordSource {
    QString caption;
    QString nameColumn;
    QString loadSql;  ///< up to the record's id
    QString saveSql;  ///< up to the record's id
};

/// The window for one record of a dictionary: its name, to be saved or left as it was. No routine
/// handles a failure of the database.
class DictionaryRecord : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY(DictionaryRecord)

 public:
    ~DictionaryRecord() override;

    /// The record's id; 0 for a record that is not stored yet.
    qint32 zaznam() const noexcept { return zaznam_; }
    void setZaznam(qint32 id) noexcept { zaznam_ = id; }

    /// Shows the stored name of the record.
    /// @throws RuntimeError 94 when the name is Null, 3021 when there is no such record, database failures.
    void ReadData();

    /// Whether the name has at least 3 characters without the blanks around it. The field turns white then,
    /// else pink.
    bool Kontrola();

 protected:
    DictionaryRecord(DictionaryRecordSource source, QWidget* parent);

 private:
    void save();
    void store() const;

    DictionaryRecordSource source_;
    qint32 zaznam_ = 0;
    std::unique_ptr<Ui::DictionaryRecord> ui_;
};
