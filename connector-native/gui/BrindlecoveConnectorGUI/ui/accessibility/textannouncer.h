#pragma once

#include "ui/platform/itemfilter.h"

/// Sends assistive technologies the events for changes of a text input's text and selection, which Qt Quick
/// does not send: with the text, or bullets if it is masked. Main thread only.
class TextAnnouncer : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit TextAnnouncer(QObject *parent = nullptr);

private:
    void watchText();
    Q_SLOT void announceChange();
    Q_SLOT void announceSelection();

    QString m_announced;
};
