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
    const qint64 firstLine = line_;
    for (++at_; at_ < text_.size(); ++at_) {
        if (text_[at_] == u'\n') ++line_;
        if (text_[at_] != u'"') {
            field += text_[at_];
        } else if (at_ + 1 < text_.size() && text_[at_ + 1] == u'"') {
            field += text_[++at_];
        } else {
            ++at_;
            return field;
        }
    }
    line_ = firstLine;
    refuse(u"uvozovky nejsou ukončeny."_s);
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
