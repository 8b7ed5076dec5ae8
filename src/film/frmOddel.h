#pragma once

#include "film/DictionaryRecord.h"

/// Edits one department.
class frmOddel final : public DictionaryRecord {
    Q_OBJECT

 public:
    explicit frmOddel(QWidget* parent = nullptr);
};
