#include "ui/platform/qmlmodule.h"

#include <QByteArray>

void qml_register_types_BrindlecoveConnectorGUI();

// The linker takes only referenced objects from a static library. With Qt 6.8 that concerns the compiled QML
// too, without which the QML would be compiled at each start.
void registerQmlModule()
{
    Q_INIT_RESOURCE(qmlcache_connectorgui);
    qml_register_types_BrindlecoveConnectorGUI();
    guardCompiledQml(qVersion());
}

void guardCompiledQml(std::string_view runningQt)
{
    if (runningQt != QT_VERSION_STR) {
        qputenv("QML_DISABLE_DISK_CACHE", "1");
    }
}
