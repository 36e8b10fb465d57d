#pragma once

#include <QQuickItem>

/// What makes a control a button: it takes the keyboard focus and is triggered by a left click, by Space, by
/// Return or by calling trigger(), as an assistive technology does. It paints nothing.
/// The triggered operation may block the thread for long. So the look that aboutToTrigger() gave the control
/// is on the screen before the operation begins, and its outcome is before anything else runs.
class PressArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit PressArea(QQuickItem *parent = nullptr);

public slots:
    void trigger();

signals:
    void aboutToTrigger();
    void triggered();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
