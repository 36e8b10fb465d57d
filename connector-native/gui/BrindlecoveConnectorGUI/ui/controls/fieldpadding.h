#pragma once

#include <QQuickItem>

/// The whole area of a field, under its clipped text input: passes mouse events on the padding on to the
/// input, so that a click there counts as one on the text. Main thread only.
class FieldPadding : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *input MEMBER m_input REQUIRED)

public:
    explicit FieldPadding(QQuickItem *parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent *event) override { passOn(*event); }
    void mouseMoveEvent(QMouseEvent *event) override { passOn(*event); }
    void mouseReleaseEvent(QMouseEvent *event) override { passOn(*event); }
    void mouseDoubleClickEvent(QMouseEvent *event) override { passOn(*event); }

private:
    void passOn(const QMouseEvent &event);

    QQuickItem *m_input = nullptr;
};
