#include <QComboBox>

#include "core/mDialog.h"
#include "core/mFunction.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

using SharedFunctionsTest = TemporaryProgram;

TEST_F(SharedFunctionsTest, AnEntryIsFoundByItsItemData) {
    QComboBox combo;
    EXPECT_EQ(NajdiItemData(*combo.model(), 5, -1), -1);
    combo.addItem(u"bez čísla"_s);
    combo.addItem(u"pět"_s, 5);
    combo.addItem(u"nula"_s, 0);
    combo.addItem(u"znovu pět"_s, 5);
    const std::pair<DbValue, qint16> cases[] = {{5, 1}, {u"5"_s, 1}, {0, 2}, {6, 9}, {DbValue(), 9}};
    for (const auto& [value, index] : cases)
        EXPECT_EQ(NajdiItemData(*combo.model(), value, 9), index);
    EXPECT_EQ(failureOf([&] { NajdiItemData(*combo.model(), u"pět"_s, 9); }), errors::typeMismatch);
}

TEST_F(SharedFunctionsTest, PictureDialogsStartWhereTheSettingsSay) {
    outside.files = {u"/obrazky/a.jpg  "_s, QString(), u"  /b.jpg"_s};
    UlozNastaveni(u"Nahled"_s, u"/nahledy"_s);
    EXPECT_EQ(OtevritObal(nullptr), u"/obrazky/a.jpg"_s);
    EXPECT_EQ(OtevritNahled(nullptr), u""_s);
    EXPECT_EQ(UlozitObrazek(nullptr), u"/b.jpg"_s);
    QStringList asked;
    for (const FileDialogRequest& request : outside.fileDialogs) {
        asked += request.title + u'|' + request.folder;
        EXPECT_EQ(request.filterName + request.pattern + request.defaultExtension,
                  u"JPEG Obrazek (*.jpg)*.jpgjpg"_s);
    }
    EXPECT_EQ(asked, QStringList({u"Načtení obrázku|"_s + folder(), u"Načtení obrázku|/nahledy"_s,
                                  u"Uložení obrázku|"_s + QDir::homePath()}));
}
