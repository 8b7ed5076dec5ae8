#include "datatool/ExportReader.h"

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// All records, each with its fields between bars, read in pieces of `length` bytes.
QByteArray recordsOf(const QByteArray& output, qsizetype length) {
    qsizetype at = 0;
    ExportReader reader([&](QByteArray& bytes) {
        if (at >= output.size()) return false;
        bytes = output.mid(at, length);
        at += length;
        return true;
    });
    QByteArray records;
    for (std::vector<QByteArray> fields; reader.next(fields);) {
        records += '[';
        for (const QByteArray& field : fields)
            records += field + '|';
        records += ']';
    }
    return records;
}

}  // namespace

TEST(ExportReader, FieldsMayHoldAnyBytesAndComeInAnyPieces) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a,b\n1,\n", "[a|b|][1||]"},
        {"\"a\"\"b\",\"\"\n\"\"\"\",\"\n\"\n", "[a\"b||][\"|\n|]"},
        {"1,\"\0\r\n,\"\"\xFF\0\",\n"s, "[1|\0\r\n,\"\xFF\0||]"s}};
    for (const auto& [output, records] : cases) {
        for (const qsizetype length : {1, 2, 3, 100})
            EXPECT_EQ(recordsOf(QByteArray::fromStdString(output), length).toStdString(), records) << length;
    }
}

TEST(ExportReader, OutputThatBreaksOffIsRefused) {
    for (const char* output : {"a", "a,", "a,b", "\"a", "\"a\"\"", "\"a\"b\n", "a\"b\"\n"})
        EXPECT_NE(failureOf([output] { recordsOf(output, 2); }), 0) << output;
}
