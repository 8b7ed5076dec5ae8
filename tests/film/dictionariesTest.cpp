#include <QFile>
#include <QScrollBar>

#include "film/DictionaryList.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"

using namespace Qt::StringLiterals;

namespace {

/// The field of the record window that is open.
QLineEdit& name(const QWidget& record) {
    return control<QLineEdit>(record, "txtZanr");
}
/// Types a name in place of the former one.
void type(const QWidget& record, const QString& text) {
    name(record).selectAll();
    QTest::sendKeyEvent(QTest::Click, &name(record), Qt::Key_unknown, text, Qt::NoModifier);
}
void press(const QWidget& record, Qt::Key key) {
    QTest::keyClick(&name(record), key);
}
void enter(const QWidget& record, const QString& text) {
    type(record, text);
    press(record, Qt::Key_Return);
}

/// One of the two list windows, made and shown at its first use.
class DictionaryTest : public TemporaryProgram {
 protected:
    explicit DictionaryTest(bool departments) : departments_(departments) {}

    DictionaryList& window() {
        if (window_ == nullptr) {
            if (departments_)
                window_ = std::make_unique<frmOddeleniList>();
            else
                window_ = std::make_unique<frmZanry>();
            window_->show();
        }
        return *window_;
    }
    ListView& list() { return control<ListView>(window(), "lvwZanr"); }
    bool canEdit() { return control<QAbstractButton>(window(), "Command3").isEnabled(); }

    /// Clicks a button of the list and goes through the steps in the record window that this opens.
    void edit(const char* button, const std::function<void(QWidget&)>& steps) {
        inModalWindow([&] { click(window(), button); }, steps);
    }
    void add(const QString& text) {
        edit("Command1", [&](const QWidget& record) { enter(record, text); });
    }

    /// The rows in order: key, colour where it is not black, and cells.
    QStringList rows() {
        QStringList result;
        for (int number = 0; number < list().count(); ++number) {
            const ListItem row = list().itemAt(number);
            const QString colour = row.foreColor() == 0 ? QString() : QString::number(row.foreColor(), 16);
            result += QStringList({row.key(), colour, row.text(), row.subItem(1)}).join(u'|');
        }
        return result;
    }

 private:
    bool departments_;
    std::unique_ptr<DictionaryList> window_;
};

class DictionariesTest : public DictionaryTest, public testing::WithParamInterface<bool> {
 protected:
    DictionariesTest() : DictionaryTest(GetParam()) {
        sql(GetParam() ? "DELETE FROM tOddeleni; INSERT INTO tOddeleni (ODID, OdJm) VALUES (3, 'Western'),"
                         " (40, 'Čaroděj'), (12, 'Akční')"
                       : "DELETE FROM tZanr; INSERT INTO tZanr (ZID, ZNAME) VALUES (3, 'Western'),"
                         " (40, 'Čaroděj'), (12, 'Akční')");
    }
    QString stored() const {
        return text(GetParam() ? "SELECT group_concat(ODID || OdJm) FROM tOddeleni"
                               : "SELECT group_concat(ZID || ZNAME) FROM tZanr");
    }
};

INSTANTIATE_TEST_SUITE_P(Windows, DictionariesTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Departments" : "Genres"; });

class GenresTest : public DictionaryTest {
 protected:
    GenresTest() : DictionaryTest(false) {}
};
using GenresDeathTest = GenresTest;

class DepartmentsTest : public DictionaryTest {
 protected:
    DepartmentsTest() : DictionaryTest(true) {}
};

}  // namespace

TEST_P(DictionariesTest, TheListShowsAllRecordsInTheOrderOfTheDatabase) {
    EXPECT_EQ(rows(), QStringList({u"Z3||3|Western"_s, u"Z12||12|Akční"_s, u"Z40||40|Čaroděj"_s}));
    EXPECT_EQ(list().selectedItem().key(), u"Z3"_s);
    EXPECT_GE(list().viewport()->width() - list().verticalScrollBar()->sizeHint().width(),
              list().columnWidth(0) + list().columnWidth(1));
}

TEST_P(DictionariesTest, ANewRecordIsStoredAndListedUnderAKeyOfItsOwn) {
    edit("Command1", [&](QWidget& record) {
        EXPECT_TRUE(name(record).text().isEmpty());
        EXPECT_TRUE(name(record).hasFocus());
        type(record, u"Žížala \"O'Hara\""_s);
        click(record, "cmdSave");
    });
    EXPECT_EQ(stored(), u"3Western,12Akční,40Čaroděj,41Žížala \"O'Hara\""_s);
    EXPECT_EQ(rows().value(3), u"Z41||41|Žížala \"O'Hara\""_s);
    EXPECT_EQ(list().selectedItem().key(), u"Z3"_s);
}

TEST_P(DictionariesTest, ANameBelowThreeLettersIsRefusedUntilItIsCorrected) {
    edit("Command1", [&](QWidget& record) {
        for (const QString& refused : {u""_s, u"ab"_s, u"    "_s, u"  ab   "_s}) {
            enter(record, refused);
            EXPECT_EQ(outside.told(), u"Název musí být vyplněn!|0|Chyba:"_s);
            EXPECT_EQ(name(record).palette().base().color(), QColor(250, 200, 200));
            EXPECT_TRUE(record.isVisible());
        }
        enter(record, u"  abc "_s);
        EXPECT_EQ(name(record).palette().base().color(), QColor(Qt::white));
    });
    EXPECT_EQ(stored(), u"3Western,12Akční,40Čaroděj,41  abc "_s);
    EXPECT_EQ(rows().value(3), u"Z41||41|  abc "_s);
}

TEST_P(DictionariesTest, TheSelectedRecordIsRenamed) {
    list().select(list().item(u"Z12"_s));
    edit("Command3", [](QWidget& record) {
        EXPECT_EQ(name(record).text(), u"Akční"_s);
        enter(record, u"Akční a válečný"_s);
    });
    EXPECT_EQ(stored(), u"3Western,12Akční a válečný,40Čaroděj"_s);
    EXPECT_EQ(rows().value(1), u"Z12||12|Akční a válečný"_s);
    list().select(list().item(u"Z40"_s));
    edit("Command3", [](QWidget& record) {
        EXPECT_EQ(name(record).text(), u"Čaroděj"_s);
        press(record, Qt::Key_Escape);
    });
}

TEST_P(DictionariesTest, ACancelledRecordChangesNothing) {
    const std::function<void(QWidget&)> cancels[] = {[](QWidget& record) { click(record, "cmdStorno"); },
                                                     [](QWidget& record) { press(record, Qt::Key_Escape); },
                                                     [](QWidget& record) { record.close(); }};
    const QStringList before = rows();
    for (const char* button : {"Command1", "Command3"}) {
        for (const auto& cancel : cancels) {
            edit(button, [&](QWidget& record) {
                type(record, u"Zrušený"_s);
                cancel(record);
            });
        }
    }
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(stored(), u"3Western,12Akční,40Čaroděj"_s);
}

TEST_F(GenresTest, AGenreHasItsColourInBothColumnsAndKeepsItWhenRenamed) {
    sql("DELETE FROM tZanr WHERE ZID>1; UPDATE tZanr SET ZCOLOR=16711680");
    EXPECT_EQ(rows(), QStringList(u"Z1|ff0000|1|Akční"_s));
    for (const int column : {0, 1})
        EXPECT_EQ(list().model()->index(0, column).data(Qt::ForegroundRole), QColor(0, 0, 255));
    edit("Command3", [](QWidget& record) { enter(record, u"Horor"_s); });
    add(u"Noir"_s);
    EXPECT_EQ(rows(), QStringList({u"Z1|ff0000|1|Horor"_s, u"Z26||26|Noir"_s}));
    EXPECT_EQ(number("SELECT ZCOLOR FROM tZanr WHERE ZID=26"), 0);
}

TEST_F(GenresTest, ThereIsNothingToEditWithoutGenres) {
    sql("DELETE FROM tZanr");
    EXPECT_FALSE(canEdit());
    add(u"Noir"_s);
    EXPECT_TRUE(canEdit());
    sql("DELETE FROM tZanr");
    window().Refresh_List();
    EXPECT_FALSE(canEdit());
}

TEST_F(DepartmentsTest, EditingWithoutDepartmentsDoesNothingAndANewOneCanFollow) {
    sql("DELETE FROM tOddeleni");
    EXPECT_TRUE(canEdit());
    click(window(), "Command3");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_NE(window().findChild<QDialog*>(u"frmOddel"_s), nullptr);
    add(u"Seriály"_s);
    EXPECT_EQ(window().findChild<QDialog*>(u"frmOddel"_s), nullptr);
    EXPECT_EQ(rows().size(), 1);
    EXPECT_EQ(text("SELECT OdJm FROM tOddeleni"), u"Seriály"_s);
}

TEST_F(GenresTest, AListThatCannotBeReadFails) {
    sql("INSERT INTO tZanr (ZCOLOR) VALUES (0)");
    EXPECT_EQ(failureOf([this] { window(); }), errors::invalidNull);
    ASSERT_TRUE(QFile::remove(catalogue()));
    EXPECT_EQ(failureOf([this] { window(); }), errors::database);
}

TEST_F(GenresDeathTest, SavingARecordThatIsGoneEndsTheProgram) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto saveAfterDeletion = [this] {
        edit("Command3", [this](QWidget& record) {
            sql("DELETE FROM tZanr");
            press(record, Qt::Key_Return);
        });
    };
    EXPECT_EXIT(saveAfterDeletion(), testing::ExitedWithCode(1), "");
}
