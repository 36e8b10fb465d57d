#include "desktop.h"

#include "picture.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QtGlobal>

using namespace Qt::StringLiterals;

namespace desktop {

namespace {

    QByteArray runTool(const QString &program, const QStringList &arguments, bool mayFail = false)
    {
        QProcess tool;
        if (!mayFail)
            tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        tool.start(program, arguments);
        const bool succeeded =
            tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
        if (!succeeded && !mayFail)
            qFatal("%s failed", qPrintable(program));
        return tool.readAllStandardOutput();
    }

    void xdotool(const QStringList &arguments)
    {
        runTool(u"xdotool"_s, arguments);
    }

    void offer(const QString &selection, const QString &text)
    {
        QProcess holder;
        // It stays behind to hand the text out, and would keep a pipe open.
        holder.setStandardOutputFile(QProcess::nullDevice());
        holder.setStandardErrorFile(QProcess::nullDevice());
        holder.start(u"xclip"_s, {u"-selection"_s, selection, u"-in"_s});
        holder.write(text.toUtf8());
        holder.closeWriteChannel();
        if (!holder.waitForFinished() || holder.exitCode() != 0)
            qFatal("xclip failed");
    }

    bool isWayland()
    {
        return qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    }

    // The keys between the plus signs but the last are held down for it.
    void pressOnWayland(const QString &keys)
    {
        QStringList held = keys.split(u'+');
        const QString key = held.takeLast();
        QStringList arguments;
        for (const QString &modifier : held)
            arguments += {u"-M"_s, modifier};
        runTool(u"wtype"_s, arguments + QStringList{u"-k"_s, key});
    }

    QByteArray take(const QString &selection)
    {
        if (isWayland()) {
            const QStringList kind = selection == u"primary"_s ? QStringList{u"-p"_s} : QStringList();
            return runTool(u"wl-paste"_s, QStringList{u"-n"_s} + kind, true);
        }
        return runTool(u"xclip"_s, {u"-selection"_s, selection, u"-out"_s, u"-target"_s, u"UTF8_STRING"_s},
                       true);
    }

    bool isNear(QColor one, QColor other)
    {
        constexpr int tolerance = 6;
        return areAlike(one, other, tolerance);
    }

    QImage pictureOf(WId window, QRect part)
    {
        return QGuiApplication::primaryScreen()
            ->grabWindow(window, part.x(), part.y(), part.width(), part.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

} // namespace

void moveTo(QPoint position)
{
    // Without --sync, which waits for ever when the pointer is there already.
    xdotool({u"mousemove"_s, QString::number(position.x()), QString::number(position.y())});
}

void clickAt(QPoint position)
{
    moveTo(position);
    xdotool({u"click"_s, u"1"_s});
}

void middleClickAt(QPoint position)
{
    moveTo(position);
    xdotool({u"click"_s, u"2"_s});
}

void rightClickAt(QPoint position)
{
    moveTo(position);
    xdotool({u"click"_s, u"3"_s});
}

void doubleClickAt(QPoint position)
{
    moveTo(position);
    xdotool({u"click"_s, u"--repeat"_s, u"2"_s, u"--delay"_s, u"20"_s, u"1"_s});
}

void drag(QPoint from, QPoint to)
{
    moveTo(from);
    xdotool({u"mousedown"_s, u"1"_s});
    moveTo((from + to) / 2);
    moveTo(to);
    xdotool({u"mouseup"_s, u"1"_s});
}

void turnWheel(QPoint position, Wheel direction, int steps)
{
    moveTo(position);
    xdotool({u"click"_s, u"--repeat"_s, QString::number(steps), u"--delay"_s, u"5"_s,
             direction == Wheel::Up ? u"4"_s : u"5"_s});
}

void type(const QString &text)
{
    if (isWayland()) {
        runTool(u"wtype"_s, {u"-d"_s, u"4"_s, u"--"_s, text});
    } else {
        xdotool({u"type"_s, u"--delay"_s, u"4"_s, u"--"_s, text});
    }
}

void press(const QString &keys)
{
    if (isWayland()) {
        pressOnWayland(keys);
    } else {
        xdotool({u"key"_s, keys});
    }
}

void press(const QStringList &keys, int pace)
{
    xdotool(QStringList{u"key"_s, u"--delay"_s, QString::number(pace)} + keys);
}

HeldKey::HeldKey(const QString &key)
    : m_key(key)
{
    xdotool({u"keydown"_s, m_key});
}

HeldKey::~HeldKey()
{
    xdotool({u"keyup"_s, m_key});
}

void setClipboard(const QString &text)
{
    offer(u"clipboard"_s, text);
}

QByteArray clipboard()
{
    return take(u"clipboard"_s);
}

void setPrimarySelection(const QString &text)
{
    offer(u"primary"_s, text);
}

QByteArray primarySelection()
{
    return take(u"primary"_s);
}

QString windowOf(qint64 processId)
{
    QByteArray windows;
    // A window manager shows a window some time after the program has.
    const auto isShown = [&] {
        windows = runTool(u"xdotool"_s,
                          {u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(processId)}, true);
        return !windows.isEmpty();
    };
    if (!QTest::qWaitFor(isShown))
        qFatal("process %lld shows no window", processId);
    return QString::fromLatin1(windows).section(u'\n', 0, 0);
}

void resizeWindow(const QString &window, int width, int height)
{
    xdotool({u"windowsize"_s, window, QString::number(width), QString::number(height)});
}

QSize windowSize(const QString &window)
{
    const QByteArray lines = runTool(u"xdotool"_s, {u"getwindowgeometry"_s, u"--shell"_s, window});
    QSize size;
    for (const QByteArray &line : lines.split('\n')) {
        if (line.startsWith("WIDTH="))
            size.setWidth(line.mid(6).toInt());
        if (line.startsWith("HEIGHT="))
            size.setHeight(line.mid(7).toInt());
    }
    return size;
}

WindowManager::WindowManager()
{
    // The first key of all changes the display's keyboard. Openbox lets go of its keys then, to take them
    // again, and would miss what is pressed in between.
    press(u"Shift_L"_s);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(u"openbox"_s, {u"--sm-disable"_s});
    // Until its event loop runs it loses the windows that are opened; once it does, it obeys. The number of
    // desktops outlives a window manager, so each is asked for another one.
    static int desktops = 1;
    const QString wanted = QString::number(++desktops);
    const auto isUp = [&] {
        runTool(u"xdotool"_s, {u"set_num_desktops"_s, wanted}, true);
        return runTool(u"xdotool"_s, {u"get_num_desktops"_s}, true).trimmed() == wanted.toLatin1();
    };
    constexpr int startTimeout = 20000;
    if (!QTest::qWaitFor(isUp, startTimeout))
        qFatal("openbox failed");
}

WindowManager::~WindowManager()
{
    m_process.terminate();
    m_process.waitForFinished();
}

QImage screenshot(QRect part)
{
    return pictureOf(0, part);
}

QImage pictureOf(const QString &window)
{
    return pictureOf(window.toULong(), {0, 0, -1, -1});
}

int pixelsNear(QRect part, QColor colour)
{
    const QImage seen = screenshot(part & QGuiApplication::primaryScreen()->geometry());
    int count = 0;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x)
            count += isNear(seen.pixelColor(x, y), colour) ? 1 : 0;
    }
    return count;
}

} // namespace desktop
