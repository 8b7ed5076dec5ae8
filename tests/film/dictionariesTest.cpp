#include <QFile>
#include <QScrollBar>

#include "film/dictionaryFixture.h"
#include "film/frmOddeleniList.h"
#include "film/frmZanry.h"

using namespace Qt::StringLiterals;

namespace {

/// What the two pairs of windows differ in.
struct Dictionary {
    const char* name;
    std::unique_ptr<DictionaryList> (*maker)();
    const char* fill;
    const char* records;

    friend void PrintTo(const Dictionary& dictionary, std::ostream* out) { *out << dictionary.name; }
};

const Dictionary dictionaries[] = {
    {"Genres", make<frmZanry>,
     "DELETE FROM tZanr;"
     "INSERT INTO tZanr (ZID, ZNAME) VALUES (3, 'Western'), (40, 'Čaroděj'), (12, 'Akční')",
     "SELECT group_concat(ZID || ZNAME) FROM tZanr"},
    {"Departments", make<frmOddeleniList>,
     "DELETE FROM tOddeleni;"
     "INSERT INTO tOddeleni (ODID, OdJm) VALUES (3, 'Western'), (40, 'Čaroděj'), (12, 'Akční')",
     "SELECT group_concat(ODID || OdJm) FROM tOddeleni"},
};

class DictionariesTest : public DictionaryTest, public testing::WithParamInterface<Dictionary> {
 protected:
    DictionariesTest() : DictionaryTest(GetParam().maker) { sql(GetParam().fill); }
    QString stored() const { return text(GetParam().records); }
};

INSTANTIATE_TEST_SUITE_P(Windows, DictionariesTest, testing::ValuesIn(dictionaries),
                         [](const auto& test) { return std::string(test.param.name); });

class GenresTest : public DictionaryTest {
 protected:
    GenresTest() : DictionaryTest(make<frmZanry>) {}
};
using GenresDeathTest = GenresTest;

class DepartmentsTest : public DictionaryTest {
 protected:
    DepartmentsTest() : DictionaryTest(make<frmOddeleniList>) {}
};

}  // namespace

TEST_P(DictionariesTest, TheListShowsAllRecordsInTheOrderOfTheDatabase) {
    EXPECT_EQ(rows(), QStringList({u"Z3||3|Western"_s, u"Z12||12|Akční"_s, u"Z40||40|Čaroděj"_s}));
    EXPECT_EQ(list().selectedItem().key(), u"Z3"_s);
    EXPECT_GE(list().viewport()->width() - list().verticalScrollBar()->sizeHint().width(),
              list().columnWidth(0) + list().columnWidth(1));
}

TEST_P(DictionariesTest, ANewRecordIsStoredAndListedUnderAKeyOfItsOwn) {
    edit("Command1", [&](const RecordWindow& record) {
        EXPECT_TRUE(record.name.text().isEmpty());
        EXPECT_TRUE(record.name.hasFocus());
        record.type(u"Žížala \"O'Hara\""_s);
        click(record.window, "cmdSave");
    });
    EXPECT_EQ(stored(), u"3Western,12Akční,40Čaroděj,41Žížala \"O'Hara\""_s);
    EXPECT_EQ(rows().value(3), u"Z41||41|Žížala \"O'Hara\""_s);
    EXPECT_EQ(list().selectedItem().key(), u"Z3"_s);
}

TEST_P(DictionariesTest, ANameBelowThreeLettersIsRefusedUntilItIsCorrected) {
    edit("Command1", [&](const RecordWindow& record) {
        for (const QString& refused : {u""_s, u"ab"_s, u"    "_s, u"  ab   "_s}) {
            record.type(refused);
            record.press(Qt::Key_Return);
            EXPECT_EQ(outside.told(), u"Název musí být vyplněn!|0|Chyba:"_s);
            EXPECT_EQ(backColour(record.name), pink);
            EXPECT_TRUE(record.window.isVisible());
        }
        record.type(u"  abc "_s);
        record.press(Qt::Key_Return);
        EXPECT_EQ(backColour(record.name), white);
    });
    EXPECT_EQ(stored(), u"3Western,12Akční,40Čaroděj,41  abc "_s);
    EXPECT_EQ(rows().value(3), u"Z41||41|  abc "_s);
}

TEST_P(DictionariesTest, TheSelectedRecordIsRenamed) {
    list().select(list().item(u"Z12"_s));
    edit("Command3", [](const RecordWindow& record) {
        EXPECT_EQ(record.name.text(), u"Akční"_s);
        record.type(u"Akční a válečný"_s);
        record.press(Qt::Key_Return);
    });
    EXPECT_EQ(stored(), u"3Western,12Akční a válečný,40Čaroděj"_s);
    EXPECT_EQ(rows().value(1), u"Z12||12|Akční a válečný"_s);
    list().select(list().item(u"Z40"_s));
    edit("Command3", [](const RecordWindow& record) {
        EXPECT_EQ(record.name.text(), u"Čaroděj"_s);
        record.press(Qt::Key_Escape);
    });
}

TEST_P(DictionariesTest, ACancelledRecordChangesNothing) {
    const Steps cancels[] = {[](const RecordWindow& record) { click(record.window, "cmdStorno"); },
                             [](const RecordWindow& record) { record.press(Qt::Key_Escape); },
                             [](const RecordWindow& record) { record.window.close(); }};
    const QStringList before = rows();
    for (const char* name : {"Command1", "Command3"}) {
        for (const Steps& cancel : cancels) {
            edit(name, [&](const RecordWindow& record) {
                record.type(u"Zrušený"_s);
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
    edit("Command3", [](const RecordWindow& record) {
        record.type(u"Horor"_s);
        record.press(Qt::Key_Return);
    });
    add(u"Noir"_s);
    EXPECT_EQ(rows(), QStringList({u"Z1|ff0000|1|Horor"_s, u"Z26||26|Noir"_s}));
    EXPECT_EQ(number("SELECT ZCOLOR FROM tZanr WHERE ZID=26"), 0);
}

TEST_F(GenresTest, ThereIsNothingToEditWithoutGenres) {
    sql("DELETE FROM tZanr");
    EXPECT_FALSE(button("Command3").isEnabled());
    add(u"Noir"_s);
    EXPECT_TRUE(button("Command3").isEnabled());
    sql("DELETE FROM tZanr");
    window().Refresh_List();
    EXPECT_FALSE(button("Command3").isEnabled());
}

TEST_F(DepartmentsTest, EditingWithoutDepartmentsDoesNothingAndANewOneCanFollow) {
    sql("DELETE FROM tOddeleni");
    EXPECT_TRUE(button("Command3").isEnabled());
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
        edit("Command3", [this](const RecordWindow& record) {
            sql("DELETE FROM tZanr");
            record.press(Qt::Key_Return);
        });
    };
    EXPECT_EXIT(saveAfterDeletion(), testing::ExitedWithCode(1), "");
}
