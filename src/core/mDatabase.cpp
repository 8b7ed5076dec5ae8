#include "core/mDatabase.h"

#include "platform/Outside.h"

using namespace Qt::StringLiterals;

QString ActDBPath;
QString ConnStr;
std::shared_ptr<ado::Connection> ConnDB;
std::shared_ptr<ado::Recordset> RsDB;

namespace {

constexpr int keyset = 1;
constexpr int pessimistic = 2;
constexpr int noOptions = -1;

template <typename Object>
Object& existing(const std::shared_ptr<Object>& object) {
    if (object == nullptr) throw RuntimeError(errors::objectNotSet);
    return *object;
}

}  // namespace

QString databasePassword() {
    return u"QeLnBxVkTr"_s;
}

QString connectionString(const QString& path) {
    return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + path + u";Jet OLEDB:Database Password="_s +
           databasePassword();
}

OpenedCount::operator qint32() const {
    const std::shared_ptr<ado::Recordset> recordset = opened_.lock();
    return recordset != nullptr && recordset->isOpen() ? recordset->RecordCount() : 0;
}

void OpenDB() {
    ConnDB = std::make_shared<ado::Connection>();
    RsDB = std::make_shared<ado::Recordset>();
    ActDBPath.remove(QChar::Null);
    ConnStr = connectionString(ActDBPath);
    ConnDB->Open(ConnStr, {}, {}, noOptions);
    if (Err.pending()) MsgBox(Err.Description());
}

OpenedCount OpenRS(const QString& sql, bool addNew) {
    skipFailure([] { existing(RsDB).Close(); });
    Err.Clear();
    skipFailure([&] { existing(RsDB).Open(sql, existing(ConnDB), keyset, pessimistic, noOptions); });
    OpenedCount count(RsDB);
    if (addNew) skipFailure([] { existing(RsDB).AddNew(); });
    return count;
}

void CloseRS() {
    existing(RsDB).Close();
}

void CloseDB() {
    skipFailure([] { existing(ConnDB).Close(); });
    ConnDB.reset();
    RsDB.reset();
}

QString NullNaText(DbValue value) {
    return value.isNull() ? QString() : std::move(value).toText();
}
