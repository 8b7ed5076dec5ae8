#include "toolkit/HelpWindow.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTextDocument>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <QWindow>

#include "platform/Outside.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/index.h"
#include "toolkit/HelpPage.h"
#include "toolkit/HelpResults.h"
#include "toolkit/appTitle.h"
#include "toolkit/barKeys.h"
#include "toolkit/icons.h"
#include "toolkit/keys.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int pageRole = Qt::UserRole;

// Sizes in heights of the window's font.
constexpr int sideWidth = 20;
constexpr int pageWidth = 62;
constexpr int windowHeight = 52;

/// Selects the entry of a page in a tree, without opening it.
void selectPage(QTreeWidget& tree, const QString& page) {
    const auto leadsToPage = [&page](const QTreeWidgetItem* line) {
        return line != nullptr && line->data(0, pageRole).toString() == page;
    };
    if (leadsToPage(tree.currentItem())) return;
    const QSignalBlocker quiet(tree);
    // A chapter has the same page as its first entry, which is the one to select.
    for (QTreeWidgetItemIterator at(&tree, QTreeWidgetItemIterator::NoChildren); *at != nullptr; ++at) {
        if (!leadsToPage(*at)) continue;
        tree.setCurrentItem(*at);
        return;
    }
}

}  // namespace

HelpWindow::HelpWindow(std::unique_ptr<ChmFile> file, const HelpPlace& last, QWidget* parent)
    : QMainWindow(parent), file_(std::move(file)), last_(last) {
    setWindowTitle(u"Nápověda – "_s + appTitle());
    setWindowIcon(icons::named(u"help"_s));
    auto* split = new QSplitter(this);
    split->addWidget(makeSide());
    page_ = new HelpPage(*file_, this);
    page_->setZoom(last.zoom);
    split->addWidget(page_);
    search();
    split->setStretchFactor(1, 1);
    setCentralWidget(split);
    const int unit = fontMetrics().height();
    resize(QSize((sideWidth + pageWidth) * unit, windowHeight * unit).boundedTo(screen()->availableSize()));
    split->setSizes({sideWidth * unit, pageWidth * unit});
    makeBar();
    connect(page_, &QTextBrowser::sourceChanged, this, &HelpWindow::followPage);
    if (file_->read(last.page).isEmpty()) {
        last_ = {};
        if (QTreeWidgetItem* first = contents_->topLevelItem(0)) contents_->setCurrentItem(first);
    } else {
        page_->setSource(QUrl(last.page));
    }
    contents_->setFocus();
}

HelpWindow::~HelpWindow() = default;

QWidget* HelpWindow::makeSide() {
    auto* side = new QWidget(this);
    auto* rows = new QVBoxLayout(side);
    rows->setContentsMargins({});
    search_ = new QLineEdit(side);
    search_->setPlaceholderText(u"Hledat v nápovědě"_s);
    search_->setAccessibleName(search_->placeholderText());
    search_->setClearButtonEnabled(true);
    paintHint();
    trees_ = new QTabWidget(side);
    trees_->setAccessibleName(u"Obsah a rejstřík"_s);
    trees_->tabBar()->setAccessibleName(trees_->accessibleName());
    contents_ = addTree(u"Obsah"_s, file_->contents());
    trees_->addTab(contents_, u"Obsah"_s);
    trees_->addTab(addTree(u"Rejstřík"_s, file_->index()), u"Rejstřík"_s);
    contents_->expandAll();
    results_ = new HelpResults(side);
    nothing_ = new QLabel(u"Hledaný text v nápovědě není."_s, side);
    nothing_->setObjectName(u"nothing"_s);
    nothing_->setWordWrap(true);
    nothing_->setAlignment(Qt::AlignTop);
    nothing_->setMargin(fontMetrics().height() / 2);
    rows->addWidget(search_);
    rows->addWidget(trees_, 1);
    rows->addWidget(results_, 1);
    rows->addWidget(nothing_, 1);
    connect(search_, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(search_, &QLineEdit::returnPressed, this, [this] {
        results_->setFocus();
        openResult();
    });
    connect(results_, &HelpResults::itemClicked, this, &HelpWindow::openResult);
    connect(results_, &HelpResults::itemActivated, this, &HelpWindow::openResult);
    return side;
}

void HelpWindow::paintHint() {
    // Some themes that set dark colours leave this one as it is for light ones.
    constexpr float faint = 0.6F;
    QColor hint = palette().color(QPalette::Text);
    hint.setAlphaF(faint);
    QPalette colours = search_->palette();
    colours.setColor(QPalette::PlaceholderText, hint);
    search_->setPalette(colours);
}

void HelpWindow::makeBar() {
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
    bar->addSeparator();
    bar->addAction(icons::named(u"print"_s), u"Tisk"_s, this, &HelpWindow::printPage)
        ->setShortcut(QKeySequence::Print);
    barKeys::install({bar});

    const auto onKeys = [this](const QList<QKeySequence>& keys, auto&& work) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, this, work);
        addAction(action);
    };
    onKeys({QKeySequence::Find}, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
    // Without Shift the key of "+" is "=" on many keyboards.
    onKeys({Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, [this] { page_->zoomBy(1); });
    onKeys({Qt::CTRL | Qt::Key_Minus}, [this] { page_->zoomBy(-1); });
    onKeys({Qt::CTRL | Qt::Key_0}, [this] { page_->setZoom(HelpPlace().zoom); });
}

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
    search_->clear();
    trees_->setCurrentWidget(contents_);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void HelpWindow::showPage(const QString& page) {
    if (page_->source().path() != page) {
        last_ = {};
        page_->setSource(QUrl(page));
    }
    showContents();
}

void HelpWindow::followPage(const QUrl& page) {
    page_->mark(search_->text());
    const QString path = page.path();
    for (int at = 0; at < trees_->count(); ++at)
        selectPage(*qobject_cast<QTreeWidget*>(trees_->widget(at)), path);
}

const HelpSearch& HelpWindow::pages() {
    if (pages_ != nullptr) return *pages_;
    pages_ = std::make_unique<HelpSearch>();
    QStringList added;
    for (const ChmFile::Topic& topic : file_->contents()) {
        if (topic.page.isEmpty() || added.contains(topic.page)) continue;
        added += topic.page;
        QTextDocument page;
        // Only the text is wanted.
        page.setResourceProvider([](const QUrl& /*name*/) { return QVariant(QByteArray()); });
        page.setHtml(codepage::fromWindows1250(file_->read(topic.page)));
        pages_->add(topic.page, page.metaInformation(QTextDocument::DocumentTitle), page.toPlainText());
    }
    return *pages_;
}

void HelpWindow::search() {
    const bool wanted = !search_->text().trimmed().isEmpty();
    results_->setHits(wanted ? pages().find(search_->text()) : std::vector<HelpSearch::Hit>());
    trees_->setVisible(!wanted);
    results_->setVisible(wanted && results_->count() > 0);
    nothing_->setVisible(wanted && results_->count() == 0);
    page_->mark(search_->text());
}

void HelpWindow::openResult() {
    const QUrl page(results_->currentPage());
    if (page.isEmpty()) return;
    if (page_->source() != page) page_->setSource(page);
    page_->showFirstMark();
}

void HelpWindow::printPage() {
    try {
        Outside::current().printPages(
            page_->documentTitle(), [this](QPagedPaintDevice& paper) { page_->printOn(paper); }, this);
    } catch (const RuntimeError& failure) {
        if (failure.number() != errors::printer) throw;
        Outside::current().messageBox(failure.description(), boxStyle::exclamation, u"Tisk nápovědy"_s, this);
    }
}

void HelpWindow::standAboveModal() {
    QWindow* const modal = QGuiApplication::modalWindow();
    QWindow* const own = windowHandle();
    // One that is just closing blocks nobody for long; its own dialogs stand above the help and block it.
    if (modal == nullptr || !modal->isVisible() || own == nullptr ||
        own->isAncestorOf(modal, QWindow::IncludeTransients))
        return;
    own->setTransientParent(modal);
    // Under Wayland a window closes its transient children with itself, so the help goes over to the modal
    // window below in time, if there is one.
    const auto leave = [own, modal] {
        QWindow* const below = modal->transientParent();
        own->setTransientParent(below != nullptr && below->modality() != Qt::NonModal ? below : nullptr);
    };
    connect(modal, &QWindow::visibleChanged, own, leave, Qt::SingleShotConnection);
}

bool HelpWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) standAboveModal();
    if (event->type() == QEvent::PaletteChange) paintHint();
    return QMainWindow::event(event);
}

void HelpWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    // The place depends on the final width.
    const int character = std::exchange(last_.character, 0);
    if (character > 0) QTimer::singleShot(0, page_, [this, character] { page_->setPlace(character); });
}

void HelpWindow::closeEvent(QCloseEvent* event) {
    emit left({page_->source().path(), page_->place(), page_->zoom()});
    QMainWindow::closeEvent(event);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && search_->hasFocus() && results_->isVisible()) {
        results_->setFocus();
    } else if (event->key() == Qt::Key_Escape && !search_->text().isEmpty()) {
        search_->clear();
        trees_->currentWidget()->setFocus();
    } else if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}
