#include "support/testprogram.h"

#include <QtCore/qobject.h>
#include <QtTest/qtest.h>

// What the program's QML is loaded with; the module is registered before the first test.
class TestQmlModule : public QObject
{
    Q_OBJECT

private slots:
    void theCompiledQmlIsUsed() { QVERIFY(!qEnvironmentVariableIsSet("QML_DISABLE_DISK_CACHE")); }
};

static const TestClass<TestQmlModule> testQmlModule("tst_qmlmodule");

#include "tst_qmlmodule.moc"
