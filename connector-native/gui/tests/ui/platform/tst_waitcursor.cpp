#include "support/testprogram.h"
#include "ui/platform/waitcursor.h"

#include <QtGui/qcursor.h>
#include <QtGui/qguiapplication.h>
#include <QtTest/qsignalspy.h>

#include <memory>

// The pointer while a command runs.
class TestWaitCursor : public QObject
{
    Q_OBJECT

private slots:
    void thePointerWaitsWhileActive()
    {
        WaitCursor cursor;
        QSignalSpy changes(&cursor, &WaitCursor::activeChanged);
        QVERIFY(!cursor.isActive());
        QVERIFY(!QGuiApplication::overrideCursor());
        cursor.setActive(true);
        QVERIFY(cursor.isActive());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        cursor.setActive(true);
        QCOMPARE(changes.size(), 1);
        cursor.setActive(false);
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(changes.size(), 2);
    }

    void withTheObjectTheWaitingEnds()
    {
        auto cursor = std::make_unique<WaitCursor>();
        cursor->setActive(true);
        cursor.reset();
        QVERIFY(!QGuiApplication::overrideCursor());
    }
};

static const TestClass<TestWaitCursor> testWaitCursor("tst_waitcursor");

#include "tst_waitcursor.moc"
