#include <QDir>
#include <QStandardPaths>

#include "catalogue/frmMaster.h"
#include "mMain.h"
#include "platform/paths.h"
#include "toolkit/Application.h"

using namespace Qt::StringLiterals;

namespace {

void findProgramFolder() {
    const QString executable = QCoreApplication::applicationDirPath();
    const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QStringList readyMade = {executable + u"/data"_s,
                                   QDir::cleanPath(executable + u"/../share/kalvera/data"_s)};
    paths::setProgramFolder(paths::chooseProgramFolder(executable, user, readyMade));
}

}  // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    std::unique_ptr<frmMaster> master;
    Application::guarded([&master] {
        findProgramFolder();
        Main(master);
    });
    return master == nullptr ? 0 : QApplication::exec();
}
