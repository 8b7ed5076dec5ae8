#pragma once

#include "film/DictionaryRecord.h"

/// The window for one genre. The colour of a genre is never written.
class frmZanr final : public DictionaryRecord {
    Q_OBJECT

 public:
    explicit frmZanr(QWidget* parent = nullptr);
};
