#include "printing/officeOutput.h"

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;
using office::Arguments;
using office::Object;
using office::Value;

namespace {

struct Log {
    QString failing;  ///< the use that fails
    QStringList uses;
};

QString shown(const Arguments& arguments) {
    QStringList all;
    const auto add = [&all](const QString& name, const Value& value) {
        const auto* number = std::get_if<qint32>(&value);
        const auto* text = std::get_if<QString>(&value);
        all += name + (text != nullptr ? u'"' + *text + u'"'
                       : number        ? QString::number(*number)
                                       : u"empty"_s);
    };
    for (const Value& value : arguments.byPosition)
        add({}, value);
    for (const auto& [name, value] : arguments.byName)
        add(name + u":="_s, value);
    return u'(' + all.join(u", "_s) + u')';
}

/// An object that has every property and method and records each use.
class Recorder final : public office::LateBound {
 public:
    explicit Recorder(Log& log, QString path = {}) : log_(log), path_(std::move(path)) {}

    Value get(const QString& name) override {
        if (path_ + name == log_.failing) throw RuntimeError(438, u"Objekt nepodporuje tuto vlastnost."_s);
        return Object(std::make_shared<Recorder>(log_, path_ + name + u'.'));
    }
    void put(const QString& name, const Arguments& index, const Value& value) override {
        get(name + shown(index));
        log_.uses += path_ + name + shown(index) + shown({.byPosition = {value}});
    }
    Value call(const QString& name, const Arguments& arguments) override {
        put(name, arguments, {});
        return {};
    }

 private:
    Log& log_;
    QString path_;
};

}  // namespace

TEST(OfficeOutputTest, ARowGoesIntoFourCellsUpToTheFirstFailure) {
    Log log;
    const auto print = [&log] {
        office::PrintDataExcel(std::make_shared<Recorder>(log), 12, u"a"_s, u"b"_s, u"c"_s, u"d"_s);
    };
    print();
    const QStringList cells = {u"Range(\"A12\")(\"a\")"_s, u"Range(\"B12\")(\"b\")"_s,
                               u"Range(\"C12\")(\"c\")"_s, u"Range(\"D12\")(\"d\")"_s};
    EXPECT_EQ(log.uses, cells);
    log = {u"Range(\"B12\")"_s, {}};
    EXPECT_EQ(failureOf(print), 438);
    EXPECT_EQ(log.uses, cells.first(1));
    EXPECT_EQ(failureOf([] { office::PrintDataExcel(nullptr, 1, {}, {}, {}, {}); }), 91);
}

TEST(OfficeOutputTest, ABlockIsTypedWithoutTheStepsThatFail) {
    Log log;
    const auto print = [&log](const QString& failing) {
        log = {failing, {}};
        office::PrintDataWord(std::make_shared<Recorder>(log), u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
        return log.uses.join(u' ').remove(u"ActiveWindow.Selection."_s).remove(u"(empty)"_s);
    };
    const QString typed =
        u"%1TypeText(Text:=\"Nadpis        \") %2TypeText(\"Podnadpis\v\") %3TypeText(Text:=\"Text\") "
        "TypeParagraph() TypeParagraph()"_s;
    EXPECT_EQ(print({}), typed.arg(u"Font.Bold() Font.Size()(14) "_s, u"Font.Bold() Font.Size()(8) "_s,
                                   u"Font.Size()(8) "_s));
    EXPECT_EQ(print(u"ActiveWindow.Selection.Font"_s), typed.arg(u""_s, u""_s, u""_s));
    EXPECT_EQ(print(u"ActiveWindow"_s), u""_s);
    office::PrintDataWord(nullptr, u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
}
