#pragma once

#include <QQuickItem>

/// The input handling of a button: it takes the keyboard focus and is triggered by a left click, by releasing
/// Space, by Return or by trigger(), which assistive technologies use. Escape, or the loss of the focus,
/// cancels a held mouse button or Space. It paints nothing.
/// The triggered operation may block the thread for long. Its outcome is on the screen before anything else
/// runs.
class PressArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Held by the mouse or by Space, so that releasing it triggers.
    Q_PROPERTY(bool down READ isDown NOTIFY downChanged)

public:
    explicit PressArea(QQuickItem *parent = nullptr);

    [[nodiscard]] bool isDown() const { return m_down; }

public slots:
    void trigger();

signals:
    void downChanged();
    void triggered();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    enum class Holder { Nobody, Mouse, Space };

    void hold(Holder holder);
    void letGo() { hold(Holder::Nobody); }
    void setDown(bool down);

    Holder m_holder = Holder::Nobody;
    bool m_down = false;
};
