#include "rental/frmPujcDVD.h"

#include <QFile>

#include "rental/SharedUser.h"
#include "rental/rentalFixture.h"

using namespace Qt::StringLiterals;

namespace {

const QString noCustomer =
    u"Není možné zapůjčit, neexistuje uživatel, je nutné ho nejprve vytvořit!|16|Půjčovna"_s;

class FrmPujcDVDTest : public RentalTest {
 protected:
    void SetUp() override {
        sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES"
            " (7, 'Novák', '7'), (12, 'Čermák', '120'), (3, 'Dvořák', '1')");
    }

    frmPujcDVD& dialog() {
        if (!dialog_) {
            dialog_.emplace(std::make_shared<SharedUser>());
            dialog_->Init(5, u"Čáp & spol."_s);
            dialog_->show();
            QObject::connect(&*dialog_, &frmPujcDVD::answered, &*dialog_, [this] {
                loansWhenAnswered += loans();
                EXPECT_TRUE(dialog_->Ukonceno);
            });
        }
        return *dialog_;
    }
    QComboBox& names() { return control<QComboBox>(dialog(), "Combo1"); }
    QString offered() {
        QStringList entries;
        for (int at = 0; at < names().count(); ++at)
            entries += names().itemText(at);
        return entries.join(u", "_s);
    }
    void addCustomer(const QString& name) {
        inModalWindow([this] { click(dialog(), "Command4"); },
                      [&](const QWidget& form) {
                          enter(form, {u"99"_s, name, {}, {}, u"Brno"_s});
                          click(form, "cmdSave");
                      });
    }

    QStringList loansWhenAnswered;

 private:
    std::optional<frmPujcDVD> dialog_;
};

}  // namespace

TEST_F(FrmPujcDVDTest, TheFilmIsLentUnderTheKeyOfTheCustomerChosen) {
    EXPECT_EQ(dialog().windowTitle(), u"Zapůjčit: Čáp & spol."_s);
    EXPECT_EQ(offered(), u"Čermák, Dvořák, Novák"_s);
    click(dialog(), "Command2");
    EXPECT_EQ(loans(), u"12 5 2026-03-09 08:05:03"_s);
    EXPECT_EQ(loansWhenAnswered, QStringList(loans()));
    EXPECT_FALSE(dialog().isVisible());

    dialog().show();
    names().setCurrentText(u"Novák"_s);
    addCustomer(u"Chytil"_s);
    EXPECT_EQ(offered(), u"Čermák, Dvořák, Chytil, Novák"_s);
    EXPECT_EQ(names().currentText(), u"Čermák"_s);  // the first one again
    names().setCurrentText(u"Chytil"_s);
    click(dialog(), "Command2");
    EXPECT_EQ(loans(), u"12 5 2026-03-09 08:05:03, 13 5 2026-03-09 08:05:03"_s);
    EXPECT_EQ(loansWhenAnswered.size(), 1);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmPujcDVDTest, WithoutCustomersTheDialogIsAnsweredButStaysUntilOneIsThere) {
    sql("DELETE FROM tUser");
    click(dialog(), "Command2");
    EXPECT_EQ(outside.told(), noCustomer);
    EXPECT_TRUE(dialog().Ukonceno);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(loansWhenAnswered, QStringList(u""_s));
    addCustomer(u"Nový"_s);
    click(dialog(), "Command2");
    EXPECT_EQ(loans(), u"13 5 2026-03-09 08:05:03"_s);
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(loansWhenAnswered.size(), 1);
    EXPECT_EQ(outside.told(), u""_s);
}

TEST_F(FrmPujcDVDTest, StornoAnswersAndTheFrameDoesNot) {
    const std::tuple<const char*, std::function<void()>, int> cases[] = {
        {"frame", [this] { dialog().close(); }, 0},
        {"button", [this] { click(dialog(), "Command1"); }, 1},
        {"key", [this] { QTest::keyClick(&names(), Qt::Key_Escape); }, 1}};
    for (const auto& [way, leave, answers] : cases) {
        SCOPED_TRACE(way);
        dialog().Ukonceno = false;
        loansWhenAnswered.clear();
        dialog().show();
        leave();
        EXPECT_FALSE(dialog().isVisible());
        EXPECT_EQ(dialog().Ukonceno, answers == 1);
        EXPECT_EQ(loansWhenAnswered.size(), answers);
        EXPECT_EQ(loans(), u""_s);
    }
}

TEST_F(FrmPujcDVDTest, ALoanThatCannotBeStoredFailsAndCustomersThatCannotBeReadAreNone) {
    dialog();
    ASSERT_TRUE(QFile::rename(catalogue(), at(u"away"_s)));
    EXPECT_EQ(failureOf([this] { dialog().Zapujcit(); }), errors::database);
    EXPECT_TRUE(dialog().isVisible());
    dialog().ReadData();
    EXPECT_EQ(names().count(), 0);
    dialog().Zapujcit();
    EXPECT_EQ(outside.told(), noCustomer);
    ASSERT_TRUE(QFile::rename(at(u"away"_s), catalogue()));
    EXPECT_EQ(loans(), u""_s);
}
