#pragma once

#include <QToolButton>

#include "film/DictionaryList.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"

inline constexpr int white = 16777215;
inline constexpr int pink = 13158650;

/// The back colour of a field, 0xBBGGRR.
inline int backColour(const QLineEdit& field) {
    const QColor colour = field.palette().color(QPalette::Base);
    return (colour.blue() << 16) | (colour.green() << 8) | colour.red();
}

/// The record window that is open, as the user handles it.
struct RecordWindow {
    QWidget& window;
    QLineEdit& name = control<QLineEdit>(window, "txtZanr");

    /// Types a name in place of the former one.
    void type(const QString& text) const {
        name.selectAll();
        QTest::sendKeyEvent(QTest::Click, &name, Qt::Key_unknown, text, Qt::NoModifier);
    }
    void press(Qt::Key key) const { QTest::keyClick(&name, key); }
};

template <typename Window>
std::unique_ptr<DictionaryList> make() {
    return std::make_unique<Window>();
}

/// One list window, made and shown at its first use.
class DictionaryTest : public TemporaryProgram {
 protected:
    using Steps = std::function<void(const RecordWindow&)>;

    explicit DictionaryTest(std::unique_ptr<DictionaryList> (*maker)()) : maker_(maker) {}

    DictionaryList& window() {
        if (window_ == nullptr) {
            window_ = maker_();
            window_->show();
        }
        return *window_;
    }
    ListView& list() { return *window().findChild<ListView*>(QStringLiteral("lvwZanr")); }
    QToolButton& button(const char* name) { return control<QToolButton>(window(), name); }

    /// Clicks a button of the list and goes through the steps in the record window that this opens.
    void edit(const char* name, const Steps& steps) {
        inModalWindow([&] { click(window(), name); }, [&](QWidget& record) { steps({record}); });
    }
    void add(const QString& name) {
        edit("Command1", [&](const RecordWindow& record) {
            record.type(name);
            record.press(Qt::Key_Return);
        });
    }

    /// The rows in order: key, colour where it is not black, and cells.
    QStringList rows() {
        QStringList result;
        for (int number = 0; number < list().count(); ++number) {
            const ListItem row = list().itemAt(number);
            const QString colour = row.foreColor() == 0 ? QString() : QString::number(row.foreColor(), 16);
            result += QStringList({row.key(), colour, row.text(), row.subItem(1)}).join(u'|');
        }
        return result;
    }

 private:
    std::unique_ptr<DictionaryList> (*maker_)();
    std::unique_ptr<DictionaryList> window_;
};
