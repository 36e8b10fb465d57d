#pragma once

#include <QtCore/qelapsedtimer.h>
#include <QtGui/qpointingdevice.h>
#include <QtGui/qwindow.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <memory>

/// One finger on a touch screen, which touches the window that it was given last. Main thread only.
class Finger
{
public:
    void setWindow(QWindow *window) { m_window = window; }
    [[nodiscard]] QPointingDevice *screen() const { return m_screen.get(); }

    void press(QPoint at) const { QTest::touchEvent(m_window, screen()).press(number, at); }
    void move(QPoint to) const { QTest::touchEvent(m_window, screen()).move(number, to); }
    void release(QPoint at) const { QTest::touchEvent(m_window, screen()).release(number, at); }

    void tap(QPoint at) const
    {
        press(at);
        release(at);
    }

    /// Moves half of the way at once, since a finger that a busy machine lets rest first would hold, and then
    /// by steps. The finger stays down. Await what it does: a window may take the moves with its next frame.
    void drag(QPoint from, QPoint to) const
    {
        constexpr int steps = 10;
        press(from);
        for (int step = steps / 2; step <= steps; ++step) {
            move(from + (to - from) * step / steps);
            QTest::qWait(5);
        }
    }

    /// Leaves the screen while it moves. Returns the longest time between two of its events, in milliseconds:
    /// on a busy machine the finger may have rested.
    [[nodiscard]] qint64 flick(QPoint from, QPoint to) const
    {
        constexpr int steps = 5;
        qint64 longest = 0;
        press(from);
        QElapsedTimer sinceLast;
        sinceLast.start();
        for (int step = 1; step <= steps; ++step) {
            QTest::qWait(5);
            longest = std::max(longest, sinceLast.restart());
            move(from + (to - from) * step / steps);
        }
        longest = std::max(longest, sinceLast.restart());
        release(to);
        return longest;
    }

    /// Whoever holds still before the finger leaves the screen wants no flick.
    void rest(QPoint at) const
    {
        for (int i = 0; i < 10; ++i) {
            QTest::qWait(20);
            move(at + QPoint(i % 2, 0));
        }
    }

private:
    static constexpr int number = 7;

    std::unique_ptr<QPointingDevice> m_screen{QTest::createTouchDevice()};
    QWindow *m_window = nullptr;
};
