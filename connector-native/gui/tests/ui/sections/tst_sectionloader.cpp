#include "support/testprogram.h"

#include <QtCore/qregularexpression.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <memory>

using namespace Qt::StringLiterals;

// What becomes of a part of the window that is named by a file.
class TestSectionLoader : public QObject
{
    Q_OBJECT

private slots:
    void aPartThatIsNotThereEndsTheProgram()
    {
        QQmlEngine engine;
        engine.addImportPath(u":/"_s);
        const QSignalSpy exits(&engine, &QQmlEngine::exit);
        QQmlComponent component(&engine);
        component.setData(
            "import QtQuick\nimport BrindlecoveConnectorGUI\n"
            "SectionLoader { needed: true; Component.onCompleted: setSource('qrc:/nowhere.qml', {}) }",
            QUrl());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"nowhere"_s));
        const std::unique_ptr<QObject> loader(component.create());
        QVERIFY2(loader, qPrintable(component.errorString()));
        QCOMPARE(exits.count(), 1);
        QCOMPARE(exits.constFirst().constFirst().toInt(), 1);
    }
};

static const TestClass<TestSectionLoader> testSectionLoader("tst_sectionloader");

#include "tst_sectionloader.moc"
