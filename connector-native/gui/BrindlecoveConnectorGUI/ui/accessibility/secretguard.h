#pragma once

#include "ui/itemfilter.h"

/// Keeps what is typed into a masked text input inside it: input methods, and assistive technologies when it
/// changes, are told bullets, one for each character. Main thread only.
class SecretGuard : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit SecretGuard(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchText();
    Q_SLOT void announceChange();

    QString m_announced;
};
