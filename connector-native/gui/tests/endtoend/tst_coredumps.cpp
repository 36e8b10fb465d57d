#include "application.h"
#include "mainwindow.h"
#include "processes.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray onlyHeaders = "00000010\n";
const auto everythingIsLogged = u"9 command log entries available"_s;

QByteArray filterOf(qint64 processId)
{
    return processFile(processId, u"coredump_filter"_s);
}

/// A connector that prints what its own core dumps would hold.
bool installReporter(const Application &application)
{
    QFile script(application.connectorPath());
    return application.removeConnector() && script.open(QIODevice::WriteOnly)
        && script.write("#!/bin/sh\nexec cat /proc/self/coredump_filter\n") > 0
        && script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

/// What a crash of the program, or of the connector, would leave on the disk.
class TestCoreDumps : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enableAccessibility()); }

    void holdNoMemoryOfTheProgram()
    {
        Application application;
        QVERIFY(application.installSimulator());
        QVERIFY(application.start());
        const MainWindow window(application);
        QTRY_VERIFY(window.shows(everythingIsLogged));
        QCOMPARE(filterOf(application.processId()), onlyHeaders);
        QVERIFY(window.clickButton(u"Check server"_s));
        QTRY_VERIFY(window.shows(u"10 command log entries available"_s));
        QCOMPARE(filterOf(application.processId()), onlyHeaders);
    }

    void holdOfTheConnectorWhatTheyWouldWithoutTheProgram_data()
    {
        QTest::addColumn<QByteArray>("usual");
        QTest::newRow("as it is here") << filterOf(QCoreApplication::applicationPid());
        QTest::newRow("more than is usual") << QByteArray("0000003f\n");
        QTest::newRow("nothing") << QByteArray("00000000\n");
    }

    void holdOfTheConnectorWhatTheyWouldWithoutTheProgram()
    {
        QFETCH(const QByteArray, usual);
        const auto number = QString::fromLatin1(usual.trimmed());
        Application application;
        QVERIFY(installReporter(application));
        QVERIFY(application.startBy(uR"(echo 0x%1 >/proc/self/coredump_filter; exec "$0")"_s.arg(number)));
        const MainWindow window(application);
        QTRY_VERIFY(window.shows(everythingIsLogged));
        QVERIFY(window.clickButton(u"Open technical log"_s));
        QTRY_COMPARE(window.newestLogEntry(), (LogEntry{u"status"_s, QString::fromLatin1(usual)}));
        QVERIFY(filterOf(application.processId()) <= onlyHeaders);
    }
};

static const TestClass<TestCoreDumps> testCoreDumps("tst_coredumps");

#include "tst_coredumps.moc"
