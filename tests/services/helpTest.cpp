#include <QAction>
#include <QBuffer>
#include <QListWidget>
#include <QPdfWriter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTcpServer>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

#include "catalogue/frmFindStr.h"
#include "catalogue/frmMaster.h"
#include "core/mFunction.h"
#include "film/frmDVD.h"
#include "film/frmOddel.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanr.h"
#include "film/frmZanry.h"
#include "lookup/frmCSFDFind.h"
#include "lookup/frmNetFind.h"
#include "printing/frmFindObal.h"
#include "printing/frmTisknout.h"
#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "services/HelpKey.h"
#include "services/frmAbout.h"
#include "services/frmNewVersion.h"
#include "services/frmSplash.h"
#include "services/mHelp.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"
#include "toolkit/DownloadWindow.h"
#include "toolkit/HelpLook.h"
#include "toolkit/HelpPage.h"
#include "toolkit/HelpSearch.h"
#include "toolkit/HelpWindow.h"

namespace {

class HelpTest : public TemporaryProgram {
 protected:
    void TearDown() override {
        if (auto* help = shownWindow<HelpWindow>()) help->close();
        destroyClosed();
    }

    static void destroyClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    HelpWindow& opened() const {
        QFile::remove(CestaNapovedy(1));
        QFile::copy(QStringLiteral(KALVERA_HELP), CestaNapovedy(1));
        ZobrazNapovedu(1, u"Main"_s);
        auto* help = shownWindow<HelpWindow>();
        if (help == nullptr || !QTest::qWaitForWindowActive(help)) throw std::runtime_error("no help");
        return *help;
    }
    static HelpPage& pageOf(const HelpWindow& help) { return *help.findChild<HelpPage*>(); }
};

/// What a search in a text marks.
QStringList marked(const QString& text, const QString& query) {
    QStringList words;
    for (const HelpSearch::Place& place : HelpSearch::places(text, query))
        words += text.mid(place.start, place.length);
    return words;
}

QPalette darkPalette() {
    QPalette palette(QColor(49, 54, 59));
    palette.setColor(QPalette::Base, QColor(35, 38, 41));
    return palette;
}

}  // namespace

TEST(HelpSearchTest, FindsAllWordsWhateverTheirCaseAndAccents) {
    HelpSearch pages;
    pages.add(u"/a"_s, u"Vítejte"_s, u"Vítejte\nKůň i zálohy\u00a0pěl\nďábelské ódy."_s);
    pages.add(u"/b"_s, u"Záloha"_s,
              u"Záloha\n"_s + u"oslovo "_s.repeated(40) + u"Kopie "_s + u"konec "_s.repeated(40));
    pages.add(u"/c"_s, u"Tisk"_s, u"Tisk\nNic"_s);
    pages.add(u"/d"_s, u"Jiná"_s, u"Jiná\nČeská slova"_s);
    // Titles come first, then starts of words.
    const std::pair<QString, QString> cases[] = {{u"zaloh"_s, u"/b /a"_s},
                                                 {u"slov"_s, u"/d /b"_s},
                                                 {u"ZÁLOHY DABELSKE"_s, u"/a"_s},
                                                 {u"da\u0301bel"_s, u"/a"_s},
                                                 {u"tisk nic"_s, u"/c"_s},
                                                 {u"kopie koni"_s, u""_s},
                                                 {u" "_s, u""_s}};
    for (const auto& [query, expected] : cases) {
        QStringList found;
        for (const HelpSearch::Hit& hit : pages.find(query))
            found += hit.page;
        EXPECT_EQ(found.join(u' '), expected) << query.toStdString();
    }
    const QString context = pages.find(u"kopie"_s).front().context;
    EXPECT_TRUE(context.startsWith(u"… oslovo "_s) && context.endsWith(u" konec …"_s))
        << context.toStdString();
    EXPECT_LT(context.size(), 140);
    EXPECT_EQ(pages.find(u"vitejte"_s).front().context, u"Vítejte Kůň i zálohy pěl ďábelské ódy."_s);
    EXPECT_EQ(marked(u"Žluťoučký kůň, ŽLUŤ"_s, u"zlut kun"_s), (QStringList{u"Žluť"_s, u"kůň"_s, u"ŽLUŤ"_s}));
    EXPECT_EQ(marked(u"Záloha"_s, u"zalo aloh"_s), QStringList{u"Záloh"_s});
}

TEST(HelpLookTest, ASheetFollowsFontZoomAndDarkColours) {
    HelpLook look{.palette = QPalette(Qt::white), .font = QApplication::font(), .zoom = 1.5};
    look.font.setPointSizeF(20);
    const QString sheet =
        u"body { font-family: \"Segoe UI\", sans-serif; font-size: 10pt; color: #23282f; background-color: "
        u"#ffffff; }"
        " h1 { font-family: Georgia, serif; color: #2f4a75; } td { border-bottom: 1px solid #e3e8ef; }"
        " p { background-color: #fff6df; }"_s;
    EXPECT_EQ(look.styleSheet(sheet), QString(sheet)
                                          .remove(u"font-family: \"Segoe UI\", sans-serif;"_s)
                                          .replace(u"10pt"_s, u"30.00pt"_s)
                                          .replace(u"1px"_s, u"3px"_s));
    look.palette = darkPalette();
    const QString dark = look.styleSheet(sheet);
    static const QRegularExpression colours(u"(color|solid):? (#[0-9a-f]{6})"_s);
    QList<int> lightness;
    for (auto match = colours.globalMatch(dark); match.hasNext();)
        lightness += QColor(match.next().captured(2)).lightness();
    ASSERT_EQ(lightness.size(), 5);
    EXPECT_EQ(lightness[0], 255);                             // text
    EXPECT_EQ(lightness[1], QColor(35, 38, 41).lightness());  // page
    EXPECT_EQ(lightness[2], 160);                             // heading
    EXPECT_LT(lightness[3], 130);                             // line
    EXPECT_LT(lightness[4], 70);                              // box
}

TEST_F(HelpTest, SearchingListsPagesAndOpensThemAtTheMarkedWords) {
    HelpWindow& help = opened();
    HelpPage& page = pageOf(help);
    auto& contents = control<QTreeWidget>(help, "Obsah");
    auto& results = *help.findChild<QListWidget*>();
    auto& nothing = control<QLabel>(help, "nothing");
    QTest::keyClick(&page, Qt::Key_F, Qt::ControlModifier);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, u"nahled"_s);
    EXPECT_GT(results.count(), 3);
    EXPECT_FALSE(contents.isVisible());
    QTest::keyClicks(field, u" xyz"_s);
    EXPECT_EQ(results.count(), 0);
    EXPECT_TRUE(nothing.isVisible());
    field->setText(u"hotelu prihlasovaci"_s);
    EXPECT_FALSE(nothing.isVisible());
    ASSERT_EQ(results.count(), 1);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(page.source().path(), u"/potize.html"_s);
    ASSERT_EQ(page.extraSelections().size(), 2);
    EXPECT_EQ(page.extraSelections().first().cursor.selectedText(), u"přihlašovací"_s);
    EXPECT_TRUE(page.viewport()->rect().contains(page.cursorRect(page.extraSelections().first().cursor)));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(help.isVisible() && contents.hasFocus() && page.extraSelections().isEmpty());
    EXPECT_EQ(contents.currentItem()->data(0, Qt::UserRole).toString(), u"/potize.html"_s);
}

TEST_F(HelpTest, ZoomAndPlaceAreKeptForTheNextReader) {
    HelpPage* page = &pageOf(opened());
    page->setSource(QUrl(u"/potize.html"_s));
    const int height = page->verticalScrollBar()->maximum();
    page->verticalScrollBar()->setValue(height / 2);
    const int place = page->place();
    const auto lineOf = [](const HelpPage& shown) {
        return shown.document()->findBlock(shown.place()).text();
    };
    const QString line = lineOf(*page);
    for (const auto& [key, zoom] :
         {std::pair(Qt::Key_Plus, 110), std::pair(Qt::Key_Equal, 125), std::pair(Qt::Key_Minus, 110),
          std::pair(Qt::Key_0, 100), std::pair(Qt::Key_Plus, 110)}) {
        QTest::keyClick(page, key, Qt::ControlModifier);
        EXPECT_EQ(page->zoom(), zoom);
        EXPECT_EQ(lineOf(*page), line);
    }
    QWheelEvent wheel({}, page->viewport()->mapToGlobal(QPointF()), {}, {0, 240}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(page->viewport(), &wheel);
    EXPECT_EQ(page->zoom(), 150);
    EXPECT_GT(page->verticalScrollBar()->maximum(), height * 3 / 2);
    shownWindow<HelpWindow>()->close();
    destroyClosed();
    page = &pageOf(opened());
    QCoreApplication::processEvents();
    EXPECT_EQ(page->source().path(), u"/potize.html"_s);
    EXPECT_EQ(page->zoom(), 150);
    EXPECT_EQ(lineOf(*page), line);
    shownWindow<HelpWindow>()->close();
    destroyClosed();
    for (const auto& [stored, zoom] : {std::pair(u"/gone.html|9|67"_s, 67), std::pair(u"x|y|z"_s, 100),
                                       std::pair(u"/uvod.html|999999|9999"_s, 300)}) {
        UlozNastaveni(u"HelpPlace"_s, stored);
        page = &pageOf(opened());
        EXPECT_EQ(page->source().path(), u"/uvod.html"_s);
        EXPECT_EQ(page->zoom(), zoom);
        shownWindow<HelpWindow>()->close();
        destroyClosed();
    }
    EXPECT_GT(place, 0);
}

TEST_F(HelpTest, APageIsPrintedAndARefusalTold) {
    HelpWindow& help = opened();
    pageOf(help).setSource(QUrl(u"/potize.html"_s));
    pageOf(help).setPalette(darkPalette());
    QBuffer pdf;
    ASSERT_TRUE(pdf.open(QBuffer::WriteOnly));
    {
        QPdfWriter paper(&pdf);
        outside.paper = &paper;
        QTest::keyClick(&help, Qt::Key_P, Qt::ControlModifier);
    }
    EXPECT_EQ(outside.printedPages, QStringList(u"Co dělat, když…"_s));
    EXPECT_GE(pdf.data().count("/Type /Page\n"), 2);
    outside.refusal = u"Stojí."_s;
    QTest::keyClick(&help, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(outside.told(), u"Stojí.|48|Tisk nápovědy"_s);
}

TEST_F(HelpTest, ThePagesFollowDarkColoursAtOnce) {
    HelpPage& page = pageOf(opened());
    page.setSource(QUrl(u"/tisk.html"_s));
    page.setPalette(darkPalette());
    const auto ground = [&] { return page.document()->rootFrame()->frameFormat().background().color(); };
    EXPECT_EQ(ground(), QColor(35, 38, 41));
    EXPECT_EQ(page.viewport()->grab().toImage().pixelColor(2, 2), QColor(35, 38, 41));
    page.setPalette(QPalette(Qt::white));
    EXPECT_EQ(ground(), QColor(Qt::white));
}

TEST_F(HelpTest, PicturesFitIntoThePageAndTheHintOfTheSearchIsReadable) {
    HelpWindow& help = opened();
    HelpPage& page = pageOf(help);
    for (const char16_t* name : {u"/editor.html", u"/obchod.html"}) {  // also in a list
        page.setSource(QUrl(QString::fromUtf16(name)));
        for (const int width : {700, 1000, 600}) {
            help.resize(width, 500);
            EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0) << width;
            page.zoomBy(1);
            EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0) << width;
        }
    }
    // As themes do that know nothing of hints.
    QPalette dark = darkPalette();
    dark.setColor(QPalette::PlaceholderText, Qt::black);
    help.setPalette(dark);
    const QPalette search = help.findChild<QLineEdit*>()->palette();
    EXPECT_GT(search.color(QPalette::PlaceholderText).lightness(),
              search.color(QPalette::Base).lightness() + 60);
}

TEST_F(HelpTest, TabGoesThroughTheWindowAndEverythingOnItsWayHasAName) {
    HelpWindow& help = opened();
    pageOf(help).setSource(QUrl(u"/o-programu.html"_s));
    control<QTreeWidget>(help, "Obsah").setFocus();
    QStringList names;
    while (names.size() < 12 && !names.contains(u"Hledat v nápovědě"_s)) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        auto* button = qobject_cast<QToolButton*>(QApplication::focusWidget());
        names += button != nullptr ? button->text() : QApplication::focusWidget()->accessibleName();
    }
    names.removeDuplicates();  // the links of the page
    EXPECT_EQ(names, (QStringList{u"Stránka nápovědy"_s, u"Zpět"_s, u"Tisk"_s, u"Hledat v nápovědě"_s}));
}

TEST_F(HelpTest, F1OpensThePageOfEveryWindowAndLeavesOthersAlone) {
    const HelpKey key;
    opened().close();
    destroyClosed();
    sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (1, 'Božena', '1')");
    const auto user = std::make_shared<SharedUser>();
    frmMaster master(Sites{});
    frmDVD editor(Sites{});
    frmKlienti rental(user);
    frmPujcDVD lending(user);
    frmCSFDFind films(Sites{});
    frmZanry genres;
    frmZanr genre;
    frmOddeleniList departments;
    frmOddel department;
    frmTisknout lists;
    frmFindObal covers(Sites{});
    frmFindStr prompt;
    frmNewVersion offer(Sites{});
    frmAbout about;
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    const Download download(u"http://127.0.0.1:%1/"_s.arg(silent.serverPort()), at(u"download"_s));
    DownloadWindow waiting(download, nullptr);
    frmSplash splash;
    const std::pair<QWidget*, QString> cases[] = {
        {&master, u"hlavni-okno"_s},      {&editor, u"editor"_s},    {&rental, u"modul"_s},
        {&user->loaded(), u"zakaznik"_s}, {&lending, u"pujceni"_s},  {&films, u"databaze"_s},
        {&genres, u"ciselniky"_s},        {&genre, u"ciselniky"_s},  {&departments, u"ciselniky"_s},
        {&department, u"ciselniky"_s},    {&lists, u"tisk"_s},       {&covers, u"obaly"_s},
        {&prompt, u"hledani-razeni"_s},   {&offer, u"nova-verze"_s}, {&about, u"o-programu"_s},
        {&waiting, u"potize"_s}};
    const auto shownPage = [] {
        const auto* help = shownWindow<HelpWindow>();
        return help == nullptr ? QString() : pageOf(*help).source().path();
    };
    const auto press = [&](QWidget& window) {
        window.show();
        window.activateWindow();
        // Not qWaitForWindowActive: a dialog counts as active while the help above it is.
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; }));
        QTest::keyClick(&window, Qt::Key_F1);
    };
    press(splash);
    EXPECT_EQ(shownPage(), QString());
    for (const auto& [window, page] : cases) {
        press(*window);
        EXPECT_EQ(shownPage(), u'/' + page + u".html"_s);
        EXPECT_TRUE(QTest::qWaitForWindowActive(shownWindow<HelpWindow>()));
    }
    rental.Historie_Obnovit();
    control<QPlainTextEdit>(rental, "txtHistorie").setFocus();
    press(rental);
    EXPECT_EQ(shownPage(), u"/historie.html"_s);
    control<QTabWidget>(editor, "tabMain").setCurrentIndex(3);
    control<QWidget>(editor, "picTab_3").findChild<QAbstractButton*>()->setFocus();
    press(editor);
    EXPECT_EQ(shownPage(), u"/obrazky.html"_s);
}

TEST_F(HelpTest, TheHelpOpensOnceAndItsContentsFollowItsPages) {
    EXPECT_EQ(CestaNapovedy(1), at(u"data/napoveda.chm"_s));
    EXPECT_EQ(CestaNapovedy(2), u""_s);
    ZobrazNapovedu(1, u"Main"_s);
    write(CestaNapovedy(1), "ITSF");
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(std::exchange(outside.boxes, {}).size(), 2);
    EXPECT_EQ(shownWindow<HelpWindow>(), nullptr);
    auto* help = &opened();

    auto& contents = control<QTreeWidget>(*help, "Obsah");
    auto& page = *help->findChild<QTextBrowser*>();
    const std::pair<std::function<void()>, QString> steps[] = {
        {[] {}, u"/uvod.html"_s},
        {[&] {
             for (int line = 0; line < 8; ++line)
                 QTest::keyClick(&contents, Qt::Key_Down);
         },
         u"/editor.html"_s},
        {[&] { page.backward(); }, u"/hledani-razeni.html"_s},
        {[&] { contents.setCurrentItem(contents.topLevelItem(0)); }, u"/uvod.html"_s},
        {[&] { emit page.anchorClicked(QUrl(u"modul.html"_s)); }, u"/modul.html"_s}};
    for (const auto& [step, shown] : steps) {
        step();
        EXPECT_EQ(page.source().path(), shown);
        EXPECT_EQ(contents.currentItem()->data(0, Qt::UserRole).toString(), shown);
        EXPECT_GT(page.toPlainText().size(), 200);
    }
    auto& trees = *help->findChild<QTabWidget*>();
    trees.setCurrentIndex(1);
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(shownWindow<HelpWindow>(), help);
    EXPECT_EQ(trees.currentIndex(), 0);
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
}

TEST_F(HelpTest, TheHelpCanBeReadBesideAModalWindowAndClosesWithTheLastWindow) {
    auto* help = &opened();
    auto& contents = control<QTreeWidget>(*help, "Obsah");
    contents.setFocus();
    auto isUsable = [&, below = contents.currentItem()]() mutable {
        QTest::keyClick(help->windowHandle(), Qt::Key_Down);  // as real keys arrive
        return std::exchange(below, contents.currentItem()) != contents.currentItem();
    };
    frmAbout about;
    inModalWindow([&] { about.exec(); },
                  [&](QWidget& lower) {
                      EXPECT_TRUE(isUsable());
                      auto upper = std::make_unique<QDialog>(&lower);
                      inModalWindow([&] { upper->exec(); },
                                    [&](QWidget&) {
                                        EXPECT_TRUE(isUsable());
                                        upper->close();
                                    });
                      upper.reset();
                      EXPECT_TRUE(isUsable());
                      QDialog ofHelp(help);
                      inModalWindow([&] { ofHelp.exec(); },
                                    [&](QWidget&) {
                                        EXPECT_FALSE(isUsable());
                                        EXPECT_EQ(help->windowHandle()->transientParent(),
                                                  lower.windowHandle());
                                        ofHelp.close();
                                    });
                      EXPECT_TRUE(isUsable());
                      about.close();
                  });
    EXPECT_TRUE(isUsable());
    EXPECT_TRUE(help->isVisible());
    about.show();
    QTimer::singleShot(0, &about, &QWidget::close);
    QTimer::singleShot(10000, &about, [] { QApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(shownWindow<HelpWindow>(), nullptr);
}
