#include "ui/accessibility/announcer.h"

#include "ui/accessibility/announcement.h"

void Announcer::componentComplete()
{
    QQuickItem::componentComplete();
    const auto outcomes = findChildren<Outcome *>(Qt::FindDirectChildrenOnly);
    for (Outcome *outcome : outcomes) {
        outcome->begin();
        connect(outcome, &Outcome::nowChanged, this, &Announcer::scheduleSentence);
    }
    scheduleSentence();
}

void Announcer::scheduleSentence()
{
    if (!m_isScheduled) {
        m_isScheduled = true;
        QMetaObject::invokeMethod(this, &Announcer::speakChanges, Qt::QueuedConnection);
    }
}

void Announcer::speakChanges()
{
    m_isScheduled = false;
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
