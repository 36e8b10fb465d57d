#pragma once

#include <QPointer>
#include <QQuickItem>

/// A viewport onto one taller item, scrolled by wheel, touchpad and keyboard. What has been scrolled to its
/// end leaves the wheel to the area around it. An item that gets the keyboard focus, or moves its text
/// cursor, is scrolled into view. Lengths are in logical pixels.
class ScrollArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *content READ content WRITE setContent NOTIFY contentChanged)
    Q_PROPERTY(qreal contentY READ contentY WRITE setContentY NOTIFY contentYChanged)
    Q_PROPERTY(qreal maximumY READ maximumY NOTIFY extentChanged)

public:
    explicit ScrollArea(QQuickItem *parent = nullptr);
    ~ScrollArea() override;

    [[nodiscard]] QQuickItem *content() const { return m_content; }
    void setContent(QQuickItem *content);

    /// How far the content is scrolled; always within 0 and maximumY.
    [[nodiscard]] qreal contentY() const { return m_contentY; }
    void setContentY(qreal contentY);
    [[nodiscard]] qreal maximumY() const;

signals:
    void contentChanged();
    void contentYChanged();
    void extentChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void updatePolish() override;

private:
    Q_SLOT void revealCursor() { polish(); }
    void followFocus();
    void followExtent();
    [[nodiscard]] QRectF focusedPart() const;
    void reveal(const QRectF &rect);

    QPointer<QQuickItem> m_content;
    qreal m_contentY = 0;
    QMetaObject::Connection m_windowFocus;
    QMetaObject::Connection m_cursor;
    QPointer<QQuickItem> m_focusItem;
};
