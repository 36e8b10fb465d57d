#include "support/testprogram.h"
#include "ui/platform/qmlmodule.h"

#include <QtCore/qobject.h>
#include <QtTest/qtest.h>

// What the program's QML is loaded with; the module is registered before the first test.
class TestQmlModule : public QObject
{
    Q_OBJECT

private slots:
    void theCompiledQmlIsUsed() { QVERIFY(!qEnvironmentVariableIsSet("QML_DISABLE_DISK_CACHE")); }

    void anotherQtStoresNoQmlOfItsOwn()
    {
        guardCompiledQml(QT_VERSION_STR);
        QVERIFY(!qEnvironmentVariableIsSet("QML_DISABLE_DISK_CACHE"));
        guardCompiledQml("6.99.0");
        QCOMPARE(qgetenv("QML_DISABLE_DISK_CACHE"), QByteArray("1"));
        qunsetenv("QML_DISABLE_DISK_CACHE");
    }
};

static const TestClass<TestQmlModule> testQmlModule("tst_qmlmodule");

#include "tst_qmlmodule.moc"
