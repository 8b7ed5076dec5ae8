#pragma once

#include "film/DictionaryList.h"

/// Lists all departments.
class frmOddeleniList final : public DictionaryList {
    Q_OBJECT

 public:
    /// Fills the list. @throws RuntimeError as Refresh_List does.
    explicit frmOddeleniList(QWidget* parent = nullptr);

 protected:
    std::unique_ptr<DictionaryRecord> makeRecord() override;
    void editRecord() override;
};
