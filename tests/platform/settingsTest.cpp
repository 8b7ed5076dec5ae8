#include "platform/settings.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QSettings>

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
    static void setMode(const QString& path, mode_t mode) {
        ASSERT_EQ(chmod(path.toUtf8().constData(), mode), 0) << path.toStdString();
    }
};

}  // namespace

TEST_F(Settings, TextOnDiskIsTheTextThatWasSaved) {
    const QStringList texts =
        uR"(|Brem, DVD; "Kalvéra"|  blanks  |C:\data\nové\x41|a,b,c|@Variant(1)|@@|50 % [x]=y #z|two
lines|🎬)"_s.split(u'|');
    for (qsizetype at = 0; at < texts.size(); ++at)
        save(u"Text %1"_s.arg(at), texts[at]);
    // Read from a copy elsewhere, as what this process remembers of the first store does not count.
    ASSERT_TRUE(QDir().mkpath(at(u"other"_s)));
    ASSERT_TRUE(QFile::copy(store, at(u"other/Kino.conf"_s)));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, at(u"other"_s));
    for (qsizetype at = 0; at < texts.size(); ++at)
        EXPECT_EQ(read(u"Text %1"_s.arg(at)), texts[at]);
}

TEST_F(Settings, ApplicationSectionAndKeyAreKeptApart) {
    settings::SaveSetting(u"Kino"_s, u"Other"_s, u"Key"_s, u"other section"_s);
    settings::SaveSetting(u"Divadlo"_s, u"Main"_s, u"Key"_s, u"other application"_s);
    EXPECT_EQ(read(u"Key"_s), u"default"_s);
    save(u"Key"_s, u"first"_s);
    save(u"Key"_s, u"last"_s);
    EXPECT_EQ(read(u"Key"_s) + read(u"Key"_s, u"Other"_s) + read(u"Key"_s, u"Main"_s, u"Divadlo"_s),
              u"lastother sectionother application"_s);
}

TEST_F(Settings, ChangesMadeByHandAreSeen) {
    save(u"Name"_s, u"old"_s);
    write(store, "[Main]\nName=new name\nList=a,b,c\nNumber=5\n");
    EXPECT_EQ(read(u"Name"_s), u"new name"_s);
    EXPECT_EQ(read(u"List"_s), u"a,b,c"_s);
    EXPECT_EQ(read(u"Number"_s), u"5"_s);
}

TEST_F(Settings, StoreThatCannotBeReadGivesTheDefault) {
    ASSERT_TRUE(QDir().mkpath(store));  // a folder where the file should be
    EXPECT_EQ(read(u"Key"_s), u"default"_s);
    save(u"Key"_s, u"value"_s);
    EXPECT_EQ(read(u"Key"_s), u"default"_s);
}

TEST_F(Settings, StoreThatCannotBeWrittenStaysAsItWas) {
    save(u"Key"_s, u"old"_s);
    setMode(folder(), 0755);
    setMode(folder() + u"/settings"_s, 0555);
    setMode(store, 0444);
    const bool root = geteuid() == 0;  // for whom the rights of files do not hold
    ASSERT_EQ(root ? setresuid(65534, 65534, 0) : 0, 0);
    const QString before = read(u"Key"_s);
    save(u"Key"_s, u"new"_s);
    ASSERT_EQ(root ? setresuid(0, 0, 0) : 0, 0);
    setMode(folder() + u"/settings"_s, 0755);
    EXPECT_EQ(before, u"old"_s);
    EXPECT_TRUE(content(store).contains("Key=old"));
}
