#include "ui/controls/contextmenuopener.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>

namespace {

bool isOfRightButton(const QEvent &event)
{
    return event.isPointerEvent() && static_cast<const QPointerEvent &>(event).isSinglePointEvent()
        && static_cast<const QSinglePointEvent &>(event).button() == Qt::RightButton;
}

bool isMenuKey(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const auto &key = static_cast<const QKeyEvent &>(event);
    return key.key() == Qt::Key_Menu || (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier);
}

} // namespace

ContextMenuOpener::ContextMenuOpener(QObject *parent)
    : ItemFilter(parent)
{
    connect(this, &ItemFilter::itemChanged, this, &ContextMenuOpener::acceptRightButton);
}

void ContextMenuOpener::acceptRightButton()
{
    if (item()) {
        item()->setAcceptedMouseButtons(item()->acceptedMouseButtons() | Qt::RightButton);
    }
}

bool ContextMenuOpener::eventFilter(QObject *watched, QEvent *event)
{
    if (isMenuKey(*event)) {
        open(item()->property("cursorRectangle").toRectF().bottomLeft(), Way::Keyboard);
        return true;
    }
    if (isOfRightButton(*event)) {
        if (event->type() == QEvent::MouseButtonPress) {
            openAt(static_cast<QMouseEvent *>(event)->position());
        }
        // Consumed: a text would move its cursor and drop the selection.
        return true;
    }
    return ItemFilter::eventFilter(watched, event);
}

void ContextMenuOpener::openAt(QPointF point)
{
    item()->forceActiveFocus(Qt::MouseFocusReason);
    open(point, Way::Pointer);
}

void ContextMenuOpener::open(QPointF point, Way way)
{
    if (m_isOpen) {
        return;
    }
    setOpen(true);
    QQmlComponent component(qmlEngine(this), qmlContext(this)->resolvedUrl(m_menu));
    const QVariant target = QVariant::fromValue(item());
    const QVariantMap properties{{QStringLiteral("target"), target},
                                 {QStringLiteral("parent"), target},
                                 {QStringLiteral("point"), point},
                                 {QStringLiteral("byKeyboard"), way == Way::Keyboard}};
    // Qt 6.4: a component that could not be loaded must not be asked to create anything.
    QObject *menu =
        component.isReady() ? component.createWithInitialProperties(properties, qmlContext(this)) : nullptr;
    if (!menu) {
        qWarning("%s", qPrintable(component.errorString()));
        setOpen(false);
        return;
    }
    menu->setParent(this);
    // The class of popups is not public, so their signal is known by its name only.
    connect(menu, SIGNAL(closed()), menu, SLOT(deleteLater()));
    connect(menu, SIGNAL(closed()), this, SLOT(forget()));
    const auto closeInTheBackground = [menu, window = item()->window()] {
        if (!window->isActive()) {
            QMetaObject::invokeMethod(menu, "close");
        }
    };
    connect(item()->window(), &QQuickWindow::activeChanged, menu, closeInTheBackground);
}

void ContextMenuOpener::setOpen(bool isOpen)
{
    m_isOpen = isOpen;
    emit openChanged();
}
