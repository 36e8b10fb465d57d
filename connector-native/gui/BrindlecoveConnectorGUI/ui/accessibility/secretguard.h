#pragma once

#include "ui/platform/itemfilter.h"

class QInputMethodQueryEvent;

/// Keeps what is in a masked text input inside it: input methods are told bullets, one for each character.
/// Main thread only.
class SecretGuard : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT

public:
    using ItemFilter::ItemFilter;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QObject *input, QInputMethodQueryEvent *query);
};
