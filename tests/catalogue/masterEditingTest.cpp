
#include "catalogue/masterFixture.h"
#include "film/frmDVD.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"

using namespace Qt::StringLiterals;

namespace {

class MasterEditingTest : public MasterTest {
 protected:
    /// Runs a command that opens the editor, and `work` in it; then presses a button of it.
    void inEditor(const char* command, const char* button, const std::function<void(frmDVD&)>& work) {
        inModalWindow([&] { action(command)->trigger(); },
                      [&](QWidget& editor) {
                          work(dynamic_cast<frmDVD&>(editor));
                          click(editor, button);
                      });
    }
    static QLineEdit& title(const frmDVD& editor) { return control<QLineEdit>(editor, "txtCZName"); }
};

}  // namespace

TEST_F(MasterEditingTest, ANewFilmComesToTheEndAndACancelledOneNot) {
    window().show();
    inEditor("KeyAddNew", "cmdStorno", [](frmDVD& editor) { title(editor).setText(u"Nic"_s); });
    EXPECT_EQ(list().count(), 4);
    inEditor("KeyAddNew", "cmdSave", [](frmDVD& editor) { title(editor).setText(u"Aaa"_s); });
    EXPECT_EQ(rows().last(), u" 6|Aaa|||||Česky"_s);
    EXPECT_EQ(counts(), u"5 2"_s);
}

TEST_F(MasterEditingTest, TheSelectedFilmIsEditedAndItsRowFollows) {
    window().show();
    list().select(list().item(u"K4"_s));
    for (const char* command : {"KeyEdit", "mnuListItem_0"}) {
        inEditor(command, "cmdSave", [](frmDVD& editor) {
            EXPECT_EQ(editor.IDFilmu, 4);
            title(editor).setText(title(editor).text() + u'!');
        });
    }
    EXPECT_EQ(rows()[1], u"*12a|Čáp!!|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s);
}

TEST_F(MasterEditingTest, DictionariesOpenOnceAndOutliveTheMainWindow) {
    window().show();
    action("mnuCisl_0")->trigger();
    QPointer<frmZanry> genres = shownWindow<frmZanry>();
    ASSERT_NE(genres, nullptr);
    EXPECT_FALSE(genres->isModal());
    action("mnuCisl_0")->trigger();
    EXPECT_EQ(shownWindow<frmZanry>(), genres);
    action("mnuCisl_1")->trigger();
    auto* departments = shownWindow<frmOddeleniList>();
    ASSERT_NE(departments, nullptr);
    departments->close();
    window().close();
    EXPECT_TRUE(genres->isVisible());
    genres->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(genres, nullptr);
}
