#include <QDir>
#include <QStandardPaths>

#include "catalogue/frmMaster.h"
#include "core/pairReplacement.h"
#include "mMain.h"
#include "platform/FolderLock.h"
#include "platform/Outside.h"
#include "platform/paths.h"
#include "services/HelpKey.h"
#include "toolkit/Application.h"
#include "toolkit/RunningProgram.h"

using namespace Qt::StringLiterals;

namespace {

void findProgramFolder() {
    const QString executable = QCoreApplication::applicationDirPath();
    const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const QStringList readyMade = {executable + u"/data"_s,
                                   QDir::cleanPath(executable + u"/../share/kalvera/data"_s)};
    paths::setProgramFolder(paths::chooseProgramFolder(executable, user, readyMade));
}

void tellHolder(const FolderLock& lock, const QString& folder) {
    const QString holder = lock.holder().isEmpty() ? u"jiný uživatel"_s : lock.holder();
    MsgBox(u"S daty ve složce\n%1\nuž program pracuje, spustil ho %2.\n\nOtevřít je bude možné, až skončí."_s
               .arg(folder, holder),
           boxStyle::information);
}

}  // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    const HelpKey helpKey;
    std::unique_ptr<FolderLock> lock;
    std::unique_ptr<RunningProgram> running;
    std::unique_ptr<frmMaster> master;
    Application::guarded([&] {
        findProgramFolder();
        const QString folder = paths::inProgramFolder(u"\\data");
        lock = std::make_unique<FolderLock>(folder);
        if (lock->isTaken()) {
            if (!RunningProgram::callToFront(folder)) tellHolder(*lock, folder);
            return;
        }
        pairReplacement::finish(folder);
        running = std::make_unique<RunningProgram>(folder);
        Main(master);
    });
    return master == nullptr ? 0 : QApplication::exec();
}
