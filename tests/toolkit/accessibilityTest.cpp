#include "toolkit/accessibility.h"

#include <QAccessible>
#include <QMenu>
#include <QSet>

#include "services/mHelp.h"
#include "support/TemporaryProgram.h"
#include "support/everyWindow.h"
#include "support/pictures.h"
#include "support/windows.h"
#include "toolkit/DownloadWindow.h"
#include "toolkit/HelpWindow.h"
#include "toolkit/WindowOutside.h"

namespace {

/// What a screen reader finds in the windows.
class AccessibilityTest : public TemporaryProgram {
 protected:
    static QAccessibleInterface& described(QObject& object) {
        return *QAccessible::queryAccessibleInterface(&object);
    }
    static QString nameOf(const QAccessibleInterface& object) {
        QString name = object.text(QAccessible::Name).trimmed();
        for (const auto& [label, relation] : object.relations(QAccessible::Label)) {
            if (name.isEmpty()) name = label->text(QAccessible::Name).trimmed();
        }
        return name;
    }

    /// Looks at everything in a window, hidden or shown, and collects what has no name.
    void look(const QAccessibleInterface& object, const QString& place) {
        using Role = QAccessible::Role;
        // The texts of these are data, and one of them is described by its neighbours.
        static const QSet<Role> data = {Role::Cell, Role::ListItem, Role::TreeItem};
        static const QSet<Role> named = {Role::Window, Role::Dialog, Role::AlertMessage, Role::Graphic,
                                         Role::ToolBar};
        const Role role = object.role();
        if (data.contains(role)) return;
        const QAccessibleInterface* parent = object.parent();
        const bool page = parent != nullptr && parent->role() == Role::LayeredPane;
        const bool wants = object.state().focusable || named.contains(role) || page;
        // A tab of a bar is no object.
        const QString here =
            place + u'/' + (object.object() == nullptr ? QString() : object.object()->objectName());
        if (wants && nameOf(object).isEmpty()) nameless += here + u" role %1"_s.arg(role);
        controls += wants ? 1 : 0;
        for (int index = 0; index < object.childCount(); ++index) {
            const QAccessibleInterface* child = object.child(index);
            ASSERT_NE(child, nullptr) << here.toStdString();
            look(*child, here);
        }
    }
    void lookAt(QWidget& window) {
        using Role = QAccessible::Role;
        window.show();
        const Role role = described(window).role();
        EXPECT_TRUE(role == Role::Window || role == Role::Dialog || role == Role::AlertMessage)
            << window.objectName().toStdString() << role;
        look(described(window), QString());
    }

    QStringList nameless;
    int controls = 0;
};

}  // namespace

TEST_F(AccessibilityTest, NothingThatCanHaveTheFocusIsWithoutAName) {
    sql("INSERT INTO tUser (USNAME) VALUES ('Novák'); INSERT INTO tDVD (KatCisl, CZJm, Jazyk) VALUES"
        " ('1', 'Čáp', 0)");
    EveryWindow windows;
    for (QWidget* window : windows.all())
        lookAt(*window);
    ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_HELP), CestaNapovedy(1)));
    ZobrazNapovedu(1, u"Main"_s);
    auto* help = shownWindow<HelpWindow>();
    ASSERT_NE(help, nullptr);
    lookAt(*help);
    help->close();
    {
        const Download download(u"http://127.0.0.1:1/"_s, at(u"page"_s));
        DownloadWindow window(download, nullptr);
        lookAt(window);
    }
    for (const int style : {boxStyle::plain, boxStyle::question | boxStyle::yesNo}) {
        inModalWindow([&] { WindowOutside().messageBox(u"Text"_s, style, u"Titulek"_s, nullptr); },
                      [this](QWidget& box) {
                          lookAt(box);
                          box.close();
                      });
    }
    EXPECT_EQ(nameless.join(u'\n'), u""_s);
    EXPECT_GT(controls, 200);
}

TEST_F(AccessibilityTest, TheContextMenuStandsInTheTreeAndAFrameTellsWhetherItHasAPicture) {
    frmMaster master(Sites{});
    master.show();
    QStringList road;
    for (const auto* menu = described(*master.findChild<QMenu*>(u"hidMenuListItem"_s)).child(0);
         menu->object() != &master; menu = menu->parent()) {
        EXPECT_GE(menu->parent()->indexOfChild(menu), 0);
        road += nameOf(*menu);
    }
    EXPECT_EQ(road.join(u'|'), u"Upravit||Vybraný film|"_s);

    ImageFrame frame;
    const QAccessibleInterface& picture = described(frame);
    write(u"film.png"_s, pictureOf(qRgb(255, 0, 0), "PNG", {20, 30}));
    for (const auto& [file, description] : {std::pair(u""_s, u"bez obrázku"_s), {at(u"film.png"_s), u""_s}}) {
        frame.loadPicture(file);
        EXPECT_EQ(picture.role(), QAccessible::Graphic);
        EXPECT_EQ(picture.text(QAccessible::Description), description);
    }
}
