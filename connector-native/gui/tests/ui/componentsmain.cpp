#include "support/fakeconnector.h"
#include "ui/platform/qmlmodule.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtQml/qqmlengine.h>
#include <QtQuickTest/quicktest.h>

using namespace Qt::StringLiterals;

/// What the tests of the components know of the world around the window.
class Surroundings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(FakeConnector *connector READ connector CONSTANT)

public:
    Surroundings() { m_connector.steerBesideProgram(); }

    [[nodiscard]] FakeConnector *connector() { return &m_connector; }
    [[nodiscard]] Q_INVOKABLE QString clipboard() const { return QGuiApplication::clipboard()->text(); }
    Q_INVOKABLE void setClipboard(const QString &text) const { QGuiApplication::clipboard()->setText(text); }

private:
    FakeConnector m_connector;
};

class Setup : public QObject
{
    Q_OBJECT

public slots:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        registerQmlModule();
        engine->addImportPath(u":/"_s);
        qmlRegisterSingletonInstance("Testing", 1, 0, "Surroundings", &m_surroundings);
    }

private:
    Surroundings m_surroundings;
};

QUICK_TEST_MAIN_WITH_SETUP(tst_components, Setup)

#include "componentsmain.moc"
