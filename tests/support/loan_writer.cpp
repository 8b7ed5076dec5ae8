// Writes loans through the program's own routines for ever, and tells each key on standard output once its
// row has been stored. Its parent kills it.

#include <QCoreApplication>
#include <QDateTime>
#include <cstdio>

#include "core/mDatabase.h"

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    ActDBPath = QCoreApplication::arguments().at(1);
    for (qint32 film = 1;; ++film) {
        OpenDB();
        OpenRS(u"SELECT * from tPujcky"_s, true);
        RsDB->Fields(u"P_UID").setValue(film);
        RsDB->Fields(u"P_DVDID").setValue(film);
        RsDB->Fields(u"PDatPujcky").setValue(QDateTime::currentDateTime());
        RsDB->Update();
        std::printf("%d\n", RsDB->Fields(u"P_ID").Value().toLong());
        std::fflush(stdout);
        CloseRS();
        CloseDB();
    }
}
