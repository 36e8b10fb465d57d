#include "ui/controls/fieldpadding.h"

#include <QCoreApplication>

FieldPadding::FieldPadding(QQuickItem *parent)
    : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::AllButtons);
}

void FieldPadding::passOn(const QMouseEvent &event)
{
    QMouseEvent copy(event.type(), mapToItem(m_input, event.position()), event.scenePosition(),
                     event.globalPosition(), event.button(), event.buttons(), event.modifiers(),
                     event.pointingDevice());
    copy.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(m_input, &copy);
}
