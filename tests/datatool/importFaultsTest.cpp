// What kalvera-data does with old files that are damaged, with programs that fail and with a disk that is
// full: it tells it in Czech and leaves nothing behind.

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QStandardPaths>
#include <QTest>

#include "datatool/Importer.h"
#include "datatool/importFixture.h"

using namespace Qt::StringLiterals;

namespace {

class ImportFaults : public OldPair {
 protected:
    /// Everything in the test's folder and what it is known by: sizes, bytes and times.
    QByteArray state() const {
        QByteArray all;
        for (const QString& path : {u""_s, u"old"_s, u"data"_s}) {
            for (const QString& name : names(path)) {
                struct stat info {};
                stat((at(path) + u'/' + name).toUtf8().constData(), &info);
                all += name.toUtf8() + ' ' + QByteArray::number(info.st_mtim.tv_sec) + '.' +
                       QByteArray::number(info.st_mtim.tv_nsec) + content(path + u'/' + name) + '\n';
            }
        }
        return all;
    }
    void expectRefused(const QString& told, const std::function<Result()>& work) const {
        const QByteArray before = state();
        const Result result = work();
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.errors.contains(u"Chyba: "_s) && result.errors.contains(told))
            << told.toStdString() << '\n'
            << result.errors.toStdString();
        EXPECT_TRUE(state() == before) << names(u""_s).join(u' ').toStdString();
    }
    void expectRefused(const QString& told) const {
        expectRefused(told, [this] { return runImport(); });
    }
    void cut(const QString& path, qint64 length) const { ASSERT_TRUE(QFile::resize(at(path), length)); }
};

}  // namespace

TEST_F(ImportFaults, FileThatCannotBeReadIsRefused) {
    const std::tuple<const char*, std::function<void()>, QString> cases[] = {
        {"no file", [this] { QFile::remove(at(u"old/pictures.ddb"_s)); },
         u"pictures.ddb nelze převést: soubor tam není"_s},
        {"empty", [this] { cut(u"old/data.ddb"_s, 0); }, u"soubor je prázdný"_s},
        {"no database", [this] { write(u"old/data.ddb"_s, QByteArray(8192, 'x')); },
         u"není to databáze Jet"_s},
        {"half a page", [this] { cut(u"old/data.ddb"_s, 200000); }, u"useknutý"_s},
        {"definitions cut off", [this] { cut(u"old/data.ddb"_s, 5LL * 4096); }, u"poškozený"_s},
        {"rows cut off", [this] { cut(u"old/data.ddb"_s, 60LL * 4096); }, u"poškozený"_s},
        {"last page cut off", [this] { cut(u"old/data.ddb"_s, content(u"old/data.ddb"_s).size() - 4096); },
         u"poškozený"_s},
        {"pictures cut off", [this] { cut(u"old/pictures.ddb"_s, 180LL * 4096); }, u"poškozený"_s},
        {"older version",
         [this] { patch(u"old/data.ddb"_s, "Standard Jet DB\0\1"_ba, "Standard Jet DB\0\0"_ba); },
         u"Jet 3 (Access 97)"_s},
        {"newer version",
         [this] { patch(u"old/data.ddb"_s, "Standard Jet DB\0\1"_ba, "Standard Jet DB\0\2"_ba); },
         u"novějším formátu"_s},
        {"no table", [this] { patch(u"old/data.ddb"_s, utf16(u"tUser"), utf16(u"tUsel")); },
         u"chybí v něm tabulka tUser"_s},
        {"no column", [this] { patch(u"old/data.ddb"_s, utf16(u"USMAIL"), utf16(u"USMAIX")); },
         u"chybí sloupec USMAIL"_s}};
    const QByteArray data = content(u"old/data.ddb"_s);
    const QByteArray pictures = content(u"old/pictures.ddb"_s);
    for (const auto& [fault, make, told] : cases) {
        SCOPED_TRACE(fault);
        write(u"old/data.ddb"_s, data);
        write(u"old/pictures.ddb"_s, pictures);
        make();
        expectRefused(told);
    }
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
    replaceProgram(u"mdb-export"_s, "exec tail -f /dev/null");
    const QString tables = QStandardPaths::findExecutable(u"mdb-tables"_s);
    OldPrograms programs{tables,
                         QString(tables).replace(u"mdb-tables"_s, u"mdb-count"_s),
                         at(u"bin/mdb-export"_s),
                         QFileInfo(QStringLiteral(KALVERA_DATA)).path() + u"/kalvera-nulls"_s,
                         {std::chrono::milliseconds(500)}};
    const auto description = [&] {
        try {
            importer::run(at(u"old"_s), at(u"new"_s), programs, [](const QString&, qint64, qint64) {});
        } catch (const RuntimeError& failure) {
            return failure.description();
        }
        return QString();
    };
    EXPECT_TRUE(description().contains(u"mdb-export pracuje příliš dlouho"_s)) << description().toStdString();
    replaceProgram(u"mdb-export"_s, "exec head -c 1000000000 /dev/zero | sort");
    programs.limits = {std::chrono::seconds(60), 64LL << 20};
    EXPECT_TRUE(description().contains(u"Program mdb-export"_s));
    EXPECT_FALSE(QFile::exists(at(u"new"_s)));
}

TEST_F(ImportFaults, FolderThatIsTakenOrCannotBeWrittenStaysAsItIs) {
    const auto into = [this](const QString& folder) {
        return [this, folder] { return run({u"import"_s, at(u"old"_s), folder}); };
    };
    expectRefused(u"Soubor již existuje a nebude přepsán"_s, into(at(u"data"_s)));
    expectRefused(u"Složku nelze vytvořit"_s, into(at(u"old/data.ddb/new"_s)));
    expectRefused(u"Složku nelze vytvořit"_s, into(u"/proc/kalvera/new"_s));
    QDir().mkpath(at(u"report"_s));
    write(u"report/import.txt"_s, "mine");
    expectRefused(u"Soubor již existuje a nebude přepsán"_s, into(at(u"report"_s)));
    EXPECT_EQ(names(u"report"_s), QStringList{u"import.txt"_s});
}

TEST_F(ImportFaults, FullDiskLeavesNothing) {
    for (const rlim_t bytes : {1000U, 60000U, 200000U, 600000U}) {
        SCOPED_TRACE(bytes);
        expectRefused(u""_s, [this, bytes] {
            return run({u"import"_s, at(u"old"_s), at(u"new/deep/folder"_s)}, [bytes] {
                const rlimit limit{bytes, bytes};
                setrlimit(RLIMIT_FSIZE, &limit);
            });
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
        const QByteArray before = state();
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
