#pragma once

#include "film/DictionaryList.h"

/// Lists all genres, each in its own colour.
class frmZanry final : public DictionaryList {
    Q_OBJECT

 public:
    /// Fills the list. @throws RuntimeError as Refresh_List does.
    explicit frmZanry(QWidget* parent = nullptr);

 protected:
    std::unique_ptr<DictionaryRecord> makeRecord() override;
    void editRecord() override;
    void paint(const ListItem& row, const ado::Recordset& records) override;
    bool canEdit(qint32 recordCount) const override;
};
