#include "finger.h"
#include "shownitems.h"
#include "support/testprogram.h"
#include "ui/output/outputview.h"
#include "ui/scrolling/scrollarea.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qstylehints.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickwindow.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A page with two fields, a panel with an output, and enough below to scroll.
constexpr auto page = R"(
import QtQuick
import BrindlecoveConnectorGUI

Window {
    property alias page: page
    property alias panel: panel
    property alias output: output
    property alias plain: plain
    property alias masked: masked

    height: 400
    visible: true
    width: 500

    ScrollArea {
        id: page

        anchors.fill: parent

        content: Item {
            height: 3000

            InputField {
                id: plain

                fieldText: "one second third"
                placeholder: "API key"
                width: 300
                x: 20
                y: 20
            }

            SecretField {
                id: masked

                fieldText: "hidden secret text"
                placeholder: "API secret"
                width: 300
                x: 20
                y: 80
            }

            ScrollArea {
                id: panel

                height: 200
                width: 400
                x: 20
                y: 140

                content: OutputText {
                    id: output

                    accessibleTitle: ""
                    source: "alpha beta gamma delta\n".repeat(40)
                }

                TouchScrolling {
                    area: panel
                }
            }
        }

        TouchScrolling {
            area: page
        }
    }
}
)";

} // namespace

// What a finger does to fields and outputs.
class TestTextTouch : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    Finger m_finger;
    std::unique_ptr<QQuickWindow> m_window;
    ScrollArea *m_page = nullptr;
    ScrollArea *m_panel = nullptr;
    OutputView *m_output = nullptr;
    QQuickItem *m_plain = nullptr;
    QQuickItem *m_masked = nullptr;

    void longPress(QPoint at)
    {
        m_finger.press(at);
        QTRY_VERIFY(!entries().isEmpty());
        m_finger.release(at);
    }

    [[nodiscard]] static int interval() { return QGuiApplication::styleHints()->mousePressAndHoldInterval(); }
    [[nodiscard]] bool opensNoMenu()
    {
        return !QTest::qWaitFor([this] { return !entries().isEmpty(); }, 2 * interval());
    }

    [[nodiscard]] static QQuickItem *inputOf(const QObject *field)
    {
        return field->property("input").value<QQuickItem *>();
    }
    [[nodiscard]] static QString selectionOf(const QQuickItem *text)
    {
        return text->property("selectedText").toString();
    }

    [[nodiscard]] static QRectF rectangleOf(QQuickItem *input, int position)
    {
        QRectF rectangle;
        QMetaObject::invokeMethod(input, "positionToRectangle", Q_RETURN_ARG(QRectF, rectangle),
                                  Q_ARG(int, position));
        return rectangle;
    }
    // Where a character of a field lies. Qt 6.4: positionToRectangle() leaves the padding out,
    // cursorRectangle does not.
    [[nodiscard]] static QPoint placeIn(QQuickItem *input, int position)
    {
        const QRectF cursor = input->property("cursorRectangle").toRectF();
        const QRectF atCursor = rectangleOf(input, input->property("cursorPosition").toInt());
        const QPointF place = rectangleOf(input, position).center() + cursor.topLeft() - atCursor.topLeft();
        return input->mapToScene(place).toPoint() + QPoint(2, 0);
    }
    [[nodiscard]] QPoint placeInOutput(qsizetype position) const
    {
        return m_output->mapToScene(m_output->characterRect(position).center()).toPoint();
    }

    [[nodiscard]] QList<QQuickItem *> entries() const { return menuEntriesOf(*m_window); }
    void choose(const QString &title)
    {
        const QList<QQuickItem *> all = entries();
        const auto isIt = [&](const QQuickItem *entry) { return entry->property("text") == title; };
        const auto found = std::ranges::find_if(all, isIt);
        QVERIFY(found != all.end());
        (void)m_window->grabWindow();
        m_finger.tap(middleOf(*found));
        QTRY_VERIFY(entries().isEmpty());
    }

    static void setClipboard(const QString &text) { QGuiApplication::clipboard()->setText(text); }
    [[nodiscard]] static QString clipboard() { return QGuiApplication::clipboard()->text(); }

private slots:
    void initTestCase()
    {
        m_engine.addImportPath(u":/"_s);
        QGuiApplication::styleHints()->setMousePressAndHoldInterval(400);
    }

    void init()
    {
        QQmlComponent component(&m_engine);
        component.setData(page, {});
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        QVERIFY2(m_window, qPrintable(component.errorString()));
        m_page = m_window->property("page").value<ScrollArea *>();
        m_panel = m_window->property("panel").value<ScrollArea *>();
        m_output = m_window->property("output").value<OutputView *>();
        m_plain = inputOf(m_window->property("plain").value<QObject *>());
        m_masked = inputOf(m_window->property("masked").value<QObject *>());
        m_finger.setWindow(m_window.get());
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        setClipboard(u"from elsewhere"_s);
    }

    void cleanup() { m_window.reset(); }

    void aTapPlacesTheCursor()
    {
        m_finger.tap(placeIn(m_plain, 5));
        QVERIFY(m_plain->hasActiveFocus());
        QCOMPARE(m_plain->property("cursorPosition").toInt(), 5);
        m_finger.tap(placeInOutput(7));
        QVERIFY(m_output->hasActiveFocus());
        QVERIFY(!m_output->hasSelection());
    }

    void aTapOnThePaddingIsOneOnTheField()
    {
        const auto *box = m_window->property("masked").value<QQuickItem *>();
        m_finger.tap(box->mapToScene({3, 3}).toPoint());
        QVERIFY(m_masked->hasActiveFocus());
    }

    void aDoubleTapSelectsAWord()
    {
        m_finger.tap(placeInOutput(7));
        m_finger.tap(placeInOutput(7));
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        m_finger.tap(placeIn(m_plain, 6));
        m_finger.tap(placeIn(m_plain, 6));
        QCOMPARE(selectionOf(m_plain), u"second"_s);
    }

    void aThirdTapThatComesLateIsASingleOne()
    {
        m_finger.tap(placeInOutput(7));
        m_finger.tap(placeInOutput(7));
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        QElapsedTimer clock;
        clock.start();
        QTRY_VERIFY(clock.hasExpired(QGuiApplication::styleHints()->mouseDoubleClickInterval()));
        m_finger.tap(placeInOutput(7));
        QVERIFY(!m_output->hasSelection());
    }

    void aLongPressInAnOutputSelectsTheWordAndCopies()
    {
        m_finger.press(placeInOutput(7));
        QTRY_VERIFY(!entries().isEmpty());
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        m_finger.release(placeInOutput(7));
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        choose(u"Copy"_s);
        QCOMPARE(clipboard(), u"beta"_s);
        QVERIFY(m_output->hasActiveFocus());
    }

    void aLongPressTakesAsLongAsThePlatformSays()
    {
        QElapsedTimer clock;
        clock.start();
        longPress(placeInOutput(7));
        QVERIFY(clock.elapsed() >= interval());
    }

    void aLongPressInAFieldSelectsTheWordAndPastes()
    {
        m_finger.press(placeIn(m_plain, 6));
        QTRY_VERIFY(!entries().isEmpty());
        QCOMPARE(selectionOf(m_plain), u"second"_s);
        QVERIFY(m_plain->property("inUse").toBool());
        m_finger.release(placeIn(m_plain, 6));
        QCOMPARE(selectionOf(m_plain), u"second"_s);
        choose(u"Paste"_s);
        QCOMPARE(m_plain->property("text"), u"one from elsewhere third"_s);
        QVERIFY(m_plain->hasActiveFocus());
    }

    void aLongPressOnThePaddingOpensTheMenu()
    {
        const auto *box = m_window->property("plain").value<QQuickItem *>();
        longPress(box->mapToScene({box->width() - 3, 3}).toPoint());
        QCOMPARE(selectionOf(m_plain), u"third"_s);
    }

    // A word would say where the text has others.
    void aLongPressInAMaskedFieldSelectsAllOrNothing()
    {
        longPress(placeIn(m_masked, 9));
        QCOMPARE(m_masked->property("selectionStart").toInt(), 0);
        QCOMPARE(m_masked->property("selectionEnd").toInt(), 18);
        QCOMPARE(entries().size(), 2);
        choose(u"Paste"_s);
        QCOMPARE(m_masked->property("text"), u"from elsewhere"_s);
        QCOMPARE(clipboard(), u"from elsewhere"_s);
    }

    void aLongPressInsideTheSelectionKeepsIt()
    {
        longPress(placeInOutput(7));
        choose(u"Select all"_s);
        longPress(placeInOutput(30));
        QCOMPARE(m_output->selectedText(), m_output->source());
        choose(u"Copy"_s);
        QCOMPARE(clipboard(), m_output->source());

        longPress(placeIn(m_plain, 6));
        choose(u"Select all"_s);
        longPress(placeIn(m_plain, 6));
        choose(u"Cut"_s);
        QCOMPARE(clipboard(), u"one second third"_s);
    }

    void aLongPressBesideTheSelectionSelectsTheWord()
    {
        for (const int inside : {5, 8}) {
            QMetaObject::invokeMethod(m_plain, "select", Q_ARG(int, 5), Q_ARG(int, 9));
            longPress(placeIn(m_plain, inside));
            QCOMPARE(selectionOf(m_plain), u"econ"_s);
            QTest::keyClick(m_window.get(), Qt::Key_Escape);
            QTRY_VERIFY(entries().isEmpty());
        }
        longPress(placeIn(m_plain, 9));
        QCOMPARE(selectionOf(m_plain), u"second"_s);
    }

    // The text cursor is out of view afterwards, and the menu gives the focus back.
    void selectingAllScrollsNothing()
    {
        longPress(placeInOutput(7));
        choose(u"Select all"_s);
        QTRY_VERIFY(m_output->hasActiveFocus());
        (void)m_window->grabWindow();
        QCOMPARE(m_output->selectedText(), m_output->source());
        QCOMPARE(m_panel->contentY(), 0.0);
    }

    void aMenuFarFromTheTextCursorScrollsNothing()
    {
        m_finger.tap(placeInOutput(7));
        (void)m_window->grabWindow();
        m_panel->setContentY(250);
        QTest::mouseClick(m_window.get(), Qt::RightButton, {}, placeInOutput(7 + 23 * 20));
        QTRY_VERIFY(!entries().isEmpty());
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QTRY_VERIFY(entries().isEmpty());
        QTRY_VERIFY(m_output->hasActiveFocus());
        (void)m_window->grabWindow();
        QCOMPARE(m_panel->contentY(), 250.0);
    }

    void aShortPressOpensNothing()
    {
        m_finger.tap(placeInOutput(7));
        QVERIFY(opensNoMenu());
        QVERIFY(!m_output->hasSelection());
    }

    void aFingerThatTremblesStillRests()
    {
        const QPoint at = placeInOutput(7);
        m_finger.press(at);
        m_finger.move(at + QPoint(QGuiApplication::styleHints()->startDragDistance() / 2, 0));
        QTRY_VERIFY(!entries().isEmpty());
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        m_finger.release(at);
    }

    void aFingerThatMovesDoesNotLongPress_data()
    {
        QTest::addColumn<QPoint>("way");
        QTest::newRow("down") << QPoint(0, 60);
        QTest::newRow("up") << QPoint(0, -60);
        QTest::newRow("sideways") << QPoint(60, 0);
        QTest::newRow("hardly") << QPoint(QGuiApplication::styleHints()->startDragDistance(), 0);
    }

    void aFingerThatMovesDoesNotLongPress()
    {
        QFETCH(const QPoint, way);
        for (const QPoint from : {placeInOutput(7 + 23 * 4), placeIn(m_plain, 6)}) {
            // At once: a busy machine could make a slower finger rest on its way.
            m_finger.press(from);
            m_finger.move(from + way);
            QVERIFY(opensNoMenu());
            m_finger.release(from + way);
        }
    }

    // A compositor takes fingers for a gesture of its own.
    void aTouchThatIsCancelledDoesNotLongPress()
    {
        m_finger.press(placeInOutput(7));
        QTouchEvent cancel(QEvent::TouchCancel, m_finger.screen());
        QCoreApplication::sendEvent(m_window.get(), &cancel);
        QVERIFY(opensNoMenu());
        m_finger.release(placeInOutput(7));
        QVERIFY(!m_output->hasActiveFocus());
    }

    void aFingerThatScrollsLeavesTheTextAlone()
    {
        longPress(placeInOutput(7));
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QTRY_VERIFY(entries().isEmpty());
        const QPoint from = placeIn(m_plain, 6);
        m_finger.drag(from, from - QPoint(0, 60));
        m_finger.release(from - QPoint(0, 60));
        QVERIFY(m_page->contentY() >= 60);
        QVERIFY(m_output->hasActiveFocus());
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        m_finger.drag(placeInOutput(100), placeInOutput(100) - QPoint(0, 60));
        m_finger.release(placeInOutput(100));
        QCOMPARE(m_output->selectedText(), u"beta"_s);
    }

    void aFingerThatStopsAFlickDoesNotLongPress()
    {
        m_page->beginDrag();
        m_page->dragTo(0, -10);
        m_page->endDrag(0, -400);
        const qreal left = m_page->contentY();
        QTRY_VERIFY(m_page->contentY() > left);
        const QPoint at = placeInOutput(7 + 23 * 4);
        m_finger.press(at);
        QVERIFY(opensNoMenu());
        m_finger.release(at);
        QVERIFY(!m_output->hasActiveFocus());
    }

    void aFingerThatHasScrolledAndRestsDoesNotLongPress()
    {
        const QPoint from = placeInOutput(7 + 23 * 4);
        m_finger.drag(from, from - QPoint(0, 40));
        // A window may take a finger's moves with its next frame.
        QTRY_COMPARE(m_panel->contentY(), 40.0);
        for (int i = 0; i < 5; ++i) {
            QTest::qWait(interval() / 4);
            m_finger.move(from - QPoint(0, 40 + i % 2));
        }
        QVERIFY(entries().isEmpty());
        m_finger.release(from - QPoint(0, 40));
    }

    // The menu belongs to the finger now, and is below it.
    void aFingerThatMovesAfterItsRestScrollsAndPressesNothing()
    {
        const QPoint at = placeInOutput(7);
        m_finger.press(at);
        QTRY_VERIFY(!entries().isEmpty());
        for (int step = 1; step <= 10; ++step) {
            QTest::qWait(5);
            m_finger.move(at + QPoint(4, 6) * step);
        }
        m_finger.release(at + QPoint(40, 60));
        QCOMPARE(m_panel->contentY(), 0.0);
        QCOMPARE(m_page->contentY(), 0.0);
        QVERIFY(!entries().isEmpty());
        QCOMPARE(m_output->selectedText(), u"beta"_s);
        QCOMPARE(clipboard(), u"from elsewhere"_s);
    }

    void aTapElsewhereOnlyCloses()
    {
        longPress(placeInOutput(7));
        m_finger.tap(placeIn(m_masked, 2));
        QTRY_VERIFY(entries().isEmpty());
        QVERIFY(m_output->hasActiveFocus());
        QCOMPARE(m_output->selectedText(), u"beta"_s);
    }

    void scrollingGoesOnAfterAMenu()
    {
        const auto *box = m_window->property("plain").value<QQuickItem *>();
        const QPoint padding = box->mapToScene({3, 3}).toPoint();
        for (const QPoint at : {placeIn(m_plain, 6), padding}) {
            longPress(at);
            m_finger.tap(placeIn(m_masked, 2));
            QTRY_VERIFY(entries().isEmpty());
            const qreal before = m_page->contentY();
            m_finger.drag(at, at - QPoint(0, 60));
            m_finger.release(at - QPoint(0, 60));
            QVERIFY(m_page->contentY() > before);
            m_page->setContentY(0);
        }
    }
};

static const TestClass<TestTextTouch> testTextTouch("tst_texttouch");

#include "tst_texttouch.moc"
