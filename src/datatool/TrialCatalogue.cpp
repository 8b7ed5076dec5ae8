#include "datatool/TrialCatalogue.h"

#include "datatool/Interruption.h"
#include "datatool/outputFile.h"

using namespace Qt::StringLiterals;

TrialCatalogue::TrialCatalogue(const QString& folder) : pair_(folder, PairView::Unreadable::told) {
    const PairView::File& file = pair_.files().front();
    if (file.database == nullptr) outputFile::fail(file.fault.chopped(1), file.path);
    if (!folder_.isValid()) outputFile::failWriting(folder_.path());
    copy_.emplace(folder_.filePath(u"data.ddb"_s), sqlite::Database::Mode::create);
    copy_->exec("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF");
    pair_.catalogue().copyInto(*copy_, [](qint64, qint64) { interruption::check(); });
}
