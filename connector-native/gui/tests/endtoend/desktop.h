#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

/// What a user has at hand on an X desktop: mouse, keyboard, clipboard and eyes; inside with-wayland, the
/// keyboard and the clipboard are that compositor's. Everything goes through the server to whichever window
/// is there. The functions return when the server has got the input; what a program makes of it has to be
/// awaited. Failures of the tools end the test program. Positions are pixels of the screen.
namespace desktop {

enum class Wheel { Up, Down };

void moveTo(QPoint position);
void clickAt(QPoint position);
void middleClickAt(QPoint position);
void rightClickAt(QPoint position);
void doubleClickAt(QPoint position);
/// Presses at the one place, moves to the other and releases.
void drag(QPoint from, QPoint to);
void turnWheel(QPoint position, Wheel direction, int steps);

void type(const QString &text);
/// Presses a key or a combination by its X name, as in "ctrl+a".
void press(const QString &keys);
/// Presses keys one after the other, with a pause after each, in milliseconds.
void press(const QStringList &keys, int pace);

/// A key that is held down as long as the object lives.
class HeldKey
{
public:
    explicit HeldKey(const QString &key);
    ~HeldKey();
    Q_DISABLE_COPY_MOVE(HeldKey)

private:
    const QString m_key;
};

void setClipboard(const QString &text);
[[nodiscard]] QByteArray clipboard();
/// What was selected last, and a middle click inserts.
void setPrimarySelection(const QString &text);
[[nodiscard]] QByteArray primarySelection();

/// The X id of a visible window of the process, which is waited for.
[[nodiscard]] QString windowOf(qint64 processId);
void resizeWindow(const QString &window, int width, int height);
[[nodiscard]] QSize windowSize(const QString &window);
/// A window manager, there as long as the object. Only it can close a window as a user does.
class WindowManager
{
public:
    WindowManager();
    ~WindowManager();
    Q_DISABLE_COPY_MOVE(WindowManager)

    /// Closes the window that has the keyboard focus.
    void closeActiveWindow() const { press(QStringLiteral("alt+F4")); }
    /// Clicks the close button of a window, which lies above its upper right corner.
    void clickCloseButton(QRect window) const { clickAt(window.topRight() + QPoint(-8, -10)); }

private:
    QProcess m_process;
};

/// What the pointer looks like now; it is in no screenshot.
[[nodiscard]] QImage pointerShape();

[[nodiscard]] QImage screenshot(QRect part);
/// What is in a window that lies on the screen as a whole, and what covers it.
[[nodiscard]] QImage pictureOf(const QString &window);
/// How many pixels of the part of the screen come near a colour.
[[nodiscard]] int pixelsNear(QRect part, QColor colour);

} // namespace desktop
