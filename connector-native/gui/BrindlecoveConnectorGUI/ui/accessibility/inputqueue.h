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
class QTouchEvent;

/// Delivers the window's input in its original order, and conceals from assistive technologies what is typed
/// into masked fields.
///
/// Qt asks an assistive technology about each key, with the character that it types. The window gets the key
/// after the answer, or after a tenth of a second, or never, if the key was a command of the assistive
/// technology. Meanwhile later input waits here if it must be concealed, or if that key may change which
/// field it goes to. Main thread only.
class InputQueue : public QObject
{
    Q_OBJECT

public:
    using Delivery = std::function<bool(QObject *receiver, QEvent *event)>;

    /// What the application does with an event, the asking included.
    explicit InputQueue(Delivery deliver);
    ~InputQueue() override;

    /// Call it for every event of the application, instead of delivering the event.
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
    [[nodiscard]] bool mustWait(const QEvent &event) const;
    [[nodiscard]] bool mayGo(const QEvent &event) const;
    [[nodiscard]] bool isPartOfText(const QKeyEvent &key) const;
    [[nodiscard]] bool isSecret(const QKeyEvent &key) const;
    [[nodiscard]] bool keepsTouch(QObject *window, const QTouchEvent &touch);
    bool give(QObject *receiver, QEvent *event);
    void note(const QKeyEvent &key, bool isSecret);
    bool ask(QObject *window, QKeyEvent *key);
    void giveWaiting();
    void giveAll();

    Delivery m_deliver;
    std::deque<Input> m_waiting;
    std::deque<Question> m_questions;
    std::set<quint32> m_secretKeys; ///< Held down, with concealed presses.
    QBasicTimer m_patience;
    int m_rounds = 0;
    bool m_isGiving = false;
    bool m_isTouchKept = false;
    bool m_isCommand = false;
};
