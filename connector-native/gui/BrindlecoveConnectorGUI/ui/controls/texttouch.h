#pragma once

#include "ui/platform/itemfilter.h"

#include <QBasicTimer>
#include <QEvent>
#include <QPointF>

#include <vector>

class QSinglePointEvent;

/// How a finger uses a text: a tap is a click, and a finger that rests is signalled. One that moves, because
/// it scrolls, leaves the text cursor, the selection and the focus as they are. Main thread only.
class TextTouch : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT

public:
    using ItemFilter::ItemFilter;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// A long press at a point of the item.
    void held(QPointF point);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void begin(const QSinglePointEvent &press);
    void end();
    void click(const QSinglePointEvent &release);

    std::vector<QEvent::Type> m_presses; ///< What the item gets if this becomes a tap.
    QPointF m_pressedAt; ///< In the window's coordinates.
    QBasicTimer m_rest;
    QMetaObject::Connection m_grab;
};
