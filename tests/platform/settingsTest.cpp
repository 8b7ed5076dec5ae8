#include "platform/settings.h"

#include "support/TemporaryProgram.h"

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
    ASSERT_TRUE(QDir().mkpath(store));  // a folder where the file should be
    save(u"Key"_s, u"value"_s);
    EXPECT_EQ(read(u"Key"_s), u"default"_s);
}
