#pragma once

#include <QObject>
#include <QVariant>
#include <qqmlregistration.h>

/// A value that an action may change, and the window's words for it. Belongs to an Announcer, which announces
/// the words when the value differs from the last announced one. Main thread only.
class Outcome : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The value that is not announced at first; by default the first one.
    Q_PROPERTY(QVariant before MEMBER m_told)
    Q_PROPERTY(QVariant now READ now WRITE setNow NOTIFY nowChanged)
    Q_PROPERTY(QString words MEMBER m_words)

public:
    using QObject::QObject;

    [[nodiscard]] QVariant now() const { return m_now; }
    void setNow(const QVariant &now);
    [[nodiscard]] QString words() const { return m_words; }

    /// Says that the value is the first.
    void begin();
    /// Whether the value has changed since it was last asked for.
    [[nodiscard]] bool takeChange();

signals:
    void nowChanged();

private:
    QVariant m_told;
    QVariant m_now;
    QString m_words;
};
