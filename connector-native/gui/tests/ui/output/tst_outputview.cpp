#include "output/textrowstesting.h"
#include "scrolling/scrolltesting.h"
#include "support/testprogram.h"
#include "typing.h"
#include "ui/accessibility/accessibletext.h"
#include "ui/output/outputview.h"

#include <QtCore/qrandom.h>
#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qpainter.h>
#include <QtGui/qstylehints.h>
#include <QtTest/qsignalspy.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QColor ink(20, 30, 40);
constexpr QColor paper(250, 250, 240);
constexpr QColor marked(10, 90, 220);
constexpr QColor markedInk(255, 255, 255);
// Of a numbered line, its end included.
constexpr qsizetype lineLength = 12;

QString numberedLines(int count)
{
    QString text;
    for (int line = 0; line < count; ++line) {
        text += u"line %1\n"_s.arg(line, 6, 10, QChar(u'0'));
    }
    return text;
}

} // namespace

// An output in a scrolled window: what is seen of it, selected and copied.
class TestOutputView : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestWindow> m_window;
    ScrollArea *m_area = nullptr;
    OutputView *m_view = nullptr;
    QQuickItem *m_other = nullptr;
    int m_pause = 1;

    void show(const QString &text)
    {
        m_view->setSource(text);
        settle();
    }

    QImage settle()
    {
        (void)settled(*m_window);
        return settled(*m_window);
    }

    // Where a character is in the window.
    [[nodiscard]] QRectF place(qsizetype position) const
    {
        return m_view->mapRectToScene(m_view->characterRect(position));
    }
    // Left of the middle of a character, which is where a drag that begins with it begins.
    [[nodiscard]] QPoint before(qsizetype position) const
    {
        const QRectF rect = place(position);
        return QPointF(rect.left() + 1, rect.center().y()).toPoint();
    }

    // As the platform sends it: unlike Qt Test's own presses, quickly one after another.
    void mouse(QEvent::Type type, QPoint point, Qt::KeyboardModifiers modifiers = {})
    {
        static int timestamp = 1'000'000;
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        qt_handleMouseEvent(m_window.get(), point, m_window->mapToGlobal(point), held, button, type,
                            modifiers, timestamp += m_pause);
        QCoreApplication::processEvents();
        m_pause = 1;
    }

    void press(QPoint point, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(QEvent::MouseButtonPress, point, modifiers);
    }
    void move(QPoint point) { mouse(QEvent::MouseMove, point); }
    void release(QPoint point) { mouse(QEvent::MouseButtonRelease, point); }
    // What follows belongs to no click before it.
    void pauseClicks() { m_pause = QGuiApplication::styleHints()->mouseDoubleClickInterval() + 1; }

    void click(QPoint point, int times = 1, Qt::KeyboardModifiers modifiers = {})
    {
        pauseClicks();
        for (int time = 0; time < times; ++time) {
            press(point, modifiers);
            release(point);
        }
    }

    void drag(QPoint from, QPoint to)
    {
        pauseClicks();
        press(from);
        move((from + to) / 2);
        move(to);
    }

    [[nodiscard]] int pixels(const QImage &picture, const QRectF &part, const QColor &color) const
    {
        const qreal ratio = picture.devicePixelRatio();
        const QRect inPicture =
            QRectF(part.topLeft() * ratio, part.size() * ratio).toAlignedRect() & picture.rect();
        int found = 0;
        for (int y = inPicture.top(); y <= inPicture.bottom(); ++y) {
            for (int x = inPicture.left(); x <= inPicture.right(); ++x) {
                found += picture.pixelColor(x, y) == color ? 1 : 0;
            }
        }
        return found;
    }

    [[nodiscard]] bool showsCursor()
    {
        const QRectF place = m_view->mapRectToScene(m_view->cursorRectangle());
        const QRectF cursor(std::round(place.left()), place.top(), 1, place.height());
        return pixels(settle(), cursor, ink) == int(cursor.height());
    }

    // An output that begins in the middle of the view.
    void putOnAPage(const QString &text)
    {
        auto *page = new QQuickItem(m_area);
        m_area->setContent(page);
        page->setHeight(2000);
        m_view->setParentItem(page);
        m_view->setY(400);
        m_view->setWidth(400);
        show(text);
        m_area->setContentY(300);
        settle();
    }

    static QString copied() { return QGuiApplication::clipboard()->text(); }

private slots:
    void init()
    {
        m_window = std::make_unique<TestWindow>();
        m_window->setColor(paper);
        m_area = addArea(m_window->contentItem(), {0, 0, 400, 300}, 0);
        m_other = addItem(m_window->contentItem(), {});
        m_view = new OutputView;
        m_view->setFont(fixedFont());
        m_view->setProperty("color", ink);
        m_view->setProperty("background", paper);
        m_view->setProperty("selectionColor", marked);
        m_view->setProperty("selectedTextColor", markedInk);
        m_view->setParent(m_area);
        m_area->setContent(m_view);
        QGuiApplication::clipboard()->setText(u"before"_s);
        QVERIFY(m_window->isReady());
        show(numberedLines(1000));
    }

    void cleanup() { m_window.reset(); }

    void itsHeightIsThatOfItsRows()
    {
        const qreal row = m_view->characterRect(0).height();
        QCOMPARE(m_view->implicitHeight(), 1001 * row);
        show(QString());
        QCOMPARE(m_view->implicitHeight(), row);
        show(u"one\r\ntwo"_s);
        QCOMPARE(m_view->implicitHeight(), 2 * row);
    }

    void whatIsInViewIsPainted()
    {
        for (const qreal y : {0.0, 7.0, 5000.0, m_area->maximumY()}) {
            m_area->setContentY(y);
            const QImage picture = settle();
            for (int line = 0; line < 1000; ++line) {
                const QRectF rect = place(line * qsizetype(12)).united(place(line * qsizetype(12) + 10));
                if (rect.top() >= 0 && rect.bottom() <= 300) {
                    QVERIFY2(pixels(picture, rect, ink) > 0, qPrintable(QString::number(line)));
                    QCOMPARE(pixels(picture, rect.translated(rect.width() + 10, 0), ink), 0);
                }
            }
        }
    }

    // Also where marks reach out of their rows, where the text ends between two pixels, on and between
    // pixels, and up and down again.
    void aScrolledTextLooksAsPaintedWhereItIs()
    {
        QString tall = u"first\n"_s;
        for (int row = 0; row < 200; ++row) {
            tall += QString::number(row) + u" A\u0302\u0302\u0302 g\u0323\u0323\u0323 and more\n"_s;
        }
        putOnAPage(tall);
        m_view->setWidth(397);
        const qreal row = m_view->characterRect(0).height();
        const qreal ratio = m_window->effectiveDevicePixelRatio();
        m_view->select(int(tall.indexOf(u"14 "_s)), int(tall.indexOf(u"17 "_s)) + 5);
        for (const qreal y :
             {300.0, 442.0, 484.5, 700.0, 400 + 16 * row - 1, 400 + 16 * row, 1056 - 0.25, 1700.0, 460.0}) {
            m_area->setContentY(y);
            const QImage picture = settle();
            QImage expected = picture;
            expected.fill(paper);
            QPainter painter(&expected);
            painter.translate(0, std::floor(m_view->mapToScene(QPointF()).y() * ratio));
            painter.scale(ratio, ratio);
            m_view->paint(painter,
                          m_view->mapRectFromItem(m_area, m_area->boundingRect()) & m_view->boundingRect());
            painter.end();
            QVERIFY2(picture == expected, qPrintable(QString::number(y)));
        }
    }

    void whatIsSelectedHasItsColours()
    {
        m_view->select(12, 16);
        const QImage picture = settle();
        const QRectF selected = place(12).united(place(15));
        const QRectF rest = place(17).united(place(21));
        QVERIFY(pixels(picture, selected, marked) > 0);
        QVERIFY(pixels(picture, selected, markedInk) > 0);
        QCOMPARE(pixels(picture, selected, ink), 0);
        QCOMPARE(pixels(picture, rest, marked), 0);
        QVERIFY(pixels(picture, rest, ink) > 0);
    }

    void severalSelectedLinesHideNoOther()
    {
        m_view->select(lineLength + 5, 3 * lineLength + 4);
        const QImage picture = settle();
        for (const int line : {1, 2, 3}) {
            const qsizetype start = line * lineLength;
            const QRectF selected =
                place(line == 1 ? start + 5 : start).united(place(start + (line == 3 ? 3 : 10)));
            QVERIFY(pixels(picture, selected, markedInk) > 0);
            QCOMPARE(pixels(picture, selected, ink), 0);
        }
        for (const qsizetype start : {0 * lineLength, 4 * lineLength}) {
            QVERIFY(pixels(picture, place(start).united(place(start + 10)), ink) > 0);
        }
    }

    // The look of each line is its own, whatever was selected before in another.
    void selectingLeavesNothingBehind()
    {
        const QImage before = settle();
        for (const int line : {2, 9, 15}) {
            click(this->before(line * lineLength + 1), 2);
            QCOMPARE(m_view->selectedText(), u"line"_s);
            settle();
        }
        m_other->forceActiveFocus();
        QCOMPARE(settle(), before);
    }

    void theCursorIsSeenWithTheFocusOnly()
    {
        QVERIFY(!showsCursor());
        click(before(13));
        QVERIFY(showsCursor());
        m_other->forceActiveFocus();
        QVERIFY(!showsCursor());
    }

    void theCursorBlinksAsThePlatformSays()
    {
        QStyleHints &hints = *QGuiApplication::styleHints();
        const auto restore =
            qScopeGuard([&hints, time = hints.cursorFlashTime()] { hints.setCursorFlashTime(time); });
        hints.setCursorFlashTime(70);
        m_view->forceActiveFocus();
        QTRY_VERIFY(!showsCursor());
        QTRY_VERIFY(showsCursor());
        m_other->forceActiveFocus();
        QVERIFY(!QTest::qWaitFor([this] { return showsCursor(); }, 150));
        // It is seen where it goes.
        m_view->forceActiveFocus();
        QTRY_VERIFY(!showsCursor());
        hints.setCursorFlashTime(100'000);
        QTest::keySequence(m_window.get(), QKeySequence::MoveToNextChar);
        QVERIFY(showsCursor());
        // Or it does not blink.
        hints.setCursorFlashTime(0);
        QTest::keySequence(m_window.get(), QKeySequence::MoveToNextChar);
        QVERIFY(!QTest::qWaitFor([this] { return !showsCursor(); }, 100));
    }

    void theCursorStaysInViewBehindAFullRow()
    {
        show(u"word"_s + QString(200, u' '));
        m_view->setCursorPosition(204);
        QCOMPARE(m_view->cursorRectangle().right(), 400.0);
    }

    void aPlacedCursorIsScrolledIntoView()
    {
        m_view->forceActiveFocus();
        settle();
        m_view->setCursorPosition(500 * lineLength);
        settle();
        QVERIFY(place(500 * lineLength).top() >= 0 && place(500 * lineLength).bottom() <= 300);
    }

    void aViewThatGrowsShowsMore()
    {
        m_area->setHeight(100);
        settle();
        m_area->setHeight(300);
        const qsizetype last = m_view->characterAt({1, 290});
        QVERIFY(pixels(settle(), place(last).united(place(last + 3)), ink) > 0);
    }

    void theTabKeyComesIn()
    {
        m_other->setActiveFocusOnTab(true);
        m_other->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_Tab);
        QVERIFY(m_view->hasActiveFocus());
        QVERIFY(showsCursor());
    }

    void thePointerOverItIsAnIBeam()
    {
        QTest::mouseMove(m_window.get(), QPoint(200, 150));
        QTRY_COMPARE(m_window->cursor().shape(), Qt::IBeamCursor);
    }

    void aDragSelectsFromCharacterToCharacter()
    {
        drag(before(14), before(29));
        QCOMPARE(m_view->selectedText(), numberedLines(3).sliced(14, 15));
        release(before(29));
        QCOMPARE(m_view->selectedText(), numberedLines(3).sliced(14, 15));
        // And back, beyond where it began.
        drag(before(29), before(14));
        release(before(14));
        QCOMPARE(m_view->selectionStart(), 14);
        QCOMPARE(m_view->cursorPosition(), 14);
    }

    void twoClicksSelectAWordAndThreeALine()
    {
        click(before(13), 2);
        QCOMPARE(m_view->selectedText(), u"line"_s);
        click(before(13), 3);
        QCOMPARE(m_view->selectedText(), u"line 000001\n"_s);
    }

    void aThirdClickLaterOrElsewhereBeginsAnew()
    {
        const QStyleHints &hints = *QGuiApplication::styleHints();
        const QPoint here = before(13);
        click(here, 2);
        // The release has taken its part of the time.
        m_pause = hints.mouseDoubleClickInterval() - 1;
        press(here);
        QVERIFY(!m_view->hasSelection());
        release(here);
        click(here, 2);
        const QPoint there = here + QPoint(hints.mouseDoubleClickDistance(), 0);
        press(there);
        QVERIFY(!m_view->hasSelection());
        release(there);
        click(there);
        QVERIFY(!m_view->hasSelection());
    }

    void aDragBeyondTheTextSelectsUpToItsEnds()
    {
        show(u"one\ntwo"_s);
        drag(before(1), {200, 250});
        QCOMPARE(m_view->selectedText(), u"ne\ntwo"_s);
        release({200, 250});
        drag(before(5), {0, -20});
        QCOMPARE(m_view->selectedText(), u"one\nt"_s);
        release({0, -20});
    }

    void aWordIsSelectedUnlessItIsSelectedAlready()
    {
        const auto selectAt = [this](qsizetype position) {
            m_view->selectWordAt(m_view->characterRect(position).center());
        };
        m_view->select(lineLength, lineLength + 11);
        selectAt(lineLength);
        QCOMPARE(m_view->selectedText(), u"line 000001"_s);
        selectAt(lineLength + 10);
        QCOMPARE(m_view->selectedText(), u"line 000001"_s);
        m_view->select(lineLength, lineLength + 5);
        selectAt(lineLength + 5);
        QCOMPARE(m_view->selectedText(), u"000001"_s);
    }

    void nothingBeyondTheTextIsSelected()
    {
        const auto ends = [this] { return std::pair(m_view->selectionStart(), m_view->selectionEnd()); };
        using Ends = std::pair<qsizetype, qsizetype>;
        m_view->select(-5, 99'999);
        QCOMPARE(ends(), Ends(0, 12'000));
        m_view->select(7, -1);
        QCOMPARE(ends(), Ends(0, 7));
        QCOMPARE(m_view->cursorPosition(), 0);
        m_view->setCursorPosition(99'999);
        QCOMPARE(ends(), Ends(12'000, 12'000));
        m_view->setCursorPosition(-1);
        QCOMPARE(ends(), Ends(0, 0));
    }

    void aDragAfterTwoClicksSelectsByWords()
    {
        click(before(18), 1);
        press(before(18));
        move(before(22));
        QCOMPARE(m_view->selectedText(), u"000001"_s);
        QCOMPARE(m_view->cursorPosition(), 23);
        move(before(26));
        QCOMPARE(m_view->selectedText(), u"000001\nline"_s);
        move(before(2));
        QCOMPARE(m_view->selectedText(), u"line 000000\nline 000001"_s);
        release(before(2));
    }

    void aTripleClickSelectsALineOfTheSourceInAnyOutput()
    {
        const QString wide = u"word "_s.repeated(400);
        show(u"first\n"_s + wide + u"\nlast"_s);
        click(before(300), 3);
        QCOMPARE(m_view->selectedText(), wide + u'\n');
    }

    void aClickWithShiftSelectsUpToIt()
    {
        click(before(14));
        click(before(30), 1, Qt::ShiftModifier);
        QCOMPARE(m_view->selectedText(), numberedLines(3).sliced(14, 16));
        click(before(3), 1, Qt::ShiftModifier);
        QCOMPARE(m_view->selectionStart(), 3);
        QCOMPARE(m_view->selectionEnd(), 14);
    }

    void aHandThatIsNotStillSelectsNothing()
    {
        // Also after a drag.
        drag(before(14), before(29));
        release(before(29));
        const QPoint edge = place(lineLength * 5).topLeft().toPoint() + QPoint(3, 1);
        const int far = QGuiApplication::styleHints()->startDragDistance() / 2;
        pauseClicks();
        press(edge);
        move(edge - QPoint(0, far - 1));
        move(edge - QPoint(1, far - 2));
        QVERIFY(!m_view->hasSelection());
        release(edge - QPoint(0, 3));
        QVERIFY(!m_view->hasSelection());
        pauseClicks();
        press(edge);
        move(edge - QPoint(0, far));
        QVERIFY(m_view->hasSelection());
        release(edge - QPoint(0, far));
    }

    void aPressAtTheEdgeMovesNothing_data()
    {
        QTest::addColumn<int>("y");
        QTest::newRow("top") << 1;
        QTest::newRow("bottom") << 298;
    }

    void aPressAtTheEdgeMovesNothing()
    {
        QFETCH(const int, y);
        m_area->setContentY(1003);
        settle();
        pauseClicks();
        press({20, y});
        settle();
        QCOMPARE(m_area->contentY(), 1003.0);
        release({20, y});
        settle();
        QCOMPARE(m_area->contentY(), 1003.0);
        QVERIFY(!m_view->hasSelection());
    }

    void aDragBeyondTheViewGoesOnByItself()
    {
        drag(before(lineLength * 3), {100, 310});
        const qreal begun = m_area->contentY();
        QTRY_VERIFY(m_area->contentY() > begun + 100);
        QVERIFY(m_view->selectionEnd() > lineLength * 20);
        release({100, 310});
        const qreal ended = m_area->contentY();
        QTest::qWait(60);
        QCOMPARE(m_area->contentY(), ended);
    }

    // Each step is a quarter of the distance, but at least a pixel.
    void theFartherAwayThePointerTheFasterItGoes()
    {
        const auto stepAt = [this](int y) {
            m_area->setContentY(5000);
            settle();
            drag({100, 150}, {100, y});
            int steps = 0;
            const auto counting = connect(m_area, &ScrollArea::contentYChanged, this, [&steps] { ++steps; });
            const qreal from = m_area->contentY();
            [&] { QTRY_VERIFY(steps >= 5); }();
            const qreal perStep = (m_area->contentY() - from) / steps;
            disconnect(counting);
            release({100, y});
            return perStep;
        };
        QCOMPARE(stepAt(302), 1.0);
        QCOMPARE(stepAt(310), 3.0);
        QCOMPARE(stepAt(500), 50.0);
        QCOMPARE(stepAt(-2), -1.0);
        QCOMPARE(stepAt(-200), -50.0);
    }

    void aDragWithinAShortOutputScrollsNothing()
    {
        putOnAPage(u"one\ntwo"_s);
        drag(before(5), {100, 20});
        QTest::qWait(60);
        QCOMPARE(m_area->contentY(), 300.0);
        release({100, 20});
    }

    void keysMoveAndSelect_data()
    {
        QTest::addColumn<QList<QKeySequence::StandardKey>>("keys");
        QTest::addColumn<int>("anchor");
        QTest::addColumn<int>("cursor");
        using Keys = QList<QKeySequence::StandardKey>;
        QTest::newRow("right") << Keys{QKeySequence::MoveToNextChar} << 31 << 31;
        QTest::newRow("left") << Keys{QKeySequence::MoveToPreviousChar} << 29 << 29;
        QTest::newRow("down") << Keys{QKeySequence::MoveToNextLine} << 42 << 42;
        QTest::newRow("up") << Keys{QKeySequence::MoveToPreviousLine} << 18 << 18;
        QTest::newRow("home") << Keys{QKeySequence::MoveToStartOfLine} << 24 << 24;
        QTest::newRow("end") << Keys{QKeySequence::MoveToEndOfLine} << 35 << 35;
        QTest::newRow("to the start") << Keys{QKeySequence::MoveToStartOfDocument} << 0 << 0;
        QTest::newRow("to the end") << Keys{QKeySequence::MoveToEndOfDocument} << 12000 << 12000;
        QTest::newRow("next word") << Keys{QKeySequence::MoveToNextWord} << 35 << 35;
        QTest::newRow("previous word") << Keys{QKeySequence::MoveToPreviousWord} << 29 << 29;
        QTest::newRow("select right")
            << Keys{QKeySequence::SelectNextChar, QKeySequence::SelectNextChar} << 30 << 32;
        QTest::newRow("select up") << Keys{QKeySequence::SelectPreviousLine} << 30 << 18;
        QTest::newRow("select to the end") << Keys{QKeySequence::SelectEndOfDocument} << 30 << 12000;
        QTest::newRow("out of a selection")
            << Keys{QKeySequence::SelectPreviousWord, QKeySequence::MoveToNextChar} << 30 << 30;
        QTest::newRow("out of a selection to its start")
            << Keys{QKeySequence::SelectNextChar, QKeySequence::SelectNextChar,
                    QKeySequence::MoveToPreviousChar}
            << 30 << 30;
        QTest::newRow("by a word from the cursor of a selection")
            << Keys{QKeySequence::SelectPreviousChar, QKeySequence::MoveToNextWord} << 35 << 35;
        QTest::newRow("through a short line, at the same place")
            << Keys{QKeySequence::MoveToEndOfDocument, QKeySequence::MoveToPreviousLine,
                    QKeySequence::MoveToEndOfLine, QKeySequence::MoveToNextLine,
                    QKeySequence::MoveToPreviousLine}
            << 11999 << 11999;
        QTest::newRow("all") << Keys{QKeySequence::SelectAll} << 0 << 12000;
    }

    void keysMoveAndSelect()
    {
        QFETCH(const QList<QKeySequence::StandardKey>, keys);
        m_view->forceActiveFocus();
        m_view->select(30, 30);
        for (const QKeySequence::StandardKey key : keys) {
            QTest::keySequence(m_window.get(), key);
        }
        QTEST(int(m_view->cursorPosition()), "cursor");
        QFETCH(const int, anchor);
        QCOMPARE(int(m_view->selectionStart()), std::min(anchor, int(m_view->cursorPosition())));
        QCOMPARE(int(m_view->selectionEnd()), std::max(anchor, int(m_view->cursorPosition())));
    }

    void pagesAreTurned()
    {
        m_view->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_PageDown);
        settle();
        const qsizetype first = m_view->cursorPosition();
        const auto rows = static_cast<qsizetype>(300 / m_view->characterRect(0).height());
        QCOMPARE(first, lineLength * (rows - 1));
        QTest::keyClick(m_window.get(), Qt::Key_PageDown, Qt::ShiftModifier);
        QCOMPARE(m_view->selectionStart(), first);
        QVERIFY(m_view->selectionEnd() > first + lineLength * 10);
        QTest::keyClick(m_window.get(), Qt::Key_PageUp);
        QCOMPARE(m_view->cursorPosition(), first);
        m_area->setHeight(20);
        QTest::keyClick(m_window.get(), Qt::Key_PageDown);
        QCOMPARE(m_view->cursorPosition(), first + lineLength);
    }

    void theColumnOfAClickReplacesThatOfTheKeys()
    {
        click(before(lineLength + 6));
        QTest::keySequence(m_window.get(), QKeySequence::MoveToNextLine);
        QCOMPARE(m_view->cursorPosition(), 2 * lineLength + 6);
        click(before(4 * lineLength + 2));
        QTest::keySequence(m_window.get(), QKeySequence::MoveToNextLine);
        QCOMPARE(m_view->cursorPosition(), 5 * lineLength + 2);
    }

    void theCursorIsFollowedWhenTheUserMovesIt()
    {
        m_view->forceActiveFocus();
        QTest::keySequence(m_window.get(), QKeySequence::MoveToEndOfDocument);
        settle();
        QCOMPARE(m_area->contentY(), m_area->maximumY());
        QTest::keySequence(m_window.get(), QKeySequence::MoveToStartOfDocument);
        settle();
        QCOMPARE(m_area->contentY(), 0.0);
    }

    void selectingAllMovesNothing()
    {
        m_view->forceActiveFocus();
        settle();
        m_area->setContentY(2000);
        QTest::keySequence(m_window.get(), QKeySequence::SelectAll);
        settle();
        QCOMPARE(m_area->contentY(), 2000.0);
        QTest::keySequence(m_window.get(), QKeySequence::Copy);
        QCOMPARE(copied(), numberedLines(1000));
    }

    void whatIsCopiedIsTheSource()
    {
        const QString text = u"a\u00a0b\r\nc\rd\t\u2028e\u2029שלום 🔑\n\n"_s;
        show(text);
        m_view->forceActiveFocus();
        QTest::keySequence(m_window.get(), QKeySequence::SelectAll);
        QTest::keySequence(m_window.get(), QKeySequence::Copy);
        QCOMPARE(copied(), text);
    }

    void withoutASelectionTheClipboardStays()
    {
        m_view->forceActiveFocus();
        QTest::keySequence(m_window.get(), QKeySequence::Copy);
        QCOMPARE(copied(), u"before"_s);
    }

    // Whatever is dragged over is what is copied, in any text.
    void aDragCopiesWhatItCovers()
    {
        const QStringList pieces{u"word"_s, u" "_s,       u"\n"_s,   u"\r\n"_s,   u"\t"_s,
                                 u"🔑"_s,    u"e\u0301"_s, u"ключ"_s, u"\u00a0"_s, u"{\"a\":1},"_s};
        QRandomGenerator random{5};
        for (int round = 0; round < 30; ++round) {
            QString text;
            for (int piece = 0; piece < 60; ++piece) {
                text += pieces.at(random.bounded(pieces.size()));
            }
            show(text);
            m_area->setContentY(0);
            settle();
            TextRows rows;
            rows.setFont(m_view->font());
            rows.wrap(text, 400);
            QList<qsizetype> visible;
            for (qsizetype position = 0; position < text.size(); position = nextCharacter(rows, position)) {
                if (place(position).bottom() < 300 && place(position).right() < 399
                    && place(position).width() > 2) {
                    visible.append(position);
                }
            }
            const auto any = [&] { return visible.at(random.bounded(visible.size())); };
            const auto [from, to] = std::minmax({any(), any()});
            if (isNear(before(from), before(to))) {
                continue;
            }
            drag(before(from), before(to));
            release(before(to));
            QTest::keySequence(m_window.get(), QKeySequence::Copy);
            QCOMPARE(copied(), text.sliced(from, to - from));
        }
    }

    void aNewTextMovesNothing()
    {
        m_area->setContentY(1000);
        settle();
        click(before(lineLength * 70 + 3), 2);
        const qreal read = place(lineLength * 70).top();
        QString text = numberedLines(1000);
        text.replace(8, 3, u"another first line\n"_s);
        show(text);
        QCOMPARE(place(lineLength * 70 + 16).top(), read);
        QCOMPARE(m_view->selectedText(), u"line"_s);
        QCOMPARE(m_view->selectionStart(), lineLength * 70 + 16);
        // And holds nothing fast.
        m_area->setContentY(100);
        settle();
        QCOMPARE(m_area->contentY(), 100.0);
    }

    void anOutputThatBeginsInViewMovesNothing()
    {
        putOnAPage(u"many words in one long line "_s.repeated(30));
        m_view->setWidth(200);
        settle();
        QCOMPARE(m_area->contentY(), 300.0);
    }

    void aNewWidthKeepsWhatIsRead()
    {
        show(u"many words in one long line "_s.repeated(3000));
        m_area->setContentY(4000);
        settle();
        const qsizetype read = m_view->characterAt(m_view->mapFromScene({1, 1}));
        const qreal before = place(read).top();
        for (const int width : {200, 330, 90, 400}) {
            m_area->setWidth(width);
            settle();
            QVERIFY2(std::abs(place(read).top() - before) < 1, qPrintable(QString::number(width)));
        }
        QCOMPARE(m_view->characterAt(m_view->mapFromScene({1, 1})), read);
    }

    void aNewFontIsFollowed()
    {
        m_area->setContentY(1000);
        settle();
        const qsizetype read = m_view->characterAt({1, 1000});
        const qreal top = place(read).top();
        const qreal before = m_view->implicitHeight();
        const QSignalSpy changes(m_view, &OutputView::fontChanged);
        QFont font = m_view->font();
        font.setPixelSize(26);
        m_view->setFont(font);
        QCOMPARE(changes.size(), 1);
        QVERIFY(m_view->implicitHeight() > 1.5 * before);
        const QImage picture = settle();
        QVERIFY(std::abs(place(read).top() - top) < 1);
        const qsizetype below = read + lineLength;
        QVERIFY(pixels(picture, place(below).united(place(below + 3)), ink) > 0);
    }

    void itSaysWhenItLeavesTheWindow()
    {
        const QSignalSpy spy(m_view, &QQuickItem::windowChanged);
        m_view->setParentItem(nullptr);
        QCOMPARE(spy.count(), 1);
    }

    void theFocusTakesTheSelectionWithIt()
    {
        click(before(13), 2);
        m_other->forceActiveFocus(Qt::PopupFocusReason);
        QVERIFY(m_view->hasSelection());
        m_view->forceActiveFocus();
        m_other->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(!m_view->hasSelection());
    }

    void everyCharacterHasAPlaceForScreenReaders()
    {
        const QString text = u"one\r\ntwo\tthree 🔑 שלום\n"_s;
        show(text);
        AccessibleOutput output(m_view);
        QCOMPARE(output.characterCount(), int(text.size()));
        QCOMPARE(output.text(0, int(text.size())), text);
        for (int offset = 0; offset < text.size(); ++offset) {
            const QRect rect = output.characterRect(offset);
            QVERIFY2(rect.height() >= m_view->characterRect(0).height(), qPrintable(QString::number(offset)));
            if (!text[offset].isSpace() && !text[offset].isLowSurrogate()) {
                QCOMPARE(output.offsetAtPoint(rect.center()), offset);
            }
        }
        // The cursor may stand behind the last character; elsewhere there is nothing.
        QVERIFY(output.characterRect(int(text.size())).top() > output.characterRect(0).top());
        QCOMPARE(output.characterRect(INT_MAX), output.characterRect(int(text.size())));
        QCOMPARE(output.characterRect(-1), output.characterRect(0));
        QCOMPARE(output.offsetAtPoint(output.rect().bottomRight() + QPoint(9, 9)), -1);
    }

    void keysThatLeadNowhereAreLeftToThePage()
    {
        m_view->forceActiveFocus();
        QVERIFY(acceptsKey(m_view, Qt::Key_Down));
        QTest::keyClick(m_window.get(), Qt::Key_Home, Qt::ControlModifier);
        QVERIFY(!acceptsKey(m_view, Qt::Key_Up));
        QTest::keyClick(m_window.get(), Qt::Key_End, Qt::ControlModifier);
        QVERIFY(!acceptsKey(m_view, Qt::Key_Down));
        QVERIFY(!acceptsKey(m_view, Qt::Key_PageDown));
        QVERIFY(!acceptsKey(m_view, Qt::Key_A, u"a"_s));
    }

private:
    static bool isNear(QPoint one, QPoint other) { return (one - other).manhattanLength() < 6; }
};

static const TestClass<TestOutputView> testOutputView("tst_outputview");

#include "tst_outputview.moc"
