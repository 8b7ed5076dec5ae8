#pragma once

#include <QDateTime>
#include <QFileInfo>

#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/importFixture.h"
#include "platform/LockPatience.h"

inline const QDateTime now(QDate(2026, 11, 25), QTime(18, 30));
inline const auto silent = [](const QString&, qint64, qint64) {};

/// While it lives, these data files are not waited for when they are locked: they count as waited for in
/// vain.
class WaitedFor {
 public:
    explicit WaitedFor(const QStringList& files) {
        for (const QString& file : files) {
            const auto ended = LockPatience::Clock::now();
            patience_.lasts(file.toUtf8(), 0, ended - std::chrono::hours(1));
            patience_.lasts(file.toUtf8(), 1, ended);
        }
    }

 private:
    LockPatience& patience_ = LockPatience::ofThread();
    LockPatiencePause pause_;
};

/// A pair in the folder `data` with five films that are as they should be.
class Care : public OldPair {
 protected:
    Care() { fill(u"data"_s, 5); }

    /// Films with a cover each, of which none is wrong.
    void fill(const QString& folder, int films) const {
        const QByteArray numbers =
            "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" + QByteArray::number(films) + ") ";
        sql(at(folder + u"/data.ddb"_s),
            (numbers +
             "INSERT INTO tDVD (KatCisl, CZJm, Jazyk, Obal_ID, Nahled_ID, Obsah) SELECT i, "
             "'Film ' || i, 1, i, 0, hex(zeroblob(200)) FROM n; INSERT INTO tUser (USNAME, USREGNUM) "
             "VALUES ('Jan', '777'); INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (777, 1, "
             "'2026-01-01'), (1, 2, '2026-01-01')")
                .constData());
        sql(at(folder + u"/pictures.ddb"_s),
            (numbers +
             "INSERT INTO tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) SELECT i, 'O', 'jpg', "
             "3000, zeroblob(3001) FROM n")
                .constData());
    }
    void renew(int films) const {
        QDir(at(u"data"_s)).removeRecursively();
        dataFiles::create(at(u"data"_s));
        fill(u"data"_s, films);
    }
    QString checked() const { return check::run(at(u"data"_s), silent).text(); }
    QString backUp(int keep = 0) const {
        return QFileInfo(backup::run(at(u"data"_s), at(u"safe"_s), keep, now, silent).folder).fileName();
    }
    /// The number of films of a pair that is whole and whose files belong together; -1 of any other.
    static qint64 films(const QString& folder) {
        const PairView pair(folder);
        if (!check::damaged(pair, silent).isEmpty()) return -1;
        const qint64 count = pair.catalogue().number("SELECT COUNT(*) FROM tDVD");
        return count == pair.pictures().number("SELECT COUNT(*) FROM tPicture") ? count : -1;
    }
    void spoilPage(const QString& path, int page) const {
        QByteArray bytes = content(path);
        write(path, bytes.replace(page * 4096, 4096, noise(4096)));
    }
};
