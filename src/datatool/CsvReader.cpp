#include "datatool/CsvReader.h"

#include "datatool/BadLine.h"

using namespace Qt::StringLiterals;

bool CsvReader::atLineEnd() const {
    return text_[at_] == u'\n' || (text_[at_] == u'\r' && at_ + 1 < text_.size() && text_[at_ + 1] == u'\n');
}

void CsvReader::skipLineEnd() {
    at_ += text_[at_] == u'\r' ? 2 : 1;
    ++line_;
}

void CsvReader::refuse(const QString& what) const {
    throw BadLine(line_, what);
}

QString CsvReader::quotedField() {
    QString field = u""_s;
    for (;;) {
        const qsizetype begin = at_ + 1;
        at_ = text_.indexOf(u'"', begin);
        if (at_ < 0) refuse(u"uvozovky nejsou ukončeny."_s);
        field += QStringView(text_).sliced(begin, at_ - begin);
        if (++at_ == text_.size() || text_[at_] != u'"') break;
        field += u'"';
    }
    line_ += field.count(u'\n');
    return field;
}

QString CsvReader::field() {
    quoted_ += at_ < text_.size() && text_[at_] == u'"';
    if (quoted_.back()) return quotedField();
    const qsizetype begin = at_;
    while (at_ < text_.size() && text_[at_] != separator_ && !atLineEnd()) {
        if (text_[at_] == u'"') refuse(u"uvozovky uprostřed pole."_s);
        ++at_;
    }
    return text_.mid(begin, at_ - begin);
}

std::optional<QStringList> CsvReader::next() {
    while (at_ < text_.size() && atLineEnd())
        skipLineEnd();
    if (at_ >= text_.size()) return std::nullopt;
    recordLine_ = line_;
    quoted_.clear();
    QStringList fields;
    for (;;) {
        fields += field();
        if (at_ >= text_.size()) return fields;
        if (atLineEnd()) {
            skipLineEnd();
            return fields;
        }
        if (text_[at_] != separator_) refuse(u"za uvozovkami chybí oddělovač."_s);
        ++at_;
    }
}
