#include "support/testprogram.h"
#include "ui/platform/windowlifecycle.h"
#include "windowtesting.h"

#include <QtTest/qsignalspy.h>

namespace {

class WatchedWindow : public TestWindow
{
public:
    [[nodiscard]] int frameReceivers() const { return receivers(SIGNAL(frameSwapped())); }
};

} // namespace

class TestWindowLifecycle : public QObject
{
    Q_OBJECT

private slots:
    void aWindowAppearsOnceAfterItsFirstFrame()
    {
        TestWindow window;
        WindowLifecycle lifecycle;
        lifecycle.setWindow(&window);
        const QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        qsizetype framesBefore = 0;
        connect(&lifecycle, &WindowLifecycle::appeared, &window, [&] { framesBefore = frames.count(); });
        QVERIFY(window.isReady());
        QTRY_COMPARE(appeared.count(), 1);
        QVERIFY(framesBefore >= 1);

        const qsizetype shown = frames.count();
        window.update();
        QTRY_VERIFY(frames.count() > shown);
        QCoreApplication::processEvents();
        QCOMPARE(appeared.count(), 1);
    }

    void anUnshownWindowDoesNotAppear()
    {
        TestWindow window;
        WindowLifecycle lifecycle;
        lifecycle.setWindow(&window);
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        const QSignalSpy disappeared(&lifecycle, &WindowLifecycle::disappeared);
        lifecycle.renderNow();
        (void)settled(window);
        QCoreApplication::processEvents();
        QCOMPARE(appeared.count(), 0);
        QCOMPARE(disappeared.count(), 0);
    }

    void hiddenAndShownAgainItAppearsAgain()
    {
        TestWindow window;
        WindowLifecycle lifecycle;
        lifecycle.setWindow(&window);
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        const QSignalSpy disappeared(&lifecycle, &WindowLifecycle::disappeared);
        for (int round = 1; round <= 3; ++round) {
            QVERIFY(window.isReady());
            QTRY_COMPARE(appeared.count(), round);
            QCOMPARE(disappeared.count(), round - 1);
            window.hide();
            QTRY_COMPARE(disappeared.count(), round);
        }
    }

    void hiddenBeforeItsFrameItNeverAppeared()
    {
        TestWindow window;
        WindowLifecycle lifecycle;
        lifecycle.setWindow(&window);
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        const QSignalSpy disappeared(&lifecycle, &WindowLifecycle::disappeared);
        window.show();
        window.hide();
        QCoreApplication::processEvents();
        QCOMPARE(appeared.count(), 0);
        QCOMPARE(disappeared.count(), 0);
        // A frame still on its way then must not count for the next showing twice.
        QVERIFY(window.isReady());
        QTRY_COMPARE(appeared.count(), 1);
        window.update();
        QVERIFY(!QTest::qWaitFor([&] { return appeared.count() > 1; }, 100));
    }

    void aWindowAlreadyShownAppearsToo()
    {
        TestWindow window;
        QVERIFY(window.isReady());
        WindowLifecycle lifecycle;
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        lifecycle.setWindow(&window);
        window.update();
        QTRY_COMPARE(appeared.count(), 1);
    }

    void onceItHasAppearedFramesAreNotWatched()
    {
        WatchedWindow window;
        WindowLifecycle lifecycle;
        lifecycle.setWindow(&window);
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        const int others = window.frameReceivers();
        for (int round = 1; round <= 3; ++round) {
            QVERIFY(window.isReady());
            QTRY_COMPARE(appeared.count(), round);
            QCOMPARE(window.frameReceivers(), others);
            window.hide();
        }
    }

    void anotherWindowAppearsByItself()
    {
        TestWindow first;
        TestWindow second;
        WindowLifecycle lifecycle;
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        const QSignalSpy disappeared(&lifecycle, &WindowLifecycle::disappeared);
        lifecycle.setWindow(&first);
        QVERIFY(first.isReady());
        QTRY_COMPARE(appeared.count(), 1);
        lifecycle.setWindow(&second);
        QCOMPARE(disappeared.count(), 1);
        QVERIFY(second.isReady());
        QTRY_COMPARE(appeared.count(), 2);
        first.hide();
        QCOMPARE(disappeared.count(), 1);
    }

    void aWindowThatIsTakenAwayDisappears()
    {
        TestWindow window;
        WindowLifecycle lifecycle;
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        const QSignalSpy disappeared(&lifecycle, &WindowLifecycle::disappeared);
        lifecycle.setWindow(&window);
        QVERIFY(window.isReady());
        QTRY_COMPARE(appeared.count(), 1);
        lifecycle.setWindow(nullptr);
        QCOMPARE(disappeared.count(), 1);
        (void)settled(window);
        QCoreApplication::processEvents();
        QCOMPARE(appeared.count(), 1);
    }

    void whatTheHandlerChangesIsShownBeforeAnythingElseRuns()
    {
        TestWindow window;
        WindowLifecycle lifecycle;
        lifecycle.setWindow(&window);
        const QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
        QQuickItem *item = addItem(window.contentItem(), {0, 0, 50, 50});
        qsizetype framesInHandler = -1;
        qsizetype framesAfter = -1;
        connect(&lifecycle, &WindowLifecycle::appeared, &window, [&] {
            framesInHandler = frames.count();
            item->setOpacity(0.5);
            QMetaObject::invokeMethod(
                &window, [&] { framesAfter = frames.count(); }, Qt::QueuedConnection);
        });
        QVERIFY(window.isReady());
        QTRY_VERIFY(framesAfter >= 0);
        QVERIFY(framesAfter > framesInHandler);
    }

    void theWindowMayGoFirst()
    {
        WindowLifecycle lifecycle;
        const QSignalSpy appeared(&lifecycle, &WindowLifecycle::appeared);
        {
            TestWindow window;
            lifecycle.setWindow(&window);
            QVERIFY(window.isReady());
            QTRY_COMPARE(appeared.count(), 1);
        }
        QCOMPARE(lifecycle.window(), nullptr);
        lifecycle.renderNow();
        QCoreApplication::processEvents();
        QCOMPARE(appeared.count(), 1);
    }
};

static const TestClass<TestWindowLifecycle> testWindowLifecycle("tst_windowlifecycle");

#include "tst_windowlifecycle.moc"
