#pragma once

#include <QQuickItem>

/// The whole area of a field, under its text input: passes mouse events beside the input on to it, so that a
/// click on the padding counts as one on the text. Main thread only.
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
