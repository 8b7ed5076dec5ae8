#include "system/RealProgram.h"

using KeysTest = RealProgram;

TEST_F(KeysTest, ControlShiftTabGoesBackAPageOfTheEditor) {
    start();
    screen.click(screen.waitForWindow(mainWindow), 40, 38);  // "Nový"
    const QString editor = screen.waitForWindow(editorWindow);
    // Only on the last page does the fourth control from the end choose a picture.
    screen.press(editor, u"ctrl+shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab space"_s);
    const QString files = u"^Na.*ten.* obr.*zku$"_s;
    screen.press(screen.waitForWindow(files), u"Escape"_s);
    screen.waitUntilGone(files);
    screen.press(editor, u"Escape"_s);
    screen.waitUntilGone(editorWindow);
    leave();
}
