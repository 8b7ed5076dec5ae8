#pragma once

#include <QMainWindow>
#include <QPointer>
#include <memory>

#include "toolkit/ChmFile.h"
#include "toolkit/HelpSearch.h"

class HelpPage;
class HelpResults;
class QLabel;
class QLineEdit;
class QTabWidget;
class QTreeWidget;
class QUrl;

/// Where a reader of the help was.
struct HelpPlace {
    QString page = {};  ///< path within the file
    int character = 0;  ///< the first in view
    int zoom = 100;     ///< percent
};

/// Shows a compiled help file: search, contents and index at the left, the page at the right.
class HelpWindow final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelpWindow)

 public:
    /// Opens at the place `last`; at the first page of the contents when the file has no such page.
    HelpWindow(std::unique_ptr<ChmFile> file, const HelpPlace& last, QWidget* parent = nullptr);
    ~HelpWindow() override;

    /// Switches to the contents and brings the window to the front.
    void showContents();
    /// Shows a page from its start, or where it is already if it is the one shown, and brings the window to
    /// the front.
    void showPage(const QString& page);

 signals:
    /// The window is being closed.
    void left(const HelpPlace& place);

 protected:
    /// Keeps the help usable while a modal dialog is open.
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QWidget* makeSide();
    void makeBar();
    /// Gives the hint in the search field a colour that can be read on the field's.
    void paintHint();
    QTreeWidget* addTree(const QString& name, const std::vector<ChmFile::Topic>& topics);
    /// Marks the words searched for and selects the page's entry in the trees: a tree without one would open
    /// its first page as soon as it gets the focus.
    void followPage(const QUrl& page);
    /// Fills the results for the text in the search field; without one the trees are shown.
    void search();
    /// Shows the page of the selected result at the first word found.
    void openResult();
    void printPage();
    /// Stands above the modal dialog, as only its transient children stay usable.
    void standAboveModal();
    const HelpSearch& pages();

    std::unique_ptr<ChmFile> file_;
    HelpPlace last_;
    std::unique_ptr<HelpSearch> pages_;  // made for the first search
    QLineEdit* search_;
    QTabWidget* trees_;
    QTreeWidget* contents_;
    HelpResults* results_;
    QLabel* nothing_;
    HelpPage* page_;
};
