#pragma once

#include <QQuickItem>

/// Lays its children side by side, centred on each other. One of them takes the width that the others leave.
class FillingRow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *filling MEMBER m_filling NOTIFY layoutChanged)
    Q_PROPERTY(qreal spacing MEMBER m_spacing NOTIFY layoutChanged)

public:
    explicit FillingRow(QQuickItem *parent = nullptr);

signals:
    void layoutChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override { layOut(); }

private:
    void layOut();

    QQuickItem *m_filling = nullptr;
    qreal m_spacing = 0;
};
