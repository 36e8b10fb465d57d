#include "ui/accessibility/accessibleitem.h"

#include "ui/controls/pressarea.h"

#include <QQuickWindow>

QString speakable(QString text)
{
    constexpr char16_t symbolForNull = u'\u2400';
    return text.replace(QChar::Null, symbolForNull);
}

QWindow *AccessibleItem::window() const
{
    return item()->window();
}

QRect AccessibleItem::onScreen(const QRectF &rect) const
{
    const QPoint origin = window() ? window()->mapToGlobal(QPoint(0, 0)) : QPoint();
    return item()->mapRectToScene(rect).toAlignedRect().translated(origin);
}

QRect AccessibleItem::rect() const
{
    return onScreen(QRectF(QPointF(), item()->size()));
}

QAccessibleInterface *AccessibleItem::parent() const
{
    return QAccessible::queryAccessibleInterface(window());
}

QString AccessibleItem::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return speakable(name());
    case QAccessible::Description:
        return description();
    default:
        return {};
    }
}

// Qt 6.4: an off-screen item is exposed as invisible too, and screen readers, which cache states, would skip
// it after it has been scrolled back. So what is scrolled away is not called off-screen.
QAccessible::State AccessibleItem::state() const
{
    QAccessible::State state;
    state.invisible = !item()->isVisible();
    state.focusable = item()->activeFocusOnTab();
    state.focused = item()->hasActiveFocus();
    return state;
}

AccessiblePressArea::AccessiblePressArea(PressArea *area)
    : AccessibleItem(area)
{
}

QAccessible::Role AccessiblePressArea::role() const
{
    return isTab() ? QAccessible::PageTab : QAccessible::Button;
}

QAccessible::State AccessiblePressArea::state() const
{
    QAccessible::State state = AccessibleItem::state();
    state.selectable = isTab();
    state.selected = isSelected();
    const QVariant expanded = object()->property("expanded");
    state.expandable = expanded.isValid();
    state.expanded = expanded.isValid() && expanded.toBool();
    state.collapsed = expanded.isValid() && !expanded.toBool();
    return state;
}

// Screen readers do not speak the selected state of a tab, so its description says it.
QString AccessiblePressArea::description() const
{
    return isSelected() ? QStringLiteral("selected") : QString();
}

void *AccessiblePressArea::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList AccessiblePressArea::actionNames() const
{
    return {pressAction(), setFocusAction()};
}

void AccessiblePressArea::doAction(const QString &actionName)
{
    auto *area = static_cast<PressArea *>(object());
    if (actionName == pressAction()) {
        // Queued: the caller gets its answer now, not after the command.
        QMetaObject::invokeMethod(area, &PressArea::trigger, Qt::QueuedConnection);
    } else if (actionName == setFocusAction()) {
        area->forceActiveFocus(Qt::TabFocusReason);
    }
}
