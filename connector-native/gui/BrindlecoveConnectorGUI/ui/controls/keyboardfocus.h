#pragma once

#include "ui/platform/itemfilter.h"

#include <QQmlComponent>

#include <memory>

/// Whether an item has got the focus by the keyboard, so that a focus ring is needed. Main thread only.
class KeyboardFocus : public ItemFilter
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    /// An item that is created in the filter's parent each time it is needed: most controls never have the
    /// focus.
    Q_PROPERTY(QQmlComponent *ring MEMBER m_ring NOTIFY ringChanged)

public:
    using ItemFilter::ItemFilter;

    [[nodiscard]] bool isActive() const { return m_active; }

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void activeChanged();
    void ringChanged();

private:
    void setActive(bool active);

    QQmlComponent *m_ring = nullptr;
    std::unique_ptr<QObject> m_shownRing;
    bool m_active = false;
    bool m_isToComeBack = false; ///< The ring, with the focus.
};
