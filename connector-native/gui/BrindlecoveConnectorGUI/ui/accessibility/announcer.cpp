#include "ui/accessibility/announcer.h"

#include "ui/accessibility/announcement.h"

void Announcer::componentComplete()
{
    QQuickItem::componentComplete();
    const auto outcomes = findChildren<Outcome *>(Qt::FindDirectChildrenOnly);
    for (Outcome *outcome : outcomes) {
        outcome->begin();
        // Queued: of several changes the first call speaks all.
        connect(outcome, &Outcome::nowChanged, this, &Announcer::speakChanges, Qt::QueuedConnection);
    }
    QMetaObject::invokeMethod(this, &Announcer::speakChanges, Qt::QueuedConnection);
}

void Announcer::speakChanges()
{
    QStringList changes;
    const auto outcomes = findChildren<Outcome *>(Qt::FindDirectChildrenOnly);
    for (Outcome *outcome : outcomes) {
        if (outcome->takeChange()) {
            changes.append(outcome->words());
        }
    }
    if (!changes.isEmpty() && window()) {
        const QString sentence = changes.join(QStringLiteral(", "));
        announce(window(), sentence);
        emit spoken(sentence);
    }
}
