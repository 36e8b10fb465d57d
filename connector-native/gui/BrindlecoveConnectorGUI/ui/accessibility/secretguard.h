#pragma once

#include "ui/platform/itemfilter.h"

class QInputMethodQueryEvent;

/// Conceals the text of a masked input from input methods: they get a bullet for each character. Main thread
/// only.
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
