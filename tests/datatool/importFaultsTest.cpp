// What damaged files, failing programs and a full disk do to an import: it says so and leaves nothing behind.

#include <signal.h>
#include <sys/resource.h>

#include <QDirIterator>
#include <QStandardPaths>
#include <QTest>

#include "datatool/Importer.h"
#include "datatool/importFixture.h"

using namespace Qt::StringLiterals;

namespace {

class ImportFaults : public OldPair {
 protected:
    /// Everything in the test's folder: names, times and bytes.
    QString state() const {
        QStringList all;
        for (QDirIterator each(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             each.hasNext();)
            all += each.next() + each.fileInfo().lastModified().toString(Qt::ISODateWithMs) +
                   QString::fromLatin1(content(each.filePath()));
        all.sort();
        return all.join(u'\n') + names(u""_s).join(u'/');
    }
    void expectRefused(const QString& told, const QString& target = QStringLiteral("new"),
                       const std::function<void()>& inChild = {}) const {
        const QString before = state();
        const Result result = run({u"import"_s, at(u"old"_s), at(target)}, inChild);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.errors.contains(u"Chyba: "_s) && result.errors.contains(told))
            << told.toStdString() << result.errors.toStdString();
        EXPECT_TRUE(state() == before) << told.toStdString() << names(u""_s).join(u' ').toStdString();
    }
    /// Puts a script in place of one of mdbtools' programs.
    void replaceProgram(const QString& name, const QByteArray& script) {
        QDir().mkpath(at(u"bin"_s));
        write(u"bin/"_s + name, "#!/bin/sh\n" + script);
        QFile::setPermissions(at(u"bin/"_s + name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert(u"PATH"_s, at(u"bin:"_s) + qEnvironmentVariable("PATH"));
    }
};

}  // namespace

TEST_F(ImportFaults, FileThatCannotBeReadIsRefused) {
    const QString data = u"old/data.ddb"_s;
    const QString pictures = u"old/pictures.ddb"_s;
    const QByteArray films = content(data);
    const QByteArray images = content(pictures);
    const auto patched = [&](const QByteArray& from, const QByteArray& to) {
        return QByteArray(films).replace(from, to);
    };
    constexpr qsizetype page = 4096;
    const std::tuple<QString, QByteArray, QString> cases[] = {
        {data, "", u"soubor je prázdný"_s},
        {data, films.first(200000), u"useknutý"_s},
        {data, films.first(5 * page), u"poškozený"_s},
        {data, films.first(60 * page), u"poškozený"_s},
        {data, films.chopped(page), u"poškozený"_s},
        {pictures, images.first(180 * page), u"poškozený"_s},
        {data, patched("Standard Jet", "Stendard Jet"), u"není to databáze Jet"_s},
        {data, patched("Standard Jet DB\0\1"_ba, "Standard Jet DB\0\0"_ba), u"Jet 3 (Access 97)"_s},
        {data, patched("Standard Jet DB\0\1"_ba, "Standard Jet DB\0\2"_ba), u"novějším formátu"_s},
        {data, patched(utf16(u"tUser"), utf16(u"tUsel")), u"chybí v něm tabulka tUser"_s},
        {data, patched(utf16(u"USMAIL"), utf16(u"USMAIX")), u"chybí sloupec USMAIL"_s}};
    for (const auto& [path, bytes, told] : cases) {
        write(path, bytes);
        expectRefused(told);
        write(data, films);
        write(pictures, images);
    }
    QFile::remove(at(pictures));
    expectRefused(u"pictures.ddb nelze převést: soubor tam není"_s);
}

TEST_F(ImportFaults, ProgramThatFailsIsNotBelieved) {
    const std::tuple<QString, QByteArray, QString> cases[] = {
        {u"mdb-count"_s, "[ \"$2\" != tDVD ] || exec echo 41; PATH=${PATH#*:} exec mdb-count \"$@\"",
         u"Nesouhlasí to: tabulka tDVD má podle starého souboru 41 řádků a přečíst se jich dá 40."_s},
        {u"mdb-count"_s, "echo 39", u"Nesouhlasí to"_s},
        {u"mdb-count"_s, "kill -SEGV $$", u"Program mdb-count spadl"_s},
        {u"mdb-count"_s, "exec cat /dev/zero", u"píše bez konce"_s},
        {u"mdb-export"_s, "exit 1", u"Program mdb-export skončil s chybou 1"_s},
        {u"mdb-export"_s, "echo oops >&2", u"Program mdb-export si stěžuje"_s},
        {u"mdb-export"_s, "PATH=${PATH#*:} mdb-export \"$@\" | head -n 1",
         u"Dvě čtení téže tabulky se rozcházejí"_s},
        {u"mdb-export"_s, "printf 'DVDID,\"x'", u"Výpis tabulky ze starého souboru je neúplný"_s}};
    for (const auto& [name, script, told] : cases) {
        SCOPED_TRACE(script.toStdString());
        replaceProgram(name, script);
        expectRefused(told);
        QFile::remove(at(u"bin/"_s + name));
    }
    environment.insert(u"PATH"_s, at(u"bin"_s));
    expectRefused(u"balíček mdbtools"_s);
}

TEST_F(ImportFaults, ProgramThatHangsOrEatsMemoryIsEnded) {
    const QString bin = QFileInfo(QStandardPaths::findExecutable(u"mdb-tables"_s)).path();
    const QString ours = QFileInfo(QStringLiteral(KALVERA_DATA)).path();
    OldPrograms programs{bin + u"/mdb-tables"_s,
                         bin + u"/mdb-count"_s,
                         at(u"bin/mdb-export"_s),
                         ours + u"/kalvera-nulls"_s,
                         {}};
    const std::tuple<QByteArray, ProgramLimits, QString> cases[] = {
        {"exec tail -f /dev/null", {std::chrono::milliseconds(500)}, u"mdb-export pracuje příliš dlouho"_s},
        {"exec head -c 1000000000 /dev/zero | sort",
         {std::chrono::seconds(60), 64LL << 20},
         u"Program mdb-export"_s}};
    for (const auto& [script, limits, told] : cases) {
        replaceProgram(u"mdb-export"_s, script);
        programs.limits = limits;
        const QString description = descriptionOf([&] {
            importer::run(at(u"old"_s), at(u"new"_s), programs, [](const QString&, qint64, qint64) {});
        });
        EXPECT_TRUE(description.contains(told)) << description.toStdString();
        EXPECT_FALSE(QFile::exists(at(u"new"_s)));
    }
}

TEST_F(ImportFaults, TakenFolderAndFullDiskStayAsTheyAre) {
    QDir().mkpath(at(u"report"_s));
    write(u"report/import.txt"_s, "mine");
    expectRefused(u"Soubor již existuje a nebude přepsán"_s, u"report"_s);
    for (const QString& impossible : {u"old/data.ddb/new"_s, u"/proc/kalvera/new"_s})
        expectRefused(u"Složku nelze vytvořit"_s, impossible);
    for (const rlim_t bytes : {1000U, 60000U, 200000U, 600000U}) {
        expectRefused(u""_s, u"new/deep/folder"_s, [bytes] {
            const rlimit full{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &full);
        });
    }
}

TEST_F(ImportFaults, InterruptionLeavesNothing) {
    replaceProgram(
        u"mdb-export"_s,
        "case \"$*\" in *tDVD) echo $$ > \"$STARTED.part\"; mv \"$STARTED.part\" \"$STARTED\";; esac\n"
        "exec tail -f /dev/null");
    environment.insert(u"STARTED"_s, at(u"started"_s));
    for (const int request : {SIGINT, SIGTERM}) {
        QProcess program;
        program.setProcessEnvironment(environment);
        const QString before = state();
        program.start(QStringLiteral(KALVERA_DATA), {u"import"_s, at(u"old"_s), at(u"new"_s)});
        const auto isUnderWay = [this] {
            return QFile::exists(at(u"started"_s)) && QFile::exists(at(u"new/data.ddb.new"_s));
        };
        ASSERT_TRUE(QTest::qWaitFor(isUnderWay, 30000));
        const int child = content(u"started"_s).trimmed().toInt();
        kill(static_cast<pid_t>(program.processId()), request);
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 1);
        EXPECT_TRUE(QString::fromUtf8(program.readAllStandardError()).contains(u"přerušena"_s));
        EXPECT_NE(kill(child, 0), 0);
        ASSERT_TRUE(QFile::remove(at(u"started"_s)));
        EXPECT_TRUE(state() == before);
    }
}
