#include "core/mDialog.h"
#include "core/mFunction.h"
#include "support/TemporaryProgram.h"

using SharedFunctionsTest = TemporaryProgram;

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
