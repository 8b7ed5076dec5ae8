#pragma once

#include "film/DictionaryRecord.h"

/// Edits the name of one genre. The colour is never written.
class frmZanr final : public DictionaryRecord {
    Q_OBJECT

 public:
    explicit frmZanr(QWidget* parent = nullptr);
};
