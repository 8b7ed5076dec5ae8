#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>

/// Style numbers of a message box as the platform numbers them. Styles add up.
namespace boxStyle {
inline constexpr int plain = 0;
inline constexpr int yesNo = 4;
inline constexpr int critical = 16;
inline constexpr int question = 32;
inline constexpr int exclamation = 48;
inline constexpr int information = 64;
}  // namespace boxStyle

/// How a message box was answered. Closing a box with Yes and No counts as No.
enum class BoxAnswer { ok = 1, yes = 6, no = 7 };

/// What a file dialog is opened with.
struct FileDialogRequest {
    QString title;
    QString filterName;        ///< such as "JPEG Obrazek (*.jpg)"
    QString pattern;           ///< such as "*.jpg"
    QString folder;            ///< where it starts
    QString defaultExtension;  ///< appended to a saved name without one; no dot
};

/// The one seam between the program and the world. The object made last is the one in use, as long as it
/// lives; then the one before it is in use again.
class Outside {
 public:
    Outside();
    virtual ~Outside();
    Outside(const Outside&) = delete;
    Outside& operator=(const Outside&) = delete;

    /// The object in use.
    static Outside& current();

    /// Shows a message box over `owner` (the active window when null) and waits for the answer. An empty
    /// title becomes the program's name.
    virtual BoxAnswer messageBox(const QString& text, int style, const QString& title, QObject* owner) = 0;
    /// Asks for an existing file; "" when cancelled, else its path with the target's separators.
    virtual QString openFile(const FileDialogRequest& request, QObject* owner) = 0;
    /// Asks for a file to write, asking again before an existing one is chosen; "" when cancelled.
    virtual QString saveFile(const FileDialogRequest& request, QObject* owner) = 0;
    /// Fetches a web address into a file and waits for it with the user's input held back; see `download` in
    /// platform/download.h for the rules. @return false when it failed; the file is then as it was.
    virtual bool download(const QString& url, const QString& path) = 0;
    /// The machine's local date and time.
    virtual QDateTime now() = 0;

 private:
    Outside* former_;
};

/// Shows a message box over the active window.
BoxAnswer MsgBox(const QString& text, int style = boxStyle::plain, const QString& title = {});
