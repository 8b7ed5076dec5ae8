#include "toolkit/ChmFile.h"

#include <chm_lib.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "platform/codepage.h"

using namespace Qt::StringLiterals;

namespace {

constexpr LONGUINT64 largestPart = 64ULL * 1024 * 1024;

struct Search {
    QByteArray ending;
    QString found = {};
};

int compareEnding(chmFile* /*file*/, chmUnitInfo* part, void* context) {
    auto& search = *static_cast<Search*>(context);
    if (!QByteArray(part->path).toLower().endsWith(search.ending)) return CHM_ENUMERATOR_CONTINUE;
    search.found = QString::fromUtf8(part->path);
    return CHM_ENUMERATOR_SUCCESS;
}

/// Decodes the HTML entities of an attribute value.
QString plain(QString text) {
    return text.replace(u"&quot;"_s, u"\""_s)
        .replace(u"&lt;"_s, u"<"_s)
        .replace(u"&gt;"_s, u">"_s)
        .replace(u"&amp;"_s, u"&"_s);
}

}  // namespace

void ChmFile::Close::operator()(chmFile* file) const noexcept {
    chm_close(file);
}

ChmFile::ChmFile(const QString& path) {
    // The library must not be given folders or devices.
    if (QFileInfo(path).isFile()) file_.reset(chm_open(QFile::encodeName(path).constData()));
}

ChmFile::~ChmFile() = default;

QByteArray ChmFile::read(const QString& path) const {
    chmUnitInfo part{};
    if (chm_resolve_object(file_.get(), path.toUtf8().constData(), &part) != CHM_RESOLVE_SUCCESS) return {};
    if (part.length > largestPart) return {};
    QByteArray bytes(static_cast<qsizetype>(part.length), '\0');
    const LONGINT64 read =
        chm_retrieve_object(file_.get(), &part, reinterpret_cast<unsigned char*>(bytes.data()), 0,
                            static_cast<LONGINT64>(part.length));
    return read == static_cast<LONGINT64>(part.length) ? bytes : QByteArray();
}

std::vector<ChmFile::Topic> ChmFile::topics(const char* ending) const {
    Search search{.ending = ending};
    chm_enumerate(file_.get(), CHM_ENUMERATE_ALL, compareEnding, &search);
    const QString map = codepage::fromWindows1250(read(search.found));
    // Nested lists; an entry is an object with a title and a page.
    static const QRegularExpression tokens(
        u"<(/?ul|/?object|param)\\b[^>]*?(?:name=\"(\\w+)\"\\s+value=\"([^\"]*)\")?\\s*/?>"_s,
        QRegularExpression::CaseInsensitiveOption);
    std::vector<Topic> lines;
    int depth = -1;
    Topic line;
    for (auto match = tokens.globalMatch(map); match.hasNext();) {
        const QRegularExpressionMatch token = match.next();
        const QString tag = token.captured(1).toLower();
        const QString name = token.captured(2).toLower();
        if (tag == u"ul") ++depth;
        if (tag == u"/ul") --depth;
        if (tag == u"object") line = {};
        if (name == u"name" && line.title.isEmpty()) line.title = plain(token.captured(3));
        if (name == u"local" && line.page.isEmpty()) line.page = u'/' + plain(token.captured(3));
        if (tag != u"/object" || line.title.isEmpty() || depth < 0) continue;
        line.depth = depth;
        lines.push_back(line);
    }
    return lines;
}
