#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

class QPagedPaintDevice;

/// Message box styles, numbered as in the Basic runtime and added up.
namespace boxStyle {
inline constexpr int plain = 0;
inline constexpr int yesNo = 4;
inline constexpr int critical = 16;
inline constexpr int question = 32;
inline constexpr int exclamation = 48;
inline constexpr int information = 64;
}  // namespace boxStyle

/// The answer to a message box. Closing a box with Yes and No counts as No.
enum class BoxAnswer { ok = 1, yes = 6, no = 7 };

/// The parameters of a file dialog.
struct FileDialogRequest {
    QString title;
    QString filterName;        ///< such as "JPEG Obrazek (*.jpg)"
    QString pattern;           ///< such as "*.jpg"
    QString folder;            ///< initial folder
    QString defaultExtension;  ///< appended to a saved name without one; without the dot
};

/// A page with one picture, stretched to its rectangle regardless of its proportions. In twips from the
/// corner of the paper.
struct PicturePage {
    QString picture;  ///< path of the file
    QString title;    ///< name in the print queue
    bool landscape;
    int left;
    int top;
    int width;
    int height;
};

/// The interface to everything outside the program. The last object created is the current one while it
/// lives; then the previous one is current again.
class Outside {
 public:
    Outside();
    virtual ~Outside();
    Outside(const Outside&) = delete;
    Outside& operator=(const Outside&) = delete;

    /// The current object. @throws RuntimeError 91 when there is none.
    static Outside& current();

    /// Shows a message box and waits for the answer. The default title is the program's name.
    /// @param owner the window below it; null for the window that the user works in.
    virtual BoxAnswer messageBox(const QString& text, int style, const QString& title, QObject* owner) = 0;
    /// Asks for an existing file; "" if cancelled, else its path with native separators.
    virtual QString openFile(const FileDialogRequest& request, QObject* owner) = 0;
    /// Asks for a file to write and confirms overwriting; "" if cancelled.
    virtual QString saveFile(const FileDialogRequest& request, QObject* owner) = 0;
    /// Downloads a web address into a file and waits for it; the user can cancel one that takes long. See
    /// platform/download.h for the rules.
    /// @return false on failure or when cancelled; the file is then unchanged.
    virtual bool download(const QString& url, const QString& path) = 0;
    /// Opens a file or web address with the program that the desktop associates with it, without waiting.
    /// @return false when there is none.
    virtual bool openWithDesktop(const QString& target) = 0;
    /// The names of the installed printers.
    virtual QStringList printers() = 0;
    /// Selects the printer of that name; an unknown name changes nothing. Initially the user's default
    /// printer is selected.
    virtual void setPrinter(const QString& name) = 0;
    /// Prints a page on the selected printer, on its default paper.
    /// @throws RuntimeError 53 when there is no such picture, 481 when the file is not a picture, 482 when
    ///         there is no printer or it fails.
    virtual void printPicture(const PicturePage& page) = 0;
    /// Asks the user for a printer, paper and pages, over `owner`, and has `paint` print on it; nothing if
    /// cancelled.
    /// @param title name in the print queue.
    /// @throws RuntimeError 482 when the printer refuses or fails.
    virtual void printPages(const QString& title, const std::function<void(QPagedPaintDevice&)>& paint,
                            QObject* owner) = 0;
    /// The machine's local date and time.
    virtual QDateTime now() = 0;

 private:
    Outside* former_;
};

/// Shows a message box for code that knows no window: over the one that the user works in.
BoxAnswer MsgBox(const QString& text, int style = boxStyle::plain, const QString& title = {});

/// Shows a message box over the window that it is about.
BoxAnswer MsgBox(QObject* owner, const QString& text, int style = boxStyle::plain, const QString& title = {});
