#pragma once

#include <QBasicTimer>
#include <QEvent>
#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>
#include <memory>
#include <set>

class QKeyEvent;

/// Gives the window its input in the order in which the user made it, and keeps from assistive technologies
/// what is typed into masked fields.
///
/// Qt tells them about each key, with the character that it types. The window gets the key when they have
/// answered, or after a tenth of a second, or never, when they took it for a command of theirs. Until then
/// everything waits here that they must not know or that may go to another field because of that key. Main
/// thread only.
class InputQueue : public QObject
{
    Q_OBJECT

public:
    using Delivery = std::function<bool(QObject *receiver, QEvent *event)>;

    /// What the application does with an event, the asking included.
    explicit InputQueue(Delivery deliver);
    ~InputQueue() override;

    /// To be called with every event of the application in place of its delivery.
    bool notify(QObject *receiver, QEvent *event);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Input
    {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    /// A key that assistive technologies are being asked about.
    struct Question
    {
        QEvent::Type type = QEvent::None;
        quint32 physicalKey = 0;
        bool mayMoveFocus = true;
    };

    [[nodiscard]] bool isNewInput(const QObject &receiver, const QEvent &event) const;
    [[nodiscard]] bool mayGo(const QEvent &event) const;
    [[nodiscard]] bool isPartOfText(const QKeyEvent &key) const;
    [[nodiscard]] bool isSecret(const QKeyEvent &key) const;
    bool give(QObject *receiver, QEvent *event);
    void note(const QKeyEvent &key, bool isSecret);
    bool ask(QObject *window, QKeyEvent *key);
    void giveWaiting();
    void giveAll();

    Delivery m_deliver;
    std::deque<Input> m_waiting;
    std::deque<Question> m_questions;
    std::set<quint32> m_secretKeys; ///< Held down, and not told.
    QBasicTimer m_patience;
    int m_rounds = 0;
    bool m_isGiving = false;
    bool m_isCommand = false;
};
