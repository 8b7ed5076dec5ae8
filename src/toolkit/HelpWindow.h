#pragma once

#include <QMainWindow>
#include <memory>

#include "toolkit/ChmFile.h"

class QTabWidget;
class QTextBrowser;
class QTreeWidget;
class QUrl;

/// Shows a compiled help file: its contents and index at the left, a page at the right. It opens at the
/// contents with their first page.
class HelpWindow final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelpWindow)

 public:
    explicit HelpWindow(std::unique_ptr<ChmFile> file, QWidget* parent = nullptr);
    ~HelpWindow() override;

    /// Brings the contents to the front, and the window with them.
    void showContents();

 protected:
    /// Help is wanted most while a dialog is open, so a modal one does not shut it off.
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QTreeWidget* addTree(const QString& name, const std::vector<ChmFile::Topic>& topics);
    /// Selects the line of a page in the contents.
    void followPage(const QUrl& page);

    std::unique_ptr<ChmFile> file_;
    QTextBrowser* page_;
    QTabWidget* trees_;
    QTreeWidget* contents_;
};
