#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

// What a start costs that shows a window of Qt Quick and does nothing else, with the renderer the program
// would choose.
int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND") && !qEnvironmentVariableIsSet("QSG_RHI_BACKEND")) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    const QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.load(QUrl(QStringLiteral("qrc:/BareWindow/reference/BareWindow.qml")));
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}
