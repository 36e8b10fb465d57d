#include "bridge/coredumpfilter.h"
#include "ui/accessibility/accessiblefactory.h"
#include "ui/platform/application.h"
#include "ui/platform/qmlmodule.h"
#include "ui/platform/renderer.h"
#include "ui/platform/systemfonts.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QIcon>
#include <QImageReader>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>

namespace {

// Without a standard stream, the connection to the display could get the stream's number, and messages would
// be written to it.
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

// Desktops match the window with its desktop entry by these names, whatever the executable is called.
void introduceToDesktop()
{
    QGuiApplication::setApplicationName(QStringLiteral("BrindlecoveConnectorGUI"));
    QGuiApplication::setDesktopFileName(QStringLiteral("example.brindlecove.ConnectorGUI"));
}

// Without a look at the file itself, for which Qt would load each of its image plugins.
QPixmap decoded(const QString &pngFile)
{
    QImageReader reader(pngFile, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

// Decode the icon after the first frame.
void showIconAfterFirstFrame(QQuickWindow *window)
{
    const auto showIcon = [] {
        QIcon icon(decoded(QStringLiteral(":/icons/48.png")));
        icon.addPixmap(decoded(QStringLiteral(":/icons/128.png")));
        QGuiApplication::setWindowIcon(icon);
    };
    QObject::connect(window, &QQuickWindow::frameSwapped, window, showIcon, Qt::SingleShotConnection);
}

// Reading Fontconfig's files is most of the listing of the fonts, and needs no application object. Where
// Qt does not use Fontconfig, there is no such function.
void readFontSettings()
{
    if (void *read = dlsym(RTLD_DEFAULT, "FcInit")) {
        static_cast<void>(reinterpret_cast<int (*)()>(read)());
    }
}

void listFonts()
{
    static_cast<void>(QFontDatabase::hasFamily(QString()));
}

void openFonts()
{
    const QList<QFont> fonts = SystemFonts::ofFirstFrame();
    for (const QFont &font : fonts) {
        static_cast<void>(QFontMetricsF(font).ascent());
    }
}

} // namespace

int main(int argc, char *argv[])
{
    openStandardDescriptors();
    if (argc == 0) {
        static_cast<void>(std::fputs(
            "BrindlecoveConnectorGUI: started without a name (argument 0), by which it finds its connector\n",
            stderr));
        return EXIT_FAILURE;
    }
    keepMemoryOutOfCoreDumps();
    chooseRenderer();
    // Listing the fonts takes a third of the time to the first frame, so threads do it beside the rest. If
    // none can be started, this one does it when it needs them.
    constexpr auto ifPossible = std::launch::async | std::launch::deferred;
    const auto fontSettings = std::async(ifPossible, readFontSettings);
    const Application application(argc, argv);
    introduceToDesktop();
    const auto fonts = std::async(ifPossible, [&] {
        fontSettings.wait();
        listFonts();
    });

    installAccessibleFactory();
    registerQmlModule();
    // An application engine would look for variants of each file, by platform and language.
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    QObject::connect(&engine, &QQmlEngine::exit, &application, &Application::exit, Qt::QueuedConnection);
    // Qt 6.4: there is no loadFromModule().
    const QUrl app(QStringLiteral("qrc:/BrindlecoveConnectorGUI/ui/BrindlecoveConnectorGUIApp.qml"));
    // Qt's own thread loads the types, and this one opens the fonts meanwhile; the second component waits for
    // them.
    const QQmlComponent types(&engine, app, QQmlComponent::Asynchronous);
    fonts.wait();
    openFonts();
    QQmlComponent component(&engine, app);
    const std::unique_ptr<QObject> root(component.create());
    auto *window = qobject_cast<QQuickWindow *>(root.get());
    if (!window) {
        qWarning() << component.errors();
        return EXIT_FAILURE;
    }
    showIconAfterFirstFrame(window);
    return Application::exec();
}
