#pragma once

#include <QListWidget>

#include "toolkit/HelpSearch.h"

/// The pages that a search in the help has found: each with its title and, below it, some words of context.
class HelpResults final : public QListWidget {
    Q_OBJECT

 public:
    explicit HelpResults(QWidget* parent);

    /// Replaces the list; its first entry becomes the current one.
    void setHits(const std::vector<HelpSearch::Hit>& hits);
    /// The page of the current entry; "" when there is none.
    QString currentPage() const;

 protected:
    void resizeEvent(QResizeEvent* event) override;
};
