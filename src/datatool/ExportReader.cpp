#include "datatool/ExportReader.h"

#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuse() {
    throw RuntimeError(errors::invalidCall, u"Výpis tabulky ze starého souboru je neúplný."_s);
}

}  // namespace

int ExportReader::peek() {
    while (at_ == buffer_.size()) {
        at_ = 0;
        if (!source_(buffer_)) {
            buffer_.clear();
            return -1;
        }
    }
    return static_cast<unsigned char>(buffer_[at_]);
}

void ExportReader::readQuoted(QByteArray& field) {
    ++at_;
    for (;;) {
        if (peek() < 0) refuse();
        const qsizetype quote = buffer_.indexOf('"', at_);
        const qsizetype end = quote < 0 ? buffer_.size() : quote;
        field.append(buffer_.constData() + at_, end - at_);
        at_ = end;
        if (quote < 0) continue;
        ++at_;
        if (peek() != '"') return;
        field += '"';
        ++at_;
    }
}

void ExportReader::readField(QByteArray& field) {
    field.resize(0);
    if (peek() == '"') return readQuoted(field);
    for (int byte = peek(); byte != ',' && byte != '\n'; byte = peek()) {
        if (byte < 0 || byte == '"') refuse();
        field += static_cast<char>(byte);
        ++at_;
    }
}

bool ExportReader::next(QByteArrayList& fields) {
    if (peek() < 0) return false;
    qsizetype count = 0;
    for (;;) {
        if (fields.size() == count) fields.emplace_back();
        readField(fields[count++]);
        const int separator = peek();
        if (separator != ',' && separator != '\n') refuse();
        ++at_;
        if (separator == '\n') break;
    }
    fields.resize(count);
    return true;
}
