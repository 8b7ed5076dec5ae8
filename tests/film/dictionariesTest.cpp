#include <QFile>
#include <QScrollBar>

#include "film/DictionaryList.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"

namespace {

QLineEdit& name(const QWidget& record) {
    return control<QLineEdit>(record, "txtZanr");
}
void enter(const QWidget& record, const QString& text) {
    name(record).setText(text);
    QTest::keyClick(&name(record), Qt::Key_Return);
}

/// Both list windows over three records; the genre Akční is blue.
class DictionariesTest : public TemporaryProgram, public testing::WithParamInterface<bool> {
 protected:
    DictionariesTest() {
        sql("DELETE FROM tZanr; INSERT INTO tZanr VALUES (3, 'Western', 0), (40, 'Čaroděj', 0), "
            "(12, 'Akční', 16711680);"
            "DELETE FROM tOddeleni; INSERT INTO tOddeleni (ODID, OdJm) SELECT ZID, ZNAME FROM tZanr");
    }
    DictionaryList& window() {
        if (window_ == nullptr) {
            window_ = departments ? std::unique_ptr<DictionaryList>(new frmOddeleniList)
                                  : std::make_unique<frmZanry>();
            window_->show();
        }
        return *window_;
    }
    ListView& list() { return control<ListView>(window(), "lvwZanr"); }

    void edit(const char* button, const std::function<void(QWidget&)>& steps) {
        inModalWindow([&] { click(window(), button); }, steps);
    }

    /// Expects these records in the database and, under their keys, in the list.
    void expectRecords(const QString& records) {
        EXPECT_EQ(text(departments ? "SELECT group_concat(ODID || ' ' || OdJm, ', ') FROM tOddeleni"
                                   : "SELECT group_concat(ZID || ' ' || ZNAME, ', ') FROM tZanr"),
                  records);
        QStringList rows;
        for (int number = 0; number < list().count(); ++number) {
            const ListItem row = list().itemAt(number);
            EXPECT_EQ(row.key(), u'Z' + row.text());
            EXPECT_EQ(list().model()->index(number, 1).data(Qt::ForegroundRole),
                      !departments && row.text() == u"12" ? QColor(Qt::blue) : QVariant());
            rows += row.text() + u' ' + row.subItem(1);
        }
        EXPECT_EQ(rows.join(u", "_s), records);
    }

    const bool departments = GetParam();

 private:
    std::unique_ptr<DictionaryList> window_;
};

INSTANTIATE_TEST_SUITE_P(Windows, DictionariesTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Departments" : "Genres"; });

}  // namespace

TEST_P(DictionariesTest, ANewRecordNeedsANameOfThreeLetters) {
    edit("Command1", [&](QWidget& record) {
        EXPECT_TRUE(name(record).text().isEmpty() && name(record).hasFocus());
        for (const QString& refused : {u""_s, u"ab"_s, u"  ab   "_s}) {
            enter(record, refused);
            EXPECT_EQ(outside.told(), u"Název musí být vyplněn!|0|Chyba:"_s);
            EXPECT_EQ(name(record).palette().base().color(), QColor(250, 200, 200));
            EXPECT_TRUE(record.isVisible());
        }
        name(record).setText(u" O'\" "_s);
        click(record, "cmdSave");
        EXPECT_EQ(name(record).palette().base().color(), QColor(Qt::white));
    });
    expectRecords(u"3 Western, 12 Akční, 40 Čaroděj, 41  O'\" "_s);
    EXPECT_EQ(list().selectedItem().key(), u"Z3"_s);
    EXPECT_GE(list().viewport()->width() - list().verticalScrollBar()->sizeHint().width(),
              list().columnWidth(0) + list().columnWidth(1));
}

TEST_P(DictionariesTest, TheSelectedRecordIsRenamedUnlessCancelled) {
    for (const char* button : {"Command1", "Command3"}) {
        edit(button, [](QWidget& record) {
            name(record).setText(u"Zrušený"_s);
            click(record, "cmdStorno");
        });
    }
    expectRecords(u"3 Western, 12 Akční, 40 Čaroděj"_s);
    for (const auto& [key, former] : {std::pair(u"Z12"_s, u"Akční"_s), {u"Z40"_s, u"Čaroděj"_s}}) {
        list().select(list().item(key));
        edit("Command3", [&former = former](QWidget& record) {
            EXPECT_EQ(name(record).text(), former);
            enter(record, former + u" film"_s);
        });
    }
    expectRecords(u"3 Western, 12 Akční film, 40 Čaroděj film"_s);
}

TEST_P(DictionariesTest, AnEmptyDictionaryTakesANewRecord) {
    sql("DELETE FROM tZanr; DELETE FROM tOddeleni");
    EXPECT_EQ(control<QAbstractButton>(window(), "Command3").isEnabled(), departments);
    click(window(), "Command3");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(window().findChild<QDialog*>(u"frmOddel"_s) != nullptr, departments);
    edit("Command1", [](QWidget& record) { enter(record, u"Noir"_s); });
    EXPECT_EQ(window().findChild<QDialog*>(u"frmOddel"_s), nullptr);
    EXPECT_TRUE(control<QAbstractButton>(window(), "Command3").isEnabled());
    expectRecords(u"41 Noir"_s);
}

TEST_P(DictionariesTest, FailuresAreNotHandled) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto saveDeleted = [this] {
        edit("Command3", [this](QWidget& record) {
            sql("DELETE FROM tZanr; DELETE FROM tOddeleni");
            enter(record, u"Noir"_s);
        });
    };
    EXPECT_EXIT(saveDeleted(), testing::ExitedWithCode(1), "");
    sql("UPDATE tZanr SET ZNAME=NULL; UPDATE tOddeleni SET OdJm=NULL");
    EXPECT_EQ(failureOf([this] { window(); }), errors::invalidNull);
    ASSERT_TRUE(QFile::remove(catalogue()));
    EXPECT_EQ(failureOf([this] { window(); }), errors::database);
}
