#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "catalogue/masterFixture.h"
#include "film/frmDVD.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"

using namespace Qt::StringLiterals;

namespace {

class MasterEditingTest : public MasterTest {
 protected:
    /// Runs a command that opens the editor, and `work` in it; then presses a button of it.
    template <typename Work>
    void inEditor(const char* command, const char* button, Work&& work) {
        bool met = false;
        QTimer::singleShot(0, &window(), [&] {
            auto* editor = qobject_cast<frmDVD*>(QApplication::activeModalWidget());
            ASSERT_NE(editor, nullptr);
            met = true;
            work(*editor);
            editor->findChild<QPushButton*>(QString::fromLatin1(button))->click();
        });
        action(command)->trigger();
        EXPECT_TRUE(met);
    }

    template <typename Window>
    static Window* openWindow() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* found = qobject_cast<Window*>(widget);
            if (found != nullptr && found->isVisible()) return found;
        }
        return nullptr;
    }
};

}  // namespace

TEST_F(MasterEditingTest, ANewFilmComesToTheEndAndACancelledOneNot) {
    window().show();
    inEditor("KeyAddNew", "cmdStorno",
             [](frmDVD& editor) { editor.findChild<QLineEdit*>(u"txtCZName"_s)->setText(u"Nic"_s); });
    EXPECT_EQ(list().count(), 4);
    inEditor("KeyAddNew", "cmdSave",
             [](frmDVD& editor) { editor.findChild<QLineEdit*>(u"txtCZName"_s)->setText(u"Aaa"_s); });
    EXPECT_EQ(rows().last(), u" 6|Aaa|||||Česky"_s);
    EXPECT_EQ(panel(5), u"  Celkem záznamů : 5  "_s);
    EXPECT_EQ(panel(6), u"  Vypůjčených záznamů : 2  "_s);
}

TEST_F(MasterEditingTest, TheSelectedFilmIsEditedAndItsRowFollows) {
    window().show();
    list().select(list().item(u"K4"_s));
    for (const char* command : {"KeyEdit", "mnuListItem_0"}) {
        inEditor(command, "cmdSave", [](frmDVD& editor) {
            EXPECT_EQ(editor.IDFilmu, 4);
            auto* title = editor.findChild<QLineEdit*>(u"txtCZName"_s);
            title->setText(title->text() + u'!');
        });
    }
    EXPECT_EQ(rows()[1], u"*12a|Čáp!!|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s);
    sql("DELETE FROM tDVD");
    action("smnuDB_0")->trigger();
    EXPECT_FALSE(action("KeyEdit")->isEnabled());
    EXPECT_FALSE(action("mnuListItem_0")->isEnabled());
    EXPECT_TRUE(action("KeyAddNew")->isEnabled());
}

TEST_F(MasterEditingTest, DictionariesOpenOnceAndOutliveTheMainWindow) {
    window().show();
    action("mnuCisl_0")->trigger();
    QPointer<frmZanry> genres = openWindow<frmZanry>();
    ASSERT_NE(genres, nullptr);
    EXPECT_FALSE(genres->isModal());
    action("mnuCisl_0")->trigger();
    EXPECT_EQ(openWindow<frmZanry>(), genres);
    window().close();
    EXPECT_TRUE(genres->isVisible());
    genres->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(genres, nullptr);
}

TEST_F(MasterEditingTest, ANewDepartmentStandsInTheEditorAtItsNextOpening) {
    window().show();
    action("mnuCisl_1")->trigger();
    auto* departments = openWindow<frmOddeleniList>();
    ASSERT_NE(departments, nullptr);
    QTimer::singleShot(0, departments, [] {
        auto* record = QApplication::activeModalWidget();
        record->findChild<QLineEdit*>(u"txtZanr"_s)->setText(u"Němé filmy"_s);
        record->findChild<QPushButton*>(u"cmdSave"_s)->click();
    });
    departments->findChild<QAbstractButton*>(u"Command1"_s)->click();
    departments->close();
    inEditor("KeyAddNew", "cmdStorno", [](frmDVD& editor) {
        EXPECT_EQ(editor.findChild<QComboBox*>(u"cboOddel"_s)->findText(u"Němé filmy"_s), 5);
    });
}
