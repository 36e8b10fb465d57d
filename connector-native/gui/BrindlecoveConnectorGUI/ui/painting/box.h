#pragma once

#include "ui/painting/boxpainter.h"

#include <QQuickItem>

/// A box of the window: a fill, an outline, continuous corners and a soft shadow around it. Its corners and
/// edges are painted once and stretched, and no shader is used, so that it looks the same with every renderer
/// and at every device pixel ratio.
class Box : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY styleChanged)
    Q_PROPERTY(QColor endColor MEMBER m_endColor NOTIFY styleChanged)
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY styleChanged)
    Q_PROPERTY(qreal borderWidth MEMBER m_borderWidth NOTIFY styleChanged)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY styleChanged)
    Q_PROPERTY(QColor shadowColor MEMBER m_shadowColor NOTIFY styleChanged)
    Q_PROPERTY(qreal shadowBlur MEMBER m_shadowBlur NOTIFY styleChanged)
    Q_PROPERTY(qreal shadowOffset MEMBER m_shadowOffset NOTIFY styleChanged)

public:
    explicit Box(QQuickItem *parent = nullptr);

signals:
    void styleChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private:
    [[nodiscard]] BoxStyle style() const;

    QColor m_color;
    QColor m_endColor;
    QColor m_borderColor;
    qreal m_borderWidth = 1;
    qreal m_radius = 0;
    QColor m_shadowColor;
    qreal m_shadowBlur = 0;
    qreal m_shadowOffset = 0;

    QImage m_image;
    bool m_imageChanged = false;
};
