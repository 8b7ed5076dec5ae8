// loan_writer CATALOGUE CUSTOMER FIRST_FILM FILMS [return]
//
// Lends films one by one, returning each at once if asked to, and prints each film once it is stored. Its
// parent may kill it.

#include <QCoreApplication>
#include <cstdio>

#include "core/mDatabase.h"
#include "rental/mPujcky.h"
#include "support/ScriptedOutside.h"

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const ScriptedOutside outside;
    const QStringList arguments = QCoreApplication::arguments();
    ActDBPath = arguments.at(1);
    const qint32 customer = arguments.at(2).toInt();
    const qint32 first = arguments.at(3).toInt();
    for (qint32 film = first; film < first + arguments.at(4).toInt(); ++film) {
        try {
            PujcDVD(customer, film);
            if (arguments.size() > 5) VratDVD(customer, film);
        } catch (const RuntimeError& failure) {
            std::fprintf(stderr, "film %d: %s\n", film, failure.what());
            return 1;
        }
        std::printf("%d\n", film);
        std::fflush(stdout);
    }
    return 0;
}
