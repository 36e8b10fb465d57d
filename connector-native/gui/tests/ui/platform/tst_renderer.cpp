#include "support/testprogram.h"
#include "ui/platform/renderer.h"

#include <QtQuick/qquickwindow.h>

// Who chooses the renderer: the program, unless the user has.
class TestRenderer : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("QSG_RHI_BACKEND"); }
    void cleanupTestCase() { qputenv("QT_QUICK_BACKEND", "software"); }

    void theUsersChoiceIsKept_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QString>("backend");
        QTest::newRow("none") << QByteArray() << QStringLiteral("software");
        QTest::newRow("QT_QUICK_BACKEND") << QByteArray("QT_QUICK_BACKEND") << QString();
        QTest::newRow("QSG_RHI_BACKEND") << QByteArray("QSG_RHI_BACKEND") << QString();
    }

    void theUsersChoiceIsKept()
    {
        QFETCH(const QByteArray, variable);
        qunsetenv("QT_QUICK_BACKEND");
        if (!variable.isEmpty()) {
            qputenv(variable.constData(), "any");
        }
        QQuickWindow::setSceneGraphBackend(QString());
        chooseRenderer();
        QTEST(QQuickWindow::sceneGraphBackend(), "backend");
    }
};

static const TestClass<TestRenderer> testRenderer("tst_renderer");

#include "tst_renderer.moc"
