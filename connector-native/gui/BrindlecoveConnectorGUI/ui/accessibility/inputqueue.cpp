#include "ui/accessibility/inputqueue.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStyleHints>
#include <QTimerEvent>
#include <QTouchEvent>

#include <algorithm>
#include <utility>

namespace {

// Qt waits 100 ms for an answer. Rounds of the event loop are counted, since time during which a command
// blocks the loop must not count.
constexpr int roundMs = 50;
constexpr int roundsToWait = 6;

bool isKey(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
}

bool isTouch(const QEvent &event)
{
    return event.isPointerEvent() && !event.isSinglePointEvent();
}

bool isTap(const QEventPoint &finger)
{
    return (finger.scenePosition() - finger.scenePressPosition()).manhattanLength()
        < QGuiApplication::styleHints()->startDragDistance();
}

bool isScreenReaderModifier(int key)
{
    return key == Qt::Key_Insert || key == Qt::Key_CapsLock;
}

// A shift key may be released before the key, which then has another text.
quint32 physicalKey(const QKeyEvent &key)
{
    return key.nativeScanCode() != 0 ? key.nativeScanCode() : static_cast<quint32>(key.key());
}

// The shift key says whether a character is a capital, which is part of the secret.
bool choosesCharacter(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_AltGr || key == Qt::Key_Mode_switch;
}

struct Focus
{
    bool takesText = false;
    bool isMasked = false;
};

Focus focus()
{
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImHints);
    if (QObject *object = QGuiApplication::focusObject()) {
        QCoreApplication::sendEvent(object, &query);
    }
    const auto hints = Qt::InputMethodHints(query.value(Qt::ImHints).toInt());
    return {query.value(Qt::ImEnabled).toBool(), hints.testFlag(Qt::ImhHiddenText)};
}

} // namespace

InputQueue::InputQueue(Delivery deliver)
    : m_deliver(std::move(deliver))
{
}

InputQueue::~InputQueue() = default;

bool InputQueue::notify(QObject *receiver, QEvent *event)
{
    if (event->type() == QEvent::FocusAboutToChange && receiver->isWindowType()) {
        giveAll();
    }
    const bool isNew = isNewInput(*receiver, *event);
    if (isNew && isTouch(*event)) {
        if (keepsTouch(receiver, static_cast<const QTouchEvent &>(*event))) {
            return true;
        }
    } else if (isNew && mustWait(*event)) {
        m_waiting.push_back({receiver, std::unique_ptr<QEvent>(event->clone())});
        return true;
    }
    const bool comesBack = !isNew && isKey(*event) && receiver->isWindowType() && !m_isGiving;
    if (!isNew && !comesBack) {
        return m_deliver(receiver, event);
    }
    const bool result = give(receiver, event);
    giveWaiting();
    return result;
}

// Keys, mouse and touch events are sent to the window. An input method's event is sent to the focused item;
// to another one it comes from an assistive technology. One that comes while another event is delivered is a
// consequence of that one.
bool InputQueue::isNewInput(const QObject &receiver, const QEvent &event) const
{
    if (event.type() == QEvent::InputMethod) {
        return !m_isGiving && &receiver == QGuiApplication::focusObject();
    }
    return event.spontaneous() && receiver.isWindowType() && (isKey(event) || event.isPointerEvent());
}

// Qt forgets a finger that has left the screen, so that its events cannot be delivered later: one that comes
// while keys wait counts only as the tap that it may turn out to be.
bool InputQueue::keepsTouch(QObject *window, const QTouchEvent &touch)
{
    if (touch.type() == QEvent::TouchBegin) {
        m_isTouchKept = mustWait(touch);
    }
    if (m_isTouchKept && touch.type() == QEvent::TouchEnd && isTap(touch.points().constFirst())) {
        const QEventPoint &finger = touch.points().constFirst();
        for (const Qt::MouseButtons held : {Qt::MouseButtons(Qt::LeftButton), Qt::MouseButtons()}) {
            const auto type = held ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease;
            auto click = std::make_unique<QMouseEvent>(type, finger.position(), finger.scenePosition(),
                                                       finger.globalPosition(), Qt::LeftButton, held,
                                                       touch.modifiers());
            m_waiting.push_back({window, std::move(click)});
        }
        giveWaiting();
    }
    return m_isTouchKept;
}

bool InputQueue::mustWait(const QEvent &event) const
{
    return m_isGiving || !m_waiting.empty() || !mayGo(event);
}

bool InputQueue::mayGo(const QEvent &event) const
{
    if (m_questions.empty()) {
        return true;
    }
    if (!isKey(event)) {
        return false;
    }
    const auto &key = static_cast<const QKeyEvent &>(event);
    const bool dependsOnFocus = key.type() == QEvent::KeyPress && isPartOfText(key);
    const auto mayMoveFocus = [](const Question &question) { return question.mayMoveFocus; };
    return !isSecret(key) && !(dependsOnFocus && std::ranges::any_of(m_questions, mayMoveFocus));
}

// With the screen reader's modifier held, every key is a command.
bool InputQueue::isPartOfText(const QKeyEvent &key) const
{
    const bool types = !key.text().isEmpty() && key.text().front().isPrint();
    return !m_isCommand && (types || choosesCharacter(key.key()));
}

// A release reveals as much as its press, and may come after the focus has moved.
bool InputQueue::isSecret(const QKeyEvent &key) const
{
    return key.type() == QEvent::KeyPress ? isPartOfText(key) && focus().isMasked
                                          : m_secretKeys.contains(physicalKey(key));
}

bool InputQueue::give(QObject *receiver, QEvent *event)
{
    const QScopedValueRollback giving(m_isGiving, true);
    if (!isKey(*event) || !event->spontaneous()) {
        return m_deliver(receiver, event);
    }
    auto *key = static_cast<QKeyEvent *>(event);
    const bool secret = isSecret(*key);
    note(*key, secret);
    // Qt's filter ignores events that the program itself sends.
    return secret ? QCoreApplication::sendEvent(receiver, key) : ask(receiver, key);
}

void InputQueue::note(const QKeyEvent &key, bool isSecret)
{
    const bool isPress = key.type() == QEvent::KeyPress;
    if (isScreenReaderModifier(key.key())) {
        m_isCommand = isPress;
    }
    if (isPress && isSecret) {
        m_secretKeys.insert(physicalKey(key));
    } else {
        m_secretKeys.erase(physicalKey(key));
    }
}

// Without an active assistive technology the window gets the key at once; otherwise later, or never.
bool InputQueue::ask(QObject *window, QKeyEvent *key)
{
    m_questions.push_back({key->type(), physicalKey(*key), !isPartOfText(*key) || !focus().takesText});
    window->installEventFilter(this);
    const bool result = m_deliver(window, key);
    if (!m_questions.empty()) {
        m_rounds = 0;
        m_patience.start(roundMs, this);
    }
    return result;
}

// Questions are answered in their order: those before this one have been answered by a command.
bool InputQueue::eventFilter(QObject *watched, QEvent *event)
{
    if (isKey(*event)) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        const auto isAnswered = [&key](const Question &question) {
            return question.type == key.type() && question.physicalKey == physicalKey(key);
        };
        const auto answered = std::ranges::find_if(m_questions, isAnswered);
        if (answered != m_questions.end()) {
            m_questions.erase(m_questions.begin(), std::next(answered));
        }
    }
    return QObject::eventFilter(watched, event);
}

void InputQueue::timerEvent(QTimerEvent *event)
{
    Q_UNUSED(event)
    if (m_questions.empty() || ++m_rounds == roundsToWait) {
        m_patience.stop();
        m_questions.clear();
        giveWaiting();
    }
}

void InputQueue::giveWaiting()
{
    while (!m_isGiving && !m_waiting.empty() && mayGo(*m_waiting.front().event)) {
        const Input input = std::move(m_waiting.front());
        m_waiting.pop_front();
        const bool isText = input.event->type() == QEvent::InputMethod;
        if (QObject *receiver = isText ? QGuiApplication::focusObject() : input.receiver.data()) {
            give(receiver, input.event.get());
        }
    }
}

// The window loses the keyboard: what was typed before belongs to the field that still has the focus, and
// modifiers are released elsewhere.
void InputQueue::giveAll()
{
    m_questions.clear();
    for (const Input &input : std::exchange(m_waiting, {})) {
        const QScopedValueRollback giving(m_isGiving, true);
        if (input.receiver) {
            QCoreApplication::sendEvent(input.receiver, input.event.get());
        }
    }
    m_isCommand = false;
}
