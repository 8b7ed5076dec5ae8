#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>

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

/// A page with one picture on it, stretched to its place whatever its proportions. Places in twips from the
/// corner of the paper.
struct PicturePage {
    QString picture;  ///< path of the file
    QString title;    ///< what the print queue calls it
    bool landscape;
    int left;
    int top;
    int width;
    int height;
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
    /// Hands a file, or a web address, to the program that the desktop has for it, and goes on at once.
    /// @return false when there is none.
    virtual bool openWithDesktop(const QString& target) = 0;
    /// The names of the printers at hand.
    virtual QStringList printers() = 0;
    /// Makes the printer of that name the current one; without one of that name the current one stays. At
    /// first it is the user's default printer.
    virtual void setPrinter(const QString& name) = 0;
    /// Prints a page on the current printer, on its usual paper.
    /// @throws RuntimeError 53 when there is no such picture, 481 when the file is none, 482 when there is no
    ///         printer or it fails.
    virtual void printPicture(const PicturePage& page) = 0;
    /// The machine's local date and time.
    virtual QDateTime now() = 0;

 private:
    Outside* former_;
};

/// Shows a message box over the active window.
BoxAnswer MsgBox(const QString& text, int style = boxStyle::plain, const QString& title = {});
