#include "toolkit/HelpWindow.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWindow>

#include "platform/Outside.h"
#include "platform/codepage.h"
#include "platform/index.h"
#include "toolkit/appTitle.h"
#include "toolkit/icons.h"

using namespace Qt::StringLiterals;

namespace {

/// Shows a page; it and all its resources are read from the help file.
class HelpPage final : public QTextBrowser {
 public:
    HelpPage(const ChmFile& file, QWidget* parent) : QTextBrowser(parent), file_(file) {
        setOpenLinks(false);
        connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
            if (link.scheme().startsWith(u"http")) {
                Outside::current().openWithDesktop(link.toString());
            } else {
                setSource(source().resolved(link));
            }
        });
    }

    QVariant loadResource(int type, const QUrl& name) override {
        const QUrl whole = source().isEmpty() ? name : source().resolved(name);
        const QByteArray bytes = file_.read(whole.path());
        if (type == QTextDocument::ImageResource) return bytes;
        return codepage::fromWindows1250(bytes);
    }

 private:
    const ChmFile& file_;
};

constexpr int pageRole = Qt::UserRole;
constexpr int contentsWidth = 240;
constexpr int pageWidth = 800;
constexpr int windowHeight = 680;

}  // namespace

HelpWindow::HelpWindow(std::unique_ptr<ChmFile> file, QWidget* parent)
    : QMainWindow(parent), file_(std::move(file)) {
    setWindowTitle(u"Nápověda – "_s + appTitle());
    setWindowIcon(icons::named(u"help"_s));
    auto* split = new QSplitter(this);
    trees_ = new QTabWidget(this);
    trees_->setAccessibleName(u"Obsah a rejstřík"_s);
    page_ = new HelpPage(*file_, this);
    page_->setAccessibleName(u"Stránka nápovědy"_s);
    page_->document()->setDocumentMargin(12);
    split->addWidget(trees_);
    split->addWidget(page_);
    setCentralWidget(split);
    contents_ = addTree(u"Obsah"_s, file_->contents());
    trees_->addTab(contents_, u"Obsah"_s);
    trees_->addTab(addTree(u"Rejstřík"_s, file_->index()), u"Rejstřík"_s);
    contents_->expandAll();
    // Wide enough for a screenshot of the main window beside the contents.
    resize(QSize(contentsWidth + pageWidth, windowHeight).boundedTo(screen()->availableSize()));
    split->setSizes({contentsWidth, pageWidth});

    QToolBar* bar = addToolBar(u"Procházení"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QAction* back = bar->addAction(icons::named(u"back"_s), u"Zpět"_s, page_, &QTextBrowser::backward);
    back->setShortcut(QKeySequence::Back);
    QAction* forward = bar->addAction(icons::named(u"forward"_s), u"Vpřed"_s, page_, &QTextBrowser::forward);
    forward->setShortcut(QKeySequence::Forward);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(page_, &QTextBrowser::sourceChanged, this, &HelpWindow::followPage);
    if (QTreeWidgetItem* first = contents_->topLevelItem(0)) contents_->setCurrentItem(first);
    contents_->setFocus();
}

HelpWindow::~HelpWindow() = default;

QTreeWidget* HelpWindow::addTree(const QString& name, const std::vector<ChmFile::Topic>& topics) {
    auto* tree = new QTreeWidget(trees_);
    tree->setObjectName(name);
    tree->setAccessibleName(name);
    tree->header()->hide();
    std::vector<QTreeWidgetItem*> path;
    for (const ChmFile::Topic& topic : topics) {
        path.resize(std::min(path.size(), toSize(topic.depth)));
        auto* line = path.empty() ? new QTreeWidgetItem(tree) : new QTreeWidgetItem(path.back());
        line->setText(0, topic.title);
        line->setData(0, pageRole, topic.page);
        path.push_back(line);
    }
    connect(tree, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* line) {
        const QString page = line == nullptr ? QString() : line->data(0, pageRole).toString();
        if (!page.isEmpty() && page_->source().toString() != page) page_->setSource(QUrl(page));
    });
    return tree;
}

void HelpWindow::showContents() {
    trees_->setCurrentWidget(contents_);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void HelpWindow::followPage(const QUrl& page) {
    const QString path = page.path();
    if (contents_->currentItem() != nullptr && contents_->currentItem()->data(0, pageRole).toString() == path)
        return;
    // A chapter has the same page as its first entry, which is the one to select.
    for (QTreeWidgetItemIterator at(contents_, QTreeWidgetItemIterator::NoChildren); *at != nullptr; ++at) {
        if ((*at)->data(0, pageRole).toString() != path) continue;
        const QSignalBlocker quiet(contents_);
        contents_->setCurrentItem(*at);
        return;
    }
}

bool HelpWindow::event(QEvent* event) {
    // A modal window does not block its transient children.
    if (event->type() == QEvent::WindowBlocked && windowHandle() != nullptr)
        windowHandle()->setTransientParent(QGuiApplication::modalWindow());
    return QMainWindow::event(event);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}
