#pragma once

#include <QMainWindow>
#include <memory>

#include "toolkit/ChmFile.h"

class QTextBrowser;
class QTreeWidget;

/// Shows a compiled help file: its contents and index at the left, a page at the right. It opens at the
/// contents with their first page.
class HelpWindow final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelpWindow)

 public:
    explicit HelpWindow(std::unique_ptr<ChmFile> file, QWidget* parent = nullptr);
    ~HelpWindow() override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QTreeWidget* addTree(const QString& name, const std::vector<ChmFile::Topic>& topics);
    /// Selects the line of the page that is shown.
    void followPage();

    std::unique_ptr<ChmFile> file_;
    QTextBrowser* page_;
    QTreeWidget* contents_;
};
