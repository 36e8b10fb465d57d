#pragma once

#include "ui/accessibility/outcome.h"

#include <QQuickItem>

/// Speaks what has become of the outcomes that are its children. All that changes before the event loop runs
/// again comes from one action, which holds the thread until it has ended, and is told in one sentence.
/// Needed only while assistive technologies listen. Main thread only.
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
    void scheduleSentence();
    void speakChanges();

    bool m_isScheduled = false;
};
