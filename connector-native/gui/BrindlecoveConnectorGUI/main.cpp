#include "bridge/coredumpfilter.h"
#include "ui/accessibility/accessiblefactory.h"
#include "ui/platform/application.h"
#include "ui/platform/qmlmodule.h"
#include "ui/platform/renderer.h"

#include <QFontDatabase>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <future>

namespace {

// Started without a standard stream, the program must not get the display's connection as one: whatever
// anybody prints would go there.
void openStandardDescriptors()
{
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = open("/dev/null", O_RDWR);
    }
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

// By these names desktops find the entry that a window belongs to, whatever the program was started as.
void introduceToDesktop()
{
    QGuiApplication::setApplicationName(QStringLiteral("BrindlecoveConnectorGUI"));
    QGuiApplication::setDesktopFileName(QStringLiteral("example.brindlecove.ConnectorGUI"));
}

// Reading the pictures takes longer than anybody looks for them: the window comes first.
void showIconAfterFirstFrame(QQuickWindow *window)
{
    const auto showIcon = [] {
        QIcon icon(QStringLiteral(":/icons/48.png"));
        icon.addFile(QStringLiteral(":/icons/128.png"));
        QGuiApplication::setWindowIcon(icon);
    };
    QObject::connect(window, &QQuickWindow::frameSwapped, window, showIcon, Qt::SingleShotConnection);
}

// Listing the fonts is a third of the work before the first frame, and nothing else waits for it for long.
void readFonts()
{
    static_cast<void>(QFontDatabase::hasFamily(QString()));
}

} // namespace

int main(int argc, char *argv[])
{
    openStandardDescriptors();
    if (argc == 0) {
        std::fputs(
            "BrindlecoveConnectorGUI: started without a name (argument 0), by which it finds its connector\n",
            stderr);
        return EXIT_FAILURE;
    }
    keepMemoryOutOfCoreDumps();
    chooseRenderer();
    const Application application(argc, argv);
    introduceToDesktop();
    // Where no thread is to be had, whoever needs the fonts first lists them.
    const auto fonts = std::async(std::launch::async | std::launch::deferred, readFonts);

    installAccessibleFactory();
    registerQmlModule();
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    // Qt 6.4: there is no loadFromModule().
    engine.load(QUrl(QStringLiteral("qrc:/BrindlecoveConnectorGUI/ui/BrindlecoveConnectorGUIApp.qml")));
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window) {
        return EXIT_FAILURE;
    }
    showIconAfterFirstFrame(window);
    return Application::exec();
}
