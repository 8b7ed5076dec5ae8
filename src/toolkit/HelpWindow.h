#pragma once

#include <QMainWindow>
#include <memory>

#include "toolkit/ChmFile.h"

class QTabWidget;
class QTextBrowser;
class QTreeWidget;
class QUrl;

/// Shows a compiled help file: contents and index at the left, the page at the right. It opens at the first
/// page of the contents.
class HelpWindow final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelpWindow)

 public:
    explicit HelpWindow(std::unique_ptr<ChmFile> file, QWidget* parent = nullptr);
    ~HelpWindow() override;

    /// Switches to the contents and brings the window to the front.
    void showContents();

 protected:
    /// Keeps the help usable while a modal dialog is open.
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QTreeWidget* addTree(const QString& name, const std::vector<ChmFile::Topic>& topics);
    /// Selects the entry of a page in the contents.
    void followPage(const QUrl& page);

    std::unique_ptr<ChmFile> file_;
    QTextBrowser* page_;
    QTabWidget* trees_;
    QTreeWidget* contents_;
};
