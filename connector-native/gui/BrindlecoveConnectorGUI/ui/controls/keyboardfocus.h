#pragma once

#include "ui/platform/itemfilter.h"

/// Whether an item has got the focus by the keyboard, so that a focus ring is needed. Main thread only.
class KeyboardFocus : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)

public:
    using ItemFilter::ItemFilter;

    [[nodiscard]] bool isActive() const { return m_active; }

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void activeChanged();

private:
    void setActive(bool active);

    bool m_active = false;
    bool m_isToComeBack = false; ///< The ring, with the focus.
};
