#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class DictionaryRecord;
}

/// Caption and queries of a dictionary's record window.
struct DictionaryRecordSource {
    QString caption;
    QString nameColumn;
    QString loadSql;  ///< the record's id is appended
    QString saveSql;  ///< the record's id is appended
};

/// Edits the name of one dictionary record. Database failures are not handled anywhere in it.
class DictionaryRecord : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY(DictionaryRecord)

 public:
    ~DictionaryRecord() override;

    /// The record's id; 0 for a record that is not stored yet.
    void setZaznam(qint32 id) noexcept { zaznam_ = id; }

    /// Shows the stored name of the record.
    /// @throws RuntimeError 94 when the name is Null, 3021 when there is no such record, database failures.
    void ReadData();

    /// Whether the name has at least 3 characters without surrounding blanks. Colours the field white if so,
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
