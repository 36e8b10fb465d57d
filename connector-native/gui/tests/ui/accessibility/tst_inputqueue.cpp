#include "finger.h"
#include "support/testprogram.h"
#include "ui/accessibility/inputqueue.h"
#include "windowtesting.h"

#include <QtCore/qabstracteventdispatcher.h>
#include <QtCore/qelapsedtimer.h>
#include <QtCore/qqueue.h>
#include <QtCore/qrandom.h>
#include <QtCore/qregularexpression.h>
#include <QtCore/qtimer.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qstylehints.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <algorithm>
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto never = std::chrono::milliseconds(-1);

/// Asks a screen reader about each key as Qt does: the window gets a copy after the answer, or after 100 ms,
/// or never when the reader keeps it for itself. The reader takes a time for each answer, or gives none at
/// all.
class ReaderOfKeys : public QObject
{
public:
    explicit ReaderOfKeys(std::chrono::milliseconds time)
        : m_time(time)
    {
        m_clock.start();
        qGuiApp->installEventFilter(this);
    }

    /// Leaves no question open, for which the next test's keys would wait.
    ~ReaderOfKeys() override
    {
        giveUp();
        QCoreApplication::sendPostedEvents();
    }

    /// The characters of all keys it was told, and the keys that it keeps.
    [[nodiscard]] QString told() const { return m_told; }
    void keep(int key) { m_kept.append(key); }
    [[nodiscard]] bool wasTold(QEvent::Type type, int key) const
    {
        return m_toldKeys.contains(std::pair(type, key));
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
        if (!isKey || !event->spontaneous())
            return false;
        const auto &key = *static_cast<QKeyEvent *>(event);
        m_told += key.text();
        m_toldKeys.append({key.type(), key.key()});
        m_asked.enqueue({watched,
                         std::make_shared<QKeyEvent>(key.type(), key.key(), key.modifiers(),
                                                     key.nativeScanCode(), 0, 0, key.text())});
        const qint64 now = m_clock.elapsed();
        m_busyUntil = std::max(now, m_busyUntil) + m_time.count();
        const auto wait = std::chrono::milliseconds(m_busyUntil - now);
        if (m_time == never || wait > 100ms) {
            QTimer::singleShot(100ms, Qt::PreciseTimer, this, &ReaderOfKeys::giveUp);
        } else {
            QTimer::singleShot(wait, Qt::PreciseTimer, this, &ReaderOfKeys::answer);
        }
        return true;
    }

private:
    struct Asked
    {
        QObject *window = nullptr;
        std::shared_ptr<QKeyEvent> key;
    };

    static void post(const Asked &asked) { QCoreApplication::postEvent(asked.window, asked.key->clone()); }

    void answer()
    {
        if (m_asked.isEmpty())
            return;
        const Asked asked = m_asked.dequeue();
        if (!m_kept.contains(asked.key->key()))
            post(asked);
    }

    void giveUp()
    {
        while (!m_asked.isEmpty())
            post(m_asked.dequeue());
    }

    std::chrono::milliseconds m_time;
    QElapsedTimer m_clock;
    qint64 m_busyUntil = 0;
    QQueue<Asked> m_asked;
    QList<int> m_kept;
    QString m_told;
    QList<std::pair<QEvent::Type, int>> m_toldKeys;
};

// As from the platform, which is what a queue keeps.
void notifySpontaneously(InputQueue &queue, QObject *window, QEvent &event)
{
    QSpontaneKeyEvent::setSpontaneous(&event);
    queue.notify(window, &event);
}

/// A queue and what it has delivered.
struct RecordingQueue
{
    QList<QEvent::Type> delivered;
    InputQueue queue{[this](QObject *, QEvent *event) {
        delivered.append(event->type());
        return true;
    }};
};

/// How often a mouse is pressed in a window.
class PressCounter : public QObject
{
public:
    explicit PressCounter(QObject &window) { window.installEventFilter(this); }

    [[nodiscard]] int count() const { return m_count; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::MouseButtonPress ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

/// One key as a user presses it.
struct Key
{
    int key = 0;
    Qt::KeyboardModifiers modifiers;
};

// Secrets are made of capitals, so that one of them that was told is seen.
Key randomKey(QRandomGenerator &random)
{
    constexpr std::array others = {Key{Qt::Key_Tab, {}}, Key{Qt::Key_Backtab, Qt::ShiftModifier},
                                   Key{Qt::Key_Left, {}}, Key{Qt::Key_End, {}}, Key{Qt::Key_Backspace, {}}};
    const auto choice = std::size_t(random.bounded(3 * int(others.size())));
    return choice < others.size() ? others.at(choice) : Key{Qt::Key_A + random.bounded(26), {}};
}

} // namespace

// Where the keys go that a screen reader is asked about, and those that are kept from it.
class TestInputQueue : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    Finger m_finger;
    std::unique_ptr<TestWindow> m_window;
    QList<QQuickItem *> m_fields;

    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const QQuickItem *field : m_fields)
            texts.append(field->property("text").toString());
        return texts;
    }

    void press(const Key &key, int delay = 0)
    {
        QTest::keyClick(m_window.get(), Qt::Key(key.key), key.modifiers, delay);
    }
    void type(const char *text)
    {
        for (; *text != '\0'; ++text)
            QTest::keyClick(m_window.get(), *text);
    }
    [[nodiscard]] QPoint placeOf(qsizetype field) const
    {
        const QQuickItem *item = m_fields.at(field);
        return item->mapToScene({20, item->height() / 2}).toPoint();
    }
    /// A key at a place of the keyboard.
    void send(QEvent::Type type, Qt::Key key, const QString &text, quint32 place)
    {
        QKeyEvent event(type, key, {}, place, 0, 0, text);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qGuiApp->notify(m_window.get(), &event);
    }
    void focus(qsizetype field) { m_fields.at(field)->forceActiveFocus(Qt::TabFocusReason); }

    [[nodiscard]] static QByteArray answerName(std::chrono::milliseconds time)
    {
        return time == never ? "never" : QByteArray::number(qlonglong(time.count())) + " ms";
    }

    void answersAsRows()
    {
        QTest::addColumn<std::chrono::milliseconds>("time");
        for (const auto time : {0ms, 20ms, 80ms, never})
            QTest::newRow(answerName(time).constData()) << time;
    }

private slots:
    void initTestCase() { m_engine.addImportPath(u":/"_s); }

    // Two plain fields and two masked ones, the first of which has the focus.
    void init()
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport BrindlecoveConnectorGUI\n"
                          "Column { width: 200\n"
                          "InputField { fieldText: ''; placeholder: 'One'; width: 200 }\n"
                          "InputField { fieldText: ''; placeholder: 'Two'; width: 200 }\n"
                          "SecretField { fieldText: ''; placeholder: 'Three'; width: 200 }\n"
                          "SecretField { fieldText: ''; placeholder: 'Four'; width: 200 } }",
                          QUrl());
        std::unique_ptr<QObject> column(component.create());
        QVERIFY2(column, qPrintable(component.errorString()));
        m_window = std::make_unique<TestWindow>();
        auto *item = qobject_cast<QQuickItem *>(column.release());
        item->setParent(m_window.get());
        item->setParentItem(m_window->contentItem());
        m_finger.setWindow(m_window.get());
        QVERIFY(m_window->isReady());
        m_fields.clear();
        const QList<QQuickItem *> frames = item->childItems();
        for (QQuickItem *frame : frames)
            m_fields.append(frame->property("input").value<QQuickItem *>());
        QCOMPARE(m_fields.size(), 4);
        focus(0);
    }

    void cleanup() { m_window.reset(); }

    void withoutAReaderKeysArriveAtOnce()
    {
        focus(2);
        QTest::simulateEvent(m_window.get(), true, Qt::Key_A, Qt::NoModifier, u"a"_s, false);
        QCOMPARE(texts().at(2), u"a"_s);
    }

    void keysKeepTheirOrder_data()
    {
        QTest::addColumn<std::chrono::milliseconds>("time");
        QTest::addColumn<int>("pace");
        QTest::addColumn<uint>("seed");
        uint seed = 0;
        for (const auto time : {0ms, 20ms, 80ms, never}) {
            for (const int pace : {0, 5, 30, 150}) {
                QTest::addRow("%s, a key in %d ms", answerName(time).constData(), pace)
                    << time << pace << ++seed;
            }
        }
    }

    // Random keys, the same in every run.
    void keysKeepTheirOrder()
    {
        QFETCH(const std::chrono::milliseconds, time);
        QFETCH(const int, pace);
        QFETCH(const uint, seed);
        QRandomGenerator random(seed);
        QList<Key> keys(pace > 100 ? 20 : 60);
        std::ranges::generate(keys, [&random] { return randomKey(random); });

        for (const Key &key : keys)
            press(key);
        const QStringList expected = texts();
        const qsizetype expectedFocus = m_fields.indexOf(m_window->activeFocusItem());
        init();

        const ReaderOfKeys reader(time);
        for (const Key &key : keys)
            press(key, pace);
        QTRY_COMPARE(texts(), expected);
        QTRY_COMPARE(m_fields.indexOf(m_window->activeFocusItem()), expectedFocus);
    }

    void aSecretIsToldNobody_data() { answersAsRows(); }

    void aSecretIsToldNobody()
    {
        QFETCH(const std::chrono::milliseconds, time);
        focus(1);
        const ReaderOfKeys reader(time);
        type("key");
        press({Qt::Key_Tab, {}});
        type("SECRET");
        press({Qt::Key_Tab, {}});
        type("PHRASE");
        QTRY_COMPARE(texts(), QStringList({u""_s, u"key"_s, u"SECRET"_s, u"PHRASE"_s}));
        for (const QChar letter : u"SECRTPHA"_s)
            QVERIFY2(!reader.told().contains(letter), qPrintable(reader.told()));
        QVERIFY(reader.told().contains(u'k') && reader.told().contains(u'\t'));
    }

    void editingKeysOvertakeNoLetter_data() { answersAsRows(); }

    void editingKeysOvertakeNoLetter()
    {
        QFETCH(const std::chrono::milliseconds, time);
        focus(2);
        const ReaderOfKeys reader(time);
        type("AB");
        press({Qt::Key_Left, {}});
        type("CD");
        press({Qt::Key_Backspace, {}});
        press({Qt::Key_End, {}});
        type("E");
        QTRY_COMPARE(texts().at(2), u"ACBE"_s);
        QCOMPARE(reader.told().remove(QRegularExpression(u"[^A-Z]"_s)), QString());
    }

    void aKeyThatTheReaderKeepsHoldsNoOtherForLong()
    {
        focus(2);
        ReaderOfKeys reader(20ms);
        reader.keep(Qt::Key_Home);
        press({Qt::Key_Home, {}});
        type("A");
        press({Qt::Key_Home, {}});
        type("B");
        QTRY_COMPARE_WITH_TIMEOUT(texts().at(2), u"AB"_s, 2000);
    }

    // The time in which a command blocks the program is no time in which an answer could be seen.
    void aBlockedProgramGivesUpNoKey()
    {
        focus(2);
        const ReaderOfKeys reader(80ms);
        type("AB");
        press({Qt::Key_Left, {}});
        QTest::qSleep(1000);
        type("C");
        QTRY_COMPARE(texts().at(2), u"ACB"_s);
    }

    void aClickOvertakesNoKey()
    {
        const ReaderOfKeys reader(80ms);
        type("one");
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, placeOf(1));
        type("two");
        QTRY_COMPARE(texts(), QStringList({u"one"_s, u"two"_s, u""_s, u""_s}));
        QCOMPARE(m_window->activeFocusItem(), m_fields.at(1));
    }

    void aTapOvertakesNoKey_data() { answersAsRows(); }

    void aTapOvertakesNoKey()
    {
        QFETCH(const std::chrono::milliseconds, time);
        const ReaderOfKeys reader(time);
        const PressCounter presses(*m_window);
        type("one");
        m_finger.tap(placeOf(2));
        type("TWO");
        QTRY_COMPARE(texts(), QStringList({u"one"_s, u""_s, u"TWO"_s, u""_s}));
        QCOMPARE(presses.count(), 1);
        QCOMPARE(reader.told().remove(QRegularExpression(u"[^A-Z]"_s)), QString());
        // The finger that comes later is one like any other.
        m_finger.tap(placeOf(1));
        QTRY_COMPARE(m_window->activeFocusItem(), m_fields.at(1));
    }

    void aDragWhileKeysWaitIsNoTap()
    {
        const ReaderOfKeys reader(80ms);
        type("one");
        m_finger.press(placeOf(1));
        m_finger.move(placeOf(1) + QPoint(60, 0));
        m_finger.release(placeOf(1) + QPoint(60, 0));
        type("two");
        QTRY_COMPARE(texts(), QStringList({u"onetwo"_s, u""_s, u""_s, u""_s}));
    }

    void aFingerThatHardlyMovesTaps_data()
    {
        const int drag = QGuiApplication::styleHints()->startDragDistance();
        QTest::addColumn<int>("distance");
        QTest::addColumn<QStringList>("typed");
        QTest::newRow("hardly") << drag - 1 << QStringList{u"one"_s, u"two"_s, u""_s, u""_s};
        QTest::newRow("drag") << drag << QStringList{u"onetwo"_s, u""_s, u""_s, u""_s};
    }

    void aFingerThatHardlyMovesTaps()
    {
        QFETCH(const int, distance);
        QFETCH(const QStringList, typed);
        const ReaderOfKeys reader(80ms);
        type("one");
        m_finger.press(placeOf(1));
        m_finger.release(placeOf(1) + QPoint(distance, 0));
        type("two");
        QTRY_COMPARE(texts(), typed);
    }

    void whatAnInputMethodCommitsOvertakesNoKey()
    {
        const ReaderOfKeys reader(80ms);
        type("a");
        press({Qt::Key_Tab, {}});
        QInputMethodEvent commit;
        commit.setCommitString(u"钥匙"_s);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &commit);
        type("b");
        QTRY_COMPARE(texts(), QStringList({u"a"_s, u"钥匙b"_s, u""_s, u""_s}));
    }

    void whatIsWrittenIntoAnotherFieldWaitsForNoKey()
    {
        const ReaderOfKeys reader(80ms);
        type("a");
        QInputMethodEvent commit;
        commit.setCommitString(u"b"_s);
        QCoreApplication::sendEvent(m_fields.at(1), &commit);
        QTRY_COMPARE(texts(), QStringList({u"a"_s, u"b"_s, u""_s, u""_s}));
    }

    void aReadersCommandIsTold_data()
    {
        QTest::addColumn<int>("modifier");
        QTest::newRow("Insert") << int(Qt::Key_Insert);
        QTest::newRow("Caps Lock") << int(Qt::Key_CapsLock);
    }

    void aReadersCommandIsTold()
    {
        QFETCH(const int, modifier);
        focus(2);
        ReaderOfKeys reader(20ms);
        reader.keep(modifier);
        reader.keep(Qt::Key_H);
        QTest::keyPress(m_window.get(), Qt::Key(modifier));
        type("h");
        QTest::keyRelease(m_window.get(), Qt::Key(modifier));
        QTRY_VERIFY(reader.told().contains(u'h'));
        type("A");
        QTRY_COMPARE(texts().at(2), u"A"_s);
        QVERIFY(!reader.told().contains(u'A'));
    }

    // The modifier may be held when the focus leaves a masked field, or when it comes.
    void theModifierCountsWhereverTheFocusGoes()
    {
        focus(2);
        const ReaderOfKeys reader(0ms);
        QTest::keyPress(m_window.get(), Qt::Key_Insert);
        press({Qt::Key_Tab, {}});
        type("h");
        QTRY_VERIFY(reader.told().contains(u'h'));
        QTest::keyRelease(m_window.get(), Qt::Key_Insert);
        press({Qt::Key_Backtab, Qt::ShiftModifier});
        type("A");
        QTRY_COMPARE(texts().at(2), u"A"_s);
        QVERIFY(!reader.told().contains(u'A'));
    }

    // What is released in another window is released.
    void theModifierIsForgottenWithTheWindow()
    {
        focus(2);
        const ReaderOfKeys reader(20ms);
        QTest::keyPress(m_window.get(), Qt::Key_Insert);
        QTRY_VERIFY(!texts().isEmpty());
        TestWindow other;
        QVERIFY(other.isReady());
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        focus(2);
        type("A");
        QTRY_COMPARE(texts().at(2), u"A"_s);
        QVERIFY(!reader.told().contains(u'A'));
    }

    // Insert is pressed before the letter is released.
    void aReleaseTellsNoMoreThanItsPress()
    {
        focus(2);
        const ReaderOfKeys reader(20ms);
        QTest::keyPress(m_window.get(), 'A');
        QTest::keyPress(m_window.get(), Qt::Key_Insert);
        QTest::keyRelease(m_window.get(), 'A');
        QTest::keyRelease(m_window.get(), Qt::Key_Insert);
        type("B");
        QTRY_COMPARE(texts().at(2), u"AB"_s);
        QCOMPARE(reader.told(), QString());
    }

    // The window may lose the keyboard and get it back in between.
    void aReleaseAfterAnotherWindowTellsNoMoreThanItsPress()
    {
        focus(2);
        const ReaderOfKeys reader(20ms);
        QTest::keyPress(m_window.get(), 'A');
        TestWindow other;
        QVERIFY(other.isReady());
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyRelease(m_window.get(), 'A');
        QCOMPARE(texts().at(2), u"A"_s);
        QCOMPARE(reader.told(), QString());
    }

    // Shift may be released before the key.
    void aReleaseBelongsToThePressOfItsPlace()
    {
        focus(2);
        const ReaderOfKeys reader(20ms);
        send(QEvent::KeyPress, Qt::Key_Exclam, u"!"_s, 10);
        send(QEvent::KeyRelease, Qt::Key_1, u"1"_s, 10);
        QTRY_COMPARE(texts().at(2), u"!"_s);
        QCOMPARE(reader.told(), QString());
    }

    void aKeyOfASecretIsToldWhereItIsNone()
    {
        focus(2);
        const ReaderOfKeys reader(0ms);
        type("a");
        QTRY_COMPARE(texts().at(2), u"a"_s);
        focus(0);
        type("a");
        QTRY_VERIFY(reader.wasTold(QEvent::KeyRelease, Qt::Key_A));
        QVERIFY(reader.wasTold(QEvent::KeyPress, Qt::Key_A));
        QCOMPARE(reader.told(), u"aa"_s);
    }

    void whatChoosesACharacterOfASecretIsToldNobody_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Shift") << int(Qt::Key_Shift);
        QTest::newRow("AltGr") << int(Qt::Key_AltGr);
        QTest::newRow("Mode switch") << int(Qt::Key_Mode_switch);
    }

    void whatChoosesACharacterOfASecretIsToldNobody()
    {
        QFETCH(const int, key);
        constexpr std::array both{QEvent::KeyPress, QEvent::KeyRelease};
        const auto chooses = [&] {
            for (const auto event : both)
                send(event, Qt::Key(key), {}, 50);
        };
        focus(2);
        const ReaderOfKeys reader(0ms);
        chooses();
        type("A");
        QTRY_COMPARE(texts().at(2), u"A"_s);
        for (const auto event : both)
            QVERIFY(!reader.wasTold(event, key));
        focus(0);
        chooses();
        type("a");
        QTRY_COMPARE(texts().at(0), u"a"_s);
        for (const auto event : both)
            QVERIFY(reader.wasTold(event, key));
    }

    // An idle program does not wake up.
    void aQueueThatWaitsForNothingHasNoTimer()
    {
        InputQueue queue([](QObject *, QEvent *) { return true; });
        const auto timers = [&queue] {
            return QAbstractEventDispatcher::instance()->registeredTimers(&queue).size();
        };
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Home, {});
        notifySpontaneously(queue, m_window.get(), key);
        QCOMPARE(timers(), 1);
        QTRY_COMPARE(timers(), 0);
    }

    // The first of two keys is a command, for which no answer comes.
    void whatWaitsIsGivenWithTheLastAnswer()
    {
        focus(2);
        InputQueue queue([](QObject *receiver, QEvent *event) {
            return event->spontaneous() || QCoreApplication::sendEvent(receiver, event);
        });
        const auto notify = [&](Qt::Key key, const QString &text, bool isAsked) {
            QKeyEvent event(QEvent::KeyPress, key, {}, text);
            if (isAsked)
                QSpontaneKeyEvent::setSpontaneous(&event);
            queue.notify(m_window.get(), &event);
        };
        notify(Qt::Key_Home, {}, true);
        notify(Qt::Key_Left, {}, true);
        notify(Qt::Key_A, u"A"_s, true);
        QCOMPARE(texts().at(2), QString());
        notify(Qt::Key_Left, {}, false);
        QCOMPARE(texts().at(2), u"A"_s);
    }

    void aTapThatEndsAfterTheAnswerIsGivenAtOnce()
    {
        RecordingQueue recording;
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Home, {});
        notifySpontaneously(recording.queue, m_window.get(), key);
        const auto touch = [&](QEvent::Type type, QEventPoint::State state) {
            QTouchEvent event(type, m_finger.screen(), {}, {QEventPoint(1, state, {}, {})});
            notifySpontaneously(recording.queue, m_window.get(), event);
        };
        touch(QEvent::TouchBegin, QEventPoint::Pressed);
        // The answer is what the window gets.
        recording.queue.eventFilter(m_window.get(), &key);
        QCOMPARE(recording.delivered, QList{QEvent::KeyPress});
        touch(QEvent::TouchEnd, QEventPoint::Released);
        QCOMPARE(recording.delivered,
                 QList({QEvent::KeyPress, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}));
    }

    void withTheKeyboardTheWindowLosesWhatItWaitsFor()
    {
        RecordingQueue recording;
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Home, {});
        QEvent focusGoes(QEvent::FocusAboutToChange);
        QMouseEvent click(QEvent::MouseButtonPress, {}, {}, Qt::LeftButton, Qt::LeftButton, {});
        notifySpontaneously(recording.queue, m_window.get(), key);
        recording.queue.notify(m_window.get(), &focusGoes);
        notifySpontaneously(recording.queue, m_window.get(), click);
        QCOMPARE(recording.delivered,
                 QList({QEvent::KeyPress, QEvent::FocusAboutToChange, QEvent::MouseButtonPress}));
    }

    void whatWaitsIsGivenBeforeTheWindowLosesTheKeyboard()
    {
        focus(2);
        const ReaderOfKeys reader(80ms);
        type("A");
        press({Qt::Key_End, {}});
        type("B");
        TestWindow other;
        QVERIFY(other.isReady());
        QCOMPARE(texts().at(2), u"AB"_s);
        QCOMPARE(reader.told(), QString());
    }
};

static const TestClass<TestInputQueue> testInputQueue("tst_inputqueue");

#include "tst_inputqueue.moc"
