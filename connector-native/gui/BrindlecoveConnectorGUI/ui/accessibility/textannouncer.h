#pragma once

#include "ui/platform/itemfilter.h"

/// Tells assistive technologies each change of a text input's text and selection, which Qt does not:
/// the text as it is, or bullets when it is masked. Main thread only.
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
