#include "printing/officeOutput.h"

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;
using office::Arguments;
using office::Object;
using office::Value;

namespace {

QString shown(const Value& value) {
    if (const auto* number = std::get_if<qint32>(&value)) return QString::number(*number);
    if (const auto* text = std::get_if<QString>(&value)) return u'"' + *text + u'"';
    return u"empty"_s;
}

QString shown(const Arguments& arguments) {
    QStringList all;
    for (const Value& value : arguments.byPosition)
        all += shown(value);
    for (const auto& [name, value] : arguments.byName)
        all += name + u":="_s + shown(value);
    return u'(' + all.join(u", "_s) + u')';
}

/// An object that has every property and method, writes down each use, and fails at those it is told to.
class Recorder final : public office::LateBound {
 public:
    Recorder(QStringList& log, QStringList& failing, QString path)
        : log_(log), failing_(failing), path_(std::move(path)) {}

    Value get(const QString& name) override {
        fail(path_ + name);
        return Object(std::make_shared<Recorder>(log_, failing_, path_ + name + u'.'));
    }
    void put(const QString& name, const Arguments& index, const Value& value) override {
        record(path_ + name + (index.byPosition.empty() ? QString() : shown(index)), u" = "_s + shown(value));
    }
    Value call(const QString& name, const Arguments& arguments) override {
        record(path_ + name, shown(arguments));
        return {};
    }

 private:
    void fail(const QString& what) const {
        if (failing_.contains(what)) throw RuntimeError(438, u"Objekt nepodporuje tuto vlastnost."_s);
    }
    void record(const QString& what, const QString& how) {
        fail(what);
        log_ += what + how;
    }

    QStringList& log_;
    QStringList& failing_;
    QString path_;
};

class OfficeOutputTest : public TemporaryProgram {
 protected:
    QStringList log;
    QStringList failing;
    const Object object = std::make_shared<Recorder>(log, failing, QString());
};

}  // namespace

TEST_F(OfficeOutputTest, ARowGoesIntoFourCellsUpToTheFirstFailure) {
    office::PrintDataExcel(object, 12, u"a"_s, u"b"_s, u"c"_s, u"d"_s);
    EXPECT_EQ(log, QStringList({u"Range(\"A12\") = \"a\""_s, u"Range(\"B12\") = \"b\""_s,
                                u"Range(\"C12\") = \"c\""_s, u"Range(\"D12\") = \"d\""_s}));
    log.clear();
    failing = {u"Range(\"B1\")"_s};
    EXPECT_EQ(failureOf([&] { office::PrintDataExcel(object, 1, u"a"_s, u"b"_s, u"c"_s, u"d"_s); }), 438);
    EXPECT_EQ(log, QStringList(u"Range(\"A1\") = \"a\""_s));
    EXPECT_EQ(failureOf([] { office::PrintDataExcel(nullptr, 1, {}, {}, {}, {}); }), 91);
}

TEST_F(OfficeOutputTest, ABlockIsTypedStepByStep) {
    office::PrintDataWord(object, u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
    const QString at = u"ActiveWindow.Selection."_s;
    const QStringList all = {at + u"Font.Bold = empty"_s,
                             at + u"Font.Size = 14"_s,
                             at + u"TypeText(Text:=\"Nadpis        \")"_s,
                             at + u"Font.Bold = empty"_s,
                             at + u"Font.Size = 8"_s,
                             at + u"TypeText(\"Podnadpis\v\")"_s,
                             at + u"Font.Size = 8"_s,
                             at + u"TypeText(Text:=\"Text\")"_s,
                             at + u"TypeParagraph()"_s,
                             at + u"TypeParagraph()"_s};
    EXPECT_EQ(log, all);
    // What fails is left out, and all else is done.
    log.clear();
    failing = {at + u"Font"_s};
    office::PrintDataWord(object, u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
    EXPECT_EQ(log, all.filter(u"Type"_s));
    log.clear();
    failing = {u"ActiveWindow"_s};
    office::PrintDataWord(object, u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
    office::PrintDataWord(nullptr, u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
    EXPECT_EQ(log, QStringList());
}
