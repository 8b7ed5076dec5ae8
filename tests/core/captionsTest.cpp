#include "catalogue/frmMaster.h"
#include "film/frmDVD.h"
#include "printing/frmFindObal.h"
#include "printing/frmTisknout.h"
#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "support/TemporaryProgram.h"
#include "support/clipped.h"
#include "support/windows.h"

using namespace Qt::StringLiterals;

namespace {

/// All that can be read in a window has room; registered a second time at one and a half times the usual
/// scale.
class CaptionsTest : public TemporaryProgram {
 protected:
    static void expectRoom(QWidget& window) {
        window.show();
        EXPECT_EQ(clipped(window).join(u' '), u""_s) << window.windowTitle().toStdString();
    }
};

}  // namespace

TEST_F(CaptionsTest, OfTheListTheEditorAndTheCoversAreFullyReadable) {
    frmMaster master(Sites{});
    expectRoom(master);
    frmDVD editor(Sites{});
    editor.Inicializuj(0);
    expectRoom(editor);
    frmFindObal covers(Sites{});
    expectRoom(covers);
    outside.printerNames = {u"Hala"_s};
    for (const char* page : {"Command4", "Command3"}) {
        control<QPushButton>(covers, page).click();
        expectRoom(covers);
    }
}

TEST_F(CaptionsTest, OfTheRentalWindowsAreFullyReadable) {
    sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (9876, 'Božena Novotná', '9876')");
    const auto user = std::make_shared<SharedUser>();
    frmKlienti customers(user);
    customers.Historie_Obnovit();
    customers.Vratit_Obnovit();
    customers.KVypujceni_Obnovit();
    expectRoom(customers);
    frmPujcDVD lending(user);
    expectRoom(lending);
    user->loaded().setUSID(9876);
    expectRoom(user->loaded());
}

TEST_F(CaptionsTest, OfTheButtonsOfThePrintedListsHaveRoomOnTwoLines) {
    const frmTisknout lists;
    for (const QPushButton* one : lists.findChildren<QPushButton*>()) {
        const QRect needed = one->fontMetrics().boundingRect(
            QRect(0, 0, one->width() - 12, 1000), static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap,
            one->text());
        EXPECT_LE(needed.width(), one->width() - 12) << one->objectName().toStdString();
        EXPECT_LE(needed.height(), one->height() - 8) << one->objectName().toStdString();
    }
}
