#pragma once

#include <QPointer>
#include <QQuickItem>

/// Keeps what is typed into a masked text input inside it: input methods, and assistive technologies when it
/// changes, are told bullets, one for each character. Main thread only.
class SecretGuard : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *input READ input WRITE setInput NOTIFY inputChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *input() const { return m_input; }
    void setInput(QQuickItem *input);

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void inputChanged();

private slots:
    void announceChange();

private:
    QPointer<QQuickItem> m_input;
    QString m_announced;
};
