#pragma once

#include "ui/accessibility/secretkeys.h"
#include "ui/platform/itemfilter.h"

class QInputMethodQueryEvent;

/// Keeps what is typed into a masked text input inside it: input methods are told bullets, one for each
/// character, and assistive technologies no key. Main thread only.
class SecretGuard : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT

public:
    using ItemFilter::ItemFilter;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void coverKeys(QEvent::Type type);
    void answer(QObject *input, QInputMethodQueryEvent *query);

    SecretKeys m_keys;
};
