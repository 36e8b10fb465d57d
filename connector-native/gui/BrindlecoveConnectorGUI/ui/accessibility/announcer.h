#pragma once

#include "ui/accessibility/outcome.h"

#include <QQuickItem>

/// Announces changes of the outcomes that are its children. An action holds the thread until it has ended, so
/// all changes before the event loop runs again belong to one action and are announced in one sentence.
/// Needed only while an assistive technology is active. Main thread only.
class Announcer : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QQuickItem::QQuickItem;

signals:
    void spoken(const QString &sentence);

protected:
    void componentComplete() override;

private:
    void speakChanges();
};
