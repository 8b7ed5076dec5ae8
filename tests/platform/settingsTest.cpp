#include "platform/settings.h"

#include <sys/stat.h>

#include "platform/restrictions.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class Settings : public TemporaryProgram {
 protected:
    const QString store = at(u"settings/Kino.conf"_s);

    static QString read(const QString& key, const QString& section = u"Main"_s,
                        const QString& application = u"Kino"_s) {
        return settings::GetSetting(application, section, key, u"default"_s);
    }
    static void save(const QString& key, const QString& value) {
        settings::SaveSetting(u"Kino"_s, u"Main"_s, key, value);
    }
};

}  // namespace

TEST_F(Settings, ApplicationSectionAndKeyAreKeptApartAndEditsByHandAreSeen) {
    settings::SaveSetting(u"Kino"_s, u"Other"_s, u"Key"_s, u"section"_s);
    settings::SaveSetting(u"Divadlo"_s, u"Main"_s, u"Key"_s, u"application"_s);
    EXPECT_EQ(read(u"Key"_s), u"default"_s);
    save(u"Key"_s, u"first"_s);
    save(u"Key"_s, u" Brem, DVD; \"Kalvéra\" C:\\x41 @@ 50 % [x]=y #z\n🎬 "_s);
    EXPECT_EQ(read(u"Key"_s) + read(u"Key"_s, u"Other"_s) + read(u"Key"_s, u"Main"_s, u"Divadlo"_s),
              u" Brem, DVD; \"Kalvéra\" C:\\x41 @@ 50 % [x]=y #z\n🎬 sectionapplication"_s);
    write(store, "[Main]\nKey=new name\nList=a,b,c\nNumber=5\n");
    EXPECT_EQ(read(u"Key"_s) + read(u"List"_s) + read(u"Number"_s), u"new namea,b,c5"_s);
}

TEST_F(Settings, StoreThatCannotBeWrittenOrReadIsLeft) {
    save(u"Key"_s, u"old"_s);
    chmod(folder().toUtf8().constData(), 0755);
    chmod(at(u"settings"_s).toUtf8().constData(), 0555);
    chmod(store.toUtf8().constData(), 0444);
    {
        const OrdinaryUser user;
        EXPECT_EQ(read(u"Key"_s), u"old"_s);
        save(u"Key"_s, u"new"_s);
    }
    chmod(at(u"settings"_s).toUtf8().constData(), 0755);
    EXPECT_TRUE(content(store).contains("Key=old"));
    ASSERT_TRUE(QDir().mkpath(at(u"settings/Divadlo.conf"_s)));  // a folder where the file should be
    settings::SaveSetting(u"Divadlo"_s, u"Main"_s, u"Key"_s, u"value"_s);
    EXPECT_EQ(read(u"Key"_s, u"Main"_s, u"Divadlo"_s), u"default"_s);
}
