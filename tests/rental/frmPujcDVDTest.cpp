#include "rental/frmPujcDVD.h"

#include <QFile>
#include <QWindow>

#include "rental/SharedUser.h"
#include "rental/rentalFixture.h"

namespace {

class FrmPujcDVDTest : public RentalTest {
 protected:
    FrmPujcDVDTest() {
        sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES"
            " (7, 'Novák', '7'), (12, 'Čermák', '120'), (3, 'Dvořák', '1')");
        dialog.emplace(std::make_shared<SharedUser>());
        dialog->Init(5, u"Čáp & [*]."_s);
        dialog->show();
        QObject::connect(&*dialog, &frmPujcDVD::answered, &*dialog, [this] {
            EXPECT_TRUE(dialog->Ukonceno);
            loansWhenAnswered += loans();
        });
    }
    QComboBox& names() { return control<QComboBox>(*dialog, "Combo1"); }
    QString offered() {
        QString entries;
        for (int at = 0; at < names().count(); ++at)
            entries += names().itemText(at) + u' ';
        return entries;
    }
    void addCustomer(const QString& name) {
        inModalWindow([this] { click(*dialog, "Command4"); },
                      [&](const QWidget& form) {
                          enter(form, {u"99"_s, name, {}, {}, u"Brno"_s});
                          click(form, "cmdSave");
                      });
    }

    std::optional<frmPujcDVD> dialog;
    QStringList loansWhenAnswered;
};

}  // namespace

TEST_F(FrmPujcDVDTest, TheFilmIsLentUnderTheKeyOfTheChosenCustomer) {
    EXPECT_EQ(dialog->windowHandle()->title(), u"Zapůjčit: Čáp & [*]."_s);
    EXPECT_EQ(offered(), u"Čermák Dvořák Novák "_s);
    click(*dialog, "Command2");
    EXPECT_EQ(loans(), u"12 5 2026-03-09 08:05:03"_s);
    EXPECT_EQ(loansWhenAnswered, QStringList(loans()));
    EXPECT_FALSE(dialog->isVisible());

    dialog->show();
    names().setCurrentText(u"Novák"_s);
    addCustomer(u"Chytil"_s);
    EXPECT_EQ(offered(), u"Čermák Dvořák Chytil Novák "_s);
    EXPECT_EQ(names().currentText(), u"Čermák"_s);  // the first one again
    names().setCurrentText(u"Chytil"_s);
    click(*dialog, "Command2");
    EXPECT_EQ(loans(), u"12 5 2026-03-09 08:05:03, 13 5 2026-03-09 08:05:03"_s);
    EXPECT_EQ(loansWhenAnswered.size(), 1);
}

TEST_F(FrmPujcDVDTest, WithoutReadableCustomersTheDialogIsAnsweredButStaysOpen) {
    ASSERT_TRUE(QFile::rename(catalogue(), at(u"away"_s)));
    EXPECT_EQ(failureOf([this] { dialog->Zapujcit(); }), errors::database);
    dialog->ReadData();
    ASSERT_TRUE(QFile::rename(at(u"away"_s), catalogue()));
    EXPECT_EQ(offered(), u""_s);
    click(*dialog, "Command2");
    EXPECT_EQ(outside.owner(), &*dialog);
    EXPECT_EQ(outside.told(),
              u"Není možné zapůjčit, neexistuje uživatel, je nutné ho nejprve vytvořit!|16|Půjčovna"_s);
    EXPECT_TRUE(dialog->isVisible());
    addCustomer(u"Adam"_s);
    click(*dialog, "Command2");
    EXPECT_EQ(loans(), u"13 5 2026-03-09 08:05:03"_s);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(loansWhenAnswered, QStringList(u""_s));
    EXPECT_EQ(outside.told(), u""_s);
}
