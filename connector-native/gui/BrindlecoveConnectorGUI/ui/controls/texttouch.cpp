#include "ui/controls/texttouch.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QStyleHints>

namespace {

// Qt Quick makes mouse events of what a finger does to an item that takes no touch.
bool isByFinger(const QEvent &event)
{
    return event.isSinglePointEvent()
        && static_cast<const QSinglePointEvent &>(event).deviceType()
        == QInputDevice::DeviceType::TouchScreen;
}

} // namespace

bool TextTouch::eventFilter(QObject *watched, QEvent *event)
{
    if (!isByFinger(*event)) {
        return ItemFilter::eventFilter(watched, event);
    }
    const auto &finger = *static_cast<const QSinglePointEvent *>(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        begin(finger);
        break;
    case QEvent::MouseButtonDblClick:
        m_presses.push_back(event->type());
        break;
    case QEvent::MouseMove:
        if ((finger.scenePosition() - m_pressedAt).manhattanLength()
            >= QGuiApplication::styleHints()->startDragDistance()) {
            end();
        }
        break;
    case QEvent::MouseButtonRelease:
        click(finger);
        break;
    default:
        return ItemFilter::eventFilter(watched, event);
    }
    return true;
}

void TextTouch::begin(const QSinglePointEvent &press)
{
    m_presses = {press.type()};
    m_pressedAt = press.scenePosition();
    m_rest.start(QGuiApplication::styleHints()->mousePressAndHoldInterval(), this);
    // A scroll that begins takes the finger over, and so may the platform.
    const auto follow = [this](QObject *, QPointingDevice::GrabTransition transition) {
        if (transition == QPointingDevice::CancelGrabExclusive
            || transition == QPointingDevice::UngrabExclusive) {
            end();
        }
    };
    m_grab = connect(press.pointingDevice(), &QPointingDevice::grabChanged, this, follow);
}

void TextTouch::end()
{
    m_presses.clear();
    m_rest.stop();
    disconnect(m_grab);
}

void TextTouch::click(const QSinglePointEvent &release)
{
    std::vector<QEvent::Type> types = m_presses;
    end();
    if (!types.empty()) {
        types.push_back(QEvent::MouseButtonRelease);
    }
    for (const QEvent::Type type : types) {
        const bool isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, release.position(), release.scenePosition(), release.globalPosition(),
                          Qt::LeftButton, isRelease ? Qt::NoButton : Qt::LeftButton, release.modifiers());
        event.setTimestamp(release.timestamp());
        QCoreApplication::sendEvent(item(), &event);
    }
}

void TextTouch::timerEvent(QTimerEvent *)
{
    end();
    emit held(item()->mapFromScene(m_pressedAt));
}
