#include <QHeaderView>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "core/mFunction.h"

using namespace Qt::StringLiterals;

namespace {

class FrmMasterTest : public MasterTest {
 protected:
    static QString plain(QString caption) { return caption.remove(u'&'); }

    /// Captions of a menu with those of its submenus in brackets.
    static QString captions(const QMenu& menu) {
        QStringList result;
        for (const QAction* entry : menu.actions()) {
            if (entry->isSeparator()) {
                result += u"-"_s;
            } else if (entry->menu() != nullptr) {
                result += plain(entry->text()) + u" ["_s + captions(*entry->menu()) + u']';
            } else {
                result += plain(entry->text());
            }
        }
        return result.join(u", "_s);
    }
};

}  // namespace

TEST_F(FrmMasterTest, CaptionPlaceAndSizeAreThoseOfEveryStart) {
    window().show();
    EXPECT_EQ(window().windowTitle(), u"Brem DVD Kalvéra 1.0.23"_s);
    EXPECT_EQ(window().geometry().topLeft(), QPoint(11, 57));
    EXPECT_EQ(window().width(), 718);
    EXPECT_EQ(window().height() - window().menuBar()->height(), 461);
}

TEST_F(FrmMasterTest, MenusHoldTheirEntries) {
    const struct {
        const char* menu;
        QString caption;
        QString entries;
    } cases[] = {
        {"mnuData", u"Databáze"_s,
         u"Obnovit, Zálohovat [Obnovit ze zálohy, Zálohovat databázi], -, Číselníky [Číselník žánrů, "
         u"Číselník "
         "oddělení], -, Konec"_s},
        {"mnuPujcovna", u"Půjčovna"_s, u"Modul výpůjček, -, Přidat uživatele"_s},
        {"mnuObaly", u"Obaly"_s, u"Najít obal na internetu"_s},
        {"mnuHelp", u"Nápověda"_s, u"Obsah, -, Zjistit novou verzi, -, O programu"_s},
    };
    for (const auto& [name, caption, entries] : cases) {
        SCOPED_TRACE(name);
        const auto* menu = window().findChild<QMenu*>(QString::fromLatin1(name));
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(plain(menu->title()), caption);
        EXPECT_EQ(captions(*menu), entries);
    }
}

TEST_F(FrmMasterTest, TheRightButtonBringsTheMenuOfTheRow) {
    window().show();
    auto* menu = window().findChild<QMenu*>(u"hidMenuListItem"_s);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(captions(*menu), u"Upravit, Zapůjčit / Vrátit, Smazat, -, Hledat obal"_s);
    const QPoint second = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, second);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(list().selectedItem().row(), 1);
    menu->close();
}

TEST_F(FrmMasterTest, ToolBarsHoldTheirButtonsWithIcons) {
    const struct {
        const char* bar;
        QStringList buttons;
    } cases[] = {{"Toolbar2", {u"Nový"_s, u"Uprav"_s}},
                 {"tbDisk", {u"Půjčit / Vrátit"_s}},
                 {"Toolbar1", {u"Vyhledat"_s, u"Seřadit"_s, u"Tisknout"_s}}};
    window().show();
    for (const auto& [name, buttons] : cases) {
        SCOPED_TRACE(name);
        const auto* bar = window().findChild<QToolBar*>(QString::fromLatin1(name));
        ASSERT_NE(bar, nullptr);
        QStringList found;
        for (const QAction* entry : bar->actions()) {
            const auto* button =
                qobject_cast<QToolButton*>(bar->widgetForAction(const_cast<QAction*>(entry)));
            ASSERT_NE(button, nullptr);
            found += button->text();
            EXPECT_FALSE(button->icon().pixmap(24).isNull()) << button->text().toStdString();
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        }
        EXPECT_EQ(found, buttons);
    }
    EXPECT_EQ(captions(*window().findChild<QToolButton*>(u"keyFindButton"_s)->menu()),
              u"V českém názvu, V cizím názvu, Katalogové číslo"_s);
    EXPECT_EQ(captions(*window().findChild<QToolButton*>(u"SortCZNameButton"_s)->menu()),
              u"Podle CZ názvu (default), Podle Katalogového čísla"_s);
}

TEST_F(FrmMasterTest, NoCommandIsADeadClick) {
    const QStringList working = {
        u"smnuDB_0"_s,       u"mnuBackup_0"_s, u"mnuBackup_1"_s,     u"smnuDB_5"_s,      u"SortCZNameEntry"_s,
        u"SortCZName"_s,     u"SortKatNum"_s,  u"KeyAddNew"_s,       u"KeyEdit"_s,       u"mnuListItem_0"_s,
        u"mnuCisl_0"_s,      u"mnuCisl_1"_s,   u"KeyPujcitVratit"_s, u"mnuListItem_1"_s, u"mnuListItem_2"_s,
        u"keyFind"_s,        u"KeyFindCZ"_s,   u"KeyFindPUV"_s,      u"KeyFindKATNUM"_s, u"smnuPujcovna_0"_s,
        u"smnuPujcovna_2"_s, u"keyPrint"_s,    u"mnuFindObal"_s,     u"mnuListItem_4"_s, u"smnuHelp_0"_s,
        u"smnuHelp_2"_s,     u"smnuHelp_4"_s};
    for (const QAction* entry : window().findChildren<QAction*>()) {
        const bool command =
            !entry->isSeparator() && entry->menu() == nullptr && !entry->objectName().isEmpty();
        if (!command || entry->objectName().startsWith(u'_')) continue;
        EXPECT_EQ(entry->isEnabled(), working.contains(entry->objectName()))
            << entry->objectName().toStdString();
    }
}

TEST_F(FrmMasterTest, SortCommandsReloadTheListInTheirOrder) {
    window().show();
    action("SortKatNum")->trigger();
    EXPECT_EQ(list().itemAt(0).text(), u"10"_s);
    QTest::mouseClick(window().findChild<QToolButton*>(u"SortCZNameButton"_s), Qt::LeftButton, {},
                      QPoint(8, 8));
    EXPECT_EQ(list().itemAt(0).text(), u"9"_s);
    action("SortKatNum")->trigger();
    action("SortCZNameEntry")->trigger();
    EXPECT_EQ(list().itemAt(0).text(), u"9"_s);
}

TEST_F(FrmMasterTest, BackupEntriesLeaveFilesAndScreenUntouched) {
    window().show();
    const auto content = [](const QString& path) {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray before = content(catalogue()) + content(pictures());
    const QStringList rowsBefore = rows();
    action("mnuBackup_0")->trigger();
    action("mnuBackup_1")->trigger();
    EXPECT_EQ(content(catalogue()) + content(pictures()), before);
    EXPECT_EQ(rows(), rowsBefore);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmMasterTest, TheListFollowsTheWindow) {
    window().show();
    for (const QSize size : {QSize(718, 480), QSize(1000, 700), QSize(600, 300)}) {
        window().resize(size);
        QCoreApplication::processEvents();
        const QRect inner(list().parentWidget()->rect());
        const QRect place = list().geometry();
        EXPECT_EQ(place.left(), 3);
        EXPECT_EQ(inner.width() - place.width(), 7);
        EXPECT_EQ(inner.height() - place.top() - place.height(), 1);
    }
}

TEST_F(FrmMasterTest, ColumnWidthsAreWrittenAtTheEndAndComeBack) {
    EXPECT_EQ(window().GetColSizeStr(), u"900|2500|1200|1200|1000|1440|1440|"_s);
    window().show();
    list().header()->resizeSection(1, 200);
    action("smnuDB_5")->trigger();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(CtiNastaveni(u"ColSie"_s, u""_s), u"900|3000|1200|1200|1000|1440|1440|"_s);
    closeWindow();
    EXPECT_EQ(list().columnWidth(1), 200);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmMasterTest, ADamagedWidthTextIsToldOnceAndMendedAtTheEnd) {
    const struct {
        QString stored;
        QString widths;
        qint32 failure;
    } cases[] = {
        {u"100|200|x|400|500|600|700|"_s, u"100|200|1200|1200|1000|1440|1440|"_s, errors::typeMismatch},
        {u"100|200"_s, u"100|200|1200|1200|1000|1440|1440|"_s, errors::subscriptOutOfRange},
        {u"100||300|400|500|600|700|"_s, u"100|2500|1200|1200|1000|1440|1440|"_s, errors::typeMismatch},
        {u"-5|200|300|400|500|600|700|"_s, u"900|2500|1200|1200|1000|1440|1440|"_s,
         errors::invalidPropertyValue},
        {u"2147483647|2|3|4|5|6|7|"_s, u"900|2500|1200|1200|1000|1440|1440|"_s, errors::invalidPropertyValue},
        {u"99999999999|2|3|4|5|6|7|"_s, u"900|2500|1200|1200|1000|1440|1440|"_s, errors::overflow},
    };
    for (const auto& [stored, widths, failure] : cases) {
        SCOPED_TRACE(stored.toStdString());
        UlozNastaveni(u"ColSie"_s, stored);
        outside.boxes.clear();
        EXPECT_EQ(window().GetColSizeStr(), widths);
        EXPECT_EQ(outside.boxes, QList({ScriptedOutside::Box{u"Chyba :"_s + errors::description(failure) +
                                                                 u"\n\nfrmMaster/Sub:SetColSizeStr"_s,
                                                             16, u"Chyba aplikace:"_s}}));
        window().show();
        window().close();
        EXPECT_EQ(CtiNastaveni(u"ColSie"_s, u""_s), widths);
        closeWindow();
    }
}
