#include "support/testprogram.h"
#include "ui/platform/synchronousframe.h"
#include "windowtesting.h"

#include <QtTest/qsignalspy.h>

// A frame before the thread is blocked.
class TestSynchronousFrame : public QObject
{
    Q_OBJECT

private slots:
    void aShownWindowIsRenderedAtOnce()
    {
        TestWindow window;
        QVERIFY(window.isReady());
        const QSignalSpy frames(&window, &QQuickWindow::frameSwapped);
        window.contentItem()->setOpacity(0.5);
        renderNow(&window);
        QCOMPARE(frames.count(), 1);
    }

    void aHiddenWindowIsLeftAlone()
    {
        class : public TestWindow
        {
        public:
            int requests = 0;

        protected:
            bool event(QEvent *event) override
            {
                requests += event->type() == QEvent::UpdateRequest ? 1 : 0;
                return TestWindow::event(event);
            }
        } window;
        renderNow(&window);
        renderNow(nullptr);
        QCOMPARE(window.requests, 0);
    }
};

static const TestClass<TestSynchronousFrame> testSynchronousFrame("tst_synchronousframe");

#include "tst_synchronousframe.moc"
