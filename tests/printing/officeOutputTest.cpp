#include "printing/officeOutput.h"

#include "support/TemporaryProgram.h"

using office::Arguments;
using office::Object;
using office::Value;

namespace {

QString shown(const Value& value) {
    if (const auto* number = std::get_if<qint32>(&value)) return QString::number(*number);
    const auto* text = std::get_if<QString>(&value);
    return text != nullptr ? u'"' + *text + u'"' : u"empty"_s;
}

/// An object that has every property and method, records each use and fails at one.
class Recorder final : public office::LateBound {
 public:
    Recorder(QString failing, std::shared_ptr<QStringList> uses, QString path = {})
        : failing_(std::move(failing)), uses_(std::move(uses)), path_(std::move(path)) {}

    Value get(const QString& name) override {
        if (path_ + name == failing_) throw RuntimeError(438, u"Objekt nepodporuje tuto vlastnost."_s);
        return Object(std::make_shared<Recorder>(failing_, uses_, path_ + name + u'.'));
    }
    void put(const QString& name, const Arguments& index, const Value& value) override {
        QString use = path_ + name;
        for (const Value& argument : index.byPosition)
            use += u' ' + shown(argument);
        for (const auto& [label, argument] : index.byName)
            use += u' ' + label + u":="_s + shown(argument);
        get(use.sliced(path_.size()));
        *uses_ += use + u'=' + shown(value);
    }
    Value call(const QString& name, const Arguments& arguments) override {
        put(name, arguments, {});
        return {};
    }

 private:
    QString failing_;
    std::shared_ptr<QStringList> uses_;
    QString path_;
};

/// What is done to an object that fails at one use.
QString uses(const QString& failing, const std::function<void(const Object&)>& print) {
    const auto all = std::make_shared<QStringList>();
    print(std::make_shared<Recorder>(failing, all));
    return all->join(u", "_s).remove(u"ActiveWindow.Selection."_s).remove(u"=empty"_s);
}

}  // namespace

TEST(OfficeOutputTest, ARowGoesIntoFourCellsUpToTheFirstFailure) {
    const auto print = [](const Object& sheet) {
        office::PrintDataExcel(sheet, 12, u"a"_s, u"b"_s, u"c"_s, u"d"_s);
    };
    EXPECT_EQ(uses({}, print),
              u"Range \"A12\"=\"a\", Range \"B12\"=\"b\", Range \"C12\"=\"c\", Range \"D12\"=\"d\""_s);
    const auto untilFailure = [&](const Object& sheet) { EXPECT_EQ(failureOf([&] { print(sheet); }), 438); };
    EXPECT_EQ(uses(u"Range \"B12\""_s, untilFailure), u"Range \"A12\"=\"a\""_s);
    EXPECT_EQ(failureOf([&] { print(nullptr); }), 91);
}

TEST(OfficeOutputTest, ABlockIsTypedWithoutTheStepsThatFail) {
    const auto print = [](const Object& word) {
        office::PrintDataWord(word, u"Nadpis"_s, u"Text"_s, u"Podnadpis"_s);
    };
    const QString typed =
        u"%1TypeText Text:=\"Nadpis        \", %2TypeText \"Podnadpis\v\", %3TypeText Text:=\"Text\", TypeParagraph, TypeParagraph"_s;
    EXPECT_EQ(uses({}, print),
              typed.arg(u"Font.Bold, Font.Size=14, "_s, u"Font.Bold, Font.Size=8, "_s, u"Font.Size=8, "_s));
    EXPECT_EQ(uses(u"ActiveWindow.Selection.Font"_s, print), typed.arg(u""_s, u""_s, u""_s));
    EXPECT_EQ(uses(u"ActiveWindow"_s, print), u""_s);
    print(nullptr);
}
